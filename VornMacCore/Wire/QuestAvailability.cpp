#include "VornMacCore/Wire/QuestAvailability.h"

#include "VornMacCore/Wire/WireDate.h"

namespace vorn {
namespace {

QuestAvailability::State stateOf(const QuestWire& quest, Instant now)
{
    if (quest.status == "submitted") return QuestAvailability::InReview{};
    if (quest.status == "rejected") return QuestAvailability::LastRejected{quest.rejectionReasonKey};
    if (quest.status == "approved") {
        const std::optional<Instant> until = WireDate::parse(quest.availableAt);
        if (until && *until > now) return QuestAvailability::Cooldown{*until};
    }
    return QuestAvailability::Available{};
}

} // namespace

QuestAvailability::QuestAvailability(const QuestWire& quest, Instant now) : state_(stateOf(quest, now))
{
}

} // namespace vorn
