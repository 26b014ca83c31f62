#pragma once

#include "VornMac/Text/ErrorText.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <variant>

namespace vorn {

/// How far a step's work has come. Values: equal if they show the same.
namespace phase {

/// A phase's name for programs.
template <std::size_t size>
struct Name {
    char text[size]{}; // NOLINT(modernize-avoid-c-arrays): a template argument
    // NOLINTNEXTLINE(modernize-avoid-c-arrays,google-explicit-constructor,hicpp-explicit-conversions): takes a literal
    consteval Name(const char (&literal)[size]) { std::copy_n(literal, size, text); }
};

/// A phase that has nothing but its name.
template <Name phaseName>
struct Plain {
    static constexpr const char* name() { return phaseName.text; }
    bool operator==(const Plain&) const = default;
};

/// The work has failed. Only linking tries again by itself.
using Failed = ErrorText;

using Idle = Plain<"idle">;       ///< nothing is under way: not begun, done, or the session has ended
using Loading = Plain<"loading">; ///< waits for the service, or reads the chat or the keychain

using Waiting = Plain<"waiting">; ///< `Loading` for so long that the user must be told
using Refused = Plain<"refused">; ///< the keychain refused access

using Showing = Plain<"showing">;   ///< the code waits for the phone
using Scanned = Plain<"scanned">;   ///< the phone has read the code; the user must confirm there
using Rejected = Plain<"rejected">; ///< the phone declined; a new code follows

using Unavailable = Plain<"unavailable">;     ///< the service has switched the quest off
using NotConfigured = Plain<"notConfigured">; ///< the service does not name the assistant's handles
using NotFound = Plain<"notFound">;           ///< this Mac has no message of that chat
using Found = Plain<"found">;

using Preparing = Plain<"preparing">; ///< the archive is being packed
using Finishing = Plain<"finishing">; ///< everything is sent; the service must acknowledge it
struct Uploading {
    double fraction = 0; ///< 0…1 of the archive's bytes
    bool operator==(const Uploading&) const = default;
};

struct Saved {
    std::string name; ///< of the file
    bool operator==(const Saved&) const = default;
};

} // namespace phase

/// Reading the stored session.
using RestorePhase = std::variant<phase::Idle, phase::Loading, phase::Waiting, phase::Refused>;
using LinkPhase = std::variant<phase::Loading, phase::Showing, phase::Scanned, phase::Rejected, phase::Failed>;
using ScanPhase = std::variant<phase::Idle, phase::Loading, phase::Unavailable, phase::NotConfigured, phase::NotFound,
                               phase::Found, phase::Failed>;
using UploadPhase = std::variant<phase::Idle, phase::Preparing, phase::Uploading, phase::Finishing, phase::Failed>;
/// Saving a copy of the archive for the user.
using CopyPhase = std::variant<phase::Idle, phase::Preparing, phase::Saved, phase::Failed>;

} // namespace vorn
