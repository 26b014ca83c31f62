#include "VornSandbox/Service/HTTPFront.h"

#include "VornSandbox/Service/Connections.h"
#include "VornSandbox/Service/Places.h"
#include "VornSandbox/Service/RequestPatience.h"
#include "VornSandbox/Service/ServiceError.h"
#include "VornSandbox/Service/WorkerPool.h"

#include <fmt/format.h>
#include <httplib.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>

namespace vorn::sandbox {
namespace {

using Steady = std::chrono::steady_clock;

/// A page that watches holds a thread, and so does a client that a fault lets hang; the rest must still be served.
constexpr int mostStreams = 24;
constexpr int mostHanging = 24;

/// What a truncated answer announces beyond what it sends.
constexpr std::size_t missingBytes = 100;

/// What is left of a refused body is read away up to here, so that the refusal can be read; beyond, the line is cut.
constexpr std::int64_t mostToDrain = 64LL * 1024 * 1024;

/// A slow client may pause so long within a body; an idle connection is kept so long.
constexpr time_t readTimeoutSeconds = 60;
constexpr time_t keepAliveSeconds = 8;
constexpr std::size_t mostRequestsOnOneConnection = 10'000;

std::string lowerCase(std::string text)
{
    std::ranges::transform(text, text.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return text;
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

/// The body of a request, read away to its end whatever becomes of its bytes: a rest would be taken for a request.
class Body {
public:
    Body(const Call& call, const httplib::ContentReader* reader) : left_(call.hasBody() ? reader : nullptr) {}

    void read(const Call::Sink& sink)
    {
        if (left_ == nullptr) return;
        std::exception_ptr refusal; // kept until the end, for the connection must stay usable
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

    /// Whether nothing is left of it on the connection.
    bool drain(const Call& call)
    {
        if (left_ == nullptr) return true;
        if (call.contentLength().value_or(mostToDrain + 1) > mostToDrain) return false;
        try {
            read([](std::string_view) {});
            return true;
        } catch (const std::exception&) {
            return false; // the connection is cut, which ends whatever it was
        }
    }

    std::int64_t received() const { return received_; }

private:
    const httplib::ContentReader* left_;
    std::int64_t received_ = 0;
};

/// Hands the library's work, a connection each, to threads of ours.
class Workers : public httplib::TaskQueue {
    /// Whether the work is taken, from 0.15 of the library on; nothing before.
    using IsTaken = decltype(std::declval<httplib::TaskQueue&>().enqueue({}));

public:
    Workers(std::size_t mostThreads, std::function<void()> onCrowded) : pool_(mostThreads, std::move(onCrowded)) {}
    IsTaken enqueue(std::function<void()> job) override
    {
        pool_.run(std::move(job));
        return static_cast<IsTaken>(true);
    }
    void shutdown() override { pool_.finish(); }

private:
    WorkerPool pool_;
};

/// The library lets five connections wait to be accepted, and the system drops what comes beyond: ten requests at once
/// would have some of them wait a second for their next try.
class Listener : public httplib::Server {
public:
    void letMoreWait() { ::listen(svr_sock_, SOMAXCONN); }
};

bool mayHaveBody(int status)
{
    return status != 204 && status != 304;
}

/// The connection ends before all that is announced was sent.
void fillShort(httplib::Response& response, const Answer& answer)
{
    response.set_content_provider(answer.body.size() + missingBytes, answer.contentType,
                                  [body = answer.body](std::size_t, std::size_t, httplib::DataSink& sink) {
                                      sink.write(body.data(), body.size());
                                      return false;
                                  });
}

} // namespace

class HTTPFront::Server {
public:
    Server(int port, Serve serve, RequestLog& log, const Limits& limits);
    ~Server();
    Server(Server&&) = delete;

    int port() const { return port_; }

private:
    void configure();
    void serve(const httplib::Request& request, httplib::Response& response, const httplib::ContentReader* reader);
    Answer answerTo(const Call& call);
    void hang(int remotePort);
    void fill(httplib::Response& response, Answer&& answer);
    void cutLateRequests();
    void refuse(const httplib::Request& request, httplib::Response& response);

    Serve serve_;
    RequestLog& log_;
    Listener http_;
    int port_ = -1;
    Connections connections_{-1}; // until the port is known
    Limits limits_;
    RequestPatience patience_{connections_, limits_.requestHead};
    std::atomic<bool> stopping_ = false;
    std::mutex stopMutex_; // for `stopped_`
    std::condition_variable stopped_;
    Places streams_{mostStreams};
    Places hanging_{mostHanging};
    std::thread thread_;
    std::thread patienceThread_;
};

HTTPFront::Server::Server(int port, Serve serve, RequestLog& log, const Limits& limits)
    : serve_(std::move(serve)), log_(log), limits_(limits)
{
    configure();
    port_ = port == 0 ? http_.bind_to_any_port("127.0.0.1") : (http_.bind_to_port("127.0.0.1", port) ? port : -1);
    if (port_ < 0) throw std::runtime_error(fmt::format("cannot listen on 127.0.0.1:{}", port));
    http_.letMoreWait();
    connections_ = Connections(port_);
    thread_ = std::thread([this] { http_.listen_after_bind(); });
    while (!http_.is_running()) std::this_thread::yield();
    patienceThread_ = std::thread([this] { cutLateRequests(); });
}

HTTPFront::Server::~Server()
{
    {
        const std::lock_guard lock(stopMutex_);
        stopping_ = true;
    }
    stopped_.notify_all();
    patienceThread_.join();
    http_.stop();
    while (http_.is_running()) { // a connection may have been accepted after the last cut
        connections_.cutAll();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    thread_.join();
}

void HTTPFront::Server::configure()
{
    http_.new_task_queue = [this] {
        return new Workers(limits_.threads, [this] { patience_.makeRoom(Steady::now()); });
    };
    http_.set_logger([this](const httplib::Request& request, const httplib::Response&) {
        patience_.answerLeft(request.remote_port, Steady::now()); // called once the answer is out
    });
    http_.set_tcp_nodelay(true); // otherwise every answer waits for the acknowledgement of its head
    http_.set_read_timeout(readTimeoutSeconds);
    http_.set_keep_alive_timeout(keepAliveSeconds);
    http_.set_keep_alive_max_count(mostRequestsOnOneConnection);
    // The library shares the port with whoever asks for it unless told otherwise.
    http_.set_socket_options([](int socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
    const auto plain = [this](const httplib::Request& request, httplib::Response& response) {
        serve(request, response, nullptr);
    };
    const auto withBody = [this](const httplib::Request& request, httplib::Response& response,
                                 const httplib::ContentReader& reader) { serve(request, response, &reader); };
    http_.Get(".*", plain).Options(".*", plain);
    http_.Post(".*", withBody).Put(".*", withBody).Patch(".*", withBody).Delete(".*", withBody);
    http_.set_error_handler(httplib::Server::Handler(
        [this](const httplib::Request& request, httplib::Response& response) { refuse(request, response); }));
}

/// What the library itself refuses comes here without a body.
void HTTPFront::Server::refuse(const httplib::Request& request, httplib::Response& response)
{
    if (!response.body.empty()) return;
    response.set_content(errorAnswer(response.status, "bad_request", "That is no request this service takes.").body,
                         "application/json");
    log_.request({.method = request.method, .path = request.path, .outcome = std::to_string(response.status)});
}

void HTTPFront::Server::serve(const httplib::Request& request, httplib::Response& response,
                              const httplib::ContentReader* reader)
{
    const auto begun = Steady::now();
    patience_.requestCame(request.remote_port);
    Call call{.method = request.method,
              .path = request.path,
              .query = {},
              .headers = {},
              .readBody = {},
              .servicePort = port_};
    for (const auto& [name, value] : request.params) call.query.emplace(name, value);
    for (const auto& [name, value] : request.headers) {
        if (!isAddedByLibrary(name)) call.headers.emplace(lowerCase(name), value);
    }
    Body body(call, reader);
    call.readBody = [&](const Call::Sink& sink) { body.read(sink); };
    Answer answer = answerTo(call);
    call.readBody = nullptr;

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
    if (!usable || answer.instead == Answer::Instead::hang) connections_.cut(request.remote_port);
    fill(response, std::move(answer));
}

Answer HTTPFront::Server::answerTo(const Call& call)
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

void HTTPFront::Server::hang(int remotePort)
{
    const auto place = hanging_.take();
    while (place && !stopping_ && !connections_.isClosedByClient(remotePort)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}

void HTTPFront::Server::fill(httplib::Response& response, Answer&& answer)
{
    const auto place = answer.stream ? streams_.take() : nullptr;
    if (answer.stream && !place) {
        answer = errorAnswer(503, "too_many_watchers", "Too many pages are watching.");
    }
    response.status = answer.status;
    for (const auto& [name, value] : answer.headers) response.set_header(name, value);
    if (answer.instead == Answer::Instead::truncate) return fillShort(response, answer);
    if (!answer.stream) {
        if (mayHaveBody(answer.status)) response.set_content(answer.body, answer.contentType);
        return;
    }
    response.set_chunked_content_provider(
        answer.contentType, [this, place, next = std::move(answer.stream)](std::size_t, httplib::DataSink& sink) {
            const auto write = [&](std::string_view piece) { return sink.write(piece.data(), piece.size()); };
            if (!stopping_ && next(write)) return true;
            sink.done();
            return true;
        });
}

void HTTPFront::Server::cutLateRequests()
{
    const auto glance =
        std::clamp(limits_.requestHead / 4, std::chrono::milliseconds(10), std::chrono::milliseconds(1000));
    std::unique_lock lock(stopMutex_);
    while (!stopped_.wait_for(lock, glance, [this] { return stopping_.load(); })) patience_.cutLate(Steady::now());
}

HTTPFront::HTTPFront(int port, Serve serve, RequestLog& log, const Limits& limits)
    : server_(std::make_unique<Server>(port, std::move(serve), log, limits))
{
}

HTTPFront::~HTTPFront() = default;

int HTTPFront::port() const
{
    return server_->port();
}

std::string HTTPFront::baseURL() const
{
    return serviceURL(port());
}

} // namespace vorn::sandbox
