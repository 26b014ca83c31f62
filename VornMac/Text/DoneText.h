#pragma once

#include "VornMac/Text/RewardStatus.h"
#include "VornMac/Text/ScreenText.h"
#include "VornMacCore/Wire/QuestAvailability.h"
#include "VornMacCore/Wire/QuestRecords.h"
#include "VornMacCore/Wire/SubmissionRecords.h"

#include <optional>
#include <string>
#include <vector>

/// The texts of the done screen: how a review stands, and what it earned. Dates are in the user's zone. Threads: any.
namespace vorn {

/// The facts about the end of an upload.
struct UploadOutcome {
    SubmissionStatus submission;
    std::optional<NimbrelState> nimbrel;           ///< absent until it is known
    std::optional<QuestAvailability> availability; ///< what the quest says about the next upload
};

ScreenText doneText(const UploadOutcome& outcome);

/// The state of the reward for an upload under review.
RewardStatus rewardStatus(const ReviewStatus& review);

/// The review's state, as one line for a terminal. `questReward` stands in for an amount missing from the submission.
std::string reviewLine(const SubmissionStatus& submission, const std::string& questReward);

/// What the quest says about the time after a review: when the user may upload again, if a day is known.
std::vector<std::string> questLines(const UploadOutcome& outcome);

/// A terminal's text when it stops watching a review that goes on.
std::string longReviewText();

/// The outcome of a review, for a user with another window in front: as much of the screen's own text as a notification
/// shows.
struct OutcomeNotice {
    std::string title;
    std::string body;
    bool operator==(const OutcomeNotice&) const = default;
};
OutcomeNotice outcomeNotice(const UploadOutcome& outcome);

inline constexpr const char* openVorn = "Open Vorn"; ///< the label of a click on the notification, where shown

} // namespace vorn
