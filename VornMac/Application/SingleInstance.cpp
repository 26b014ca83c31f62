#include "VornMac/Application/SingleInstance.h"

#include "VornMac/Application/LocalSocket.h"
#include "VornMac/Application/RuntimeFolder.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr auto betweenTries = 10ms;
constexpr char answer = '!';

/// Asks the instance that listens at `socket` to come to the front, and returns whether it did before `end`. One that
/// is quitting closes the connection.
bool tell(const std::filesystem::path& socket, std::chrono::steady_clock::time_point end)
{
    const FileDescriptor connection = connectTo(socket);
    char got = 0;
    return connection && waitToRead(connection, end) && read(connection.get(), &got, 1) == 1 && got == answer;
}

} // namespace

SingleInstance::SingleInstance(MainContext& context, std::function<void()> onSecondStart, const Rendezvous& rendezvous,
                               const Log& log)
    : context_(context), onSecondStart_(std::make_shared<std::function<void()>>(std::move(onSecondStart)))
{
    std::signal(SIGPIPE, SIG_IGN); // a second start that has stopped waiting must not end this process
    try {
        start_ = meet(runtimeFolder(), rendezvous);
    } catch (const std::system_error& error) {
        lock_.reset();
        log.error("single instance not guarded: " + error.code().message());
    }
}

SingleInstance::~SingleInstance()
{
    if (!thread_.joinable()) return;
    endIn_.reset();
    thread_.join();
    unlink(socket_.c_str()); // while the lock is held: after that, the path belongs to the next instance
}

SingleInstance::Start SingleInstance::meet(const std::filesystem::path& folder, const Rendezvous& rendezvous)
{
    const auto end = std::chrono::steady_clock::now() + rendezvous.patience;
    while (true) {
        if (takeLock(folder / (rendezvous.name + ".lock"))) {
            listen(folder / (rendezvous.name + ".socket"));
            return Start::first;
        }
        if (tell(folder / (rendezvous.name + ".socket"), end)) return Start::told;
        if (std::chrono::steady_clock::now() >= end) return Start::silent;
        std::this_thread::sleep_for(betweenTries); // the other one is starting or quitting
    }
}

bool SingleInstance::takeLock(const std::filesystem::path& path)
{
    lock_ = FileDescriptor(open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!lock_) throw std::system_error(errno, std::generic_category(), "cannot open the lock");
    if (flock(lock_.get(), LOCK_EX | LOCK_NB) == 0) return true;
    if (errno != EWOULDBLOCK && errno != EINTR) throw std::system_error(errno, std::generic_category(), "cannot lock");
    lock_.reset();
    return false;
}

void SingleInstance::listen(const std::filesystem::path& path)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::system_error(errno, std::generic_category(), "cannot make a pipe");
    endOut_ = FileDescriptor(ends[0]);
    endIn_ = FileDescriptor(ends[1]);
    for (const int number : ends) fcntl(number, F_SETFD, FD_CLOEXEC);
    listener_ = listenAt(path);
    socket_ = path;
    thread_ = std::thread([this] { answerUntilTheEnd(); });
}

void SingleInstance::answerUntilTheEnd()
{
    std::array<pollfd, 2> wanted{};
    wanted[0] = {.fd = listener_.get(), .events = POLLIN, .revents = 0};
    wanted[1] = {.fd = endOut_.get(), .events = POLLIN, .revents = 0};
    while (true) {
        if (poll(wanted.data(), wanted.size(), -1) < 0) continue; // interrupted
        if (wanted[1].revents != 0) return;
        auto connection = std::make_shared<FileDescriptor>(acceptFrom(listener_));
        if (*connection) pass(std::move(connection));
    }
}

/// `onSecondStart_` is destroyed with this object: a second start still waiting then finds its connection closed.
void SingleInstance::pass(std::shared_ptr<FileDescriptor> connection)
{
    context_.post([weak = std::weak_ptr(onSecondStart_), connection = std::move(connection)] {
        if (const auto onSecondStart = weak.lock()) {
            (*onSecondStart)();
            [[maybe_unused]] const auto written = write(connection->get(), &answer, 1);
        }
    });
}

} // namespace vorn
