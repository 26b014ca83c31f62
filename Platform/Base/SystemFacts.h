#pragma once

#include <string>
#include <string_view>

namespace vorn {

/// A system's version number, such as 14.5.0.
struct SystemVersion {
    int major = 0;
    int minor = 0;
    int patch = 0;
    bool operator==(const SystemVersion&) const = default;
};

/// The running system's version: the product's on macOS, the kernel's elsewhere.
SystemVersion systemVersion();

/// What exports and the service are told: "macOS 14.5"; a patch number is written only above 0.
std::string systemText(const SystemVersion& system);

/// Reads up to three numbers between points; what follows them is left aside, what is missing is 0.
SystemVersion parseSystemVersion(std::string_view text);

/// The name that the user gave this computer, else the one it has in the network; empty when there is none.
std::string computerName();

/// The current time zone by its IANA name, such as "Europe/Berlin". `TZ` counts for more than the system's setting; for
/// a zone that has no name it is one with its offset, else "Etc/UTC". Threads: any.
std::string timeZoneIdentifier();

/// The user's language and region as a BCP 47 tag, such as "en-US". Elsewhere than on macOS the environment says it
/// (`LC_ALL`, `LC_MESSAGES`, `LANG`, in this order). Threads: any.
std::string localeIdentifier();

/// The BCP 47 tag of a locale's name, with its parts joined by "_" or "-" and an ICU or POSIX tail ("de_DE.UTF-8@euro",
/// "en_US@rg=gbzzzz"). The neutral locale of C programs, whose words are American English, and names that make no
/// sense are "en-US".
std::string languageTag(std::string_view localeName);

} // namespace vorn
