#pragma once

#include "VornMacCore/Wire/LinkingRecords.h"

#include <string>
#include <string_view>

namespace vorn {

/// The session of the linked user on this Mac. Kept as JSON, whose keys are the fields' names.
struct StoredSession {
    std::string token;        ///< the access token, sent as "Bearer …": a secret
    std::string refreshToken; ///< exchanged for the next pair of tokens, once: a secret
    std::string userId;
    std::string displayName;

    StoredSession() = default;
    StoredSession(std::string token, std::string refreshToken, std::string userId, std::string displayName);
    /// From the session that comes with an approved link.
    explicit StoredSession(const DesktopSession& session);

    /// Throws `UndecodableJSON`, also for a missing key.
    static StoredSession fromJSON(std::string_view text);
    /// Throws `UnencodableJSON`.
    std::string toJSON() const;

    bool operator==(const StoredSession&) const = default;
};

} // namespace vorn
