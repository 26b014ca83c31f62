#include "Platform/Base/UnnamedFile.h"

#include <string>

#include <fcntl.h>
#include <sys/stat.h>

namespace vorn {

FileDescriptor createUnnamedFile(const std::filesystem::path& folder) noexcept
{
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    FileDescriptor file(open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, ownerOnly));
    // The umask may have removed the owner's rights too.
    return file && fchmod(file.get(), ownerOnly) == 0 ? std::move(file) : FileDescriptor(-1);
}

bool nameFile(const FileDescriptor& file, const std::filesystem::path& path) noexcept
{
    // Linking the descriptor itself needs a privilege; linking its entry in /proc does not.
    const std::string entry = "/proc/self/fd/" + std::to_string(file.get());
    return linkat(AT_FDCWD, entry.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

} // namespace vorn
