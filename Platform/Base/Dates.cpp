#include "Platform/Base/Dates.h"

#include <cstdint>
#include <ctime>

#include <fmt/format.h>

namespace vorn {
namespace {

using namespace std::chrono;

/// Reads one field after another. Once a field does not match, `atEnd` returns false.
class FieldReader {
public:
    explicit FieldReader(std::string_view text) : rest_(text) {}

    int digits(std::size_t count)
    {
        int value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (rest_.size() <= i || rest_[i] < '0' || rest_[i] > '9') return fail();
            value = value * 10 + (rest_[i] - '0');
        }
        rest_.remove_prefix(count);
        return value;
    }
    char oneOf(std::string_view accepted)
    {
        if (rest_.empty() || accepted.find(rest_.front()) == std::string_view::npos) return static_cast<char>(fail());
        const char found = rest_.front();
        rest_.remove_prefix(1);
        return found;
    }
    bool skip(char wanted)
    {
        if (!rest_.starts_with(wanted)) return false;
        rest_.remove_prefix(1);
        return true;
    }
    /// The digits after a decimal point as milliseconds; further digits are dropped.
    milliseconds fraction()
    {
        std::int64_t value = 0;
        int count = 0;
        for (; !rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9'; rest_.remove_prefix(1), ++count) {
            if (count < 3) value = value * 10 + (rest_.front() - '0');
        }
        if (count == 0) fail();
        for (; count < 3; ++count) value *= 10;
        return milliseconds(value);
    }
    bool atEnd() const { return ok_ && rest_.empty(); }

private:
    int fail()
    {
        ok_ = false;
        return 0;
    }

    std::string_view rest_;
    bool ok_ = true;
};

CalendarTime calendarTime(const std::tm& parts)
{
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

} // namespace

CalendarTime localTime(Instant instant)
{
    const std::time_t seconds = floor<std::chrono::seconds>(instant).time_since_epoch().count();
    std::tm parts{};
    tzset(); // localtime_r need not notice that TZ changed
    localtime_r(&seconds, &parts);
    return calendarTime(parts);
}

std::string internetDateTime(Instant instant)
{
    const std::time_t seconds = floor<std::chrono::seconds>(instant).time_since_epoch().count();
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    const CalendarTime time = calendarTime(parts);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", time.year, time.month, time.day, time.hour, time.minute,
                       time.second);
}

std::optional<Instant> parseInternetDateTime(std::string_view text)
{
    FieldReader fields(text);
    const year theYear(fields.digits(4));
    fields.oneOf("-");
    const month theMonth(static_cast<unsigned>(fields.digits(2)));
    fields.oneOf("-");
    const day theDay(static_cast<unsigned>(fields.digits(2)));
    fields.oneOf("Tt ");
    const int hour = fields.digits(2);
    fields.oneOf(":");
    const int minute = fields.digits(2);
    fields.oneOf(":");
    const int second = fields.digits(2);
    const milliseconds fraction = fields.skip('.') ? fields.fraction() : 0ms;
    minutes offset(0);
    if (const char sign = fields.oneOf("Zz+-"); sign == '+' || sign == '-') {
        const int offsetHours = fields.digits(2);
        fields.oneOf(":");
        const int offsetMinutes = fields.digits(2);
        if (offsetHours > 23 || offsetMinutes > 59) return std::nullopt;
        offset = minutes((sign == '-' ? -1 : 1) * (offsetHours * 60 + offsetMinutes));
    }
    const year_month_day date(theYear, theMonth, theDay);
    // A leap second reads as the second after it, as system clocks count.
    if (!fields.atEnd() || !date.ok() || hour > 23 || minute > 59 || second > 60) return std::nullopt;
    const Instant instant = sys_days(date) + hours(hour) + minutes(minute) + seconds(second) - offset + fraction;
    // An offset may move the instant out of the years 0 to 9999.
    if (instant < sys_days(year(0) / January / 1) || instant >= sys_days(year(10000) / January / 1))
        return std::nullopt;
    return instant;
}

} // namespace vorn
