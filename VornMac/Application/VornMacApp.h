#pragma once

#include "Platform/Desktop/DesktopPresence.h"
#include "VornMac/Application/AppDelegate.h"
#include "VornMac/Application/AppearanceSettings.h"
#include "VornMac/Application/EventLoopContext.h"
#include "VornMac/Application/MainWindow.h"
#include "VornMac/Application/PresenceKeeper.h"
#include "VornMac/Application/QuitWatch.h"
#include "VornMac/Application/SingleInstance.h"
#include "VornMac/Composition/LiveServices.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/View/ScreenModel.h"

#include <memory>
#include <optional>

namespace vorn {

/// The application: owns its model and its window for the life of the process. Threads: the main one.
class VornMacApp {
public:
    /// Sets the names, version and identifiers by which desktops know this application. Call it before constructing the
    /// application object.
    static void describe();

    /// `line` holds the defaults of the command line; `source` describes the window. Needs an application object.
    VornMacApp(QuitWatch& watch, LayeredDefaults::Line line, QUrl source = MainWindow::standardSource());
    ~VornMacApp();
    VornMacApp(VornMacApp&&) = delete;

    /// Runs until the user or a signal quits, and returns the exit status. If the application is already running, asks
    /// that instance to come to the front and returns 0. Throws `WindowError`.
    int run();

    /// Ends `run` within a second. May be called repeatedly.
    void quit();

    AppModel& model(); ///< made on first use
    MainWindow& mainWindow();

private:
    bool isFirst();
    void keepPresence();
    MainContext& context() noexcept { return loop_.context(); }

    QuitWatch& quitWatch_;
    QUrl source_;
    RunDefaults defaults_;
    LiveServices services_;
    EventLoopContext loop_; ///< destroyed before the services that its jobs use
    std::optional<SingleInstance> instance_;
    std::optional<QuitWatch::Delivery> delivery_;
    std::optional<AppearanceSettings> appearance_;
    std::optional<AppModel> model_;
    std::optional<ScreenModel> screenModel_;
    std::optional<MainWindow> mainWindow_;
    std::unique_ptr<DesktopPresence> presence_;
    std::optional<PresenceKeeper> presenceKeeper_;
    std::optional<AppDelegate> delegate_;
};

} // namespace vorn
