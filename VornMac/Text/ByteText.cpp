#include "VornMac/Text/ByteText.h"

#include <fmt/format.h>

namespace vorn {
namespace {

constexpr ByteUnit single{"bytes", 1};
constexpr ByteUnit thousand{"kB", 1'000};
constexpr ByteUnit million{"MB", 1'000'000};
constexpr std::int64_t roundedToAMillion = 999'950; // smaller sizes read "999.9 kB", not "1000.0 kB"

} // namespace

ByteUnit ByteUnit::fitting(std::int64_t size)
{
    if (size < 1000) return single;
    return size < roundedToAMillion ? thousand : million;
}

std::string ByteUnit::number(std::int64_t size) const
{
    if (bytes <= 1) return std::to_string(size);
    return fmt::format("{:.1f}", static_cast<double>(size) / bytes);
}

std::string bytesText(std::int64_t size)
{
    const ByteUnit unit = ByteUnit::fitting(size);
    return fmt::format("{} {}", unit.number(size), size == 1 ? "byte" : unit.name);
}

std::string partText(std::int64_t part, std::int64_t whole)
{
    return fmt::format("{} of {}", ByteUnit::fitting(whole).number(part), bytesText(whole));
}

} // namespace vorn
