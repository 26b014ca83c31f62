#include "Tools/Terminal/TerminalCommand.h"

#include "Platform/Base/PrintableText.h"
#include "Tools/Terminal/CommandFailure.h"
#include "Tools/Terminal/EverythingLines.h"
#include "Tools/Terminal/FindFailure.h"
#include "Tools/Terminal/ModelChanges.h"
#include "Tools/Terminal/Pager.h"
#include "Tools/Terminal/StateLines.h"
#include "Tools/Terminal/TimeLimit.h"
#include "VornMac/Text/AccessText.h"
#include "VornMac/Text/AccountText.h"
#include "VornMac/Text/ErrorText.h"
#include "VornMac/Text/EverythingText.h"
#include "VornMac/Text/FindText.h"
#include "VornMac/Text/KeychainText.h"

#include <cstdio>
#include <utility>

#include <unistd.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

/// Signing out is complete once the session is forgotten here; this is how long revoking it on the service may take.
constexpr auto patienceForRevoking = 5s;

constexpr const char* notLinked = "This Mac is not linked.";
constexpr const char* unprintable = "The result could not be printed.";

} // namespace

TerminalCommand::TerminalCommand(TerminalOptions options, TerminalServices services)
    : options_(std::move(options)), services_(std::move(services)),
      answers_(STDIN_FILENO, *services_.background, *services_.terminal)
{
}

Async<> TerminalCommand::run()
{
    co_await restoreSession();
    co_await runCommand();
}

Async<> TerminalCommand::restoreSession()
{
    AppModel& model = *services_.model;
    const QObject whileRestoring;
    QObject::connect(&model, &AppModel::restorePhaseChanged, &whileRestoring, [this] {
        if (std::holds_alternative<phase::Waiting>(services_.model->restorePhase()))
            services_.terminal->say(keychainText(phase::Waiting{}, std::nullopt).status.text);
    });
    co_await model.restore();
    model.continueSignedOut(); // each command reports a refusal itself
}

/// Does not ask a keychain that has already refused: that would prompt the user again.
void TerminalCommand::requireKeychain(const std::string& consequence) const
{
    if (!services_.keychain) return;
    if (const auto& refusal = services_.model->keychainRefusal()) throw SessionKeychain::failure(*refusal, consequence);
    services_.keychain->requireReachable(consequence);
}

Async<> TerminalCommand::runCommand()
{
    switch (options_.command) {
    case TerminalOptions::Command::share: return share();
    case TerminalOptions::Command::show: return show();
    case TerminalOptions::Command::link: return link();
    case TerminalOptions::Command::status: return status();
    case TerminalOptions::Command::signOut: return signOut();
    }
    return share();
}

Async<> TerminalCommand::share()
{
    const AppModel& model = *services_.model;
    std::optional<StateLines> lines;
    if (options_.json) lines.emplace(model, stdout);
    if (!model.session()) sayWhatIsNotKept();
    const bool isAttended = services_.terminal->traits().isTerminal && !options_.yes;
    Journey journey(*services_.model, *services_.context, *services_.clock, *services_.terminal, answers_, options_,
                    isAttended);
    const SubmissionStatus submission = co_await journey.toReward();
    if (lines && !lines->hasWritten()) throw CommandFailure(TerminalStatus::failed, unprintable);
    if (!lines) print(textOf(submission));
    requireAccepted(submission);
}

Async<> TerminalCommand::show()
{
    storedSession();
    co_await findChat();
    const AppModel::ExportResult found = services_.model->exportResult();
    if (const auto& path = options_.copy) co_return co_await saveCopy(*path);
    list(*found);
}

/// Finds the chat as the find screen does.
Async<> TerminalCommand::findChat()
{
    AppModel& model = *services_.model;
    ModelChanges changes(model);
    model.go(Step::find);
    services_.terminal->say(findText(model.scanPhase(), std::nullopt).status.text);
    while (model.step() == Step::find && std::holds_alternative<phase::Loading>(model.scanPhase()))
        co_await changes.next();
    if (model.step() == Step::access) throw CommandFailure(TerminalStatus::noAccess, accessMissing);
    if (model.step() != Step::find) throw CommandFailure(TerminalStatus::notLinked, unlinked);
    if (const auto failure = failureOfFinding(model.scanPhase())) throw CommandFailure(*failure);
}

/// Blocks the thread until the reader is done: no job is running by then.
void TerminalCommand::list(const NimbrelExportResult& found) const
{
    const InterruptWatch::InterruptIgnored untilRead(*services_.interrupts);
    Pager pager;
    const TextSink sink = [&pager](std::string_view text) { return pager.write(text); };
    const std::optional<std::string>& words = options_.search;
    std::size_t count = 0;
    if (words)
        count = listFound(found, *words, sink);
    else
        listEverything(found, found.stats(), sink);
    if (!pager.finish()) throw CommandFailure(TerminalStatus::failed, unprintable);
    if (!words) return;
    services_.terminal->say(count == 0 ? nothingFoundText(printable(*words))
                                       : listedText(count, found.messages.size(), true));
}

Async<> TerminalCommand::saveCopy(std::filesystem::path path)
{
    AppModel& model = *services_.model;
    ModelChanges changes(model);
    model.saveCopy(path);
    services_.terminal->say(copyText(model.copyPhase()).text);
    while (std::holds_alternative<phase::Preparing>(model.copyPhase())) co_await changes.next();
    if (const auto* failed = std::get_if<phase::Failed>(&model.copyPhase()))
        throw CommandFailure(TerminalStatus::failed, spokenWords(failed->lastWords));
    services_.terminal->say(printable(copyText(model.copyPhase()).text));
}

void TerminalCommand::sayWhatIsNotKept() const
{
    if (!services_.keychain)
        return services_.terminal->say("The keychain is left alone, so the link lasts for this run only.");
    try {
        requireKeychain("The link lasts for this run only.");
    } catch (const CommandFailure& failure) {
        services_.terminal->say(failure.text());
    }
}

Async<> TerminalCommand::link()
{
    if (const auto& linked = services_.model->session()) {
        services_.terminal->say("This Mac is already linked to " + printable(linked->displayName) +
                                ". Sign out first to link it anew.");
        co_return;
    }
    // A link for this run alone would be useless: the run ends with it.
    requireKeychain("The link could not be kept, so this Mac was not linked.");
    Journey journey(*services_.model, *services_.context, *services_.clock, *services_.terminal, answers_, options_,
                    true);
    const StoredSession session = co_await journey.toSession();
    if (services_.keychain && services_.keychain->holdsSession("The link could not be kept.")) {
        services_.terminal->say(linkedText(printable(session.displayName)));
        co_return;
    }
    co_await revoke(session);
    throw CommandFailure(TerminalStatus::keychain, "The keychain didn't keep the link, so this Mac is not linked.");
}

StoredSession TerminalCommand::storedSession() const
{
    if (const auto& session = services_.model->session()) return *session;
    requireKeychain("Vorn can't tell whether this Mac is linked.");
    throw CommandFailure(TerminalStatus::notLinked, std::string(notLinked) + " Link it first.");
}

Async<> TerminalCommand::status()
{
    const StoredSession session = storedSession();
    const VornAPI api = services_.api.pinned(session.userId);
    StatusReport report{
        {session.userId, session.displayName}, co_await api.nimbrelState(), services_.clock->date(), {}};
    if (options_.submission) report.submission = co_await api.submission(*options_.submission);
    print(options_.json ? jsonOf(report) : textOf(report));
}

Async<> TerminalCommand::signOut()
{
    requireKeychain("This Mac may still be linked. Sign out again once the keychain can be reached.");
    auto session = services_.api.forget();
    const bool wasLinked = session.has_value();
    if (session) co_await revoke(*std::move(session));
    requireForgotten();
    services_.terminal->say(wasLinked ? "Signed out." : notLinked);
}

Async<> TerminalCommand::revoke(StoredSession session) const
{
    Async<> revoking = services_.api.revoke(std::move(session));
    co_await endsWithin(services_.context, services_.clock, patienceForRevoking, std::move(revoking));
}

void TerminalCommand::requireForgotten() const
{
    if (!services_.keychain || !services_.keychain->holdsSession("The session may still be there.")) return;
    throw CommandFailure(TerminalStatus::keychain, "The keychain still holds the session, and could not remove it.");
}

void TerminalCommand::requireAccepted(const SubmissionStatus& submission)
{
    if (submission.status.isFinal() && !submission.status.is(ReviewStatus::Kind::approved))
        throw CommandFailure(TerminalStatus::notAccepted, ""); // the journey has told the user why
}

void TerminalCommand::print(const std::string& text)
{
    if (std::fputs(text.c_str(), stdout) != EOF && std::fflush(stdout) == 0) return;
    throw CommandFailure(TerminalStatus::failed, unprintable);
}

} // namespace vorn
