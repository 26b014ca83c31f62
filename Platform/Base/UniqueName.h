#pragma once

#include "Platform/Base/UUID.h"

#include <string>
#include <string_view>

namespace vorn {

/// Names of the form `prefix`, a UUID as `newUUID` writes it, `suffix`.
struct UniqueName {
    std::string_view prefix, suffix;

    std::string make() const { return std::string(prefix).append(newUUID()).append(suffix); }

    bool matches(std::string_view name) const noexcept
    {
        if (name.size() < prefix.size() + suffix.size()) return false;
        if (!name.starts_with(prefix) || !name.ends_with(suffix)) return false;
        name.remove_prefix(prefix.size());
        name.remove_suffix(suffix.size());
        return isUUID(name);
    }
};

} // namespace vorn
