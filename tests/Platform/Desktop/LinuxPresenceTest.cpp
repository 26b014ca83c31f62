#include "Platform/Desktop/SystemPresence.h"
#include "Platform/Desktop/linux/MessageBus.h"

#include "tests/Platform/Desktop/DesktopServices.h"
#include "tests/Platform/Keychain/TestBus.h"
#include "tests/support/ScopedEnvironment.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <functional>
#include <optional>

#include <gio/gio.h>
#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::DesktopServices;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ScopedEnvironment;
using Kind = DesktopServices::Kind;

const Notification earned{
    .title = "You earned $5.00", .body = "Thanks & <more> to come.", .action = "Open Vorn", .hasSound = true};

/// Delivers answers, as Qt's event loop does, until `condition` holds.
void runUntil(const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + 30s;
    while (!condition()) {
        ASSERT_LT(std::chrono::steady_clock::now(), end) << "waited in vain";
        if (g_main_context_iteration(nullptr, FALSE) == FALSE) sched_yield();
    }
}

struct LinuxPresence : ::testing::Test {
    testing::TestBus bus;
    ScopedEnvironment systemBus{"DBUS_SYSTEM_BUS_ADDRESS", bus.address()};
    std::vector<std::string> clicks;
    std::unique_ptr<DesktopPresence> presence = systemPresence(
        {.identifier = "app.vorn.mac", .name = "Vorn"}, [this](const std::string& token) { clicks.push_back(token); });

    static void waitForCalls(const DesktopServices& services, std::size_t count)
    {
        runUntil([&] { return services.calls().size() >= count; });
    }
    /// Sends a progress of 100 % as a mark, and returns once `services` has received it: a bus preserves the order,
    /// so all earlier calls have been handled.
    void settle(const DesktopServices& services)
    {
        const auto before = marks(services);
        presence->showProgress(100);
        runUntil([&] { return marks(services) > before; });
    }
    static long marks(const DesktopServices& services)
    {
        const auto calls = services.calls();
        return std::ranges::count_if(calls, [](auto& call) { return call.find("<1.0>") != std::string::npos; });
    }
    /// Returns once this process knows that `id` is shown: the answer arrives before a click that was sent after it.
    void waitUntilShown(DesktopServices& services, std::uint32_t id)
    {
        const auto before = clicks.size();
        services.click(id);
        runUntil([&] { return clicks.size() > before; });
    }
};

TEST_F(LinuxPresence, ShowsANotification)
{
    const DesktopServices services(bus.address());
    presence->notify(earned);
    waitForCalls(services, 2);
    EXPECT_THAT(
        services.calls(),
        ElementsAre("GetCapabilities()",
                    "Notify('Vorn', 0, 'app.vorn.mac', 'You earned $5.00', 'Thanks &amp; &lt;more&gt; to come.',"
                    " ['default', 'Open Vorn'],"
                    " {'desktop-entry': <'app.vorn.mac'>, 'sound-name': <'complete'>}, -1)"));
}

TEST_F(LinuxPresence, ShowsWhatAPlainServiceCan)
{
    const DesktopServices services(bus.address(), {.capabilities = {"body"}});
    Notification quiet = earned;
    quiet.hasSound = false;
    presence->notify(quiet);
    waitForCalls(services, 2);
    EXPECT_EQ(services.calls().back(),
              "Notify('Vorn', 0, 'app.vorn.mac', 'You earned $5.00', 'Thanks & <more> to come.', [],"
              " {'desktop-entry': <'app.vorn.mac'>, 'suppress-sound': <true>}, -1)");
}

TEST_F(LinuxPresence, TellsOfAClickOnItsOwnNotificationAlone)
{
    DesktopServices services(bus.address());
    presence->notify(earned);
    waitForCalls(services, 2);
    services.click(7);          // another program's
    services.click(1, "reply"); // another button
    services.click(1);
    runUntil([&] { return !clicks.empty(); });
    services.click(1, "default", "wayland-token-1");
    runUntil([&] { return clicks.size() > 1; });
    EXPECT_THAT(clicks, ElementsAre("", "wayland-token-1"));
}

TEST_F(LinuxPresence, ReplacesAndWithdrawsItsNotification)
{
    DesktopServices services(bus.address());
    presence->withdrawNotification(); // there is none
    presence->notify(earned);
    waitForCalls(services, 2);
    waitUntilShown(services, 1);
    presence->notify(earned);
    waitForCalls(services, 4);
    EXPECT_THAT(services.calls().back(), ::testing::StartsWith("Notify('Vorn', 1, "));
    waitUntilShown(services, 2);
    presence->withdrawNotification();
    presence->withdrawNotification();
    settle(services);
    EXPECT_EQ(services.calls().at(4), "CloseNotification(2,)");
    EXPECT_EQ(services.calls().size(), 6U);
}

TEST_F(LinuxPresence, ClosesANotificationThatIsWithdrawnOnItsWay)
{
    const DesktopServices services(bus.address());
    presence->notify(earned);
    waitForCalls(services, 2); // sent; the answer has not been read yet
    presence->withdrawNotification();
    waitForCalls(services, 3);
    EXPECT_EQ(services.calls().back(), "CloseNotification(1,)");
}

TEST_F(LinuxPresence, KeepsTheComputerAwakeThroughLogind)
{
    const DesktopServices services(bus.address());
    presence->stayAwake("Uploading");
    presence->stayAwake("Uploading");
    runUntil([&] { return services.isAwake(); });
    settle(services);
    presence->allowSleep();
    runUntil([&] { return !services.isAwake(); });
    presence->stayAwake("Uploading");
    runUntil([&] { return services.isAwake(); });
    EXPECT_THAT(services.calls(), ElementsAre("Inhibit('sleep', 'Vorn', 'Uploading', 'block')", ::testing::_,
                                              "Inhibit('sleep', 'Vorn', 'Uploading', 'block')"));
}

TEST_F(LinuxPresence, LetsGoOfALockThatComesTooLate)
{
    const DesktopServices services(bus.address());
    presence->stayAwake("Uploading");
    waitForCalls(services, 1);
    presence->allowSleep();
    settle(services);
    runUntil([&] { return !services.isAwake(); });
    EXPECT_EQ(services.calls().size(), 2U) << "the session manager is not asked";
}

TEST_F(LinuxPresence, KeepsTheComputerAwakeThroughTheSessionManagerElse)
{
    const DesktopServices services(bus.address(), {.names = {DesktopServices::sessionManager}});
    presence->stayAwake("Uploading");
    waitForCalls(services, 1);
    settle(services);
    presence->allowSleep();
    waitForCalls(services, 3);
    EXPECT_THAT(services.calls(),
                ElementsAre("Inhibit('app.vorn.mac', 0, 'Uploading', 4)", ::testing::_, "Uninhibit(4711,)"));
}

TEST_F(LinuxPresence, ShowsProgressOnTheLauncher)
{
    const DesktopServices services(bus.address());
    presence->showProgress(42);
    presence->showProgress(std::nullopt);
    waitForCalls(services, 2);
    EXPECT_THAT(services.calls(), ElementsAre("Update('application://app.vorn.mac.desktop',"
                                              " {'progress': <0.41999999999999998>, 'progress-visible': <true>})",
                                              "Update('application://app.vorn.mac.desktop',"
                                              " {'progress': <0.0>, 'progress-visible': <false>})"));
}

TEST_F(LinuxPresence, TellsABusThatCameBack)
{
    presence.reset();
    {
        const testing::TestBus gone;
        presence = systemPresence({.identifier = "app.vorn.mac", .name = "Vorn"}, [](const std::string&) {});
        const DesktopServices services(gone.address());
        presence->showProgress(1);
        waitForCalls(services, 1);
    }
    const DesktopServices services(bus.address());
    runUntil([&] {
        presence->showProgress(2);
        g_main_context_iteration(nullptr, FALSE);
        return !services.calls().empty();
    });
}

/// Asks for everything at once, and returns how long that took.
std::chrono::nanoseconds timeToAsk(DesktopPresence& presence)
{
    const auto begin = std::chrono::steady_clock::now();
    presence.askToNotify();
    presence.notify(earned);
    presence.stayAwake("Uploading");
    presence.showProgress(1);
    presence.playSound();
    presence.allowSleep();
    presence.withdrawNotification();
    return std::chrono::steady_clock::now() - begin;
}

TEST_F(LinuxPresence, GoesWithoutServices)
{
    for (const DesktopServices::Options& options :
         {DesktopServices::Options{.names = {}}, DesktopServices::Options{.kind = Kind::refusing},
          DesktopServices::Options{.kind = Kind::silent}}) {
        const DesktopServices services(bus.address(), options);
        ::testing::internal::CaptureStderr();
        EXPECT_LT(timeToAsk(*presence), 1s);
        presence->stayAwake("Uploading");
        settle(services);
        EXPECT_THAT(::testing::internal::GetCapturedStderr(), IsEmpty());
        EXPECT_FALSE(services.isAwake());
    }
    EXPECT_THAT(clicks, IsEmpty());
}

TEST_F(LinuxPresence, GoesWithoutABus)
{
    for (const char* address : {"", "unix:path=/nowhere/bus", "no address"}) {
        SCOPED_TRACE(address);
        const ScopedEnvironment session("DBUS_SESSION_BUS_ADDRESS", address);
        const ScopedEnvironment system("DBUS_SYSTEM_BUS_ADDRESS", address);
        const ScopedEnvironment runtime("XDG_RUNTIME_DIR", "");
        const auto lonely = systemPresence({.identifier = "app.vorn.mac", .name = "Vorn"}, [](const std::string&) {});
        ::testing::internal::CaptureStderr();
        EXPECT_LT(timeToAsk(*lonely), 1s);
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
        EXPECT_THAT(::testing::internal::GetCapturedStderr(), IsEmpty());
    }
}

TEST_F(LinuxPresence, WaitsForNoBusThatHangs)
{
    bus.freeze();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_LT(timeToAsk(*presence), 1s);
    g_main_context_iteration(nullptr, FALSE);
    presence.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
}

/// A call that gets no answer must end without one after `limit`.
void expectNoAnswer(std::chrono::milliseconds limit)
{
    MessageBus bus(MessageBus::Kind::session, limit);
    bool isOver = false;
    bus.call({"org.freedesktop.Notifications", "/org/freedesktop/Notifications", "org.freedesktop.Notifications"},
             "GetCapabilities", g_variant_new("()"), [&isOver](GVariant* answer, GUnixFDList* files) {
                 EXPECT_EQ(answer, nullptr);
                 EXPECT_EQ(files, nullptr);
                 isOver = true;
             });
    runUntil([&isOver] { return isOver; });
}

TEST(MessageBus, GivesUpOnABusThatHangs)
{
    const testing::TestBus bus;
    bus.freeze();
    expectNoAnswer(50ms);
}

TEST(MessageBus, GivesUpOnAServiceThatHangs)
{
    const testing::TestBus bus;
    const DesktopServices services(bus.address(), {.kind = Kind::silent});
    expectNoAnswer(1s); // the call must reach the service within the limit
    EXPECT_EQ(services.calls().size(), 1U);
}

} // namespace
} // namespace vorn
