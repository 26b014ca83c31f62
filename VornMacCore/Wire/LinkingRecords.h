#pragma once

#include "Platform/Base/Dates.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorn {

// Exchanged while a Mac is linked to an account, before there is a session. JSON keys are the fields' names.

/// Sent: describes the computer that asks to be linked, for the phone to show.
struct CreateDeviceLinkRequest {
    std::string deviceName;
    std::string platform;
    std::string appVersion;
    std::optional<std::string> osVersion;
    bool operator==(const CreateDeviceLinkRequest&) const = default;
};

/// Received: one attempt to link this Mac.
struct DeviceLink {
    std::string linkId;
    std::string pollSecret;          ///< known to this Mac alone: proves that the poll comes from the link's creator
    std::string qrPayload;           ///< the text of the QR code that the phone scans
    std::string expiresAt;           ///< time stamp after which the link is no longer valid
    std::int64_t pollIntervalMs = 0; ///< how often to poll, in milliseconds
    bool operator==(const DeviceLink&) const = default;

    /// Returns `expiresAt` as a date; absent if it cannot be read.
    std::optional<Instant> expiresAtDate() const noexcept;
};

/// Sent: asks for a link's state.
struct PollDeviceLinkRequest {
    std::string linkId;
    std::string pollSecret;
    bool operator==(const PollDeviceLinkRequest&) const = default;
};

/// A link's state. On the wire: the names below.
enum class DeviceLinkStatus { pending, scanned, approved, rejected, expired };

/// The status called `name`; `expired` for a name this version does not know, because an unknown state ends the
/// attempt.
DeviceLinkStatus deviceLinkStatus(std::string_view name) noexcept;

struct LinkedUser {
    std::string id;
    std::string displayName;
    bool operator==(const LinkedUser&) const = default;
};

/// Received with an approved link.
struct DesktopSession {
    std::string token; ///< the access token
    std::string refreshToken;
    LinkedUser user;
    bool operator==(const DesktopSession&) const = default;
};

/// Received: the answer to a poll.
struct DeviceLinkPoll {
    DeviceLinkStatus status = DeviceLinkStatus::pending;
    std::optional<DesktopSession> session; ///< present once the link is approved
    bool operator==(const DeviceLinkPoll&) const = default;
};

} // namespace vorn
