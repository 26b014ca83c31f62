#pragma once

#include "Platform/Base/UserDefaults.h"

#include <map>

namespace vorn::testing {

/// User defaults that last as long as the test, and keep only texts.
struct KeptDefaults final : UserDefaults {
    std::map<std::string, std::string> texts;

    std::optional<std::string> text(const std::string& key) const override
    {
        return texts.contains(key) ? std::optional(texts.at(key)) : std::nullopt;
    }
    bool boolean(const std::string& key) const override { return text(key) == "YES"; }
    void setBoolean(const std::string& key, bool value) override { texts[key] = value ? "YES" : "NO"; }
    void setText(const std::string& key, const std::string& value) override { texts[key] = value; }
};

} // namespace vorn::testing
