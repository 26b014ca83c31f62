#include "Platform/Base/CopyFile.h"

#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/Owned.h"

#include <cerrno>
#include <cstdint>
#include <exception>
#include <system_error>
#include <type_traits>

#include <copyfile.h>
#include <fcntl.h>
#include <sys/clonefile.h>
#include <sys/stat.h>

namespace vorn {
namespace {

[[noreturn]] void fail(const char* what, const std::filesystem::path& path)
{
    throw std::filesystem::filesystem_error(what, path, std::error_code(errno, std::generic_category()));
}

FileDescriptor openSource(const std::filesystem::path& path)
{
    FileDescriptor file = openRegularFile(path);
    if (!file) fail("cannot read", path);
    return file;
}

/// Removes the access rights that a clone inherits, and the lock flag, which would keep it from being deleted.
bool makePrivate(const FileDescriptor& clone)
{
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    if (fchmod(clone.get(), ownerOnly) == 0) return true;
    return errno == EPERM && fchflags(clone.get(), 0) == 0 && fchmod(clone.get(), ownerOnly) == 0;
}

/// Clones the source where the file system can. False when no clone was made: a copy then reports what is wrong.
bool clone(const FileDescriptor& source, const std::filesystem::path& to)
{
    if (fclonefileat(source.get(), AT_FDCWD, to.c_str(), CLONE_NOOWNERCOPY) != 0) return false;
    const FileDescriptor target(open(to.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!target || !makePrivate(target)) fail("cannot write", to);
    return true;
}

struct Watch {
    const FileManager::CopyProgress& progress;
    std::exception_ptr thrown;
};

/// Called from C code, through which no exception may pass.
int onCopy(int /*what*/, int stage, copyfile_state_t state, const char* /*from*/, const char* /*to*/, void* context)
{
    // Continuing after an error repeats the same write: on a full disk, forever.
    if (stage == COPYFILE_ERR) return COPYFILE_QUIT;
    auto& watch = *static_cast<Watch*>(context);
    if (stage != COPYFILE_PROGRESS || !watch.progress) return COPYFILE_CONTINUE;
    off_t copied = 0;
    copyfile_state_get(state, COPYFILE_STATE_COPIED, &copied);
    try {
        watch.progress(static_cast<std::uint64_t>(copied));
        return COPYFILE_CONTINUE;
    } catch (...) {
        watch.thrown = std::current_exception();
        return COPYFILE_QUIT;
    }
}

using State = Owned<std::remove_pointer_t<copyfile_state_t>, copyfile_state_free>;

/// Copies only the content: no access rights, ACLs or flags.
void copyContent(const FileDescriptor& source, const std::filesystem::path& to,
                 const FileManager::CopyProgress& progress)
{
    FileDescriptor target = createPrivateFile(to);
    if (!target) fail("cannot write", to);
    Watch watch{progress, nullptr};
    const copyfile_callback_t callback = onCopy;
    const State state(copyfile_state_alloc());
    if (!state ||
        copyfile_state_set(state.get(), COPYFILE_STATE_STATUS_CB, reinterpret_cast<const void*>(callback)) != 0 ||
        copyfile_state_set(state.get(), COPYFILE_STATE_STATUS_CTX, &watch) != 0)
        fail("cannot write", to);
    const int result = fcopyfile(source.get(), target.get(), state.get(), COPYFILE_DATA);
    if (watch.thrown) std::rethrow_exception(watch.thrown);
    // The source may be at fault, but reading it was not refused.
    if (result != 0 || target.reset() != 0) fail("cannot write", to);
}

} // namespace

void copyFileContent(const std::filesystem::path& from, const std::filesystem::path& to,
                     const FileManager::CopyProgress& progress)
{
    const FileDescriptor source = openSource(from);
    if (!clone(source, to)) copyContent(source, to, progress);
}

} // namespace vorn
