#include "tests/Platform/Keychain/TestBus.h"

#include "Platform/Base/FileDescriptor.h"
#include "tests/Platform/Keychain/BusConnection.h"

#include <array>
#include <csignal>
#include <stdexcept>

#include <unistd.h>

namespace vorn::testing {
namespace {

constexpr const char* configuration = R"(<busconfig>
  <type>session</type>
  <listen>unix:path=FOLDER/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

std::string configurationIn(const std::filesystem::path& folder)
{
    std::string text = configuration;
    return text.replace(text.find("FOLDER"), 6, folder.native());
}

/// The first line that is written to `pipe`; waits for it.
std::string lineFrom(const FileDescriptor& pipe)
{
    std::string line;
    char letter = '\0';
    while (read(pipe.get(), &letter, 1) == 1 && letter != '\n') line += letter;
    return line;
}

/// A program that ends when this one does, however that happens.
std::unique_ptr<Program> startBound(std::vector<std::string> command, const Program::Environment& environment = {})
{
    std::vector<std::string> arguments = {"--pdeathsig", "KILL"};
    arguments.insert(arguments.end(), command.begin(), command.end());
    return std::make_unique<Program>("/usr/bin/setpriv", arguments, environment);
}

} // namespace

TestBus::TestBus()
{
    writeFile(folder_ / "bus.conf", configurationIn(folder_.path()));
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    daemon_ = startBound({"/usr/bin/dbus-daemon", "--nofork", "--nosyslog",
                          "--config-file=" + (folder_ / "bus.conf").native(),
                          "--print-address=" + std::to_string(writing.get())});
    writing.reset(); // so that reading ends when the daemon does
    address_ = lineFrom(reading);
    if (address_.empty()) throw std::runtime_error("no bus: " + daemon_->errors());
    variable_ = std::make_unique<ScopedEnvironment>("DBUS_SESSION_BUS_ADDRESS", address_);
}

void TestBus::freeze() const
{
    daemon_->signal(SIGSTOP);
}

TestKeyring::TestKeyring(const TestBus& bus) : bus_(bus)
{
    writeFile(home_ / "password", "test");
    const std::string home = home_.path().native();
    const std::string command =
        "unset DISPLAY WAYLAND_DISPLAY; exec /usr/bin/gnome-keyring-daemon --foreground --unlock "
        "--components=secrets < '" +
        home + "/password'";
    daemon_ = startBound({"/bin/sh", "-c", command},
                         {{"HOME", home}, {"XDG_RUNTIME_DIR", home}, {"XDG_DATA_HOME", home + "/data"}});
    BusConnection(bus.address()).waitForName("org.freedesktop.secrets");
}

void TestKeyring::lock() const
{
    BusConnection(bus_.address()).lockSecrets("/org/freedesktop/secrets/aliases/default");
}

} // namespace vorn::testing
