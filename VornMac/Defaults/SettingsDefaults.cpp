#include "VornMac/Defaults/SettingsDefaults.h"

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
    : identifier_(std::move(identifier)), log_(std::move(log))
{
}

std::optional<std::string> SettingsDefaults::text(const std::string& key) const
{
    const QVariant value = openSettings(identifier_)->value(settingsKey(key));
    if (value.metaType() != QMetaType::fromType<QString>()) return std::nullopt;
    return value.toString().toStdString();
}

bool SettingsDefaults::boolean(const std::string& key) const
{
    if (const auto unsaved = unsaved_.find(key); unsaved != unsaved_.end()) return unsaved->second;
    const QVariant value = openSettings(identifier_)->value(settingsKey(key));
    return value.canConvert<QString>() && countsAsTrue(value.toString().toStdString());
}

void SettingsDefaults::setBoolean(const std::string& key, bool value)
{
    const auto settings = openSettings(identifier_);
    settings->setValue(settingsKey(key), value);
    settings->sync();
    if (settings->status() == QSettings::NoError) {
        unsaved_.erase(key);
        return;
    }
    unsaved_[key] = value;
    log_.error(std::string("user defaults save failed: ") + reasonOf(settings->status()));
}

} // namespace vorn
