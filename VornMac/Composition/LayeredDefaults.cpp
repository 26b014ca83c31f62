#include "VornMac/Composition/LayeredDefaults.h"

#include "VornMac/Composition/TextBoolean.h"

#include <utility>

namespace vorn {

LayeredDefaults::LayeredDefaults(Line line, UserDefaults& below) : line_(std::move(line)), below_(below)
{
}

std::optional<std::string> LayeredDefaults::text(const std::string& key) const
{
    const auto found = line_.find(key);
    return found != line_.end() ? std::optional(found->second) : below_.text(key);
}

bool LayeredDefaults::boolean(const std::string& key) const
{
    const auto found = line_.find(key);
    return found != line_.end() ? countsAsTrue(found->second) : below_.boolean(key);
}

void LayeredDefaults::setBoolean(const std::string& key, bool value)
{
    below_.setBoolean(key, value);
}

void LayeredDefaults::setText(const std::string& key, const std::string& value)
{
    below_.setText(key, value);
}

} // namespace vorn
