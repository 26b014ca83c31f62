#pragma once

#include "NimbrelExportKit/Messages/TemporaryItems.h"
#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/Clock.h"
#include "Platform/Async/DetachedThreads.h"
#include "Platform/Async/MainContext.h"
#include "Platform/Desktop/SystemWorkspace.h"
#include "Platform/Keychain/Keychain.h"
#include "VornMac/Composition/LayeredDefaults.h"
#include "VornMac/Composition/SettingsDefaults.h"
#include "VornMac/Model/AppServices.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>

namespace vorn {

/// The user defaults of one run: the user's settings, or those in the file that the command line names, under the
/// overrides of that line. Threads: the main one.
class RunDefaults {
public:
    explicit RunDefaults(LayeredDefaults::Line line);
    RunDefaults(RunDefaults&&) = delete;

    UserDefaults& get() noexcept { return layered_; }
    const UserDefaults& get() const noexcept { return layered_; }

private:
    SettingsDefaults settings_;
    LayeredDefaults layered_;
};

/// The Messages database named by `defaults`, else the user's own. Throws `NoHomeFolder`.
std::filesystem::path messagesDatabase(const UserDefaults& defaults);

/// Whether the window's session outlives the run. A run on settings of its own does not touch the keychain.
bool keepsSession(const UserDefaults& defaults);

/// The session's place in the keychain: the same for all programs, except where the keychain keeps programs apart and
/// this one is not an application in a bundle. Then it has one of its own: otherwise each program would make the system
/// ask the user about the other's.
KeychainItem sessionItem();
KeychainItem sessionItem(bool keepsProgramsApart, bool isInBundle);

/// Everything the model works with on this machine: the one place where the real services are put together, for the
/// window and for the terminal. Shut down the context whose jobs use them before destroying it. Threads: the main one.
class LiveServices {
public:
    /// For the clean-up of cancelled jobs. An abort that the service does not answer by then is lost.
    static constexpr std::chrono::milliseconds patienceForJobs{700};

    struct Options {
        bool keepsSession = true;            ///< in the keychain; otherwise as long as this object lives
        std::filesystem::path application{}; ///< what the desktop reveals and starts again, see `applicationOf`
        std::function<void()> quit = [] {};  ///< called by the desktop, within an operation of the model, to relaunch
    };

    /// `defaults` outlive this object.
    LiveServices(UserDefaults& defaults, std::filesystem::path messagesDatabase, Options options);
    LiveServices(LiveServices&&) = delete;

    /// The services for the model, with jobs on `context`. They point into this object.
    AppServices forModel(MainContext& context);

    Clock& clock() noexcept { return clock_; }
    BackgroundExecutor& background() noexcept { return pool_; }
    const VornAPI& api() const noexcept { return api_; }

private:
    UserDefaults& defaults_;
    std::filesystem::path messagesDatabase_;
    TemporaryItems temporaryItems_; ///< first: it sweeps leftovers before anything makes such a file
    SystemClock clock_;
    std::shared_ptr<HTTPSession> http_;
    BackgroundPool pool_;
    DetachedThreads patient_;
    std::shared_ptr<TokenStore> tokens_;
    VornAPI api_;
    SystemWorkspace workspace_;
};

} // namespace vorn
