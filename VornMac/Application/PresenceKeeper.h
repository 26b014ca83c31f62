#pragma once

#include "Platform/Desktop/DesktopPresence.h"
#include "VornMac/Model/AppModel.h"

#include <functional>
#include <optional>

#include <QObject>

namespace vorn {

/// Keeps what the desktop shows outside the window in step with the model, and notifies the user if a review ends while
/// another window is active (`PresenceRules`). Threads: the model's.
class PresenceKeeper final : public QObject {
public:
    /// What this object needs from the window.
    struct Window {
        std::function<bool()> isActive;
        std::function<bool()> reducesMotion;
        std::function<void()> askForAttention;
    };

    /// `model` and `presence` outlive this object.
    PresenceKeeper(AppModel& model, DesktopPresence& presence, Window window);

    /// Withdraws the notification. Call it when the window has become the active one.
    void withdraw();

private:
    void showUpload();
    void followReview();
    void tellOutcome(const SubmissionStatus& submission);

    AppModel& model_;
    DesktopPresence& presence_;
    Window window_;
    bool isAwake_ = false;
    bool hasNotified_ = false;
    std::optional<int> percent_;
    std::optional<SubmissionStatus> submission_;
};

} // namespace vorn
