#pragma once

#include "tests/support/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <csignal>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace vorn::testing {

/// Lets other programs run until `condition` holds; throws `std::runtime_error` after 30 seconds.
void waitUntil(const std::function<bool()>& condition, const std::string& what);

/// Starts applications of one simulated user: no screen, no bus, settings of their own.
class ApplicationFixture {
public:
    ApplicationFixture();

    /// The whole application with its service at `url`. `added` overrides the fixture's environment.
    std::unique_ptr<Program> start(const std::string& url, std::vector<std::string> arguments = {},
                                   const Program::Environment& added = {}) const;
    /// Starts it as the system does: without a terminal, as a child of process 1. Returns its process ID; nothing if
    /// another process adopts orphans.
    std::optional<pid_t> open(const std::string& url, std::vector<std::string> arguments) const;
    /// What the application that `open` started last has printed on standard error.
    std::string errorsOfOpened() const;
    /// The application with a window as `qml` describes it.
    std::unique_ptr<Program> startWith(const std::string& qml, std::vector<std::string> arguments = {},
                                       const Program::Environment& added = {}) const;

    /// Waits until `program` has printed `line`.
    static void waitForLine(const Program& program, const std::string& line);

    /// The names in the temporary directory, except the sanitizers' files.
    std::vector<std::string> leftovers() const;

private:
    Program::Environment environment(const Program::Environment& added = {}) const;

    TemporaryFolder temporary_, runtime_, configuration_, sources_;
};

/// The local service as a program of its own.
class ServiceProgram {
public:
    ServiceProgram();
    ~ServiceProgram() { program_.terminate(); }
    ServiceProgram(ServiceProgram&&) = delete;

    const std::string& url() const { return url_; }
    /// Waits until the service has logged `text`.
    void waitFor(const std::string& text) const;
    /// From now on, accepts connections and never answers.
    void freeze() const { program_.signal(SIGSTOP); }

private:
    Program program_;
    std::string url_;
};

} // namespace vorn::testing
