#include "Platform/Base/linux/SessionBus.h"

#include "Platform/Base/ASCII.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fmt/format.h>

namespace vorn {
namespace {

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// `list` of addresses without those that would start a bus.
std::string withoutAutolaunch(std::string_view list)
{
    std::string kept;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(';'), list.size());
        const std::string_view address = list.substr(0, end);
        list.remove_prefix(std::min(end + 1, list.size()));
        if (!address.empty() && !address.starts_with("autolaunch:"))
            kept.append(kept.empty() ? "" : ";").append(address);
    }
    return kept;
}

/// `path` escaped for an address (D-Bus specification, "Server Addresses").
std::string escaped(std::string_view path)
{
    std::string result;
    for (const char letter : path) {
        const auto byte = static_cast<unsigned char>(letter);
        if (ascii::isAlphanumeric(letter) || std::string_view("-_/\\.").find(letter) != std::string_view::npos)
            result += letter;
        else
            result += fmt::format("%{:02x}", byte);
    }
    return result;
}

} // namespace

std::string sessionBusAddress()
{
    std::string address = withoutAutolaunch(variable("DBUS_SESSION_BUS_ADDRESS"));
    if (!address.empty()) return address;
    const std::filesystem::path folder = variable("XDG_RUNTIME_DIR");
    std::error_code none;
    if (folder.empty() || !std::filesystem::is_socket(folder / "bus", none)) return {};
    return "unix:path=" + escaped((folder / "bus").native());
}

} // namespace vorn
