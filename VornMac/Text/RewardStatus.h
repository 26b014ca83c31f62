#pragma once

#include <string>

namespace vorn {

/// How a reward stands while an upload and its review go on, which the symbol on its card says.
enum class RewardStanding { packing, sending, notSent, checking, personChecking, paid, refused, stopped };

/// The same with the words beside the symbol. A value.
struct RewardStatus {
    RewardStanding standing = RewardStanding::packing;
    std::string text{};
    bool operator==(const RewardStatus&) const = default;
};

} // namespace vorn
