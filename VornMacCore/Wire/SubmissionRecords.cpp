#include "VornMacCore/Wire/SubmissionRecords.h"

#include <array>
#include <string_view>
#include <utility>

namespace vorn {
namespace {

ReviewStatus::Kind kindOf(std::string_view word)
{
    using Kind = ReviewStatus::Kind;
    static constexpr std::array<std::pair<std::string_view, Kind>, 4> words{{
        {"review_pending", Kind::reviewPending},
        {"approved", Kind::approved},
        {"rejected", Kind::rejected},
        {"expired", Kind::expired},
    }};
    for (const auto& [known, kind] : words) {
        if (word == known) return kind;
    }
    return Kind::analyzing;
}

} // namespace

ReviewStatus::ReviewStatus(std::string word) : kind_(kindOf(word)), word_(std::move(word))
{
}

bool ReviewStatus::isFinal() const noexcept
{
    return kind_ != Kind::analyzing && kind_ != Kind::reviewPending;
}

} // namespace vorn
