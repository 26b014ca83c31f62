#include "Platform/HTTP/CurlFailure.h"

#include <cerrno>

namespace vorn {
namespace {

URLError::Code connectFailureOf(int systemError) noexcept
{
    switch (systemError) {
    case ENETUNREACH:
    case ENETDOWN:
    case EADDRNOTAVAIL: // no local address to connect from
        return URLError::Code::notConnectedToInternet;
    case ETIMEDOUT: return URLError::Code::timedOut;
    default: return URLError::Code::cannotConnectToHost; // EHOSTUNREACH too: there is a network, but no such host
    }
}

} // namespace

URLError::Code failureOf(CURLcode result, int systemError, bool onNetwork) noexcept
{
    using Code = URLError::Code;
    switch (result) {
    case CURLE_URL_MALFORMAT: return Code::badURL;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY: return onNetwork ? Code::cannotFindHost : Code::notConnectedToInternet;
    case CURLE_COULDNT_CONNECT: return connectFailureOf(systemError);
    case CURLE_PROXY: return Code::cannotConnectToHost;
    case CURLE_OPERATION_TIMEDOUT: return Code::timedOut;
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_SEND_FAIL_REWIND: return Code::networkConnectionLost;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CRL_BADFILE:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_SSL_ISSUER_ERROR: return Code::secureConnectionFailed;
    case CURLE_UNSUPPORTED_PROTOCOL: // the answer has no status line; other schemes never get here
    case CURLE_WEIRD_SERVER_REPLY: return Code::badServerResponse;
    case CURLE_FILESIZE_EXCEEDED:
    case CURLE_OUT_OF_MEMORY: // libcurl's code for an endless header line
        return Code::dataLengthExceedsMaximum;
    default: return Code::unknown;
    }
}

} // namespace vorn
