#include "Platform/HTTP/Transfer.h"

#include "Platform/Base/CancelFlag.h"
#include "Platform/HTTP/CurlFailure.h"
#include "Platform/HTTP/NetworkState.h"
#include "Platform/HTTP/OpenSockets.h"

#include <algorithm>
#include <exception>
#include <fcntl.h>
#include <sys/socket.h>

namespace vorn {
namespace {

constexpr std::size_t largestAnswer = 16 * 1024 * 1024;

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

void Transfer::prepare(OpenSockets& sockets, Time now)
{
    sockets_ = &sockets;
    lastMove_ = nextLook_ = now;
    handle_.reset(curl_easy_init());
    if (!handle_) throw URLError(URLError::Code::unknown);
    set(handle_.get(), CURLOPT_PRIVATE, this);
    headers_ = configure(handle_.get(), request_);
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
        bodyRead_ += static_cast<std::int64_t>(taken);
        return taken;
    } catch (...) {
        bodyFailure_ = std::current_exception();
        return CURL_READFUNC_ABORT;
    }
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

int Transfer::takeProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent) noexcept
{
    if (sent > 0) static_cast<Transfer*>(self)->report(sent);
    return 0;
}

int Transfer::beforeRequest(void* self, char*, char*, int, int localPort) noexcept
{
    return static_cast<Transfer*>(self)->beginRequest(localPort) ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
}

/// libcurl sends a request again when the kept-alive connection it used dies before an answer. Nobody knows whether the
/// first one was carried out, so there is no second: neither on another old connection (here) nor on a new one
/// (`openSocket`).
bool Transfer::beginRequest(int localPort) noexcept
{
    if (begun_) {
        secondTry_ = true;
        return false;
    }
    begun_ = true;
    socket_ = duplicateOf(sockets_->find(localPort));
    traffic_ = trafficOf(socket_.get());
    lastMove_ = std::chrono::steady_clock::now();
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
    const SocketTraffic traffic = trafficOf(socket_.get());
    if (traffic != traffic_) lastMove_ = now;
    traffic_ = traffic;
    const auto limit = request_.inactivityLimit;
    // Often enough to know when the silence began, to a sixteenth of the limit.
    nextLook_ = std::min(now + limit / 16 + std::chrono::milliseconds(1), lastMove_ + limit);
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
/// also when our next bytes ran into the cut before libcurl read it: then it waits in the socket. Behind TLS it cannot
/// be read any more; there only the order in which libcurl works, which reads before it sends, finds it.
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
    const bool isPlain = !has(head_.headers(), "Transfer-Encoding");
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
    const bool cut = result == CURLE_SEND_ERROR || result == CURLE_RECV_ERROR || result == CURLE_PARTIAL_FILE;
    if (result == CURLE_OK || (cut && takeLateRefusal())) {
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
