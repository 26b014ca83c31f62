#pragma once

#include "Platform/Async/BackgroundExecutor.h"
#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"
#include "Platform/Base/InterruptWatch.h"
#include "Tools/Terminal/Journey.h"
#include "Tools/Terminal/SessionKeychain.h"
#include "Tools/Terminal/Terminal.h"
#include "Tools/Terminal/TerminalOptions.h"
#include "Tools/Terminal/TerminalResults.h"
#include "VornMac/Model/AppModel.h"

#include <memory>
#include <optional>
#include <string>

namespace vorn {

/// The services that a command uses. The pointers are never null and must outlive the command.
struct TerminalServices {
    MainContext* context;
    Clock* clock;
    BackgroundExecutor* background;
    VornAPI api;
    std::optional<SessionKeychain> keychain; ///< behind the token store; nothing if the keychain is not used
    AppModel* model;
    const Terminal* terminal;
    InterruptWatch* interrupts;
};

/// Runs one command of `vorn-terminal`, from its first line on the terminal to its result on standard output.
/// Threads: the context's own.
class TerminalCommand {
public:
    TerminalCommand(TerminalOptions options, TerminalServices services);

    /// Throws what `failureOf` describes. The command must outlive the run.
    Async<> run();

private:
    Async<> restoreSession();
    void requireKeychain(const std::string& consequence) const;
    Async<> runCommand();
    Async<> share();
    Async<> show();
    Async<> link();
    Async<> status();
    Async<> signOut();

    Async<> findChat();
    Async<> saveCopy(std::filesystem::path path);
    void list(const NimbrelExportResult& found) const;
    void sayWhatIsNotKept() const;
    StoredSession storedSession() const;
    Async<> revoke(StoredSession session) const;
    void requireForgotten() const;
    static void requireAccepted(const SubmissionStatus& submission);
    static void print(const std::string& text);

    TerminalOptions options_;
    TerminalServices services_;
    Answers answers_;
};

} // namespace vorn
