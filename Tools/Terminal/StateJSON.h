#pragma once

#include "VornMacCore/Wire/QuestAvailability.h"
#include "VornMacCore/Wire/SubmissionRecords.h"

#include <optional>
#include <string>

#include <nlohmann/json.hpp>

/// The JSON that `vorn-terminal` prints in more than one place. Threads: any.
namespace vorn {

using StateJSON = nlohmann::ordered_json; ///< keeps the order of its keys

/// "cooldown", "lastRejected", "available" or "inReview".
std::string availabilityName(const QuestAvailability& availability);

StateJSON jsonOf(const SubmissionStatus& submission);

template <class T>
StateJSON orNull(const std::optional<T>& value)
{
    return value ? StateJSON(*value) : StateJSON(nullptr);
}

} // namespace vorn
