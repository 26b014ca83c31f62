#include "tests/support/Program.h"

#include "tests/support/PseudoTerminal.h"

#include <algorithm>
#include <csignal>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace vorn::testing {
namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::string nameOf(const std::string& entry)
{
    return entry.substr(0, entry.find('='));
}

/// Our environment, with `added` replacing entries of that name: of two, some programs take the first, some the last.
std::vector<std::string> environmentWith(const Program::Environment& added)
{
    std::vector<std::string> entries;
    for (const auto& [name, value] : added) entries.push_back(name + "=" + value);
    const auto isAdded = [&](const std::string& entry) {
        return std::any_of(added.begin(), added.end(), [&](const auto& one) { return one.first == nameOf(entry); });
    };
    for (char** entry = environ; *entry != nullptr; ++entry)
        if (!isAdded(*entry)) entries.emplace_back(*entry);
    return entries;
}

} // namespace

Program::Program(const std::string& path, std::vector<std::string> arguments, const Environment& environment)
{
    start(path, std::move(arguments), environment, nullptr);
}

Program::Program(const PseudoTerminal& terminal, const std::string& path, std::vector<std::string> arguments,
                 const Environment& environment)
{
    start(path, std::move(arguments), environment, &terminal);
}

void Program::start(const std::string& path, std::vector<std::string> arguments, const Environment& environment,
                    const PseudoTerminal* terminal)
{
    arguments.insert(arguments.begin(), path);
    std::vector<std::string> entries = environmentWith(environment);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_t attributes{};
    posix_spawnattr_init(&attributes);
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC;
    if (terminal != nullptr) { // the first one that a new session opens controls it
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
        for (const int stream : {0, 1, 2})
            posix_spawn_file_actions_addopen(&actions, stream, terminal->path().c_str(), O_RDWR, 0);
    } else {
        posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, 1, (prints_ / "out").c_str(), flags, 0600);
        posix_spawn_file_actions_addopen(&actions, 2, (prints_ / "err").c_str(), flags, 0600);
    }
    const int result = posix_spawn(&process_, path.c_str(), &actions, &attributes, pointersTo(arguments).data(),
                                   pointersTo(entries).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (result != 0) throw std::runtime_error("cannot start " + path);
}

Program::~Program()
{
    if (process_ < 0) return;
    kill(process_, SIGKILL);
    exitCode();
}

void Program::signal(int number) const
{
    kill(process_, number);
}

void Program::terminate()
{
    if (process_ < 0) return;
    signal(SIGTERM);
    signal(SIGCONT); // it may be stopped
    exitCode();
}

int Program::exitCode()
{
    int status = 0;
    waitpid(std::exchange(process_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace vorn::testing
