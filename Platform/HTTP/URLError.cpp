#include "Platform/HTTP/URLError.h"

namespace vorn {

const char* URLError::what() const noexcept
{
    switch (code_) {
    case Code::unknown: break;
    case Code::badURL: return "bad URL";
    case Code::unsupportedURL: return "unsupported URL";
    case Code::cannotFindHost: return "A server with the specified hostname could not be found.";
    case Code::cannotConnectToHost: return "Could not connect to the server.";
    case Code::networkConnectionLost: return "The network connection was lost.";
    case Code::notConnectedToInternet: return "The Internet connection appears to be offline.";
    case Code::timedOut: return "The request timed out.";
    case Code::secureConnectionFailed:
        return "An SSL error has occurred and a secure connection to the server cannot be made.";
    case Code::badServerResponse: return "There was a bad response from the server.";
    case Code::dataLengthExceedsMaximum: return "The answer of the server is too large.";
    case Code::requestBodyStreamExhausted: return "The body of the request could not be read.";
    }
    return "An unknown network error occurred.";
}

} // namespace vorn
