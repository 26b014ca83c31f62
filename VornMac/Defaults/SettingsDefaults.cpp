#include "VornMac/Defaults/SettingsDefaults.h"

#include "VornMac/Defaults/OverrideKeys.h"
#include "VornMac/Defaults/SettingsKey.h"
#include "VornMac/Defaults/SettingsStore.h"
#include "VornMac/Defaults/TextBoolean.h"

#include <utility>

namespace vorn {
namespace {

const char* reasonOf(QSettings::Status status)
{
    return status == QSettings::AccessError ? "they cannot be written" : "the file cannot be understood";
}

} // namespace

SettingsDefaults::SettingsDefaults(std::string identifier, Log log)
    : open_([identifier = std::move(identifier)] { return openSettings(identifier); }), log_(std::move(log))
{
}

SettingsDefaults::SettingsDefaults(std::filesystem::path file, Log log)
    : open_([file = std::move(file)] { return openSettingsFile(file); }), log_(std::move(log))
{
}

SettingsDefaults SettingsDefaults::forRun(const std::map<std::string, std::string>& line, std::string identifier,
                                          Log log)
{
    const auto file = line.find(overrides::settingsFile);
    if (file == line.end()) return {std::move(identifier), std::move(log)};
    return {std::filesystem::path(file->second), std::move(log)};
}

std::optional<std::string> SettingsDefaults::text(const std::string& key) const
{
    if (const auto unsaved = unsaved_.find(key); unsaved != unsaved_.end()) {
        const auto* text = std::get_if<std::string>(&unsaved->second);
        return text == nullptr ? std::nullopt : std::optional(*text);
    }
    const QVariant value = open_()->value(settingsKey(key));
    if (value.metaType() != QMetaType::fromType<QString>()) return std::nullopt;
    return value.toString().toStdString();
}

bool SettingsDefaults::boolean(const std::string& key) const
{
    if (const auto unsaved = unsaved_.find(key); unsaved != unsaved_.end()) {
        const auto* text = std::get_if<std::string>(&unsaved->second);
        return text == nullptr ? std::get<bool>(unsaved->second) : countsAsTrue(*text);
    }
    const QVariant value = open_()->value(settingsKey(key));
    return value.canConvert<QString>() && countsAsTrue(value.toString().toStdString());
}

void SettingsDefaults::setBoolean(const std::string& key, bool value)
{
    keep(key, value);
}

void SettingsDefaults::setText(const std::string& key, const std::string& value)
{
    keep(key, value);
}

void SettingsDefaults::keep(const std::string& key, Value value)
{
    const auto settings = open_();
    const auto* text = std::get_if<std::string>(&value);
    settings->setValue(settingsKey(key),
                       text == nullptr ? QVariant(std::get<bool>(value)) : QVariant(QString::fromStdString(*text)));
    settings->sync();
    if (settings->status() == QSettings::NoError) {
        unsaved_.erase(key);
        return;
    }
    unsaved_[key] = std::move(value);
    log_.error(std::string("user defaults save failed: ") + reasonOf(settings->status()));
}

} // namespace vorn
