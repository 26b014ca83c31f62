#include "tests/Platform/Base/MacCopier.h"

#include "Platform/Base/FileDescriptor.h"

#include <array>
#include <cerrno>
#include <cstddef>

#include <copyfile.h>
#include <fcntl.h>
#include <sys/clonefile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

struct _copyfile_state {
    copyfile_callback_t callback = nullptr;
    void* context = nullptr;
    off_t copied = 0;

    int tell(int stage) { return callback(COPYFILE_COPY_DATA, stage, this, nullptr, nullptr, context); }
};

namespace vorn::testing {

MacCopier& macCopier()
{
    static MacCopier copier;
    return copier;
}

namespace {

int failWith(int code)
{
    errno = code;
    return -1;
}

using Piece = std::array<std::byte, 64 * 1024>;

/// Writes `piece`, or fails with `writeError` and records whether the callback asked to continue all the same.
ssize_t writePiece(int to, const Piece& piece, std::size_t size, copyfile_state_t state)
{
    MacCopier& copier = macCopier();
    if (copier.writeError == 0) return write(to, piece.data(), size);
    copier.wentOnAfterError = state->tell(COPYFILE_ERR) == COPYFILE_CONTINUE;
    return failWith(copier.writeError);
}

} // namespace
} // namespace vorn::testing

using vorn::FileDescriptor;
using vorn::testing::failWith;
using vorn::testing::macCopier;

extern "C" {

copyfile_state_t copyfile_state_alloc()
{
    return new _copyfile_state;
}

int copyfile_state_free(copyfile_state_t state)
{
    delete state;
    return 0;
}

int copyfile_state_get(copyfile_state_t state, std::uint32_t what, void* value)
{
    if (what != COPYFILE_STATE_COPIED) return failWith(EINVAL);
    *static_cast<off_t*>(value) = state->copied;
    return 0;
}

int copyfile_state_set(copyfile_state_t state, std::uint32_t what, const void* value)
{
    switch (what) {
    case COPYFILE_STATE_STATUS_CB:
        state->callback = reinterpret_cast<copyfile_callback_t>(const_cast<void*>(value));
        return 0;
    case COPYFILE_STATE_STATUS_CTX: state->context = const_cast<void*>(value); return 0;
    default: return failWith(EINVAL);
    }
}

int fcopyfile(int from, int to, copyfile_state_t state, copyfile_flags_t flags)
{
    if (flags != COPYFILE_DATA) return failWith(EINVAL);
    vorn::testing::Piece piece{};
    while (true) {
        const ssize_t count = read(from, piece.data(), piece.size());
        if (count <= 0) return static_cast<int>(count);
        const ssize_t written = vorn::testing::writePiece(to, piece, static_cast<std::size_t>(count), state);
        if (written < 0) return -1;
        ++macCopier().pieces;
        state->copied += written;
        if (state->tell(COPYFILE_PROGRESS) == COPYFILE_QUIT) return failWith(ECANCELED);
    }
}

int fclonefileat(int source, int folder, const char* to, std::uint32_t /*flags*/)
{
    if (!macCopier().clones) return failWith(ENOTSUP);
    struct stat facts{};
    if (fstat(source, &facts) != 0) return -1;
    const FileDescriptor target(openat(folder, to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!target) return -1;
    vorn::testing::Piece piece{};
    off_t at = 0;
    while (const ssize_t count = pread(source, piece.data(), piece.size(), at)) {
        if (count < 0 || write(target.get(), piece.data(), static_cast<std::size_t>(count)) != count) return -1;
        at += count;
    }
    if (fchmod(target.get(), facts.st_mode & 07777U) != 0) return -1;
    ++macCopier().clonesMade;
    macCopier().locked = macCopier().locksClones;
    return 0;
}

int fchflags(int /*file*/, std::uint32_t flags)
{
    macCopier().locked = flags != 0;
    return 0;
}

/// Replaces the C library's in this program.
int fchmod(int file, mode_t mode) noexcept
{
    if (macCopier().locked) return failWith(EPERM);
    return static_cast<int>(syscall(SYS_fchmod, file, mode));
}

} // extern "C"
