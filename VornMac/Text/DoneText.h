#pragma once

#include "VornMac/Text/RewardStatus.h"
#include "VornMac/Text/ScreenText.h"
#include "VornMacCore/Wire/QuestAvailability.h"
#include "VornMacCore/Wire/QuestRecords.h"
#include "VornMacCore/Wire/SubmissionRecords.h"

#include <optional>
#include <string>
#include <vector>

/// The done screen: how a review stands, and what it earned. Dates are those of the user's zone. Threads: any.
namespace vorn {

/// What the end of an upload is told from.
struct UploadOutcome {
    SubmissionStatus submission;
    std::optional<NimbrelState> nimbrel;           ///< nothing before it is known
    std::optional<QuestAvailability> availability; ///< what the quest says about the next upload
};

ScreenText doneText(const UploadOutcome& outcome);

/// How the reward of an upload stands once it is under review.
RewardStatus rewardStatus(const ReviewStatus& review);

/// How the review stands, as one line of a terminal. `questReward` stands in where the submission names no amount.
std::string reviewLine(const SubmissionStatus& submission, const std::string& questReward);

/// What the quest says of what comes after a review: when the user may make the next upload, where a day is known.
std::vector<std::string> questLines(const UploadOutcome& outcome);

/// What a terminal says when it stops watching a review that goes on.
std::string longReviewText();

/// How a review ended, for a user who looks elsewhere: the words of the screen, as many as a notification shows.
struct OutcomeNotice {
    std::string title;
    std::string body;
    bool operator==(const OutcomeNotice&) const = default;
};
OutcomeNotice outcomeNotice(const UploadOutcome& outcome);

inline constexpr const char* openVorn = "Open Vorn"; ///< what a click on it does, where desktops say that

} // namespace vorn
