#include "Platform/HTTP/Transfer.h"

#include "Platform/Base/CancelFlag.h"
#include "Platform/HTTP/CurlFailure.h"
#include "Platform/HTTP/NetworkState.h"
#include "Platform/HTTP/OpenSockets.h"

#include <algorithm>
#include <exception>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace vorn {
namespace {

constexpr std::size_t largestAnswer = 16 * 1024 * 1024;
/// So late, at most, a transfer times out, whatever its limit.
constexpr std::chrono::milliseconds longestBetweenLooks{250};

FileDescriptor duplicateOf(int socket) noexcept
{
    return FileDescriptor(fcntl(socket, F_DUPFD_CLOEXEC, 0));
}

/// What has arrived and was not read, up to a size that refusals do not reach.
std::string whatIsLeftIn(const FileDescriptor& socket)
{
    std::string bytes(64 * 1024, '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        const auto count = recv(socket.get(), bytes.data() + size, bytes.size() - size, MSG_DONTWAIT);
        if (count <= 0) break;
        size += static_cast<std::size_t>(count);
    }
    bytes.resize(size);
    return bytes;
}

int countOfWhatIsLeftIn(const FileDescriptor& socket) noexcept
{
    int count = 0;
    return ioctl(socket.get(), FIONREAD, &count) == 0 ? count : 0;
}

bool mayHideAnAnswer(CURLcode result) noexcept
{
    return result == CURLE_SEND_ERROR || result == CURLE_RECV_ERROR || result == CURLE_PARTIAL_FILE;
}

} // namespace

Transfer::Transfer(HTTPRequest request, Resume<HTTPResponse> resume)
    : request_(std::move(request)), resume_(std::move(resume))
{
}

Transfer::~Transfer() = default;

void Transfer::abandon() noexcept
{
    const std::lock_guard lock(audience_);
    abandoned_ = true;
}

void Transfer::prepare(const HTTPSession::Options& options, OpenSockets& sockets)
{
    options_ = &options;
    sockets_ = &sockets;
    lastMove_ = nextLook_ = options.now();
    handle_.reset(curl_easy_init());
    if (!handle_) throw URLError(URLError::Code::unknown);
    set(handle_.get(), CURLOPT_PRIVATE, this);
    headers_ = configure(handle_.get(), request_, options.authorities);
    setCallbacks();
}

void Transfer::setCallbacks()
{
    CURL* const handle = handle_.get();
    set(handle, CURLOPT_READFUNCTION, &Transfer::readBody);
    set(handle, CURLOPT_READDATA, this);
    set(handle, CURLOPT_HEADERFUNCTION, &Transfer::takeHeader);
    set(handle, CURLOPT_HEADERDATA, this);
    set(handle, CURLOPT_WRITEFUNCTION, &Transfer::takeBody);
    set(handle, CURLOPT_WRITEDATA, this);
    set(handle, CURLOPT_NOPROGRESS, 0L);
    set(handle, CURLOPT_XFERINFOFUNCTION, &Transfer::takeProgress);
    set(handle, CURLOPT_XFERINFODATA, this);
    set(handle, CURLOPT_PREREQFUNCTION, &Transfer::beforeRequest);
    set(handle, CURLOPT_PREREQDATA, this);
    set(handle, CURLOPT_OPENSOCKETFUNCTION, &Transfer::openSocket);
    set(handle, CURLOPT_OPENSOCKETDATA, this);
    // Not this transfer: the connection lives on, and libcurl remembers what it was opened with.
    set(handle, CURLOPT_CLOSESOCKETFUNCTION, &Transfer::closeSocket);
    set(handle, CURLOPT_CLOSESOCKETDATA, sockets_);
}

std::size_t Transfer::readBody(char* to, std::size_t size, std::size_t count, void* self) noexcept
{
    auto& transfer = *static_cast<Transfer*>(self);
    return transfer.takeNext({reinterpret_cast<std::byte*>(to), size * count});
}

/// libcurl asks until the announced size is reached. A body that gives less would leave the server waiting.
std::size_t Transfer::takeNext(std::span<std::byte> into) noexcept
{
    const std::int64_t left = bodySizeOf(request_) - bodyRead_;
    if (left <= 0) return 0;
    try {
        const auto wanted = std::min<std::int64_t>(left, std::ssize(into));
        const std::size_t taken = request_.body->read(bodyRead_, into.first(static_cast<std::size_t>(wanted)));
        if (taken == 0) throw URLError(URLError::Code::requestBodyStreamExhausted);
        if (answerWaits()) {
            putOff_ = true;
            return CURL_READFUNC_PAUSE;
        }
        bodyRead_ += static_cast<std::int64_t>(taken);
        return taken;
    } catch (...) {
        bodyFailure_ = std::current_exception();
        return CURL_READFUNC_ABORT;
    }
}

/// A server that refuses may cut the connection at once, and sending into the cut would lose what it said. So what has
/// arrived is read first. It need not be an answer: behind TLS there is talk that only libcurl understands.
bool Transfer::answerWaits() noexcept
{
    if (head_.isFinal()) return false;
    const int before = std::exchange(waiting_, countOfWhatIsLeftIn(socket_));
    return waiting_ > 0 && waiting_ != before; // what libcurl leaves lying holds up nothing
}

void Transfer::goOn() noexcept
{
    if (std::exchange(putOff_, false)) curl_easy_pause(handle_.get(), CURLPAUSE_CONT);
}

std::size_t Transfer::takeHeader(char* line, std::size_t size, std::size_t count, void* self) noexcept
{
    auto& transfer = *static_cast<Transfer*>(self);
    if (transfer.head_.take({line, size * count})) return size * count;
    transfer.tooLarge_ = true;
    return 0;
}

std::size_t Transfer::takeBody(char* bytes, std::size_t size, std::size_t count, void* self) noexcept
{
    auto& transfer = *static_cast<Transfer*>(self);
    if (transfer.body_.size() + size * count > largestAnswer) {
        transfer.tooLarge_ = true;
        return 0;
    }
    transfer.body_.append(bytes, size * count);
    return size * count;
}

int Transfer::takeProgress(void* self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent) noexcept
{
    auto& transfer = *static_cast<Transfer*>(self);
    transfer.received_ = received;
    transfer.sent_ = sent;
    if (sent > 0) transfer.report(sent);
    return 0;
}

int Transfer::beforeRequest(void* self, char* peer, char*, int peerPort, int localPort) noexcept
{
    auto& transfer = *static_cast<Transfer*>(self);
    return transfer.beginRequest(localPort, peer, peerPort) ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
}

/// libcurl sends a request again when the kept-alive connection it used dies before an answer. Nobody knows whether the
/// first one was carried out, so there is no second: neither on another old connection (here) nor on a new one
/// (`openSocket`).
bool Transfer::beginRequest(int localPort, const char* peer, int peerPort) noexcept
{
    if (begun_) {
        secondTry_ = true;
        return false;
    }
    begun_ = true;
    const int connection = sockets_->find(localPort, peer, peerPort);
    socket_ = duplicateOf(connection);
    if (request_.body && request_.url.scheme() == "https") sockets_->putRelayBefore(connection);
    movement_ = {.traffic = trafficOf(socket_.get())};
    lastMove_ = options_->now();
    return true;
}

curl_socket_t Transfer::openSocket(void* self, curlsocktype /*purpose*/, curl_sockaddr* address) noexcept
{
    auto& transfer = *static_cast<Transfer*>(self);
    if (transfer.begun_) {
        transfer.secondTry_ = true;
        return CURL_SOCKET_BAD;
    }
    const int result = transfer.sockets_->open(address->family, address->socktype, address->protocol);
    if (result >= 0) transfer.socket_ = duplicateOf(result);
    return result;
}

int Transfer::closeSocket(void* sockets, curl_socket_t socket) noexcept
{
    return static_cast<OpenSockets*>(sockets)->close(socket);
}

bool Transfer::isSilent(Time now) noexcept
{
    if (now < nextLook_) return false;
    const Movement movement{.traffic = trafficOf(socket_.get()), .received = received_, .sent = sent_};
    if (std::exchange(movement_, movement) != movement) lastMove_ = now;
    const auto limit = request_.inactivityLimit;
    // Often enough to know when the silence began: a move counts from the look that finds it.
    const auto untilNext = std::min(limit / 16 + std::chrono::milliseconds(1), longestBetweenLooks);
    nextLook_ = std::min(now + untilNext, lastMove_ + limit);
    return now - lastMove_ >= limit;
}

void Transfer::report(std::int64_t bytesSent) noexcept
{
    const std::lock_guard lock(audience_);
    if (abandoned_ || !request_.onBodyProgress || bytesSent <= reported_) return;
    reported_ = bytesSent;
    request_.onBodyProgress(bytesSent);
}

bool Transfer::hasUnsentBody() const noexcept
{
    curl_off_t sent = 0;
    curl_easy_getinfo(handle_.get(), CURLINFO_SIZE_UPLOAD_T, &sent);
    return sent < bodySizeOf(request_);
}

/// A server that refuses without reading the whole body may cut the connection at once. What it said still counts,
/// also when our next bytes ran into the cut before libcurl read it: then it waits in the socket.
bool Transfer::takeLateRefusal()
{
    if (!hasUnsentBody()) return false;
    if (!head_.isFinal() && request_.url.scheme() == "http") takeLateBytes(whatIsLeftIn(socket_));
    return head_.isFinal() && head_.status() >= 300;
}

void Transfer::takeLateBytes(std::string_view bytes)
{
    while (!head_.isFinal()) {
        const auto end = bytes.find('\n');
        if (end == std::string_view::npos || !head_.take(bytes.substr(0, end + 1))) return;
        bytes.remove_prefix(end + 1);
    }
    const bool isPlain = findHeader(head_.headers(), "Transfer-Encoding") == nullptr;
    if (isPlain) body_ = bytes;
}

URLError::Code Transfer::reasonOf(CURLcode result) const noexcept
{
    if (tooLarge_) return URLError::Code::dataLengthExceedsMaximum;
    if (secondTry_) return URLError::Code::networkConnectionLost;
    long systemError = 0;
    curl_easy_getinfo(handle_.get(), CURLINFO_OS_ERRNO, &systemError);
    return failureOf(result, static_cast<int>(systemError), isOnNetwork());
}

void Transfer::finish(CURLcode result)
{
    if (result == CURLE_OK || (mayHideAnAnswer(result) && takeLateRefusal())) {
        if (!head_.isFinal()) return fail(URLError::Code::networkConnectionLost); // libcurl lets a head break off
        auto answer = takeAnswer();
        letGo();
        resume_(std::move(answer));
    } else if (bodyFailure_) {
        failWith(std::move(bodyFailure_));
    } else {
        fail(reasonOf(result));
    }
}

void Transfer::fail(URLError::Code code)
{
    failWith(std::make_exception_ptr(URLError(code)));
}

void Transfer::drop()
{
    failWith(std::make_exception_ptr(Cancelled()));
}

/// Resets the connection: the system would go on sending what it has taken, long after everybody has left.
void Transfer::failWith(std::exception_ptr error)
{
    if (socket_) resetOnClose(socket_.get());
    letGo();
    resume_.fail(std::move(error));
}

HTTPResponse Transfer::takeAnswer()
{
    return {.status = head_.status(), .headers = std::move(head_.headers()), .body = std::move(body_)};
}

/// Before the coroutine goes on: it may make the next body at once, and two at a time are too many.
void Transfer::letGo() noexcept
{
    abandon();
    handle_.reset();
    socket_.reset();
    request_.body.reset();
    request_.onBodyProgress = nullptr;
}

} // namespace vorn
