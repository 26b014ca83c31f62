#include "Platform/Keychain/linux/SecretServiceKeychain.h"

#include "tests/Platform/Keychain/FakeSecretService.h"
#include "tests/Platform/Keychain/KeychainContract.h"
#include "tests/Platform/Keychain/ListeningSocket.h"
#include "tests/Platform/Keychain/TestBus.h"

#include <future>
#include <stdexcept>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using ::testing::AnyOf;
using ::testing::Optional;
using Fault = FakeSecretService::Fault;

const KeychainItem item{"com.example.vorn", "desktop-session"};

/// Longer than any test: a call with this limit that returns did not wait for it.
constexpr auto forever = std::chrono::hours(24);
constexpr auto soon = 300ms;
constexpr auto notTooSoon = 1s; ///< long enough for a service to ask the user, even on a busy machine

std::int32_t statusOfRead(std::chrono::milliseconds limit)
{
    return statusOf([limit] { SecretServiceKeychain(limit).read(item); });
}

std::int32_t statusOfAdd(std::chrono::milliseconds limit)
{
    return statusOf([limit] { SecretServiceKeychain(limit).add(item, "secret", "Vorn"); });
}

TEST(SecretServiceKeychain, OfTheSystemWaitsForThreeSecondsAtMost)
{
    const auto system = std::dynamic_pointer_cast<SecretServiceKeychain>(Keychain::system());
    ASSERT_TRUE(system);
    EXPECT_EQ(system->limit(), 3s);
}

TEST(SecretServiceKeychain, FailsAtOnceWithoutABus)
{
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", "");
    for (const std::string bus : {"", "autolaunch:", "unix:path=/nowhere/bus"}) {
        SCOPED_TRACE(bus);
        const ScopedEnvironment address("DBUS_SESSION_BUS_ADDRESS", bus);
        EXPECT_EQ(statusOfRead(forever), KeychainError::notAvailable);
        EXPECT_EQ(statusOfAdd(forever), KeychainError::notAvailable);
        EXPECT_FALSE(SecretServiceKeychain(forever).remove(item));
    }
}

TEST(SecretServiceKeychain, FailsAtOnceWithoutAService)
{
    const TestBus bus;
    EXPECT_EQ(statusOfRead(forever), KeychainError::notAvailable);
    EXPECT_EQ(statusOfAdd(forever), KeychainError::notAvailable);
    EXPECT_FALSE(SecretServiceKeychain(forever).remove(item));
}

TEST(SecretServiceKeychain, FindsTheBusInTheRuntimeFolder)
{
    const TestBus bus;
    const TestKeyring keyring(bus);
    SecretServiceKeychain(forever).add(item, "secret", "Vorn");
    const ScopedEnvironment address("DBUS_SESSION_BUS_ADDRESS", "");
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", bus.folder());
    EXPECT_THAT(SecretServiceKeychain(forever).read(item), Optional("secret"s));
}

TEST(SecretServiceKeychain, GivesUpOnABusThatSaysNothing)
{
    const TemporaryFolder folder;
    const ListeningSocket socket(folder / "bus");
    const ScopedEnvironment address("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (folder / "bus").native());
    EXPECT_EQ(statusOfRead(soon), KeychainError::notAvailable);
}

TEST(SecretServiceKeychain, GivesUpOnAServiceThatSaysNothing)
{
    const TestBus bus;
    const FakeSecretService service(bus.address(), Fault::silent);
    EXPECT_EQ(statusOfRead(soon), KeychainError::notAvailable);
    EXPECT_EQ(statusOfAdd(soon), KeychainError::notAvailable);
    EXPECT_FALSE(SecretServiceKeychain(soon).remove(item));
}

TEST(SecretServiceKeychain, LeavesADialogThatHangs)
{
    const TestBus bus;
    FakeSecretService service(bus.address(), Fault::hangingDialog);
    EXPECT_EQ(statusOfRead(notTooSoon), KeychainError::interactionNotAllowed);
    EXPECT_EQ(service.dialogs(), 1);
    EXPECT_EQ(service.dismissals(), 1);
    service.waitUntilAskerLeft();
}

TEST(SecretServiceKeychain, WaitsOnceToReplace)
{
    const TestBus bus;
    const FakeSecretService service(bus.address(), Fault::hangingDialog);
    EXPECT_EQ(statusOf([] { SecretServiceKeychain(notTooSoon).replace(item, "secret", "Vorn"); }),
              KeychainError::interactionNotAllowed);
    EXPECT_EQ(service.dialogs(), 1);
}

TEST(SecretServiceKeychain, WaitsOnceToRemoveWhatMatches)
{
    const TestBus bus;
    const FakeSecretService service(bus.address(), Fault::hangingDialog);
    const auto any = [](std::string_view /*bytes*/) { return true; };
    EXPECT_EQ(statusOf([&] { SecretServiceKeychain(notTooSoon).removeIf(item, any); }),
              KeychainError::interactionNotAllowed);
    EXPECT_EQ(service.dialogs(), 1);
}

TEST(SecretServiceKeychain, LeavesTheUserTimeWhereItIsPatient)
{
    const TestBus bus;
    FakeSecretService service(bus.address(), Fault::hangingDialog);
    constexpr auto patience = 1s;
    SecretServiceKeychain keychain(notTooSoon, patience);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(statusOf([&] { keychain.readPatiently(item); }), KeychainError::interactionNotAllowed);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, patience);
    EXPECT_EQ(service.dialogs(), 1);
    EXPECT_EQ(service.dismissals(), 1);
    service.waitUntilAskerLeft();
}

TEST(SecretServiceKeychain, IsPatientWithUsersAlone)
{
    const TestBus bus;
    const FakeSecretService service(bus.address(), Fault::silent);
    SecretServiceKeychain keychain(soon, forever);
    EXPECT_EQ(statusOf([&] { keychain.readPatiently(item); }), KeychainError::notAvailable);
}

TEST(SecretServiceKeychain, TakesAClosedDialogForANo)
{
    const TestBus bus;
    const FakeSecretService service(bus.address(), Fault::dismissed);
    EXPECT_EQ(statusOfRead(forever), KeychainError::userCanceled);
    EXPECT_EQ(service.dialogs(), 1);
    EXPECT_EQ(service.dismissals(), 0);
}

TEST(SecretServiceKeychain, FilesItemsUnderTheNameOfTheirService)
{
    const TestBus bus;
    const FakeSecretService service(bus.address(), Fault::dismissed);
    EXPECT_EQ(statusOfRead(forever), KeychainError::userCanceled);
    EXPECT_EQ(service.searchedSchema(), "com.example.vorn.Item");
}

TEST(SecretServiceKeychain, ReportsThatItMayNot)
{
    const TestBus bus;
    const FakeSecretService service(bus.address(), Fault::refusing);
    EXPECT_EQ(statusOfRead(forever), KeychainError::authFailed);
    EXPECT_EQ(statusOfAdd(forever), KeychainError::authFailed);
}

TEST(SecretServiceKeychain, FailsOnALockedCollectionThatNobodyUnlocks)
{
    const TestBus bus;
    const TestKeyring keyring(bus);
    const KeychainItem other{item.service, "other"};
    SecretServiceKeychain keychain(2s);
    keychain.add(item, "secret", "Vorn");
    keyring.lock();
    const auto locked = AnyOf(KeychainError::userCanceled, KeychainError::interactionNotAllowed);
    EXPECT_THAT(statusOf([&] { keychain.read(item); }), locked);
    EXPECT_THAT(statusOf([&] { keychain.add(other, "secret", "Vorn"); }), locked);
    EXPECT_EQ(statusOf([&] { keychain.add(item, "secret", "Vorn"); }), KeychainError::duplicateItem);
    EXPECT_THAT(statusOf([&] { keychain.replace(item, "secret", "Vorn"); }), locked);
    EXPECT_FALSE(keychain.remove(item));
    EXPECT_THAT(statusOf([&] { keychain.read(item); }), locked) << "it is still there";
    EXPECT_EQ(keychain.read(other), std::nullopt);
}

/// A local TCP port that accepts connections.
class ListeningPort {
public:
    ListeningPort() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        if (listen(socket_.get(), 1) != 0) throw std::runtime_error("cannot listen"); // on any free port
    }

    std::string number() const
    {
        sockaddr_in address{};
        socklen_t size = sizeof address;
        getsockname(socket_.get(), reinterpret_cast<sockaddr*>(&address), &size);
        return std::to_string(ntohs(address.sin_port));
    }

private:
    FileDescriptor socket_;
};

TEST(SecretServiceKeychain, ReturnsInTimeFromACallThatCannotBeGivenUp)
{
    const TemporaryFolder folder;
    const std::string pipe = (folder / "pipe").native();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const ListeningPort port;
    // A bus with a password in a file, which is a pipe: opening that blocks inside the system until there is a writer.
    const ScopedEnvironment address("DBUS_SESSION_BUS_ADDRESS",
                                    "nonce-tcp:host=127.0.0.1,port=" + port.number() + ",noncefile=" + pipe);
    EXPECT_EQ(statusOfRead(soon), KeychainError::notAvailable);
    const FileDescriptor writing(open(pipe.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_TRUE(writing) << "nobody waits for the pipe";
}

TEST(SecretServiceKeychain, IsForManyThreadsAtOnce)
{
    const TestBus bus;
    const TestKeyring keyring(bus);
    SecretServiceKeychain keychain(forever);
    keychain.add(item, "secret", "Vorn");
    std::vector<std::future<std::optional<std::string>>> reads;
    for (int each = 0; each < 8; ++each)
        reads.push_back(std::async(std::launch::async, [&keychain] { return keychain.read(item); }));
    for (auto& read : reads) EXPECT_THAT(read.get(), Optional("secret"s));
}

TEST(SecretServiceKeychain, ComesBackWithTheServiceAfterARestart)
{
    SecretServiceKeychain keychain(forever);
    for (int start = 0; start < 2; ++start) {
        const TestBus bus;
        const TestKeyring keyring(bus);
        EXPECT_EQ(keychain.read(item), std::nullopt);
        keychain.add(item, "secret", "Vorn");
        EXPECT_THAT(keychain.read(item), Optional("secret"s));
    }
}

} // namespace
} // namespace vorn::testing
