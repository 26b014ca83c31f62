#pragma once

#include "Platform/Async/MainContext.h"
#include "VornMacCore/Client/VornAPI.h"
#include "tests/Platform/Keychain/TestBus.h"
#include "tests/support/Program.h"
#include "tests/support/PseudoTerminal.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace vorn::testing {

/// Lets other programs run until `condition` holds; throws `std::runtime_error` after 30 seconds.
void waitUntil(const std::function<bool()>& condition, const std::string& what);

/// The local service as a program of its own, on a free port.
class Sandbox {
public:
    /// `options` go to the program.
    explicit Sandbox(const std::vector<std::string>& options = {}, int port = 0);
    ~Sandbox() { program_.terminate(); }
    Sandbox(Sandbox&&) = delete;

    const std::string& url() const { return url_; }
    int port() const;
    std::string log() const { return program_.errors(); }
    void waitForLog(const std::string& line) const;

    // The user's actions on the phone.
    /// Scans a code and returns the link's name.
    std::string scan(const std::string& qrPayload) const;
    void approve(const std::string& linkId) const;
    void decline(const std::string& linkId) const;

    /// Links a Mac as quickly as possible.
    StoredSession link();

private:
    std::string post(const std::string& path, const std::string& json) const;

    Program program_;
    std::string url_;
    MainContext main_;
    std::shared_ptr<HTTPSession> http_;
};

/// The last value of the property `name` that a program with --json has printed.
nlohmann::json lastState(const Program& program, const std::string& name);

/// A terminal window with one program in it.
class TerminalWindow {
public:
    TerminalWindow(const std::string& path, std::vector<std::string> arguments,
                   const Program::Environment& environment);

    /// Types a line and Return.
    void answer(const std::string& line) const { terminal_.type(line + "\r"); }
    void type(std::string_view keys) const { terminal_.type(keys); }
    std::string shown() const { return terminal_.shown(); }
    /// Waits until it shows `text` after what the last such call found.
    void waitFor(const std::string& text);
    void signal(int number) const { program_.signal(number); }
    /// Waits for the program's end.
    int exitCode() { return program_.exitCode(); }

private:
    PseudoTerminal terminal_;
    Program program_;
    std::size_t seen_ = 0;
};

/// Starts `vorn-terminal` in an environment without a keychain.
class TerminalFixture {
public:
    std::unique_ptr<Program> start(const std::string& url, std::vector<std::string> arguments,
                                   const Program::Environment& environment = {}) const;

    /// The same in a terminal window with colours.
    std::unique_ptr<TerminalWindow> startInWindow(const std::string& url, std::vector<std::string> arguments) const;
    std::unique_ptr<TerminalWindow> shareInWindow(const std::string& url, std::vector<std::string> arguments) const;

    /// `start` with `database()` as the Messages database.
    std::unique_ptr<Program> share(const std::string& url, std::vector<std::string> arguments) const;

    /// A short conversation with the assistant, made at the first call.
    std::filesystem::path database() const;
    /// The snapshots and archives in the temporary directory of the programs.
    std::vector<std::string> leftovers() const;

    /// The newest code that the program has shown, as a phone reads it; waits for one other than `seen`.
    static std::string codeOn(const Program& program, const std::string& seen = "");
    static std::string codeOn(const TerminalWindow& window, const std::string& seen = "");
    static void waitForLine(const Program& program, const std::string& text);
    /// The program's errors without the line about a slow keychain: on a busy machine, any keychain may take the half
    /// second after which it is printed.
    static std::string errorsBesideTheWait(const Program& program);

    TemporaryFolder folder;

private:
    /// For the program, when it is built with the thread sanitizer, which cannot see the locks of the keychain's
    /// library.
    ScopedEnvironment noForeignRaces_{"TSAN_OPTIONS", "ignore_noninstrumented_modules=1"};
    ScopedEnvironment noBus_{"DBUS_SESSION_BUS_ADDRESS", ""};
    ScopedEnvironment noRuntime_{"XDG_RUNTIME_DIR", folder.path().string()};
    ScopedEnvironment configuration_{"XDG_CONFIG_HOME", (folder / "config").string()};
    ScopedEnvironment temporary_{"TMPDIR", folder.path().string()};
};

/// The same with a keychain, which may hold a session of the service.
class LinkedFixture : public TerminalFixture {
public:
    LinkedFixture() : bus_(std::make_unique<TestBus>()), keyring_(*bus_) {}

    /// Stores a new session of `sandbox` in the keychain.
    void link(Sandbox& sandbox) const;
    static std::optional<StoredSession> kept();
    void lockKeychain() const { keyring_.lock(); }

private:
    std::unique_ptr<TestBus> bus_;
    TestKeyring keyring_;
};

} // namespace vorn::testing
