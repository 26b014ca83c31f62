#pragma once

#include <string>

namespace vorn {

/// The state of a reward during an upload and its review, shown by the symbol on its card.
enum class RewardStanding { packing, sending, notSent, checking, personChecking, paid, refused, stopped };

/// The same with the text beside the symbol. A value.
struct RewardStatus {
    RewardStanding standing = RewardStanding::packing;
    std::string text{};
    bool operator==(const RewardStatus&) const = default;
};

} // namespace vorn
