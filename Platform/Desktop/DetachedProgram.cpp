#include "Platform/Desktop/DetachedProgram.h"

#include "Platform/Desktop/InheritNothing.h"

#include <cerrno>
#include <csignal>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/wait.h>

extern char** environ; // NOLINT(readability-redundant-declaration): not every system's headers declare it

namespace vorn {
namespace {

/// Owns the attributes with which a program is spawned.
class SpawnPlan {
public:
    SpawnPlan()
    {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
        posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
        for (const int stream : {1, 2}) posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0);
        short flags = POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
        inheritNothing(actions, flags);
        posix_spawnattr_setflags(&attributes, flags);
        setSignals();
    }
    ~SpawnPlan()
    {
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
    }
    SpawnPlan(SpawnPlan&&) = delete;

    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};

private:
    /// Resets signals: this process blocks and ignores some, which a browser must not inherit.
    void setSignals()
    {
        sigset_t blocked{};
        sigemptyset(&blocked);
        posix_spawnattr_setsigmask(&attributes, &blocked);
        sigset_t reset{};
        sigemptyset(&reset);
        for (const int number : {SIGPIPE, SIGXFSZ, SIGCHLD}) sigaddset(&reset, number);
        posix_spawnattr_setsigdefault(&attributes, &reset);
    }
};

pid_t start(std::string program, std::vector<std::string> arguments)
{
    std::vector<char*> pointers{program.data()};
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const SpawnPlan plan;
    pid_t process = -1;
    const int code = posix_spawnp(&process, program.c_str(), &plan.actions, &plan.attributes, pointers.data(), environ);
    if (code != 0) throw std::system_error(code, std::generic_category(), "cannot start a program");
    return process;
}

std::optional<int> endOf(pid_t process)
{
    int status = 0;
    while (waitpid(process, &status, 0) < 0) {
        if (errno != EINTR) return std::nullopt;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

DetachedProgram::DetachedProgram(const std::string& program, std::vector<std::string> arguments)
{
    std::promise<std::optional<int>> end;
    end_ = end.get_future().share();
    const pid_t process = start(program, std::move(arguments));
    // The thread owns all it uses, as it may outlive this object and still run while the process ends.
    std::thread([process, told = std::move(end)]() mutable { told.set_value(endOf(process)); }).detach();
}

std::optional<int> DetachedProgram::waitForEnd(std::chrono::milliseconds limit) const
{
    return end_.wait_for(limit) == std::future_status::ready ? end_.get() : std::nullopt;
}

} // namespace vorn
