#include "tests/support/http/LoopbackServer.h"

#include "tests/support/http/Connection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace vorn::testing {
namespace {

constexpr std::chrono::seconds longestWait(10);

[[noreturn]] void fail(const char* call)
{
    throw std::system_error(errno, std::generic_category(), call);
}

FileDescriptor listeningSocket()
{
    FileDescriptor result(socket(AF_INET, SOCK_STREAM, 0));
    if (!result) fail("socket");
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(result.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) fail("bind");
    if (listen(result.get(), 64) != 0) fail("listen");
    return result;
}

int portOf(const FileDescriptor& socket)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (getsockname(socket.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) fail("getsockname");
    return ntohs(address.sin_port);
}

void prepare(const FileDescriptor& socket)
{
    const int yes = 1;
    setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes); // trickled bytes go out one by one
    fcntl(socket.get(), F_SETFL, O_NONBLOCK);
}

/// For this thread: writing to a closed connection is an error like any other.
void blockBrokenPipeSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

} // namespace

class LoopbackServer::State final : public Connection::Records {
public:
    explicit State(ServerIdentity identity)
        : identity_(std::move(identity)), listener_(listeningSocket()), port_(portOf(listener_))
    {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) fail("pipe");
        stopRead_ = FileDescriptor(ends[0]);
        stopWrite_ = FileDescriptor(ends[1]);
        acceptor_ = std::thread([this] { acceptAll(); });
    }

    ~State() override
    {
        stopWrite_.reset(); // makes the other end readable for every poll
        acceptor_.join();
        for (auto& thread : threads_) thread.join();
        for (const auto& problem : problems_) ADD_FAILURE() << "LoopbackServer: " << problem;
    }
    State(State&&) = delete;

    template <class Predicate>
    bool waitUntil(Predicate predicate)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, longestWait, predicate);
    }

    int port() const { return port_; }
    const char* scheme() const { return identity_ ? "https" : "http"; }

    std::size_t begun(const ReceivedRequest& request) override;
    bool received(std::size_t bytes) override;
    void ended(std::size_t index, const ReceivedRequest& request) override;

    mutable std::mutex mutex; ///< guards the members from here to `keepBodies`, and `problems_`
    std::condition_variable changed;
    std::deque<Handler> scripts;
    std::map<std::size_t, Handler> chosen; ///< for the request under way on each connection
    Responder responder;
    std::function<void(Exchange&)> greeting;
    std::vector<ReceivedRequest> requests;
    std::size_t bodyBytes = 0;
    std::size_t accepted = 0;
    std::size_t open = 0;
    std::size_t underWay = 0;
    std::size_t mostUnderWay = 0;

    bool keepBodies = true;

private:
    void acceptAll();
    void serve(FileDescriptor socket, std::size_t number);
    void serveRequests(Connection& connection);
    void serveOne(Connection& connection);
    void report(const std::string& problem);

    /// Runs `change` on the guarded state, and notifies waiting threads.
    template <class Change>
    auto update(Change change)
    {
        const std::lock_guard lock(mutex);
        changed.notify_all(); // not too early: a woken thread must wait for the lock
        return change();
    }

    ServerIdentity identity_;
    FileDescriptor listener_;
    int port_;
    FileDescriptor stopRead_{-1}, stopWrite_{-1};
    std::thread acceptor_;
    std::vector<std::thread> threads_; ///< the acceptor's own, until it has ended
    std::vector<std::string> problems_;
};

void LoopbackServer::State::acceptAll()
{
    while (true) {
        std::array<pollfd, 2> watched{{{listener_.get(), POLLIN, 0}, {stopRead_.get(), POLLIN, 0}}};
        if (poll(watched.data(), watched.size(), -1) < 0) continue;
        if (watched[1].revents != 0) return;
        FileDescriptor socket(accept(listener_.get(), nullptr, nullptr));
        if (!socket) continue;
        prepare(socket);
        const std::size_t number = update([this] { return ++open, ++accepted; });
        threads_.emplace_back([this, number, held = std::move(socket)]() mutable { serve(std::move(held), number); });
    }
}

void LoopbackServer::State::serve(FileDescriptor socket, std::size_t number)
{
    blockBrokenPipeSignal();
    {
        Connection connection(std::move(socket), identity_, number, stopRead_.get(), *this);
        try {
            serveRequests(connection);
        } catch (const PeerGone&) { // NOLINT(bugprone-empty-catch): that is how connections end
        } catch (const std::exception& error) {
            report(error.what());
        }
        connection.close();
    }
    update([this] { --open; });
}

void LoopbackServer::State::serveRequests(Connection& connection)
{
    if (const auto greet = update([this] { return greeting; })) greet(connection);
    while (connection.isOpen() && connection.bodyIsRead() && connection.readHead()) serveOne(connection);
}

void LoopbackServer::State::serveOne(Connection& connection)
{
    const Handler handler = update([&] { return std::exchange(chosen[connection.request().connection], nullptr); });
    if (handler) {
        handler(connection);
        return;
    }
    connection.readWholeBody();
    const Responder respond = update([this] { return responder; });
    if (!respond) report("nothing prepared for " + connection.request().method + " " + connection.request().target);
    connection.answer(respond ? respond(connection.request()) : Answer{.status = 500});
}

std::size_t LoopbackServer::State::begun(const ReceivedRequest& request)
{
    return update([&] {
        if (!scripts.empty()) {
            chosen[request.connection] = std::move(scripts.front());
            scripts.pop_front();
        }
        requests.push_back(request);
        mostUnderWay = std::max(mostUnderWay, ++underWay);
        return requests.size() - 1;
    });
}

bool LoopbackServer::State::received(std::size_t bytes)
{
    return update([&] {
        bodyBytes += bytes;
        return keepBodies;
    });
}

void LoopbackServer::State::ended(std::size_t index, const ReceivedRequest& request)
{
    update([&] {
        requests[index] = request;
        --underWay;
    });
}

void LoopbackServer::State::report(const std::string& problem)
{
    const std::lock_guard lock(mutex);
    problems_.push_back(problem);
}

LoopbackServer::LoopbackServer(ServerIdentity identity) : state_(std::make_shared<State>(std::move(identity)))
{
}

LoopbackServer::~LoopbackServer() = default;

int LoopbackServer::port() const
{
    return state_->port();
}

std::string LoopbackServer::url(std::string_view path) const
{
    return std::string(state_->scheme()) + "://127.0.0.1:" + std::to_string(port()) + std::string(path);
}

void LoopbackServer::answer(Answer answer)
{
    script([answer = std::move(answer)](Exchange& exchange) {
        exchange.readWholeBody();
        exchange.answer(answer);
    });
}

void LoopbackServer::script(Handler handler)
{
    const std::lock_guard lock(state_->mutex);
    state_->scripts.push_back(std::move(handler));
}

void LoopbackServer::respond(Responder responder)
{
    const std::lock_guard lock(state_->mutex);
    state_->responder = std::move(responder);
}

void LoopbackServer::discardBodies()
{
    const std::lock_guard lock(state_->mutex);
    state_->keepBodies = false;
}

void LoopbackServer::greet(std::function<void(Exchange&)> greeting)
{
    const std::lock_guard lock(state_->mutex);
    state_->greeting = std::move(greeting);
}

std::vector<ReceivedRequest> LoopbackServer::requests() const
{
    const std::lock_guard lock(state_->mutex);
    return state_->requests;
}

std::size_t LoopbackServer::connectionCount() const
{
    const std::lock_guard lock(state_->mutex);
    return state_->accepted;
}

std::size_t LoopbackServer::openConnections() const
{
    const std::lock_guard lock(state_->mutex);
    return state_->open;
}

std::size_t LoopbackServer::mostRequestsAtOnce() const
{
    const std::lock_guard lock(state_->mutex);
    return state_->mostUnderWay;
}

bool LoopbackServer::waitForRequests(std::size_t count) const
{
    return state_->waitUntil([&] { return state_->requests.size() >= count; });
}

bool LoopbackServer::waitForBodyBytes(std::size_t count) const
{
    return state_->waitUntil([&] { return state_->bodyBytes >= count; });
}

bool LoopbackServer::waitForConnections(std::size_t count) const
{
    return state_->waitUntil([&] { return state_->accepted >= count; });
}

bool LoopbackServer::waitUntilAllClosed() const
{
    return state_->waitUntil([&] { return state_->open == 0; });
}

} // namespace vorn::testing
