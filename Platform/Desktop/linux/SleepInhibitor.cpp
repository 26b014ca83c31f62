#include "Platform/Desktop/linux/SleepInhibitor.h"

#include <utility>

#include <gio/gunixfdlist.h>

namespace vorn {
namespace {

constexpr BusObject logind = {"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager"};
constexpr BusObject sessionManager = {"org.gnome.SessionManager", "/org/gnome/SessionManager",
                                      "org.gnome.SessionManager"}; // other desktops use this name too
constexpr std::uint32_t noWindow = 0;
constexpr std::uint32_t suspending = 4;

/// The descriptor that came with logind's `answer`; empty when there is none.
FileDescriptor lockIn(GVariant* answer, GUnixFDList* files)
{
    if (answer == nullptr || files == nullptr || g_variant_is_of_type(answer, G_VARIANT_TYPE("(h)")) == FALSE)
        return FileDescriptor(-1);
    std::int32_t index = 0;
    g_variant_get(answer, "(h)", &index);
    return FileDescriptor(g_unix_fd_list_get(files, index, nullptr));
}

} // namespace

SleepInhibitor::SleepInhibitor(MessageBus& system, MessageBus& session, ApplicationNames names)
    : system_(system), session_(session), names_(std::move(names))
{
}

void SleepInhibitor::hold(const std::string& reason)
{
    isWanted_ = true;
    if (isAsking_ || lock_ || cookie_ != 0) return;
    isAsking_ = true;
    askLogind(reason);
}

void SleepInhibitor::release()
{
    isWanted_ = false;
    lock_.reset();
    if (cookie_ == 0) return;
    session_.call(sessionManager, "Uninhibit", g_variant_new("(u)", std::exchange(cookie_, 0)),
                  [](GVariant*, GUnixFDList*) {});
}

void SleepInhibitor::askLogind(const std::string& reason)
{
    GVariant* const arguments = g_variant_new("(ssss)", "sleep", names_.name.c_str(), reason.c_str(), "block");
    system_.call(logind, "Inhibit", arguments, [this, reason](GVariant* answer, GUnixFDList* files) {
        lock_ = lockIn(answer, files);
        if (!lock_ && isWanted_) return askSessionManager(reason);
        isAsking_ = false;
        if (!isWanted_) release();
    });
}

void SleepInhibitor::askSessionManager(const std::string& reason)
{
    GVariant* const arguments =
        g_variant_new("(susu)", names_.identifier.c_str(), noWindow, reason.c_str(), suspending);
    session_.call(sessionManager, "Inhibit", arguments, [this](GVariant* answer, GUnixFDList* /*files*/) {
        isAsking_ = false;
        if (answer != nullptr && g_variant_is_of_type(answer, G_VARIANT_TYPE("(u)")) != FALSE)
            g_variant_get(answer, "(u)", &cookie_);
        if (!isWanted_) release();
    });
}

} // namespace vorn
