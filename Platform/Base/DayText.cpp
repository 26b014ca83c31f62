#include "Platform/Base/Dates.h"
#include "Platform/Base/Owned.h"
#include "Platform/Base/SystemFacts.h"
#include "Platform/Base/Text.h"

#include <array>

#include <unicode/udat.h>
#include <unicode/uloc.h>
#include <unicode/ustring.h>

namespace vorn {
namespace {

using Format = Owned<UDateFormat, udat_close>;

/// Null for a zone or a language that ICU does not know.
Format dayFormat(const std::string& language, const std::string& zone)
{
    std::array<char, ULOC_FULLNAME_CAPACITY> locale{};
    UErrorCode status = U_ZERO_ERROR;
    uloc_forLanguageTag(language.c_str(), locale.data(), locale.size(), nullptr, &status);
    std::array<UChar, 128> id{};
    std::int32_t length = 0;
    u_strFromUTF8(id.data(), id.size(), &length, zone.c_str(), -1, &status);
    Format format(udat_open(UDAT_NONE, UDAT_MEDIUM, locale.data(), id.data(), length, nullptr, 0, &status));
    return U_SUCCESS(status) != 0 ? std::move(format) : nullptr;
}

} // namespace

std::string dayText(Instant instant)
{
    Format format = dayFormat(localeIdentifier(), timeZoneIdentifier());
    if (!format) format = dayFormat("en-US", "Etc/UTC");
    if (!format) return internetDateTime(instant).substr(0, 10);
    std::array<UChar, 128> day{};
    UErrorCode status = U_ZERO_ERROR;
    const auto milliseconds = static_cast<UDate>(instant.time_since_epoch().count());
    udat_format(format.get(), milliseconds, day.data(), day.size(), nullptr, &status);
    std::array<char, 512> text{};
    u_strToUTF8(text.data(), text.size(), nullptr, day.data(), -1, &status);
    return text.data();
}

} // namespace vorn
