#include "VornMac/Composition/ArgumentDefaults.h"

#include <utility>

namespace vorn {

bool ArgumentDefaults::isKey(const std::string& argument)
{
    return argument.size() > 1 && argument[0] == '-' && argument[1] >= 'A' && argument[1] <= 'Z';
}

ArgumentDefaults ArgumentDefaults::takenFrom(std::vector<std::string>& arguments)
{
    ArgumentDefaults defaults;
    std::vector<std::string> left;
    bool onlyArguments = false;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        onlyArguments = onlyArguments || arguments[at] == "--";
        if (!onlyArguments && isKey(arguments[at]) && at + 1 < arguments.size()) {
            defaults.values_[arguments[at].substr(1)] = arguments[at + 1];
            ++at;
        } else {
            left.push_back(arguments[at]);
        }
    }
    arguments = std::move(left);
    return defaults;
}

std::optional<std::string> ArgumentDefaults::text(const std::string& key) const
{
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace vorn
