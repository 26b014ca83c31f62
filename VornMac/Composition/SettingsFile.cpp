#include "VornMac/Composition/SettingsFile.h"

#include "Platform/Base/FileDescriptor.h"
#include "VornMac/Composition/SettingsKey.h"

#include <system_error>
#include <utility>

#include <QSettings>
#include <sys/stat.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

/// QSettings creates a file that others may read, but keeps an existing file's permissions. If this fails, so does
/// QSettings, which then reports the failure.
void makePrivate(const fs::path& file)
{
    std::error_code ignored;
    fs::create_directories(file.parent_path().parent_path(), ignored);
    mkdir(file.parent_path().c_str(), S_IRWXU);
    const FileDescriptor created = createPrivateFile(file);
}

QString pathOf(const fs::path& file)
{
    return QString::fromStdString(file.native());
}

} // namespace

SettingsFile::SettingsFile(fs::path file) : file_(std::move(file))
{
}

std::optional<SettingsStore::Value> SettingsFile::find(const std::string& key) const
{
    makePrivate(file_);
    const QVariant value = QSettings(pathOf(file_), QSettings::IniFormat).value(settingsKey(key));
    // A value is a boolean only until the file is read again: the file holds text.
    if (value.metaType() == QMetaType::fromType<bool>()) return value.toBool();
    if (value.metaType() == QMetaType::fromType<QString>()) return value.toString().toStdString();
    return std::nullopt;
}

std::optional<std::string> SettingsFile::keep(const std::string& key, const Value& value)
{
    makePrivate(file_);
    QSettings settings(pathOf(file_), QSettings::IniFormat);
    const auto* text = std::get_if<std::string>(&value);
    settings.setValue(settingsKey(key),
                      text == nullptr ? QVariant(std::get<bool>(value)) : QVariant(QString::fromStdString(*text)));
    settings.sync();
    switch (settings.status()) {
    case QSettings::NoError: return std::nullopt;
    case QSettings::AccessError: return "they cannot be written";
    case QSettings::FormatError: break;
    }
    return "the file cannot be understood";
}

} // namespace vorn
