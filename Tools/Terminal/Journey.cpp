#include "Tools/Terminal/Journey.h"

#include "Platform/Base/PrintableText.h"
#include "Tools/Terminal/ChatWords.h"
#include "Tools/Terminal/CommandFailure.h"
#include "Tools/Terminal/QuestWords.h"
#include "Tools/Terminal/TimeLimit.h"
#include "Tools/Terminal/UploadDisplay.h"

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

} // namespace

Journey::Journey(AppModel& model, MainContext& context, Clock& clock, const Terminal& terminal, Answers& answers,
                 Manners manners)
    : model_(model), context_(context), clock_(clock), terminal_(terminal), answers_(answers), manners_(manners),
      changes_(model), linkPrinter_(terminal, manners.background)
{
}

void Journey::say(const std::vector<std::string>& lines) const
{
    for (const std::string& line : lines) terminal_.say(line);
}

Async<bool> Journey::confirms(std::string question)
{
    if (!manners_.saysYes) co_return co_await answers_.confirms(std::move(question));
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
            terminal_.say("Linked to " + printable(session->displayName) + ".");
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
    if (!manners_.isAttended) throw CommandFailure(TerminalStatus::notLinked, unlinked);
    terminal_.say(unlinked);
}

Async<> Journey::link()
{
    std::optional<LinkPhase> shown;
    bool hadCode = false;
    while (model_.step() == Step::link) {
        const LinkPhase phase = model_.linkPhase();
        // Where nobody watches, waiting for a person or for a service that is down would have no end.
        if (!manners_.isAttended && hadCode && is<phase::Loading>(phase))
            throw CommandFailure(TerminalStatus::notLinked, notInTime);
        if (std::exchange(shown, phase) != phase) linkPrinter_.show(phase, model_.qrPayload());
        if (!manners_.isAttended && is<phase::Failed>(phase))
            throw CommandFailure(TerminalStatus::unreachable, "This Mac could not be linked. Run it again.");
        hadCode = hadCode || is<phase::Showing>(phase);
        co_await changes_.next();
    }
}

// The amount stands in the text that the user agrees to, so it is worth a moment.
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
    say(consentLines(model_.reward()));
    const bool understands = co_await confirms("I understand what's uploaded");
    const bool agrees = understands && co_await confirms("I agree to share my Nimbrel chat");
    if (!agrees) throw CommandFailure(TerminalStatus::declined, nothingSent);
    if (model_.step() != Step::consent) co_return; // the session ended meanwhile
    model_.setUnderstandsUpload(true);
    model_.setAgreesToShare(true);
    model_.acceptConsent();
}

Async<> Journey::access()
{
    const bool wasGranted = model_.access() == FullDiskAccessStatus::granted; // and yet the chat could not be read
    say(accessLines());
    std::optional<FullDiskAccessStatus> shown;
    while (model_.step() == Step::access) {
        const FullDiskAccessStatus status = model_.access();
        if (std::exchange(shown, status) != status) {
            if (status == FullDiskAccessStatus::noDatabase)
                terminal_.say("Messages isn't set up on this Mac. Sign in to Messages with the Apple ID you text "
                              "Nimbrel from, then come back.");
            if (status == FullDiskAccessStatus::denied) terminal_.say("Waiting for access…");
            if (status == FullDiskAccessStatus::granted) terminal_.say("Access granted.");
        }
        const bool isGranted = status == FullDiskAccessStatus::granted;
        if (!manners_.isAttended && (!isGranted || wasGranted))
            throw CommandFailure(TerminalStatus::noAccess, "Vorn can't read Messages on this Mac yet.");
        if (isGranted && wasGranted && !co_await answers_.confirms("Continue?"))
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
    terminal_.say("Reading a private copy of your Messages history…");
    while (model_.step() == Step::find &&
           (is<phase::Idle>(model_.scanPhase()) || is<phase::Loading>(model_.scanPhase())))
        co_await changes_.next();
    if (model_.step() != Step::find) co_return;
    const ScanPhase phase = model_.scanPhase();
    if (is<phase::Unavailable>(phase)) throw CommandFailure(TerminalStatus::notNow, questUnavailable);
    if (is<phase::NotConfigured>(phase))
        throw CommandFailure(TerminalStatus::notNow, "Nimbrel export isn't set up yet. Try again later.");
    if (is<phase::NotFound>(phase))
        throw CommandFailure(TerminalStatus::notFound,
                             "No conversation with Nimbrel on this Mac.\nMake sure Messages on this Mac is signed in "
                             "with the Apple ID you text Nimbrel from, and that Messages in iCloud is on so your "
                             "history syncs here.");
    if (const auto* failed = std::get_if<phase::Failed>(&phase)) {
        if (!manners_.isAttended) throw CommandFailure(TerminalStatus::failed, spokenWords(failed->lastWords));
        terminal_.say(spokenWords(failed->text));
        if (!co_await answers_.confirms("Look again?")) throw CommandFailure(TerminalStatus::failed, "");
        if (model_.step() == Step::find) model_.scan();
        co_return;
    }
    co_await offerUpload();
}

Async<> Journey::offerUpload()
{
    const AppModel::Export found = model_.exportResult();
    terminal_.say("Found on this Mac:");
    if (const auto statistics = model_.exportStatistics()) say(statisticsLines(*statistics));
    terminal_.say("Only on this Mac. Nothing is uploaded yet.");
    say(previewLines(found->messages));
    const auto availability = model_.availability();
    const std::string note = availability ? availabilityText(*availability) : "";
    if (!model_.canUpload()) throw CommandFailure(TerminalStatus::notNow, note);
    if (availability && availability->is<QuestAvailability::LastRejected>()) terminal_.say(note);
    if (!co_await confirms("Upload chat?")) throw CommandFailure(TerminalStatus::declined, nothingSent);
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
        if (is<phase::Uploading>(phase) || is<phase::Finishing>(phase)) display.show(model_.uploadProgress());
        if (isNew && !is<phase::Uploading>(phase)) display.clear();
        if (isNew && is<phase::Preparing>(phase)) terminal_.say("Packing your chat…");
        if (isNew && is<phase::Uploading>(phase)) terminal_.say("Uploading securely. Keep this window open.");
        if (isNew && is<phase::Finishing>(phase)) terminal_.say("Finishing up…");
        if (const auto* failed = std::get_if<phase::Failed>(&phase)) {
            if (!manners_.isAttended) throw CommandFailure(TerminalStatus::refused, spokenWords(failed->lastWords));
            terminal_.say(spokenWords(failed->text));
            if (!co_await answers_.confirms("Try again?")) throw CommandFailure(TerminalStatus::refused, "");
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
        terminal_.say("The review takes longer. The result also shows on the quest in the Vorn app.");
    if (const auto availability = model_.availability())
        if (const std::string next = nextUploadText(*availability); !next.empty()) terminal_.say(next);
}

void Journey::tellReview()
{
    const std::string text = submissionText(model_.submission().value_or(SubmissionStatus{}), model_.reward());
    if (std::exchange(lastReview_, text) != text) terminal_.say(text);
}

} // namespace vorn
