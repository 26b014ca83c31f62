#include "Platform/Base/UnnamedFile.h"

#include <cerrno>

namespace vorn {

FileDescriptor createUnnamedFile(const std::filesystem::path& /*folder*/) noexcept
{
    errno = ENOTSUP; // macOS creates every file with a name
    return FileDescriptor(-1);
}

bool nameFile(const FileDescriptor& /*file*/, const std::filesystem::path& /*path*/) noexcept
{
    errno = ENOTSUP;
    return false;
}

} // namespace vorn
