#pragma once

#include "Platform/Desktop/Workspace.h"

#include <functional>

namespace vorn {

/// The programs that `SystemWorkspace` starts; one without "/" is searched for in `PATH`.
struct DesktopPrograms {
    std::string open;  ///< opens a file or URL, as a double click does
    std::string shell; ///< outlives this process and restarts the application

    static DesktopPrograms ofSystem();
};

/// The user's desktop. Programs that it starts inherit only the environment and the current folder, and may outlive
/// this process.
class SystemWorkspace final : public Workspace {
public:
    /// `application` is what is shown and restarted, see `applicationOf`. `terminate` asks this process to end;
    /// `relaunch` calls it, and it may return.
    SystemWorkspace(std::filesystem::path application, std::function<void()> terminate,
                    DesktopPrograms programs = DesktopPrograms::ofSystem());

    /// Waits up to 2 seconds for the opener. One that takes longer shows a dialog, or has become the program that
    /// handles `url`: that counts as opened.
    bool open(const std::string& url) override;
    void revealApplication() override;
    void relaunch() override;

private:
    std::filesystem::path application_;
    std::function<void()> terminate_;
    DesktopPrograms programs_;
};

/// The bundle (…/Name.app) that contains `executable`, else `executable` itself.
std::filesystem::path applicationOf(const std::filesystem::path& executable);

} // namespace vorn
