#include "Platform/Desktop/SystemWorkspace.h"

#include "Platform/Desktop/DetachedProgram.h"
#include "Platform/Desktop/RevealItem.h"

#include <system_error>
#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr auto openerTimeout = 2s;

/// Starts the new process after the old one has quit: permissions just granted apply to new processes only.
constexpr const char* openLater = R"(sleep 1; /usr/bin/open "$0")";

bool isBundle(const std::filesystem::path& application)
{
    return application.native().ends_with(".app");
}

} // namespace

SystemWorkspace::SystemWorkspace(std::filesystem::path application, std::function<void()> terminate,
                                 DesktopPrograms programs)
    : application_(std::move(application)), terminate_(std::move(terminate)), programs_(std::move(programs))
{
}

bool SystemWorkspace::open(const std::string& url)
{
    try {
        const DetachedProgram opener(programs_.open, {url});
        return opener.waitForEnd(openerTimeout).value_or(0) == 0;
    } catch (const std::system_error&) {
        return false;
    }
}

void SystemWorkspace::revealApplication()
{
    try {
        revealItem(application_, programs_.open);
    } catch (const std::system_error&) { // NOLINT(bugprone-empty-catch): the user sees that no window opened
    }
}

void SystemWorkspace::relaunch()
{
    if (isBundle(application_)) {
        try {
            const DetachedProgram opener(programs_.shell, {"-c", openLater, application_.native()});
        } catch (const std::system_error&) {
            return;
        }
    }
    terminate_();
}

std::filesystem::path applicationOf(const std::filesystem::path& executable)
{
    const auto folder = executable.parent_path();
    const auto contents = folder.parent_path();
    const auto bundle = contents.parent_path();
    const bool isInBundle = folder.filename() == "MacOS" && contents.filename() == "Contents" && isBundle(bundle);
    return isInBundle ? bundle : executable;
}

} // namespace vorn
