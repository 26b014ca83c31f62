#pragma once

#include "VornMacCore/Wire/LinkingRecords.h"

#include <string>
#include <string_view>

namespace vorn {

/// The session that this Mac holds for the linked user. Kept as one piece of JSON, whose keys are the fields' names.
struct StoredSession {
    std::string token;        ///< the access token, sent as "Bearer …": a secret
    std::string refreshToken; ///< buys the next pair of tokens, once: a secret
    std::string userId;
    std::string displayName;

    StoredSession() = default;
    StoredSession(std::string token, std::string refreshToken, std::string userId, std::string displayName);
    /// From what an approved link hands over.
    explicit StoredSession(const DesktopSession& session);

    /// Throws `UndecodableJSON`, for a missing key too.
    static StoredSession fromJSON(std::string_view text);
    /// Throws `UnencodableJSON`.
    std::string toJSON() const;

    bool operator==(const StoredSession&) const = default;
};

} // namespace vorn
