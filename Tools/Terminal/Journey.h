#pragma once

#include "Platform/Async/Clock.h"
#include "Tools/Terminal/Answers.h"
#include "Tools/Terminal/LinkPrinter.h"
#include "Tools/Terminal/ModelChanges.h"
#include "Tools/Terminal/Terminal.h"
#include "VornMac/Model/AppModel.h"

#include <optional>
#include <string>

namespace vorn {

/// The whole path in a terminal, step by step as the model goes: it tells the user what the model's screens would show,
/// and asks before anything is agreed to or sent.
/// Threads: the model's own. Errors: `CommandFailure` where the path ends without its goal.
class Journey {
public:
    struct Manners {
        bool saysYes = false;    ///< every question is answered yes, without asking
        bool isAttended = false; ///< somebody is there: failures are tried again, and a phone is waited for
        std::optional<TerminalOptions::Background> background{};
    };

    /// All of them must outlive it.
    Journey(AppModel& model, MainContext& context, Clock& clock, const Terminal& terminal, Answers& answers,
            Manners manners);

    /// Until the Mac is linked, and gives the session.
    Async<StoredSession> toSession();
    /// Until the review has ended or takes too long, and gives how the submission stands.
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
    Manners manners_;
    ModelChanges changes_;
    LinkPrinter linkPrinter_;
    std::string lastReview_;
};

} // namespace vorn
