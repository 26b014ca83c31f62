#pragma once

#include "Platform/Base/UserDefaults.h"

#include <map>

namespace vorn {

/// The user's defaults, overridden for this run by those of the command line. Writes go to the user's defaults.
class LayeredDefaults final : public UserDefaults {
public:
    using Line = std::map<std::string, std::string>; ///< values by key

    /// `below` must outlive this object.
    LayeredDefaults(Line line, UserDefaults& below);

    std::optional<std::string> text(const std::string& key) const override;
    bool boolean(const std::string& key) const override;
    void setBoolean(const std::string& key, bool value) override;
    void setText(const std::string& key, const std::string& value) override;

private:
    Line line_;
    UserDefaults& below_;
};

} // namespace vorn
