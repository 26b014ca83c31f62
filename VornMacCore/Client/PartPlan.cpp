#include "VornMacCore/Client/PartPlan.h"

#include <algorithm>

namespace vorn {

PartPlan::PartPlan(std::int64_t total, std::int64_t part) noexcept
    : totalSize(std::max<std::int64_t>(total, 0)), partSize(std::max<std::int64_t>(part, 1))
{
}

std::int64_t PartPlan::partCount() const noexcept
{
    const std::int64_t whole = totalSize / partSize;
    return std::max<std::int64_t>(whole + (totalSize % partSize == 0 ? 0 : 1), 1);
}

PartPlan::Range PartPlan::range(std::int64_t part) const noexcept
{
    const std::int64_t begin = (part - 1) * partSize;
    return {begin, begin + std::min(partSize, totalSize - begin)};
}

PartPlan::Window PartPlan::window(std::int64_t part) const noexcept
{
    return {part, std::min(partCount() - part + 1, windowSize)};
}

} // namespace vorn
