#pragma once

#include "Platform/Async/Suspend.h"
#include "Platform/HTTP/BodyReader.h"
#include "Platform/HTTP/CurlHandle.h"
#include "Platform/HTTP/HTTPSession.h"
#include "Platform/HTTP/IncomingAnswer.h"
#include "Platform/HTTP/ProgressCallback.h"
#include "Platform/HTTP/RequestConnection.h"
#include "Platform/HTTP/StallWatch.h"
#include "Platform/HTTP/URLError.h"

#include <cstddef>
#include <exception>
#include <optional>
#include <span>
#include <string>

#include <curl/curl.h>

namespace vorn {

/// One request under way: a handle of libcurl, whose callbacks lead to the parts below. Threads: the session's own,
/// except for the constructor and `abandon`.
class Transfer {
public:
    /// `proxy` is as `configure` takes it.
    Transfer(HTTPRequest request, std::optional<std::string> proxy, Resume<HTTPResponse> resume);
    ~Transfer();
    Transfer(Transfer&&) = delete;

    /// The answer is no longer awaited. Waits for an `onBodyProgress` that is running; after this it is never called.
    /// Threads: any.
    void abandon() noexcept { progress_.disconnect(); }
    bool isAbandoned() const noexcept { return progress_.isDisconnected(); }

    /// Makes the handle ready to go; `options` and `sockets` outlive the transfer. Throws `URLError`.
    void prepare(const HTTPSession::Options& options, OpenSockets& sockets);
    CURL* handle() const noexcept { return handle_.get(); }
    /// When to ask `isStalled` again.
    StallWatch::Time nextLook() const noexcept { return stall_.nextLook(); }
    /// Whether nothing has moved for the request's `inactivityLimit`.
    bool isStalled(StallWatch::Time now) noexcept { return stall_.isStalled(connection_.socket(), now); }
    /// Lets libcurl ask for the body again where it was paused.
    void resumeBody() noexcept;

    // To end the transfer; its handle must not be in a multi handle any more.

    /// Resumes the coroutine with the answer, or with what went wrong.
    void finish(CURLcode result);
    void fail(URLError::Code code);
    /// Ends the coroutine's wait as cancelled, if it still waits.
    void drop();

private:
    void setCallbacks(OpenSockets& sockets);

    std::size_t readBody(std::span<std::byte> into) noexcept;
    bool beginRequest(int localPort, const char* peer, int peerPort) noexcept;
    bool hasUnsentBody() const noexcept;
    bool takeLateRefusal();
    URLError::Code reasonOf(CURLcode result) const noexcept;
    void failWith(std::exception_ptr error);
    void letGo() noexcept;

    static std::size_t onRead(char* to, std::size_t size, std::size_t count, void* self) noexcept;
    static std::size_t onHeader(char* line, std::size_t size, std::size_t count, void* answer) noexcept;
    static std::size_t onBody(char* bytes, std::size_t size, std::size_t count, void* answer) noexcept;
    static int onProgress(void* self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent) noexcept;
    static int onRequest(void* self, char* peer, char*, int peerPort, int localPort) noexcept;
    static curl_socket_t onOpen(void* connection, curlsocktype purpose, curl_sockaddr* address) noexcept;
    static int onClose(void* sockets, curl_socket_t socket) noexcept;

    HTTPRequest request_;
    std::optional<std::string> proxy_;
    Resume<HTTPResponse> resume_;
    ProgressCallback progress_;
    BodyReader body_;
    IncomingAnswer answer_;
    RequestConnection connection_;
    StallWatch stall_;
    const HTTPSession::Options* options_ = nullptr;
    bool paused_ = false; ///< libcurl was told to ask for the body later
    CurlHeaders headers_; ///< outlive the handle
    CurlHandle handle_;
};

} // namespace vorn
