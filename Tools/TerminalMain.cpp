#include "NimbrelExportKit/Messages/UsersDatabase.h"
#include "Platform/Base/CancelFlag.h"
#include "Platform/Base/InterruptWatch.h"
#include "Platform/Base/Memory.h"
#include "Platform/Base/PrintableText.h"
#include "Tools/Support/Preflight.h"
#include "Tools/Terminal/CommandFailure.h"
#include "Tools/Terminal/TerminalCommand.h"
#include "VornMac/Composition/LiveServices.h"
#include "VornMac/Composition/OverrideKeys.h"
#include "VornMac/Text/ErrorText.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr const char* stopped = "Stopped.";
/// How long the program may run after a signal: enough to remove all files and to try to abort the upload; packing, in
/// memory, may still run. A second signal ends the program at once.
constexpr auto graceAfterSignal = 1000ms;

/// How the command ended: its exit status, or nothing if it was cancelled.
using Ending = std::optional<TerminalStatus>;

Async<> runToTheEnd(TerminalCommand* command, const Terminal* terminal, Ending* ending)
{
    try {
        co_await command->run();
        *ending = TerminalStatus::done;
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception& error) {
        const CommandFailure failure = failureOf(error);
        if (!failure.text().empty()) terminal->say(failure.text());
        *ending = failure.status();
    }
}

std::optional<SessionKeychain> keychainFor(const TerminalOptions& options)
{
    if (!options.keychain) return std::nullopt;
    return SessionKeychain(Keychain::system(), sessionItem());
}

/// What a signal calls: posts `stop` to the context of the jobs; does nothing until `set`.
class Target {
public:
    void set(MainContext* context, std::function<void()> stop)
    {
        stop_ = std::move(stop);
        context_ = context;
    }
    void operator()() const
    {
        if (auto* context = context_.load()) context->post(stop_);
    }

private:
    std::function<void()> stop_;
    std::atomic<MainContext*> context_ = nullptr;
};

/// One run of the program. Members are destroyed in reverse order: first the jobs, then what they use.
class Run {
public:
    Run(const TerminalOptions& options, UserDefaults& defaults, std::filesystem::path database,
        const Terminal& terminal)
        : terminal_(terminal), services_(defaults, std::move(database), {.keepsSession = options.keychain}),
          model_(services_.forModel(context_)), command_(options, commandServices(options))
    {
        target_.set(&context_, [this] { task_.cancel(); });
    }

    int exitStatus()
    {
        if (!interrupts_.cancelFlag().isCancelled())
            task_ = Task(context_, runToTheEnd(&command_, &terminal_, &ending_));
        context_.runUntil([this] { return !task_.isRunning(); });
        context_.shutDown(LiveServices::patienceForJobs);
        if (ending_) return static_cast<int>(*ending_);
        terminal_.say(stopped);
        return interrupts_.exitStatus();
    }

private:
    TerminalServices commandServices(const TerminalOptions& options)
    {
        return {.context = &context_,
                .clock = &services_.clock(),
                .background = &services_.background(),
                .api = services_.api(),
                .keychain = keychainFor(options),
                .model = &model_,
                .terminal = &terminal_,
                .interrupts = &interrupts_};
    }

    /// Text for a program that ends before its jobs do. A progress line may still be on the terminal.
    std::string lastWords() const
    {
        return std::string(terminal_.traits().isTerminal ? "\r\x1B[K" : "") + stopped + "\n";
    }

    const Terminal& terminal_;
    Target target_;
    InterruptWatch interrupts_{
        InterruptWatch::Deadline{[this] { target_(); }, graceAfterSignal, lastWords()}}; // before any thread starts
    LiveServices services_;
    MainContext context_; ///< destroyed before the services, which its unfinished jobs use
    Ending ending_;
    AppModel model_;
    TerminalCommand command_;
    Task task_;
};

/// The database that `share` and `show` read, checked once; the other commands read none.
std::filesystem::path plausibleDatabase(const UserDefaults& defaults)
{
    using preflight::DatabaseFile;
    std::filesystem::path path = messagesDatabase(defaults);
    const DatabaseFile file = preflight::databaseFileAt(path);
    const bool isGiven = defaults.text(overrides::messagesDatabase).has_value();
    const bool mayAppear = file == DatabaseFile::missing && !isGiven; // once Messages is set up
    if (file == DatabaseFile::plausible || mayAppear) return path;
    throw CommandFailure(TerminalStatus::noAccess, preflight::textOf(file, path));
}

void requireOwnFile(const std::optional<std::string>& copy, const std::filesystem::path& database)
{
    if (copy && preflight::touchesDatabase(*copy, database))
        throw CommandFailure(TerminalStatus::wrongArguments, preflight::mustNotBeDatabaseText("--save"));
}

void requireTemporaryDirectory()
{
    if (const auto mistake = preflight::mistakeInTemporaryDirectory())
        throw CommandFailure(TerminalStatus::failed, *mistake);
}

/// The application ignores an invalid setting and uses the built-in service; here the user is told.
void requireFitSettings(const UserDefaults& defaults)
{
    if (const auto mistake = overrides::mistakeIn(defaults, overrides::Program::terminal))
        throw CommandFailure(TerminalStatus::wrongArguments, *mistake);
}

int runTerminal(const TerminalOptions& options, const Terminal& terminal)
{
    try {
        RunDefaults defaults(options.defaults.values());
        requireFitSettings(defaults.get());
        std::filesystem::path database;
        using Command = TerminalOptions::Command;
        if (options.command == Command::share || options.command == Command::show) {
            requireTemporaryDirectory();
            database = plausibleDatabase(defaults.get());
            requireOwnFile(options.copy, database);
        }
        return Run(options, defaults.get(), std::move(database), terminal).exitStatus();
    } catch (const CommandFailure& failure) {
        terminal.say(failure.text());
        return static_cast<int>(failure.status());
    } catch (const NoHomeFolder& failure) {
        terminal.say(errorText(failure).text);
        return static_cast<int>(TerminalStatus::noAccess);
    } catch (const std::exception& error) {
        terminal.say(unexpectedProblem + printable(error.what()) + ".");
        return static_cast<int>(TerminalStatus::failed);
    }
}

} // namespace
} // namespace vorn

int main(int argc, char** argv)
{
    vorn::memory::keepPrivate();
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe or connection is a failure to report, not the program's end
    const auto parsed = vorn::parseTerminalOptions(argc, argv);
    if (const auto* end = std::get_if<vorn::TerminalOptionsEnd>(&parsed)) {
        std::fputs(end->text.c_str(), end->isMistake ? stderr : stdout);
        return static_cast<int>(end->isMistake ? vorn::TerminalStatus::wrongArguments : vorn::TerminalStatus::done);
    }
    const vorn::Terminal terminal(stderr, vorn::Terminal::currentTraits());
    return vorn::runTerminal(std::get<vorn::TerminalOptions>(parsed), terminal);
}
