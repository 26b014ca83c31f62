#pragma once

#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"
#include "Tools/Terminal/LinkFlow.h"
#include "Tools/Terminal/LinkPrinter.h"
#include "Tools/Terminal/SessionKeychain.h"
#include "Tools/Terminal/Terminal.h"
#include "Tools/Terminal/TerminalOptions.h"
#include "Tools/Terminal/TerminalResults.h"
#include "VornMacCore/Client/VornAPI.h"
#include "VornMacCore/Sessions/TokenStore.h"

#include <memory>
#include <string>

namespace vorn {

/// What a command works with. The pointers are never null and must outlive the command.
struct TerminalServices {
    MainContext* context = nullptr;
    Clock* clock = nullptr;
    std::shared_ptr<HTTPSession> http;
    BackgroundPool* pool = nullptr;
    std::shared_ptr<TokenStore> tokens;
    std::optional<SessionKeychain> keychain; ///< behind the store; nothing when the keychain is left alone
    VornAPI api;
    const Terminal* terminal = nullptr;
};

/// Runs one command of `vorn-terminal`, from its first line on the terminal to its result on standard output.
/// Threads: the context's own.
class TerminalCommand {
public:
    TerminalCommand(TerminalOptions options, TerminalServices services);

    /// Errors: `failureOf` says what they mean. The command must outlive it.
    Async<> run();

private:
    Async<> link();
    Async<> upload();
    Async<> status();
    Async<> signOut();

    /// The session of a link that the user approves now. Nothing is stored yet.
    Async<StoredSession> linkNow(LinkFlow::Patience patience);
    Async<StoredSession> linkForThisRun();
    bool keeps(const StoredSession& session) const;
    void sayLinked(const StoredSession& session) const;
    StoredSession storedSession() const;
    Async<> revoke(StoredSession session) const;
    void requireForgotten() const;

    Async<NimbrelState> questFor(VornAPI api, std::int64_t sizeBytes);
    Async<SubmissionStatus> send(VornAPI api);
    Async<SubmissionStatus> watch(VornAPI api, SubmissionStatus submission, std::string questReward);
    void requireAccepted(const SubmissionStatus& submission) const;

    template <class Result>
    void print(const Result& result) const;

    TerminalOptions options_;
    TerminalServices services_;
    LinkPrinter linkPrinter_;
};

} // namespace vorn
