#pragma once

#include "tests/support/TemporaryFolder.h"

#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace vorn::testing {

class PseudoTerminal;

/// A program, started with arguments; its output is kept. The destructor kills it unless its end was waited for.
class Program {
public:
    using Environment = std::vector<std::pair<std::string, std::string>>;

    /// `environment` is added to the test's own.
    Program(const std::string& path, std::vector<std::string> arguments, const Environment& environment = {});
    /// The same in `terminal`, which shows what the program prints; the program leads a session of its own.
    Program(const PseudoTerminal& terminal, const std::string& path, std::vector<std::string> arguments,
            const Environment& environment = {});
    ~Program();
    Program(Program&&) = delete;

    void signal(int number) const;

    /// Sends SIGTERM and waits for the program's end, unless its end was waited for already: a program that is killed,
    /// as by the destructor, cannot clean up.
    void terminate();

    /// Waits for its end and returns its exit code; -1 when a signal ended it.
    int exitCode();

    /// Its output so far.
    std::string output() const { return readFile(prints_ / "out"); }
    std::string errors() const { return readFile(prints_ / "err"); }

private:
    void start(const std::string& path, std::vector<std::string> arguments, const Environment& environment,
               const PseudoTerminal* terminal);

    TemporaryFolder prints_;
    pid_t process_ = -1;
};

} // namespace vorn::testing
