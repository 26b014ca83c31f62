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

/// The user defaults of one run: the user's settings, or those in the file that the command line names, with the
/// command line's overrides on top. Threads: the main one.
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

/// Whether the window's session outlives the run. A run that forgets it does not touch the keychain.
bool keepsSession(const UserDefaults& defaults);

/// The keychain item that holds the session. All programs share one, unless the keychain keeps programs apart and this
/// program is not in a bundle. It then has an item of its own: otherwise the system would ask the user whenever one
/// program read the other's item.
KeychainItem sessionItem();
KeychainItem sessionItem(bool keepsProgramsApart, bool isInBundle);

/// Everything the model works with on this machine: the one place where the real services are put together, for the
/// window and for the terminal. Shut down the context whose jobs use them before destroying this object. Threads: the
/// main one.
class LiveServices {
public:
    /// The time that cancelled jobs have for clean-up. A submission's abort that the service has not answered by then
    /// is lost.
    static constexpr std::chrono::milliseconds patienceForJobs{700};

    struct Options {
        bool keepsSession = true;            ///< in the keychain; otherwise as long as this object lives
        std::filesystem::path application{}; ///< what the desktop reveals and restarts, see `applicationOf`
        std::function<void()> quit = [] {};  ///< ends the program; called within `AppModel::relaunch`
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
    TemporaryItems temporaryItems_; ///< before the other services: it sweeps leftovers before they create files
    SystemClock clock_;
    std::shared_ptr<HTTPSession> http_;
    BackgroundPool pool_;
    DetachedThreads patient_;
    std::shared_ptr<TokenStore> tokens_;
    VornAPI api_;
    SystemWorkspace workspace_;
};

} // namespace vorn
