#include "Platform/HTTP/Transfer.h"

#include "Platform/Base/CancelFlag.h"
#include "Platform/HTTP/CurlFailure.h"
#include "Platform/HTTP/NetworkState.h"
#include "Platform/HTTP/OpenSockets.h"

#include <utility>

namespace vorn {
namespace {

bool mayHideAnAnswer(CURLcode result) noexcept
{
    return result == CURLE_SEND_ERROR || result == CURLE_RECV_ERROR || result == CURLE_PARTIAL_FILE;
}

} // namespace

Transfer::Transfer(HTTPRequest request, std::optional<std::string> proxy, Resume<HTTPResponse> resume)
    : request_(std::move(request)), proxy_(std::move(proxy)), resume_(std::move(resume)),
      progress_(std::exchange(request_.onBodyProgress, nullptr)), body_(request_.body), stall_(request_.inactivityLimit)
{
}

Transfer::~Transfer() = default;

void Transfer::prepare(const HTTPSession::Options& options, OpenSockets& sockets)
{
    options_ = &options;
    connection_.attach(sockets);
    stall_.begin(options.now());
    handle_.reset(curl_easy_init());
    if (!handle_) throw URLError(URLError::Code::unknown);
    set(handle_.get(), CURLOPT_PRIVATE, this);
    headers_ = configure(handle_.get(), request_, proxy_, options.authorities);
    setCallbacks(sockets);
}

void Transfer::setCallbacks(OpenSockets& sockets)
{
    CURL* const handle = handle_.get();
    set(handle, CURLOPT_READFUNCTION, &Transfer::onRead);
    set(handle, CURLOPT_READDATA, this);
    set(handle, CURLOPT_HEADERFUNCTION, &Transfer::onHeader);
    set(handle, CURLOPT_HEADERDATA, &answer_);
    set(handle, CURLOPT_WRITEFUNCTION, &Transfer::onBody);
    set(handle, CURLOPT_WRITEDATA, &answer_);
    set(handle, CURLOPT_NOPROGRESS, 0L);
    set(handle, CURLOPT_XFERINFOFUNCTION, &Transfer::onProgress);
    set(handle, CURLOPT_XFERINFODATA, this);
    set(handle, CURLOPT_PREREQFUNCTION, &Transfer::onRequest);
    set(handle, CURLOPT_PREREQDATA, this);
    set(handle, CURLOPT_OPENSOCKETFUNCTION, &Transfer::onOpen);
    set(handle, CURLOPT_OPENSOCKETDATA, &connection_);
    // Not this transfer: libcurl remembers the pointer for the life of the connection.
    set(handle, CURLOPT_CLOSESOCKETFUNCTION, &Transfer::onClose);
    set(handle, CURLOPT_CLOSESOCKETDATA, &sockets);
}

std::size_t Transfer::onRead(char* to, std::size_t size, std::size_t count, void* self) noexcept
{
    return static_cast<Transfer*>(self)->readBody({reinterpret_cast<std::byte*>(to), size * count});
}

/// Pauses while input is unread: a server that refuses may cut the connection at once, and a write into the cut would
/// lose its answer. The input need not be an answer; within TLS there are other records.
std::size_t Transfer::readBody(std::span<std::byte> into) noexcept
{
    const auto count = body_.peek(into);
    if (!count) return CURL_READFUNC_ABORT;
    if (*count > 0 && !answer_.head().isFinal() && connection_.hasNewInput()) {
        paused_ = true;
        return CURL_READFUNC_PAUSE;
    }
    body_.advance(*count);
    return *count;
}

void Transfer::resumeBody() noexcept
{
    if (std::exchange(paused_, false)) curl_easy_pause(handle_.get(), CURLPAUSE_CONT);
}

std::size_t Transfer::onHeader(char* line, std::size_t size, std::size_t count, void* answer) noexcept
{
    return static_cast<IncomingAnswer*>(answer)->takeHeader({line, size * count}) ? size * count : 0;
}

std::size_t Transfer::onBody(char* bytes, std::size_t size, std::size_t count, void* answer) noexcept
{
    return static_cast<IncomingAnswer*>(answer)->takeBody({bytes, size * count}) ? size * count : 0;
}

int Transfer::onProgress(void* self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent) noexcept
{
    auto& transfer = *static_cast<Transfer*>(self);
    transfer.stall_.note(received, sent);
    if (sent > 0) transfer.progress_.tell(sent);
    return 0;
}

int Transfer::onRequest(void* self, char* peer, char*, int peerPort, int localPort) noexcept
{
    auto& transfer = *static_cast<Transfer*>(self);
    return transfer.beginRequest(localPort, peer, peerPort) ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
}

bool Transfer::beginRequest(int localPort, const char* peer, int peerPort) noexcept
{
    const bool relayed = request_.body && request_.url.scheme() == "https";
    if (!connection_.begin(localPort, peer, peerPort, relayed)) return false;
    stall_.beginRequest(connection_.socket(), options_->now());
    return true;
}

curl_socket_t Transfer::onOpen(void* connection, curlsocktype /*purpose*/, curl_sockaddr* address) noexcept
{
    return static_cast<RequestConnection*>(connection)->open(*address);
}

int Transfer::onClose(void* sockets, curl_socket_t socket) noexcept
{
    return static_cast<OpenSockets*>(sockets)->close(socket);
}

bool Transfer::hasUnsentBody() const noexcept
{
    curl_off_t sent = 0;
    curl_easy_getinfo(handle_.get(), CURLINFO_SIZE_UPLOAD_T, &sent);
    return sent < body_.size();
}

/// A server that refuses without reading the whole body may cut the connection at once. Its answer still counts, even
/// if our next write failed before libcurl read it: then it is still in the socket.
bool Transfer::takeLateRefusal()
{
    if (!hasUnsentBody()) return false;
    if (!answer_.head().isFinal() && request_.url.scheme() == "http") answer_.takeRest(connection_.readRest());
    return answer_.head().isFinal() && answer_.head().status() >= 300;
}

URLError::Code Transfer::reasonOf(CURLcode result) const noexcept
{
    if (answer_.isTooLarge()) return URLError::Code::dataLengthExceedsMaximum;
    if (connection_.wasTriedAgain()) return URLError::Code::networkConnectionLost;
    long systemError = 0;
    curl_easy_getinfo(handle_.get(), CURLINFO_OS_ERRNO, &systemError);
    return failureOf(result, static_cast<int>(systemError), isOnNetwork());
}

void Transfer::finish(CURLcode result)
{
    if (result == CURLE_OK || (mayHideAnAnswer(result) && takeLateRefusal())) {
        if (!answer_.head().isFinal()) // libcurl accepts a truncated head
            return fail(URLError::Code::networkConnectionLost);
        letGo();
        resume_(answer_.release());
    } else if (auto failure = body_.takeFailure()) {
        failWith(std::move(failure));
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

void Transfer::failWith(std::exception_ptr error)
{
    connection_.resetOnClose();
    letGo();
    resume_.fail(std::move(error));
}

/// Called before the coroutine resumes: it may create the next body at once, and two would take too much memory; and
/// after a sign-out no header here may still hold the token.
void Transfer::letGo() noexcept
{
    progress_.destroy();
    handle_.reset();
    headers_ = {};
    connection_.close();
    request_.headers.clear();
    request_.body.reset();
    body_.close();
}

} // namespace vorn
