#pragma once

#include "VornMac/Text/ErrorText.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <variant>

namespace vorn {

/// How far the work of a step has come. Values: two are equal when they show the same.
namespace phase {

/// A phase's name, as programs are told it.
template <std::size_t size>
struct Name {
    char text[size]{}; // NOLINT(modernize-avoid-c-arrays): a template argument
    // NOLINTNEXTLINE(modernize-avoid-c-arrays,google-explicit-constructor,hicpp-explicit-conversions): a literal is one
    consteval Name(const char (&literal)[size]) { std::copy_n(literal, size, text); }
};

/// A case that carries nothing but its name.
template <Name phaseName>
struct Plain {
    static constexpr const char* name() { return phaseName.text; }
    bool operator==(const Plain&) const = default;
};

/// The work stopped. Only linking is tried again by itself.
using Failed = ErrorText;

using Idle = Plain<"idle">;       ///< nothing was begun, or the session has ended since
using Loading = Plain<"loading">; ///< the service is asked, or the chat is read

using Waiting = Plain<"waiting">; ///< `Loading`, for so long that the user wonders
using Refused = Plain<"refused">; ///< the keychain did not let the program in

using Showing = Plain<"showing">;   ///< the code waits for the phone
using Scanned = Plain<"scanned">;   ///< the phone has read the code; the user has to confirm there
using Rejected = Plain<"rejected">; ///< the phone declined; a new code follows

using Unavailable = Plain<"unavailable">;     ///< there is no such quest for this user
using NotConfigured = Plain<"notConfigured">; ///< the service does not say whom the chat is with
using NotFound = Plain<"notFound">;           ///< there is no message of that chat on this Mac
using Found = Plain<"found">;

using Preparing = Plain<"preparing">; ///< the archive is being packed
using Finishing = Plain<"finishing">; ///< everything is sent; the service has to acknowledge it
struct Uploading {
    double fraction = 0; ///< 0…1 of the archive's bytes
    bool operator==(const Uploading&) const = default;
};

struct Saved {
    std::string name; ///< of the file
    bool operator==(const Saved&) const = default;
};

} // namespace phase

/// Of reading the stored session.
using RestorePhase = std::variant<phase::Idle, phase::Loading, phase::Waiting, phase::Refused>;
using LinkPhase = std::variant<phase::Loading, phase::Showing, phase::Scanned, phase::Rejected, phase::Failed>;
using ScanPhase = std::variant<phase::Idle, phase::Loading, phase::Unavailable, phase::NotConfigured, phase::NotFound,
                               phase::Found, phase::Failed>;
using UploadPhase = std::variant<phase::Idle, phase::Preparing, phase::Uploading, phase::Finishing, phase::Failed>;
/// Of saving a copy of the archive for the user.
using CopyPhase = std::variant<phase::Idle, phase::Preparing, phase::Saved, phase::Failed>;

} // namespace vorn
