#pragma once

#include "Platform/Async/Clock.h"
#include "Tools/Terminal/Answers.h"
#include "Tools/Terminal/LinkPrinter.h"
#include "Tools/Terminal/ModelChanges.h"
#include "Tools/Terminal/Terminal.h"
#include "Tools/Terminal/TerminalOptions.h"
#include "VornMac/Model/AppModel.h"

#include <string>

namespace vorn {

/// The whole path in a terminal, following the model step by step: shows what the model's screens would show, and asks
/// before anything is agreed to or sent. Threads: the model's own. Errors: `CommandFailure` if the path ends without
/// reaching its goal.
class Journey {
public:
    /// `isAttended` means that a user is watching: failures can then be retried, and linking waits for a phone. All
    /// references must outlive it.
    Journey(AppModel& model, MainContext& context, Clock& clock, const Terminal& terminal, Answers& answers,
            const TerminalOptions& options, bool isAttended);

    /// Runs until the Mac is linked and returns the session.
    Async<StoredSession> toSession();
    /// Runs until the review has ended or takes too long, and returns the submission's status.
    Async<SubmissionStatus> toReward();

private:
    /// Each of these shows its step until the model goes to another.
    Async<> showStep(Step step);
    Async<> link();
    Async<> consent();
    Async<> access();
    Async<> find();
    Async<> upload();
    Async<> review();

    Async<> offerUpload();
    Async<bool> confirms(std::string question);
    Async<> waitForQuest();
    void say(const std::vector<std::string>& lines) const;
    void tellReview();
    void tellOfTheSessionsEnd() const;

    AppModel& model_;
    MainContext& context_;
    Clock& clock_;
    const Terminal& terminal_;
    Answers& answers_;
    const TerminalOptions& options_;
    bool isAttended_;
    ModelChanges changes_;
    LinkPrinter linkPrinter_;
    std::string lastReview_;
};

} // namespace vorn
