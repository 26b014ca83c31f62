#include "Platform/Base/Dates.h"
#include "Platform/Base/Owned.h"
#include "Platform/Base/SystemFacts.h"
#include "Platform/Base/Text.h"

#include <array>
#include <utility>

#include <unicode/udat.h>
#include <unicode/uloc.h>
#include <unicode/ustring.h>

namespace vorn {
namespace {

using Format = Owned<UDateFormat, udat_close>;

/// Null when ICU fails. An unknown zone reads as UTC, an unknown language as ICU's root locale.
Format openFormat(UDateFormatStyle time, UDateFormatStyle day, const std::string& language, const std::string& zone)
{
    std::array<char, ULOC_FULLNAME_CAPACITY> locale{};
    UErrorCode status = U_ZERO_ERROR;
    uloc_forLanguageTag(language.c_str(), locale.data(), locale.size(), nullptr, &status);
    std::array<UChar, 128> id{};
    std::int32_t length = 0;
    u_strFromUTF8(id.data(), id.size(), &length, zone.c_str(), -1, &status);
    Format format(udat_open(time, day, locale.data(), id.data(), length, nullptr, 0, &status));
    return U_SUCCESS(status) != 0 ? std::move(format) : nullptr;
}

Format usersFormat(UDateFormatStyle time, UDateFormatStyle day)
{
    Format format = openFormat(time, day, dateLocaleIdentifier(), timeZoneIdentifier());
    return format ? std::move(format) : openFormat(time, day, "en-US", "Etc/UTC");
}

/// Empty without a format.
std::string written(const Format& format, Instant instant)
{
    if (!format) return {};
    std::array<UChar, 128> characters{};
    UErrorCode status = U_ZERO_ERROR;
    const auto milliseconds = static_cast<UDate>(instant.time_since_epoch().count());
    udat_format(format.get(), milliseconds, characters.data(), characters.size(), nullptr, &status);
    std::array<char, 512> text{};
    u_strToUTF8(text.data(), text.size(), nullptr, characters.data(), -1, &status);
    return text.data();
}

constexpr std::size_t dateLength = 10; // characters of an internet date-time
constexpr std::size_t timeLength = 8;

} // namespace

struct LocalDates::Formats {
    Format day = usersFormat(UDAT_NONE, UDAT_MEDIUM);
    Format time = usersFormat(UDAT_MEDIUM, UDAT_NONE);
};

LocalDates::LocalDates() : formats_(std::make_unique<Formats>())
{
}

LocalDates::~LocalDates() = default;
LocalDates::LocalDates(LocalDates&&) noexcept = default;

std::string LocalDates::day(Instant instant) const
{
    const std::string day = written(formats_->day, instant);
    return day.empty() ? internetDateTime(instant).substr(0, dateLength) : day;
}

std::string LocalDates::time(Instant instant) const
{
    const std::string time = written(formats_->time, instant);
    return time.empty() ? internetDateTime(instant).substr(dateLength + 1, timeLength) : time;
}

std::string dayText(Instant instant)
{
    return LocalDates().day(instant);
}

} // namespace vorn
