#include "Platform/Base/linux/SessionBus.h"
#include "tests/Platform/Keychain/ListeningSocket.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::ListeningSocket;
using testing::ScopedEnvironment;
using testing::TemporaryFolder;
using testing::writeFile;

TEST(SessionBus, IsTheOneThatTheEnvironmentNames)
{
    struct Case {
        std::string name, variable, address;
    };
    const std::vector<Case> cases = {
        {"one", "unix:path=/run/bus", "unix:path=/run/bus"},
        {"list", "unix:path=/run/bus;tcp:host=h,port=1", "unix:path=/run/bus;tcp:host=h,port=1"},
        {"start a bus", "autolaunch:", ""},
        {"start a bus at last", "unix:path=/run/bus;autolaunch:scope=*user", "unix:path=/run/bus"},
        {"start a bus at first", "autolaunch:;unix:path=/run/bus", "unix:path=/run/bus"},
        {"separators", ";;", ""},
    };
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", "");
    for (const auto& [name, variable, address] : cases) {
        SCOPED_TRACE(name);
        const ScopedEnvironment bus("DBUS_SESSION_BUS_ADDRESS", variable);
        EXPECT_EQ(sessionBusAddress(), address);
    }
}

TEST(SessionBus, IsElseTheSocketInTheRuntimeFolder)
{
    const TemporaryFolder folder;
    const ScopedEnvironment bus("DBUS_SESSION_BUS_ADDRESS", "");
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", folder.path());
    EXPECT_EQ(sessionBusAddress(), "");
    writeFile(folder / "bus", "no socket");
    EXPECT_EQ(sessionBusAddress(), "");
    std::filesystem::remove(folder / "bus");
    const ListeningSocket socket(folder / "bus");
    EXPECT_EQ(sessionBusAddress(), "unix:path=" + folder.path().native() + "/bus");
    const ScopedEnvironment startsOne("DBUS_SESSION_BUS_ADDRESS", "autolaunch:");
    EXPECT_EQ(sessionBusAddress(), "unix:path=" + folder.path().native() + "/bus");
}

TEST(SessionBus, HasAnAddressWhateverItsFolderIsCalled)
{
    const TemporaryFolder folder;
    const auto odd = folder / "a, b;é";
    std::filesystem::create_directory(odd);
    const ListeningSocket socket(odd / "bus");
    const ScopedEnvironment bus("DBUS_SESSION_BUS_ADDRESS", "");
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", odd);
    EXPECT_EQ(sessionBusAddress(), "unix:path=" + folder.path().native() + "/a%2c%20b%3b%c3%a9/bus");
}

TEST(SessionBus, IsNoneWithoutAnEnvironment)
{
    const ScopedEnvironment bus("DBUS_SESSION_BUS_ADDRESS", "");
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", "");
    EXPECT_EQ(sessionBusAddress(), "");
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(sessionBusAddress(), "");
}

} // namespace
} // namespace vorn
