#pragma once

#include <filesystem>
#include <string>

namespace vorn {

/// What the application asks the user's desktop for. Threads: the main one. Nothing here waits for the user.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Opens `url` with the program that is there for it. Says whether one took it.
    virtual bool open(const std::string& url) = 0;

    /// Shows the running application, or the program's file where there is no bundle, selected in a window of the file
    /// manager.
    virtual void revealApplication() = 0;

    /// Ends this process and starts the application anew, for what a system grants to fresh processes only. Where there
    /// is no application bundle, or the helper that starts it cannot run, the process ends without it, or stays,
    /// respectively.
    virtual void relaunch() = 0;
};

} // namespace vorn
