#include "Platform/Base/CopyFile.h"

#include <cerrno>
#include <system_error>

#include <copyfile.h>
#include <sys/stat.h>

namespace vorn {
namespace {

struct Watch {
    const FileManager::CopyProgress& progress;
    std::exception_ptr stopped;
};

/// Called by the system's copier from inside a C function: an exception may not pass through it.
int onCopy(int /*what*/, int stage, copyfile_state_t state, const char* /*from*/, const char* /*to*/, void* context)
{
    auto& watch = *static_cast<Watch*>(context);
    if (stage != COPYFILE_PROGRESS) return COPYFILE_CONTINUE;
    off_t copied = 0;
    copyfile_state_get(state, COPYFILE_STATE_COPIED, &copied);
    try {
        if (watch.progress) watch.progress(static_cast<std::uint64_t>(copied));
        return COPYFILE_CONTINUE;
    } catch (...) {
        watch.stopped = std::current_exception();
        return COPYFILE_QUIT;
    }
}

struct FreeState {
    void operator()(copyfile_state_t state) const noexcept { copyfile_state_free(state); }
};

} // namespace

void copyFileContent(const std::filesystem::path& from, const std::filesystem::path& to,
                     const FileManager::CopyProgress& progress)
{
    Watch watch{progress, nullptr};
    const std::unique_ptr<std::remove_pointer_t<copyfile_state_t>, FreeState> state(copyfile_state_alloc());
    copyfile_state_set(state.get(), COPYFILE_STATE_STATUS_CB, reinterpret_cast<const void*>(&onCopy));
    copyfile_state_set(state.get(), COPYFILE_STATE_STATUS_CTX, &watch);
    // COPYFILE_CLONE shares the blocks on APFS and falls back to copying; it implies that an existing target is
    // refused.
    const int result = copyfile(from.c_str(), to.c_str(), state.get(), COPYFILE_CLONE | COPYFILE_DATA);
    const int code = errno;
    if (watch.stopped) std::rethrow_exception(watch.stopped);
    if (result != 0 || chmod(to.c_str(), 0600) != 0) {
        throw std::filesystem::filesystem_error("cannot copy", from, to,
                                                std::error_code(result != 0 ? code : errno, std::generic_category()));
    }
}

} // namespace vorn
