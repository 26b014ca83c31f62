#include "Platform/Desktop/RevealItem.h"

#include "Platform/Base/Owned.h"
#include "Platform/Base/linux/SessionBus.h"
#include "Platform/Desktop/DetachedProgram.h"
#include "Platform/Desktop/SystemWorkspace.h"

#include <system_error>
#include <thread>

#include <gio/gio.h>

namespace vorn {
namespace {

constexpr int longestAnswer = 5000; // milliseconds: the call may have to start the file manager

using Text = Owned<char, g_free>;
using Bus = Owned<GDBusConnection, g_object_unref>;
using Answer = Owned<GVariant, g_variant_unref>;

/// A connection of our own: losing the one that GLib shares ends the process.
Bus connectToSessionBus()
{
    const std::string address = sessionBusAddress();
    if (address.empty()) return nullptr;
    // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): a set of flags
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return Bus(g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr));
}

/// Uses freedesktop.org's "File Manager DBus Interface".
bool askFileManager(const std::filesystem::path& item)
{
    const Text uri(g_filename_to_uri(item.c_str(), nullptr, nullptr));
    const Bus bus = uri ? connectToSessionBus() : nullptr;
    if (!bus) return false;
    const char* const uris[] = {uri.get()};
    const Answer answer(g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1",
        "ShowItems", g_variant_new("(@ass)", g_variant_new_strv(uris, 1), ""), nullptr, G_DBUS_CALL_FLAGS_NONE,
        longestAnswer, nullptr, nullptr));
    g_dbus_connection_close_sync(bus.get(), nullptr, nullptr);
    return answer != nullptr;
}

void openFolderOf(const std::filesystem::path& item, const std::string& opener)
{
    try {
        const DetachedProgram program(opener, {item.parent_path().native()});
    } catch (const std::system_error&) { // NOLINT(bugprone-empty-catch): the user sees that no window opened
    }
}

} // namespace

DesktopPrograms DesktopPrograms::ofSystem()
{
    return {.open = "xdg-open", .shell = "/bin/sh"};
}

void revealItem(const std::filesystem::path& item, const std::string& opener)
{
    // The thread owns all it uses, as it may still run while the process ends.
    std::thread([item = std::filesystem::absolute(item), opener] {
        if (!askFileManager(item)) openFolderOf(item, opener);
    }).detach();
}

} // namespace vorn
