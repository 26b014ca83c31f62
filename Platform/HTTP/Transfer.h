#pragma once

#include "Platform/Async/Suspend.h"
#include "Platform/Base/FileDescriptor.h"
#include "Platform/HTTP/AnswerHead.h"
#include "Platform/HTTP/CurlHandle.h"
#include "Platform/HTTP/HTTPSession.h"
#include "Platform/HTTP/SocketTraffic.h"
#include "Platform/HTTP/URLError.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <curl/curl.h>

namespace vorn {

class OpenSockets;

/// One request on its way: a handle of libcurl, and what its callbacks gather. Threads: the session's own, but for the
/// constructor and `abandon`.
class Transfer {
public:
    using Time = std::chrono::steady_clock::time_point;

    Transfer(HTTPRequest request, Resume<HTTPResponse> resume);
    ~Transfer();
    Transfer(Transfer&&) = delete;

    /// Nobody waits for the answer any more: no callback is called once this returns, which takes as long as one that
    /// is running. Any thread.
    void abandon() noexcept;
    bool isAbandoned() const noexcept { return abandoned_; }

    /// Makes the handle ready to go; `options` and `sockets` outlive the transfer's way. Throws `URLError`.
    void prepare(const HTTPSession::Options& options, OpenSockets& sockets);
    CURL* handle() const noexcept { return handle_.get(); }
    /// When to look at the silence again.
    Time nextLook() const noexcept { return nextLook_; }
    /// Whether nothing has moved for the request's limit.
    bool isSilent(Time now) noexcept;
    /// Lets libcurl ask for the body again where `takeNext` has put it off.
    void goOn() noexcept;

    // The end; the handle must not be under way any more.

    /// Gives the coroutine its answer, or what went wrong.
    void finish(CURLcode result);
    void fail(URLError::Code code);
    /// Ends the coroutine's wait as cancelled, if it still waits.
    void drop();

private:
    void setCallbacks();

    std::size_t takeNext(std::span<std::byte> into) noexcept;
    bool answerWaits() noexcept;
    bool beginRequest(int localPort, const char* peer, int peerPort) noexcept;
    void report(std::int64_t bytesSent) noexcept;
    bool hasUnsentBody() const noexcept;
    bool takeLateRefusal();
    void takeLateBytes(std::string_view bytes);
    URLError::Code reasonOf(CURLcode result) const noexcept;
    HTTPResponse takeAnswer();
    void failWith(std::exception_ptr error);
    void letGo() noexcept;

    static std::size_t readBody(char* to, std::size_t size, std::size_t count, void* self) noexcept;
    static std::size_t takeHeader(char* line, std::size_t size, std::size_t count, void* self) noexcept;
    static std::size_t takeBody(char* bytes, std::size_t size, std::size_t count, void* self) noexcept;
    static int takeProgress(void* self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent) noexcept;
    static int beforeRequest(void* self, char* peer, char*, int peerPort, int localPort) noexcept;
    static curl_socket_t openSocket(void* self, curlsocktype purpose, curl_sockaddr* address) noexcept;
    static int closeSocket(void* sockets, curl_socket_t socket) noexcept;

    HTTPRequest request_;
    Resume<HTTPResponse> resume_;
    std::mutex audience_; ///< held while a callback of the request runs
    std::atomic<bool> abandoned_ = false;

    CurlHeaders headers_; ///< outlive the handle
    CurlHandle handle_;
    OpenSockets* sockets_ = nullptr;
    FileDescriptor socket_{-1}; ///< the connection's once more, so that the number cannot become another one's
    bool begun_ = false;        ///< the request has gone out, or is about to
    bool secondTry_ = false;    ///< libcurl wanted to send it again
    bool tooLarge_ = false;
    std::int64_t bodyRead_ = 0;      ///< bytes of the body that libcurl has taken
    std::exception_ptr bodyFailure_; ///< why it got no more
    int waiting_ = 0;                ///< bytes that lay in the socket when the body was last asked for
    bool putOff_ = false;
    std::int64_t reported_ = -1;
    AnswerHead head_;
    std::string body_;

    /// All that tells of a move. Where the system does not count what a connection has moved, libcurl does, though it
    /// takes bytes that wait in the system's buffers for sent.
    struct Movement {
        SocketTraffic traffic;
        std::int64_t received = 0, sent = 0; ///< bytes of bodies, as libcurl counts them

        bool operator==(const Movement&) const = default;
    };

    const HTTPSession::Options* options_ = nullptr;
    Time lastMove_, nextLook_;
    Movement movement_;                    ///< at the last look
    std::int64_t received_ = 0, sent_ = 0; ///< as libcurl said last
};

} // namespace vorn
