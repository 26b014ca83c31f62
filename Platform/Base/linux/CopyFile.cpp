#include "Platform/Base/CopyFile.h"

#include "Platform/Base/FileDescriptor.h"

#include <cerrno>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>

namespace vorn {
namespace {

/// Small enough to notice a cancellation soon, large enough for the calls to cost nothing.
constexpr std::size_t pieceSize = 32 * 1024 * 1024;

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

FileDescriptor openTarget(const std::filesystem::path& path)
{
    FileDescriptor file = createPrivateFile(path);
    if (!file) fail("cannot write", path);
    return file;
}

/// Whether `code` means that the kernel cannot copy between two files; other codes are failures of the copy itself.
bool isUnsupported(int code)
{
    return code == EXDEV || code == EINVAL || code == ENOSYS || code == EOPNOTSUPP || code == EPERM;
}

class Copy {
public:
    Copy(const std::filesystem::path& from, const std::filesystem::path& to, const FileManager::CopyProgress& progress)
        : from_(from), to_(to), progress_(progress)
    {
    }

    void run()
    {
        if (ioctl(target_.get(), FICLONE, source_.get()) != 0 && !copyInKernel()) copyThroughMemory();
        if (target_.reset() != 0) failToWrite();
    }

private:
    /// False if the kernel cannot copy between these files; nothing has been copied then.
    bool copyInKernel()
    {
        while (true) {
            const ssize_t count = copy_file_range(source_.get(), nullptr, target_.get(), nullptr, pieceSize, 0);
            if (count == 0)
                return copied_ > 0; // some file systems return 0 when they cannot; retrying an empty file is cheap
            if (count > 0) {
                advance(static_cast<std::size_t>(count));
            } else if (copied_ == 0 && isUnsupported(errno)) {
                return false;
            } else if (errno != EINTR) {
                failToWrite(); // the source may be at fault, but reading it was not refused
            }
        }
    }

    void copyThroughMemory()
    {
        std::vector<std::byte> piece(1024 * 1024);
        while (true) {
            const ssize_t count = read(source_.get(), piece.data(), piece.size());
            if (count == 0) return;
            if (count > 0) {
                writeAll(ByteView(piece).first(static_cast<std::size_t>(count)));
            } else if (errno != EINTR) {
                fail("cannot read", from_);
            }
        }
    }

    void writeAll(ByteView bytes)
    {
        while (!bytes.empty()) {
            const ssize_t count = write(target_.get(), bytes.data(), bytes.size());
            if (count < 0 && errno != EINTR) failToWrite();
            if (count < 0) continue;
            bytes = bytes.subspan(static_cast<std::size_t>(count));
            advance(static_cast<std::size_t>(count));
        }
    }

    [[noreturn]] void failToWrite() const { fail("cannot write", to_); }

    void advance(std::size_t count)
    {
        copied_ += count;
        if (progress_) progress_(copied_);
    }

    const std::filesystem::path& from_;
    const std::filesystem::path& to_;
    const FileManager::CopyProgress& progress_;
    FileDescriptor source_ = openSource(from_);
    FileDescriptor target_ = openTarget(to_); // after the source, or a refused source would leave an empty file behind
    std::uint64_t copied_ = 0;
};

} // namespace

void copyFileContent(const std::filesystem::path& from, const std::filesystem::path& to,
                     const FileManager::CopyProgress& progress)
{
    Copy(from, to, progress).run();
}

} // namespace vorn
