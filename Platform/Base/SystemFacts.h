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

/// The system's name and version for exports and the service: "macOS 14.5". Includes a patch number only above 0.
std::string systemText(const SystemVersion& system);

/// Reads up to three numbers separated by dots; missing ones are 0, and what follows is ignored.
SystemVersion parseSystemVersion(std::string_view text);

/// The name that the user gave this computer, else its host name; empty when there is none.
std::string computerName();

/// The current time zone by its IANA name, such as "Europe/Berlin". `TZ` overrides the system's setting. A zone without
/// a name is given by its offset ("Etc/GMT-2"), else "Etc/UTC". Threads: any.
std::string timeZoneIdentifier();

/// The user's language and region as a BCP 47 tag, such as "en-US". Outside macOS, taken from the first of `LC_ALL`,
/// `LC_MESSAGES` and `LANG` that is set. Threads: any.
std::string localeIdentifier();

/// The same for the format of dates, which a user may set separately from the language.
std::string dateLocaleIdentifier();

/// The BCP 47 tag of an ICU or POSIX locale name ("de_DE.UTF-8@euro", "en_US@rg=gbzzzz"). "en-US" for the C locale and
/// for names that cannot be read.
std::string languageTag(std::string_view localeName);

} // namespace vorn
