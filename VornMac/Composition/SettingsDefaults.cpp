#include "VornMac/Composition/SettingsDefaults.h"

#include "VornMac/Composition/OverrideKeys.h"
#include "VornMac/Composition/SettingsFile.h"
#include "VornMac/Composition/TextBoolean.h"

#include <utility>

namespace vorn {

SettingsDefaults::SettingsDefaults(const std::string& identifier, Log log)
    : store_(userSettings(identifier)), log_(std::move(log))
{
}

SettingsDefaults::SettingsDefaults(std::filesystem::path file, Log log)
    : store_(std::make_unique<SettingsFile>(std::move(file))), log_(std::move(log))
{
}

SettingsDefaults SettingsDefaults::forRun(const std::map<std::string, std::string>& line, const std::string& identifier,
                                          Log log)
{
    const auto file = line.find(overrides::settingsFile);
    if (file == line.end()) return {identifier, std::move(log)};
    return {std::filesystem::path(file->second), std::move(log)};
}

std::optional<std::string> SettingsDefaults::text(const std::string& key) const
{
    const auto value = find(key);
    const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text == nullptr ? std::nullopt : std::optional(*text);
}

bool SettingsDefaults::boolean(const std::string& key) const
{
    const auto value = find(key);
    if (!value) return false;
    const auto* text = std::get_if<std::string>(&*value);
    return text == nullptr ? std::get<bool>(*value) : countsAsTrue(*text);
}

void SettingsDefaults::setBoolean(const std::string& key, bool value)
{
    keep(key, value);
}

void SettingsDefaults::setText(const std::string& key, const std::string& value)
{
    keep(key, value);
}

std::optional<SettingsStore::Value> SettingsDefaults::find(const std::string& key) const
{
    const auto unsaved = unsaved_.find(key);
    return unsaved == unsaved_.end() ? store_->find(key) : unsaved->second;
}

void SettingsDefaults::keep(const std::string& key, Value value)
{
    const auto failure = store_->keep(key, value);
    if (!failure) {
        unsaved_.erase(key);
        return;
    }
    unsaved_[key] = std::move(value);
    log_.error("user defaults save failed: " + *failure);
}

} // namespace vorn
