#pragma once

#include "Platform/Async/BackgroundExecutor.h"
#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"
#include "Platform/Base/Bundle.h"
#include "Platform/Base/FileManager.h"
#include "Platform/Base/UserDefaults.h"
#include "Platform/Desktop/Workspace.h"
#include "VornMacCore/Client/VornAPI.h"

#include <filesystem>
#include <memory>

namespace vorn {

/// The services of the application model. Everything pointed to must outlive the model; shut `context` down before
/// destroying the model or any of the services.
struct AppServices {
    MainContext* context;
    Clock* clock;
    BackgroundExecutor* background;
    VornAPI api;
    std::shared_ptr<TokenStore> tokens;    ///< the one that `api` uses
    std::shared_ptr<HTTPSession> transfer; ///< sends the parts of an upload
    UserDefaults* defaults;
    Workspace* workspace;
    FileManager* files;
    std::filesystem::path messagesDatabase;
    Bundle bundle; ///< the application's
    /// For work that may wait for a person and must not delay the program's end; if null, `background` is used.
    BackgroundExecutor* patient = nullptr;
    /// The least time for which an upload is shown, so that the user can read it.
    Clock::Duration shortestUpload{};
};

} // namespace vorn
