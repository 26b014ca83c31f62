#pragma once

#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/Clock.h"
#include "VornMac/Application/EventLoopContext.h"
#include "VornMac/Application/MainWindow.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/View/ScreenModel.h"
#include "bench/Window/NearService.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include <QQuickWindow>

namespace vorn::bench {

/// The application's window, 1180 × 760, on the real model with the real clock, pool and event loop; the service runs
/// in this process. Threads: the main one, while a `TimedApplication` exists.
class BenchWindow {
public:
    struct Options {
        std::filesystem::path history;
        bool isSignedIn = true;
        bool hasConsented = true;
        NearService::Options service{};
        std::function<void(AppModel&)> onModel = {}; ///< called before anything else observes the model
    };

    /// Shows the window at the first step that `options` leave open, and returns after its first frame.
    explicit BenchWindow(const Options& options);
    ~BenchWindow();
    BenchWindow(BenchWindow&&) = delete;

    AppModel& model() { return *model_; }
    ScreenModel& screenModel() { return *screenModel_; }
    QQuickWindow& window() { return window_->window(); }

    void runUntil(Step step) const;
    void runUntilFound() const;

private:
    class Defaults;
    class NoWorkspace;

    SystemClock clock_;
    BackgroundPool pool_;
    std::unique_ptr<Defaults> defaults_;
    std::unique_ptr<NoWorkspace> workspace_;
    EventLoopContext loop_;
    std::optional<AppModel> model_;
    std::optional<ScreenModel> screenModel_;
    std::optional<MainWindow> window_;
};

} // namespace vorn::bench
