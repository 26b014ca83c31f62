#pragma once

#include "NimbrelExportKit/Leftovers/TemporaryItems.h"
#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/Clock.h"
#include "Platform/Desktop/SystemWorkspace.h"
#include "VornMac/Application/EventLoopContext.h"
#include "VornMac/Defaults/LayeredDefaults.h"
#include "VornMac/Defaults/SettingsDefaults.h"
#include "VornMac/Model/AppServices.h"

#include <functional>
#include <memory>

namespace vorn {

/// What the application's model works with, on this very machine. The members go in the reverse of their order: first
/// the context, whose jobs use the others. Threads: the main one.
class Surroundings {
public:
    /// `line` are the defaults of the command line; `executable` is the running program's file. `quit` is what the
    /// desktop calls to end this process, from within a model's operation.
    Surroundings(LayeredDefaults::Line line, const std::filesystem::path& executable, std::function<void()> quit);
    ~Surroundings();
    Surroundings(Surroundings&&) = delete;

    /// As the model takes them; they point into this object.
    AppServices services();

    UserDefaults& defaults() noexcept { return defaults_; }
    Clock& clock() noexcept { return clock_; }
    MainContext& context() noexcept { return loop_.context(); }

private:
    SettingsDefaults settings_;
    LayeredDefaults defaults_;
    TemporaryItems temporaryItems_; ///< before anything that makes one
    SystemClock clock_;
    std::shared_ptr<HTTPSession> http_;
    BackgroundPool pool_;
    std::shared_ptr<TokenStore> tokens_;
    SystemWorkspace workspace_;
    EventLoopContext loop_;
};

} // namespace vorn
