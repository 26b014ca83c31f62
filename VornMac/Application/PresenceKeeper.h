#pragma once

#include "Platform/Desktop/DesktopPresence.h"
#include "VornMac/Model/AppModel.h"

#include <functional>
#include <optional>

#include <QObject>

namespace vorn {

/// Keeps what the desktop shows of the application outside its window true to the model, and tells a user who looks
/// elsewhere how the review ended (`PresenceRules`). Threads: the model's.
class PresenceKeeper final : public QObject {
public:
    /// What it needs of the window.
    struct Window {
        std::function<bool()> isActive;
        std::function<bool()> reducesMotion;
        std::function<void()> askForAttention;
    };

    /// `model` and `presence` outlive this object.
    PresenceKeeper(AppModel& model, DesktopPresence& presence, Window window);

    /// Takes back what the user was told: call it when the window has become the active one.
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
