#include "Platform/Base/linux/ComputerName.h"

#include "Platform/Base/SystemFacts.h"
#include "Platform/Base/Text.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include <sys/utsname.h>

namespace vorn {
namespace {

/// `value` as a shell would read it: both kinds of quotes, and backslashes.
std::string unquoted(std::string_view value)
{
    std::string result;
    char quote = '\0';
    for (std::size_t at = 0; at < value.size(); ++at) {
        const char letter = value[at];
        const bool last = at + 1 == value.size();
        if (letter == '\\' && quote != '\'' && !last) {
            const char next = value[++at];
            // Between double quotes a backslash escapes only special characters.
            if (quote == '"' && std::string_view("\"\\$`").find(next) == std::string_view::npos) result += letter;
            result += next;
        } else if (letter == quote) {
            quote = '\0';
        } else if (quote == '\0' && (letter == '"' || letter == '\'')) {
            quote = letter;
        } else {
            result += letter;
        }
    }
    return result;
}

std::string contentOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

std::string prettyHostName(std::string_view machineInfo)
{
    constexpr std::string_view key = "PRETTY_HOSTNAME=";
    std::string name;
    while (!machineInfo.empty()) {
        const std::size_t end = std::min(machineInfo.find('\n'), machineInfo.size());
        const std::string line = text::repaired(machineInfo.substr(0, end));
        const std::string_view assignment = text::trimmed(line);
        if (assignment.starts_with(key)) name = unquoted(assignment.substr(key.size()));
        machineInfo.remove_prefix(std::min(end + 1, machineInfo.size()));
    }
    return std::string(text::trimmed(name));
}

std::string computerName(std::string_view machineInfo, std::string_view hostName)
{
    std::string pretty = prettyHostName(machineInfo);
    if (!pretty.empty()) return pretty;
    return hostName == "(none)" ? "" : text::repaired(hostName);
}

std::string computerName()
{
    utsname names{};
    const bool known = uname(&names) == 0;
    return computerName(contentOf("/etc/machine-info"), known ? names.nodename : "");
}

} // namespace vorn
