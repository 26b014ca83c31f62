#pragma once

#include "Platform/Desktop/Workspace.h"

#include <functional>

namespace vorn {

/// The programs that the system's workspace starts. One without a "/" is looked for in `PATH`.
struct DesktopPrograms {
    std::string open;  ///< opens what it is given, as the user would by a double click
    std::string shell; ///< outlives this process, and then starts the application anew

    static DesktopPrograms ofSystem();
};

/// The user's own desktop. What it starts inherits nothing of this process but its environment, and survives it.
class SystemWorkspace final : public Workspace {
public:
    /// `application` is what is shown and started anew, see `applicationOf`. `terminate` asks this process to end; it
    /// is called from within `relaunch`, and may return.
    SystemWorkspace(std::filesystem::path application, std::function<void()> terminate,
                    DesktopPrograms programs = DesktopPrograms::ofSystem());

    /// Waits up to 2 seconds for the program that finds another one for `url`. One that takes longer shows a dialog or
    /// has become that other one: this counts as taken.
    bool open(const std::string& url) override;
    void revealApplication() override;
    void relaunch() override;

private:
    std::filesystem::path application_;
    std::function<void()> terminate_;
    DesktopPrograms programs_;
};

/// The application bundle (…/Name.app) that holds the file `executable`; where there is none, the file itself.
std::filesystem::path applicationOf(const std::filesystem::path& executable);

} // namespace vorn
