#include "Tools/Terminal/Pager.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

extern char** environ; // NOLINT(readability-redundant-declaration): not every system's headers declare it

namespace vorn {
namespace {

constexpr const char* usual = "less";

bool isInPath(const char* program)
{
    const char* path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0) return true;
    }
    return false;
}

/// Starts `command` in a shell, with no signal blocked, SIGPIPE at its default, and `input` as standard input.
pid_t spawnShell(const std::string& command, int input)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t set;
    sigemptyset(&set);
    posix_spawnattr_setsigmask(&attributes, &set);
    sigaddset(&set, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &set);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    std::string shell = "sh";
    std::string option = "-c";
    std::string text = command;
    const std::array arguments{shell.data(), option.data(), text.data(), static_cast<char*>(nullptr)};
    pid_t process = -1;
    const int failure = posix_spawn(&process, "/bin/sh", &actions, &attributes, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    return failure == 0 ? process : -1;
}

} // namespace

/// Nothing if standard output is not a terminal, or `PAGER` is empty, or unset and there is no less.
std::optional<std::string> Pager::commandForUser()
{
    if (isatty(STDOUT_FILENO) == 0) return std::nullopt;
    if (const char* chosen = std::getenv("PAGER")) return *chosen == '\0' ? std::nullopt : std::optional(chosen);
    return isInPath(usual) ? std::optional(usual) : std::nullopt;
}

Pager::Pager(const std::optional<std::string>& command)
{
    if (!command) return;
    // Text that fits is shown without waiting, and searches stay out of less's history.
    setenv("LESS", "F", 0);
    setenv("LESSHISTFILE", "-", 0);
    start(*command);
}

void Pager::start(const std::string& command)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return;
    const FileDescriptor output(ends[0]);
    FileDescriptor input(ends[1]);
    for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
    process_ = spawnShell(command, output.get());
    if (process_ > 0) input_ = std::move(input);
}

bool Pager::write(std::string_view text)
{
    if (process_ <= 0) {
        failed_ = failed_ || std::fwrite(text.data(), 1, text.size(), stdout) != text.size();
        return !failed_;
    }
    while (!text.empty() && input_) {
        const ssize_t count = ::write(input_.get(), text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            failed_ = errno != EPIPE; // the user has left
            input_.reset();
            break;
        }
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return static_cast<bool>(input_);
}

bool Pager::finish()
{
    if (process_ <= 0) return std::fflush(stdout) == 0 && !failed_;
    input_.reset();
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    constexpr int notFound = 127; // a shell's status for a missing command
    const bool isMissing = WIFEXITED(status) && WEXITSTATUS(status) == notFound;
    return !failed_ && !isMissing;
}

} // namespace vorn
