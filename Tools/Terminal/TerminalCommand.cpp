#include "Tools/Terminal/TerminalCommand.h"

#include "Platform/Base/Log.h"
#include "Tools/Terminal/CommandFailure.h"
#include "Tools/Terminal/LinkFlow.h"
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
    co_await linkNow();
}

Async<StoredSession> TerminalCommand::linkNow()
{
    LinkFlow flow(services_.api, *services_.clock, DeviceIdentity::linkRequest(applicationBundle()),
                  [this](const LinkPhase& phase) { linkPrinter_.show(phase); });
    const StoredSession session(co_await flow.run());
    keep(session);
    services_.terminal->say("Linked to " + printable(session.displayName) + ".");
    co_return session;
}

void TerminalCommand::keep(const StoredSession& session) const
{
    try {
        services_.api.adopt(session);
    } catch (const std::exception& error) {
        Log(bundleIdentifier(), "app").error(std::string("keychain save failed: ") + error.what());
        services_.terminal->say("The keychain doesn't keep the session here, so the link lasts for this run only.");
    }
}

StoredSession TerminalCommand::storedSession() const
{
    auto session = services_.tokens->load();
    if (!session) throw CommandFailure(TerminalStatus::notLinked, "This Mac is not linked. Link it first.");
    return *std::move(session);
}

Async<> TerminalCommand::upload()
{
    const auto readArchive = [this](const CancelFlag& cancel) { return factsOf(options_.archive, cancel); };
    const ArchiveFacts archive = co_await onBackground(services_.pool, readArchive); // before anybody gets up to link
    const auto stored = services_.tokens->load();
    const StoredSession session = stored ? *stored : co_await linkNow();
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
    auto session = services_.api.forget();
    if (!session) {
        services_.terminal->say("This Mac is not linked.");
        co_return;
    }
    co_await endsWithin(services_.context, services_.clock, patienceForRevoking,
                        services_.api.revoke(*std::move(session)));
    services_.terminal->say("Signed out.");
}

template <class Result>
void TerminalCommand::print(const Result& result) const
{
    const std::string text = options_.json ? jsonOf(result) : textOf(result);
    if (std::fputs(text.c_str(), stdout) != EOF && std::fflush(stdout) == 0) return;
    throw CommandFailure(TerminalStatus::failed, "The result could not be printed.");
}

} // namespace vorn
