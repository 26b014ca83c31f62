#include "Tools/Terminal/Journey.h"

#include "Platform/Base/PrintableText.h"
#include "Tools/Terminal/ChatLines.h"
#include "Tools/Terminal/CommandFailure.h"
#include "Tools/Terminal/FindFailure.h"
#include "Tools/Terminal/TimeLimit.h"
#include "Tools/Terminal/UploadDisplay.h"
#include "VornMac/Text/AccessText.h"
#include "VornMac/Text/AccountText.h"
#include "VornMac/Text/DoneText.h"
#include "VornMac/Text/FindText.h"
#include "VornMac/Text/QuestText.h"
#include "VornMac/Text/UploadText.h"

#include <chrono>
#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr const char* nothingSent = "Nothing was uploaded.";
constexpr const char* notInTime = "Nobody confirmed the link in time. Link this Mac first: vorn-terminal link";

template <class Case, class Phase>
bool is(const Phase& phase)
{
    return std::holds_alternative<Case>(phase);
}

/// The label of the window's button, as a question.
std::string asked(const std::string& label)
{
    return label + "?";
}

} // namespace

Journey::Journey(AppModel& model, MainContext& context, Clock& clock, const Terminal& terminal, Answers& answers,
                 const TerminalOptions& options, bool isAttended)
    : model_(model), context_(context), clock_(clock), terminal_(terminal), answers_(answers), options_(options),
      isAttended_(isAttended), changes_(model), linkPrinter_(terminal, options.background)
{
}

void Journey::say(const std::vector<std::string>& lines) const
{
    for (const std::string& line : lines) terminal_.say(line);
}

Async<bool> Journey::confirms(std::string question)
{
    if (!options_.yes) co_return co_await answers_.confirms(std::move(question));
    terminal_.say(question + " Yes.");
    co_return true;
}

Async<StoredSession> Journey::toSession()
{
    model_.start();
    while (true) {
        if (const auto& session = model_.session()) co_return *session;
        co_await link();
    }
}

Async<SubmissionStatus> Journey::toReward()
{
    model_.start();
    bool wasLinked = model_.session().has_value();
    while (model_.step() != Step::done || !changes_.hasReviewWatchEnded()) {
        if (model_.step() == Step::link && std::exchange(wasLinked, false)) tellOfTheSessionsEnd();
        const bool isLinking = model_.step() == Step::link;
        co_await showStep(model_.step());
        if (const auto& session = model_.session(); isLinking && session)
            terminal_.say(linkedText(printable(session->displayName)));
        wasLinked = wasLinked || model_.session();
    }
    co_return model_.submission().value_or(SubmissionStatus{});
}

Async<> Journey::showStep(Step step)
{
    switch (step) {
    case Step::link: return link();
    case Step::consent: return consent();
    case Step::access: return access();
    case Step::find: return find();
    case Step::upload: return upload();
    case Step::done: return review();
    }
    return link();
}

void Journey::tellOfTheSessionsEnd() const
{
    if (!isAttended_) throw CommandFailure(TerminalStatus::notLinked, unlinked);
    terminal_.say(unlinked);
}

Async<> Journey::link()
{
    std::optional<LinkPhase> shown;
    bool hadCode = false;
    while (model_.step() == Step::link) {
        const LinkPhase phase = model_.linkPhase();
        // Unattended, a wait for a person or for a service that is down might never end.
        if (!isAttended_ && hadCode && is<phase::Loading>(phase))
            throw CommandFailure(TerminalStatus::notLinked, notInTime);
        if (std::exchange(shown, phase) != phase) linkPrinter_.show(phase, model_.qrPayload());
        if (!isAttended_ && is<phase::Failed>(phase))
            throw CommandFailure(TerminalStatus::unreachable, std::string("This Mac could not be linked.") + runAgain);
        hadCode = hadCode || is<phase::Showing>(phase);
        co_await changes_.next();
    }
}

// Waits up to three seconds for the amount, which is part of the text that the user agrees to.
Async<> Journey::waitForQuest()
{
    const auto known = [](Journey* self) -> Async<> {
        while (!self->model_.nimbrel() && self->model_.step() == Step::consent) co_await self->changes_.next();
    };
    co_await endsWithin(&context_, &clock_, 3s, known(this));
}

Async<> Journey::consent()
{
    co_await waitForQuest();
    if (model_.step() != Step::consent) co_return;
    const Consent consent = consentFor(model_.reward());
    say(consentLines(consent));
    const bool understands = co_await confirms(consent.understandsUpload);
    const bool agrees = understands && co_await confirms(consent.agreesToShare);
    if (!agrees) throw CommandFailure(TerminalStatus::declined, nothingSent);
    if (model_.step() != Step::consent) co_return; // the session ended meanwhile
    model_.setUnderstandsUpload(true);
    model_.setAgreesToShare(true);
    model_.acceptConsent();
}

Async<> Journey::access()
{
    const bool wasGranted = model_.access() == FullDiskAccessStatus::granted; // but the chat could not be read
    say(instructionLines(accessTextForTerminal()));
    std::optional<FullDiskAccessStatus> shown;
    while (model_.step() == Step::access) {
        const FullDiskAccessStatus status = model_.access();
        if (std::exchange(shown, status) != status) terminal_.say(accessText(status).status.text);
        const bool isGranted = status == FullDiskAccessStatus::granted;
        if (!isAttended_ && (!isGranted || wasGranted)) throw CommandFailure(TerminalStatus::noAccess, accessMissing);
        if (isGranted && wasGranted && !co_await answers_.confirms(asked(accessText(status).primary)))
            throw CommandFailure(TerminalStatus::declined, nothingSent);
        if (isGranted) {
            if (model_.step() == Step::access) model_.go(Step::find);
        } else {
            co_await changes_.next();
        }
    }
}

Async<> Journey::find()
{
    terminal_.say(findText(phase::Loading{}, std::nullopt).status.text);
    while (model_.step() == Step::find &&
           (is<phase::Idle>(model_.scanPhase()) || is<phase::Loading>(model_.scanPhase())))
        co_await changes_.next();
    if (model_.step() != Step::find) co_return;
    const ScanPhase phase = model_.scanPhase();
    const ScreenText text = findText(phase, std::nullopt);
    if (const auto* failed = std::get_if<phase::Failed>(&phase); failed != nullptr && isAttended_) {
        terminal_.say(spokenWords(failed->text));
        if (!co_await answers_.confirms(asked(text.retry))) throw CommandFailure(TerminalStatus::failed, "");
        if (model_.step() == Step::find) model_.scan();
        co_return;
    }
    if (const auto failure = failureOfFinding(phase)) throw CommandFailure(*failure);
    co_await offerUpload();
}

Async<> Journey::offerUpload()
{
    const AppModel::ExportResult found = model_.exportResult();
    const auto availability = model_.availability();
    const ScreenText text = findText(model_.scanPhase(), availability);
    terminal_.say(text.title + ":");
    if (const auto statistics = model_.exportStatistics()) say(statisticsLines(*statistics));
    terminal_.say(text.caption);
    say(previewLines(found->messages));
    const std::string note = availability ? availabilityLine(*availability) : "";
    if (!model_.canUpload()) throw CommandFailure(TerminalStatus::notNow, note);
    if (availability && availability->is<QuestAvailability::LastRejected>()) terminal_.say(note);
    if (!co_await confirms(asked(text.primary))) throw CommandFailure(TerminalStatus::declined, nothingSent);
    if (model_.step() == Step::find) model_.upload();
}

Async<> Journey::upload()
{
    UploadDisplay display(clock_, terminal_);
    std::optional<UploadPhase> shown;
    while (model_.step() == Step::upload) {
        const UploadPhase phase = model_.uploadPhase();
        const bool isNew = !shown || shown->index() != phase.index();
        shown = phase;
        const UploadBar bar = uploadBar(phase);
        if (bar.isMeasured) display.show(model_.uploadProgress());
        if (isNew && !bar.isMoving()) display.clear();
        const ScreenText text = uploadText(phase);
        if (isNew && !is<phase::Idle>(phase) && !is<phase::Failed>(phase)) terminal_.say(text.status.text);
        if (const auto* failed = std::get_if<phase::Failed>(&phase)) {
            if (!isAttended_) throw CommandFailure(TerminalStatus::refused, spokenWords(failed->lastWords));
            terminal_.say(spokenWords(failed->text));
            if (!co_await answers_.confirms(asked(text.retry))) throw CommandFailure(TerminalStatus::refused, "");
            if (model_.step() == Step::upload) model_.go(Step::find);
            co_return;
        }
        co_await changes_.next();
    }
}

Async<> Journey::review()
{
    lastReview_.clear(); // of an earlier upload
    while (model_.step() == Step::done && !changes_.hasReviewWatchEnded()) {
        tellReview();
        co_await changes_.next();
    }
    if (model_.step() != Step::done) co_return;
    tellReview();
    if (const auto& submission = model_.submission(); submission && !submission->status.isFinal())
        terminal_.say(longReviewText());
    for (const std::string& line : questLines({{}, model_.nimbrel(), model_.availability()}))
        terminal_.say(printable(line));
}

void Journey::tellReview()
{
    const std::string text = reviewLine(model_.submission().value_or(SubmissionStatus{}), model_.reward());
    if (std::exchange(lastReview_, text) != text) terminal_.say(text);
}

} // namespace vorn
