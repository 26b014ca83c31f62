#include "Platform/Base/CancelFlag.h"
#include "Platform/Signals/InterruptWatch.h"
#include "Tools/Terminal/CommandFailure.h"
#include "Tools/Terminal/SessionKeychain.h"
#include "Tools/Terminal/TerminalCommand.h"
#include "VornMacCore/Application/Application.h"
#include "VornMacCore/Client/APIConfiguration.h"
#include "VornMacCore/Sessions/InMemoryTokenStore.h"
#include "VornMacCore/Sessions/KeychainTokenStore.h"
#include "VornMacCore/Sessions/RememberingTokenStore.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr const char* stopped = "Stopped.";
/// The abort of an upload is on its way meanwhile. Who cannot wait that long sends a second signal.
constexpr auto graceAfterSignal = 2s;

/// How the command ended: its exit status, or that it was cancelled.
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
        if (*failure.what() != '\0') terminal->say(failure.what());
        *ending = failure.status();
    }
}

/// One run of the program. The members' order is that of their end: first the jobs, then what they use.
class Run {
public:
    Run(const TerminalOptions& options, const Terminal& terminal)
        : terminal_(terminal), tokens_(storeFor(options)),
          command_(options, {&context_, &clock_, http_, &pool_, tokens_, keychainFor(options),
                             VornAPI(configuration(options.defaults), http_, tokens_), &terminal_})
    {
    }

    int exitStatus()
    {
        task_ = Task(context_, runToTheEnd(&command_, &terminal_, &ending_));
        context_.runUntil([this] { return !task_.isRunning(); });
        context_.shutDown();
        if (ending_) return static_cast<int>(*ending_);
        terminal_.say(stopped);
        return interrupts_.exitStatus();
    }

private:
    static APIConfiguration configuration(const ArgumentDefaults& defaults)
    {
        return APIConfiguration::resolve(applicationBundle(), defaults.text(APIConfiguration::overrideDefaultsKey));
    }

    static std::shared_ptr<TokenStore> storeFor(const TerminalOptions& options)
    {
        if (!options.keychain) return std::make_shared<InMemoryTokenStore>();
        return std::make_shared<RememberingTokenStore>(
            std::make_shared<KeychainTokenStore>(bundleIdentifier(), KeychainTokenStore::sessionAccount));
    }

    static std::optional<SessionKeychain> keychainFor(const TerminalOptions& options)
    {
        if (!options.keychain) return std::nullopt;
        return SessionKeychain(Keychain::system(), {bundleIdentifier(), KeychainTokenStore::sessionAccount});
    }

    /// What ends the program when the jobs do not end in time. A line that changes may be on the terminal still.
    std::string lastWords() const
    {
        return std::string(terminal_.traits().isTerminal ? "\r\x1B[K" : "") + stopped + "\n";
    }

    const Terminal& terminal_;
    Ending ending_;
    MainContext context_;
    Task task_;
    InterruptWatch interrupts_{InterruptWatch::Deadline{[this] { context_.post([this] { task_.cancel(); }); },
                                                        graceAfterSignal, lastWords()}}; // before any thread
    SystemClock clock_;
    std::shared_ptr<HTTPSession> http_ = HTTPSession::make();
    BackgroundPool pool_{1};
    std::shared_ptr<TokenStore> tokens_;
    TerminalCommand command_;
};

} // namespace
} // namespace vorn

int main(int argc, char** argv)
{
    const auto parsed = vorn::parseTerminalOptions(argc, argv);
    if (const auto* end = std::get_if<vorn::TerminalOptionsEnd>(&parsed)) {
        std::fputs(end->text.c_str(), end->isMistake ? stderr : stdout);
        return static_cast<int>(end->isMistake ? vorn::TerminalStatus::wrongArguments : vorn::TerminalStatus::done);
    }
    const vorn::Terminal terminal(stderr, vorn::Terminal::currentTraits());
    return vorn::Run(std::get<vorn::TerminalOptions>(parsed), terminal).exitStatus();
}
