#pragma once

#include <string>

namespace vorn {

// Exchanged to renew and to end a session. JSON keys are the fields' names.

/// Sent: trades a refresh token, which works once, for a new pair.
struct RefreshRequest {
    std::string refreshToken;
    bool operator==(const RefreshRequest&) const = default;
};

/// Received: the new pair.
struct TokenPair {
    std::string token; ///< the access token
    std::string refreshToken;
    bool operator==(const TokenPair&) const = default;
};

/// Received: the session has ended.
struct Revoked {
    std::string status;
    bool operator==(const Revoked&) const = default;
};

} // namespace vorn
