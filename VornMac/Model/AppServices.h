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

/// What the application model works with. All that is pointed to outlives the model; `context` is shut down before the
/// model and all of it goes.
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
};

} // namespace vorn
