#include "Platform/Base/FileDescriptor.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace vorn {

FileDescriptor openRegularFile(const std::filesystem::path& path) noexcept
{
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat facts{};
    if (!file || fstat(file.get(), &facts) != 0) return FileDescriptor(-1);
    if (S_ISREG(facts.st_mode)) return file;
    errno = S_ISDIR(facts.st_mode) ? EISDIR : EINVAL;
    return FileDescriptor(-1);
}

FileDescriptor createPrivateFile(const std::filesystem::path& path) noexcept
{
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    FileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, ownerOnly));
    // The umask may have removed the owner's rights too.
    if (!file || fchmod(file.get(), ownerOnly) == 0) return file;
    const int code = errno;
    unlink(path.c_str());
    errno = code;
    return FileDescriptor(-1);
}

} // namespace vorn
