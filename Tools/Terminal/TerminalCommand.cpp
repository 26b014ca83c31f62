#include "Tools/Terminal/TerminalCommand.h"

#include "Platform/Base/Log.h"
#include "Tools/Terminal/CommandFailure.h"
#include "Tools/Terminal/PrintableText.h"
#include "Tools/Terminal/QuestWords.h"
#include "Tools/Terminal/SubmissionWatch.h"
#include "Tools/Terminal/TimeLimit.h"
#include "Tools/Terminal/UploadDisplay.h"
#include "VornMacCore/Application/Application.h"
#include "VornMacCore/Identity/DeviceIdentity.h"

#include <cstdio>
#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

/// Signing out is done once the session is forgotten here; the service gets this long to hear of it.
constexpr auto patienceForRevoking = 5s;

} // namespace

TerminalCommand::TerminalCommand(TerminalOptions options, TerminalServices services)
    : options_(std::move(options)), services_(std::move(services)),
      linkPrinter_(*services_.terminal, options_.background)
{
}

Async<> TerminalCommand::run()
{
    switch (options_.command) {
    case TerminalOptions::Command::link: return link();
    case TerminalOptions::Command::upload: return upload();
    case TerminalOptions::Command::status: return status();
    case TerminalOptions::Command::signOut: return signOut();
    }
    return link();
}

Async<> TerminalCommand::link()
{
    if (const auto session = services_.tokens->load()) {
        services_.terminal->say("This Mac is already linked to " + printable(session->displayName) +
                                ". Sign out first to link it anew.");
        co_return;
    }
    // A link that lasts for this run is of no use when the run ends with it.
    if (services_.keychain)
        services_.keychain->requireReachable("The link could not be kept, so this Mac was not linked.");
    const StoredSession session = co_await linkNow(LinkFlow::Patience::untilLinked);
    if (!keeps(session)) {
        co_await revoke(session);
        throw CommandFailure(TerminalStatus::keychain, "The keychain didn't keep the link, so this Mac is not linked.");
    }
    sayLinked(session);
}

Async<StoredSession> TerminalCommand::linkNow(LinkFlow::Patience patience)
{
    LinkFlow flow(
        services_.api, *services_.clock, DeviceIdentity::linkRequest(applicationBundle()),
        [this](const LinkPhase& phase) { linkPrinter_.show(phase); }, patience);
    co_return StoredSession(co_await flow.run());
}

Async<StoredSession> TerminalCommand::linkForThisRun()
{
    // Scripts upload too; what waits for a person where none can see it would wait for ever.
    const bool isSeen = services_.terminal->traits().isTerminal;
    StoredSession session = co_await linkNow(isSeen ? LinkFlow::Patience::untilLinked : LinkFlow::Patience::oneCode);
    if (!keeps(session)) {
        services_.terminal->say("The keychain doesn't keep the session here, so the link lasts for this run only.");
    } else if (!services_.keychain) {
        services_.terminal->say("The keychain is left alone, so the link lasts for this run only.");
    }
    sayLinked(session);
    co_return session;
}

bool TerminalCommand::keeps(const StoredSession& session) const
{
    try {
        services_.api.adopt(session);
        return true;
    } catch (const std::exception& error) {
        Log(bundleIdentifier(), "app").error(std::string("keychain save failed: ") + error.what());
        return false;
    }
}

void TerminalCommand::sayLinked(const StoredSession& session) const
{
    services_.terminal->say("Linked to " + printable(session.displayName) + ".");
}

StoredSession TerminalCommand::storedSession() const
{
    if (auto session = services_.tokens->load()) return *std::move(session);
    if (services_.keychain) services_.keychain->requireReachable("Vorn can't tell whether this Mac is linked.");
    throw CommandFailure(TerminalStatus::notLinked, "This Mac is not linked. Link it first.");
}

Async<> TerminalCommand::upload()
{
    const auto readArchive = [this](const CancelFlag& cancel) { return factsOf(options_.archive, cancel); };
    const ArchiveFacts archive = co_await onBackground(services_.pool, readArchive); // before anybody gets up to link
    const auto stored = services_.tokens->load();
    const StoredSession session = stored ? *stored : co_await linkForThisRun();
    const VornAPI api = services_.api.pinned(session.userId);
    const NimbrelState quest = co_await questFor(api, archive.sizeBytes);
    SubmissionStatus submission = co_await send(api);
    if (options_.watch) submission = co_await watch(api, std::move(submission), rewardText(quest));
    print(UploadResult{submission, archive, rewardText(quest)});
    requireAccepted(submission);
}

Async<NimbrelState> TerminalCommand::questFor(VornAPI api, std::int64_t sizeBytes)
{
    NimbrelState quest = co_await api.nimbrelState();
    const Instant now = services_.clock->date();
    if (const auto refusal = refusalOf(quest, sizeBytes, now)) throw CommandFailure(*refusal);
    const QuestAvailability availability(quest.quest, now);
    if (availability.is<QuestAvailability::LastRejected>()) services_.terminal->say(availabilityText(availability));
    co_return quest;
}

Async<SubmissionStatus> TerminalCommand::send(VornAPI api)
{
    services_.terminal->say("Uploading your Nimbrel chat…");
    UploadDisplay display(*services_.context, *services_.clock, *services_.terminal);
    const auto report = [&display](const UploadProgress& progress) { display.report(progress); };
    co_return co_await uploadArchive({std::move(api), services_.http, services_.pool}, options_.archive, report);
}

Async<SubmissionStatus> TerminalCommand::watch(VornAPI api, SubmissionStatus submission, std::string questReward)
{
    const auto tell = [terminal = services_.terminal, questReward](const SubmissionStatus& latest) {
        terminal->say(submissionText(latest, questReward));
    };
    tell(submission);
    submission = co_await watchSubmission(std::move(api), services_.clock, std::move(submission), tell);
    if (!submission.isTerminal()) {
        services_.terminal->say("The review takes longer. The result also shows on the quest in the Vorn app.");
    }
    co_return submission;
}

void TerminalCommand::requireAccepted(const SubmissionStatus& submission) const
{
    const bool ended = options_.watch && submission.isTerminal();
    if (ended && submission.status != "approved") {
        throw CommandFailure(TerminalStatus::notAccepted, ""); // the watch has told the user why
    }
}

Async<> TerminalCommand::status()
{
    const StoredSession session = storedSession();
    const VornAPI api = services_.api.pinned(session.userId);
    StatusReport report{
        {session.userId, session.displayName}, co_await api.nimbrelState(), services_.clock->date(), {}};
    if (options_.submission) {
        SubmissionStatus submission = co_await api.submission(*options_.submission);
        if (options_.watch) {
            submission = co_await watch(api, std::move(submission), rewardText(report.quest));
            report.quest = co_await api.nimbrelState(); // the outcome moves it on
            report.now = services_.clock->date();
        }
        report.submission = std::move(submission);
    }
    print(report);
    if (report.submission) requireAccepted(*report.submission);
}

Async<> TerminalCommand::signOut()
{
    if (services_.keychain)
        services_.keychain->requireReachable(
            "This Mac may still be linked. Sign out again once the keychain can be reached.");
    auto session = services_.api.forget();
    const bool wasLinked = session.has_value();
    if (session) co_await revoke(*std::move(session));
    requireForgotten();
    services_.terminal->say(wasLinked ? "Signed out." : "This Mac is not linked.");
}

Async<> TerminalCommand::revoke(StoredSession session) const
{
    Async<> revoking = services_.api.revoke(std::move(session));
    co_await endsWithin(services_.context, services_.clock, patienceForRevoking, std::move(revoking));
}

void TerminalCommand::requireForgotten() const
{
    if (!services_.keychain || !services_.keychain->holdsSession("The session may still be there.")) return;
    throw CommandFailure(TerminalStatus::keychain, "The keychain still holds the session, and did not let go of it.");
}

template <class Result>
void TerminalCommand::print(const Result& result) const
{
    const std::string text = options_.json ? jsonOf(result) : textOf(result);
    if (std::fputs(text.c_str(), stdout) != EOF && std::fflush(stdout) == 0) return;
    throw CommandFailure(TerminalStatus::failed, "The result could not be printed.");
}

} // namespace vorn
