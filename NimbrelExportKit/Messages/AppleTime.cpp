#include "NimbrelExportKit/Messages/AppleTime.h"

namespace vorn::AppleTime {

std::optional<double> unixSeconds(std::int64_t messagesDate) noexcept
{
    constexpr std::int64_t lastSecondsStamp = 1'000'000'000'000;
    if (messagesDate == 0) return std::nullopt;
    const bool isNanoseconds = messagesDate < -lastSecondsStamp || messagesDate > lastSecondsStamp;
    const auto value = static_cast<double>(messagesDate);
    return (isNanoseconds ? value / 1e9 : value) + referenceOffset;
}

std::optional<Date> date(std::int64_t messagesDate) noexcept
{
    const auto seconds = unixSeconds(messagesDate);
    if (!seconds) return std::nullopt;
    return Date(Date::duration(*seconds));
}

} // namespace vorn::AppleTime
