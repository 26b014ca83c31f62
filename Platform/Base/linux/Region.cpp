#include "Platform/Base/SystemFacts.h"

#include <cstdlib>
#include <ctime>
#include <memory>
#include <mutex>
#include <string_view>

#include <fmt/format.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

namespace vorn {
namespace {

bool isZone(const icu::UnicodeString& name)
{
    icu::UnicodeString canonical;
    UBool isSystemZone = false;
    UErrorCode status = U_ZERO_ERROR;
    icu::TimeZone::getCanonicalID(name, canonical, isSystemZone, status);
    return U_SUCCESS(status) && isSystemZone;
}

std::string utf8(const icu::UnicodeString& text)
{
    std::string result;
    return text.toUTF8String(result);
}

/// Names a zone by its offset alone. In these names, positive offsets are west of Greenwich.
std::string zoneAtOffset(long secondsWest)
{
    constexpr long hour = 3600;
    const long hoursWest = secondsWest / hour;
    const bool hasName = secondsWest % hour == 0 && hoursWest != 0 && hoursWest >= -14 && hoursWest <= 12;
    return hasName ? fmt::format("Etc/GMT{:+}", hoursWest) : "Etc/UTC";
}

/// The zone named by `value` of `TZ`: a name, possibly after a colon, the path of a zone's file, or a rule
/// ("CET-1CEST"), which yields the zone of its standard time.
std::string zoneOfEnvironment(std::string_view value)
{
    if (value.starts_with(':')) value.remove_prefix(1);
    for (const std::string_view folder : {"/usr/share/zoneinfo/", "posix/"})
        if (value.starts_with(folder)) value.remove_prefix(folder.size());
    const auto name = icu::UnicodeString::fromUTF8(icu::StringPiece(value.data(), static_cast<int>(value.size())));
    if (isZone(name)) return std::string(value);
    tzset();
    return zoneAtOffset(timezone);
}

std::string zoneOfSystem()
{
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
    icu::UnicodeString name;
    if (zone && isZone(zone->getID(name))) return utf8(name);
    return zone ? zoneAtOffset(-zone->getRawOffset() / 1000) : "Etc/UTC";
}

} // namespace

std::string timeZoneIdentifier()
{
    static std::mutex mutex; // ICU's detection of the system's zone writes to static memory
    const std::lock_guard lock(mutex);
    const char* chosen = std::getenv("TZ");
    return chosen != nullptr ? zoneOfEnvironment(chosen) : zoneOfSystem();
}

namespace {

/// The language tag that the environment sets for `category`.
std::string localeOf(const char* category)
{
    for (const char* name : {"LC_ALL", category, "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') return languageTag(value); // empty counts as not set
    }
    return languageTag("C");
}

} // namespace

std::string localeIdentifier()
{
    return localeOf("LC_MESSAGES");
}

std::string dateLocaleIdentifier()
{
    return localeOf("LC_TIME");
}

} // namespace vorn
