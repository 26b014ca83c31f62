#pragma once

#include "VornMac/Composition/SettingsStore.h"

#include <filesystem>

namespace vorn {

/// The settings in one file, on every system. Creates the file and its folder if they are missing, private to this
/// user.
class SettingsFile final : public SettingsStore {
public:
    explicit SettingsFile(std::filesystem::path file);

    std::optional<Value> find(const std::string& key) const override;
    std::optional<std::string> keep(const std::string& key, const Value& value) override;

private:
    std::filesystem::path file_;
};

} // namespace vorn
