#pragma once

#include "VornMac/Text/Phases.h"
#include "VornMacCore/Wire/SubmissionRecords.h"

#include <optional>

/// What shows outside the window, as plain functions of the model's state. Threads: any.
namespace vorn::presence {

/// Whether the computer must stay awake: while an archive is being packed, sent or acknowledged.
bool staysAwake(const UploadPhase& phase);

/// The value of the bar on the application's icon, 0…100; absent unless an upload is under way.
std::optional<int> percentOnIcon(const UploadPhase& phase);

/// Whether `now` is an upload that the service has accepted since `before`.
bool isNewSubmission(const std::optional<SubmissionStatus>& before, const std::optional<SubmissionStatus>& now);

/// Whether the review of `now` has ended since `before`.
bool isReviewed(const std::optional<SubmissionStatus>& before, const std::optional<SubmissionStatus>& now);

/// The state of the application's window when a review ends.
struct WindowState {
    bool isWindowActive = false;
    bool reducesMotion = false;
};

/// How the user is notified of the end of a review.
struct Alert {
    bool notifies = false; ///< and asks for attention
    bool sounds = false;   ///< with the notification, or without one
    bool operator==(const Alert&) const = default;
};

/// Only an approval makes a sound. If the window is active, its screen shows the outcome instead of a notification, and
/// with reduced motion there is no sound.
Alert alertFor(const ReviewStatus& outcome, WindowState window);

} // namespace vorn::presence
