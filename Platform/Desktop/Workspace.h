#pragma once

#include <filesystem>
#include <string>

namespace vorn {

/// What the application asks of the desktop. Threads: the main one. Never waits for the user.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Opens `url` with the program registered for it; returns whether that worked.
    virtual bool open(const std::string& url) = 0;

    /// Shows the running application (without a bundle, the program's file) selected in the file manager.
    virtual void revealApplication() = 0;

    /// Restarts the application, for permissions that apply to new processes only. Without an application bundle the
    /// process just ends; if the helper that restarts it cannot run, the process goes on.
    virtual void relaunch() = 0;
};

} // namespace vorn
