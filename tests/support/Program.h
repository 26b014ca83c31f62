#pragma once

#include "tests/support/TemporaryFolder.h"

#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace vorn::testing {

class PseudoTerminal;

/// A program, started with arguments; its output is kept. Killed if the test forgets it.
class Program {
public:
    using Environment = std::vector<std::pair<std::string, std::string>>;

    /// `environment` is added to the test's own.
    Program(const std::string& path, std::vector<std::string> arguments, const Environment& environment = {});
    /// The same in `terminal`, which shows what it prints, as the leader of a session of its own.
    Program(const PseudoTerminal& terminal, const std::string& path, std::vector<std::string> arguments,
            const Environment& environment = {});
    ~Program();
    Program(Program&&) = delete;

    void signal(int number) const;

    /// Asks it to end and waits until it has, unless it has ended already: a program that is killed, as by the
    /// destructor, cannot clean up.
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
