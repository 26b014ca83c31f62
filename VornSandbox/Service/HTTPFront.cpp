#include "VornSandbox/Service/HTTPFront.h"

#include "Platform/Base/ASCII.h"
#include "Platform/Base/FileDescriptor.h"

#include <fmt/format.h>
#include <httplib.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <exception>
#include <filesystem>
#include <future>
#include <list>
#include <stdexcept>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace vorn::sandbox {
namespace {

using Steady = std::chrono::steady_clock;

constexpr std::size_t longestLogged = 300;

/// How many bytes a truncated answer announces beyond those it sends.
constexpr std::size_t missingBytes = 100;

/// The rest of a refused body is drained up to this size, so that the client can read the refusal; if more is left, the
/// connection is cut.
constexpr std::int64_t mostToDrain = 64LL * 1024 * 1024;

constexpr std::size_t mostRequestsOnOneConnection = 10'000;

/// The client chooses paths and header names: they must not forge log lines or control a terminal. `first` is the
/// lowest character that is kept.
std::string printable(std::string_view text, char first)
{
    std::string result;
    for (const char c : text.substr(0, longestLogged)) {
        const bool plain = c >= first && c < 0x7f;
        result += plain ? std::string(1, c) : fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
    return result;
}

/// The library adds the addresses of both ends to the headers.
bool isAddedByLibrary(const std::string& name)
{
    return name == "REMOTE_ADDR" || name == "REMOTE_PORT" || name == "LOCAL_ADDR" || name == "LOCAL_PORT";
}

Answer errorAnswer(int status, const std::string& code, const std::string& message)
{
    return {.status = status, .body = nlohmann::json{{"message", message}, {"code", code}}.dump()};
}

template <class Ask>
int portOf(int descriptor, Ask ask)
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    if (ask(descriptor, reinterpret_cast<sockaddr*>(&address), &length) != 0) return -1;
    return address.sin_family == AF_INET ? ntohs(address.sin_port) : -1;
}

/// Calls `visit` with each connection that the server at `localPort` has accepted. The library does not expose them, so
/// they are found among the process's descriptors. `visit` gets a duplicate: the library may close its own descriptor
/// at any time, and whatever is opened next may reuse the number.
void visitConnections(int localPort, const std::function<void(FileDescriptor connection, int remotePort)>& visit)
{
    std::error_code ignored; // descriptors come and go meanwhile
    for (std::filesystem::directory_iterator entry("/dev/fd", ignored), end; entry != end; entry.increment(ignored)) {
        const std::string name = entry->path().filename().string();
        int number = -1;
        std::from_chars(name.data(), name.data() + name.size(), number);
        if (number < 0 || portOf(number, getsockname) != localPort) continue;
        FileDescriptor held(fcntl(number, F_DUPFD_CLOEXEC, 0));
        const int remotePort = portOf(held.get(), getpeername);
        if (portOf(held.get(), getsockname) == localPort && remotePort > 0) visit(std::move(held), remotePort);
    }
}

/// The body of a request, always drained to its end: leftovers would parse as the next request.
class Body {
public:
    Body(const Call& call, const httplib::ContentReader* reader) : left_(call.hasBody() ? reader : nullptr) {}

    void read(const Call::Sink& sink)
    {
        if (left_ == nullptr) return;
        std::exception_ptr refusal; // thrown only at the end, so that the connection stays usable
        const auto& reader = *std::exchange(left_, nullptr);
        const bool whole = reader([&](const char* data, std::size_t length) {
            received_ += static_cast<std::int64_t>(length);
            try {
                if (!refusal) sink(std::string_view(data, length));
            } catch (...) {
                refusal = std::current_exception();
            }
            return !refusal || received_ <= mostToDrain;
        });
        if (refusal) std::rethrow_exception(refusal);
        if (!whole) throw ServiceError(400, "broken_body", "The request's body broke off.");
    }

    /// Reads the rest; returns false if some of it may be left on the connection.
    bool drain(const Call& call)
    {
        if (left_ == nullptr) return true;
        if (call.contentLength().value_or(mostToDrain + 1) > mostToDrain) return false;
        try {
            read([](std::string_view) {});
            return true;
        } catch (const std::exception&) {
            return false; // the connection is cut, whatever went wrong
        }
    }

    std::int64_t received() const { return received_; }

private:
    const httplib::ContentReader* left_;
    std::int64_t received_ = 0;
};

/// A thread for each connection: however many clients watch, hang or idle, the next one is served.
class ThreadForEach : public httplib::TaskQueue {
    /// The return type of `enqueue`: whether the work is taken, from 0.15 of the library on; void before.
    using IsTaken = decltype(std::declval<httplib::TaskQueue&>().enqueue({}));

public:
    IsTaken enqueue(std::function<void()> connection) override
    {
        std::erase_if(running_, [](const std::future<void>& one) {
            return one.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        });
        running_.push_back(std::async(std::launch::async, std::move(connection)));
        return static_cast<IsTaken>(true);
    }
    void shutdown() override { running_.clear(); } // waits for each

private:
    std::list<std::future<void>> running_; ///< used by the listening thread alone
};

/// Announces more bytes than are sent before the connection ends.
void fillShort(httplib::Response& response, const Answer& answer)
{
    response.set_content_provider(answer.body.size() + missingBytes, answer.contentType,
                                  [body = answer.body](std::size_t, std::size_t, httplib::DataSink& sink) {
                                      sink.write(body.data(), body.size());
                                      return false;
                                  });
}

} // namespace

void RequestLog::request(const Entry& entry)
{
    line(fmt::format("{} {} {} {}>{} bytes {} ms", printable(entry.method, '!'), printable(entry.path, '!'),
                     entry.outcome, entry.received, entry.sent, entry.took.count()));
}

void RequestLog::warning(std::string_view text)
{
    line(fmt::format("warning: {}", printable(text, ' ')));
}

void RequestLog::line(const std::string& text)
{
    const std::lock_guard lock(mutex_);
    write_(text);
}

/// The library's backlog is five connections, and the system drops those beyond it: of ten simultaneous requests, some
/// would wait a second before they are retried.
class HTTPFront::Listener : public httplib::Server {
public:
    void letMoreWait() { ::listen(svr_sock_, SOMAXCONN); }
};

HTTPFront::HTTPFront(int port, Serve serve, RequestLog& log, const Patience& patience)
    : serve_(std::move(serve)), log_(log), http_(std::make_unique<Listener>())
{
    configure(patience);
    port_ = port == 0 ? http_->bind_to_any_port("127.0.0.1") : (http_->bind_to_port("127.0.0.1", port) ? port : -1);
    if (port_ < 0) throw std::runtime_error(fmt::format("cannot listen on 127.0.0.1:{}", port));
    http_->letMoreWait();
    thread_ = std::thread([this] { http_->listen_after_bind(); });
    while (!http_->is_running()) std::this_thread::yield();
}

HTTPFront::~HTTPFront()
{
    stopping_ = true;
    http_->stop();
    while (http_->is_running()) { // a connection may have been accepted after the last cut
        visitConnections(port_, [](const FileDescriptor& connection, int) { shutdown(connection.get(), SHUT_RDWR); });
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    thread_.join();
}

void HTTPFront::configure(const Patience& patience)
{
    http_->new_task_queue = [] { return new ThreadForEach; };
    http_->set_tcp_nodelay(true); // else every answer waits until its header is acknowledged
    http_->set_read_timeout(patience.within);
    http_->set_keep_alive_timeout(patience.between.count());
    http_->set_keep_alive_max_count(mostRequestsOnOneConnection);
    // Replaces the default SO_REUSEPORT, with which the library would share the port with other processes.
    http_->set_socket_options([](int socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    const auto plain = [this](const httplib::Request& request, httplib::Response& response) {
        handle(request, response, nullptr);
    };
    const auto withBody = [this](const httplib::Request& request, httplib::Response& response,
                                 const httplib::ContentReader& reader) { handle(request, response, &reader); };
    http_->Get(".*", plain).Options(".*", plain);
    http_->Post(".*", withBody).Put(".*", withBody).Patch(".*", withBody).Delete(".*", withBody);
    http_->set_error_handler(httplib::Server::Handler(
        [this](const httplib::Request& request, httplib::Response& response) { refuse(request, response); }));
}

/// Adds a body to a refusal by the library itself, and logs it.
void HTTPFront::refuse(const httplib::Request& request, httplib::Response& response)
{
    if (!response.body.empty()) return;
    response.set_content(errorAnswer(response.status, "bad_request", "This service does not take that request.").body,
                         "application/json");
    log_.request({.method = request.method, .path = request.path, .outcome = std::to_string(response.status)});
}

Call HTTPFront::callOf(const httplib::Request& request) const
{
    Call call{.method = request.method, .path = request.path, .servicePort = port_};
    for (const auto& [name, value] : request.params) call.query.emplace(name, value);
    for (const auto& [name, value] : request.headers) {
        if (!isAddedByLibrary(name)) call.headers.emplace(ascii::lowercased(name), value);
    }
    return call;
}

void HTTPFront::handle(const httplib::Request& request, httplib::Response& response,
                       const httplib::ContentReader* reader)
{
    const auto begun = Steady::now();
    Call call = callOf(request);
    Body body(call, reader);
    call.readBody = [&](const Call::Sink& sink) { body.read(sink); };
    Answer answer = answerTo(call);

    std::string outcome = std::to_string(answer.status);
    const auto sent = static_cast<std::int64_t>(answer.body.size());
    const bool usable = answer.instead != Answer::Instead::drop && body.drain(call);
    if (answer.instead == Answer::Instead::drop) outcome = "dropped";
    if (answer.instead == Answer::Instead::hang) outcome = "left hanging";
    if (answer.instead == Answer::Instead::truncate) outcome += " cut short";
    log_.request({.method = call.method,
                  .path = call.path,
                  .outcome = outcome,
                  .received = body.received(),
                  .sent = sent,
                  .took = std::chrono::duration_cast<std::chrono::milliseconds>(Steady::now() - begun)});
    if (answer.instead == Answer::Instead::hang) hang(request.remote_port);
    if (!usable || answer.instead == Answer::Instead::hang) cut(request.remote_port);
    fill(response, std::move(answer));
}

Answer HTTPFront::answerTo(Call& call)
{
    try {
        return serve_(call);
    } catch (const ServiceError& error) {
        return errorAnswer(error.status(), error.code(), error.what());
    } catch (const std::exception& error) {
        log_.warning(error.what());
        return errorAnswer(500, "internal", "The service failed to answer.");
    }
}

/// Waits until the client hangs up or the service ends; discards what the client sends meanwhile.
void HTTPFront::hang(int remotePort) const
{
    visitConnections(port_, [&](const FileDescriptor& connection, int port) {
        std::array<char, 4096> lost{};
        ssize_t count = port == remotePort ? 1 : 0;
        while (count > 0 || (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR))) {
            count = stopping_ ? 0 : recv(connection.get(), lost.data(), lost.size(), 0);
        }
    });
}

void HTTPFront::cut(int remotePort) const
{
    visitConnections(port_, [&](const FileDescriptor& connection, int port) {
        if (port == remotePort) shutdown(connection.get(), SHUT_RDWR);
    });
}

void HTTPFront::fill(httplib::Response& response, Answer&& answer)
{
    response.status = answer.status;
    for (const auto& [name, value] : answer.headers) response.set_header(name, value);
    if (answer.instead == Answer::Instead::truncate) return fillShort(response, answer);
    if (!answer.stream) {
        const bool mayHaveBody = answer.status != 204 && answer.status != 304;
        if (mayHaveBody) response.set_content(answer.body, answer.contentType);
        return;
    }
    response.set_chunked_content_provider(
        answer.contentType, [this, next = std::move(answer.stream)](std::size_t, httplib::DataSink& sink) {
            const auto write = [&](std::string_view piece) { return sink.write(piece.data(), piece.size()); };
            if (!stopping_ && next(write)) return true;
            sink.done();
            return true;
        });
}

} // namespace vorn::sandbox
