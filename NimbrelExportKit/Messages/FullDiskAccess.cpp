#include "NimbrelExportKit/Messages/FullDiskAccess.h"

#include "Platform/Base/FileDescriptor.h"

#include <cerrno>

#include <fcntl.h>

namespace vorn::FullDiskAccess {

std::filesystem::path messagesDatabaseURL(FileManager& fileManager)
{
    return fileManager.homeDirectory() / "Library/Messages/chat.db";
}

FullDiskAccessStatus probe(const std::filesystem::path& url)
{
    const FileDescriptor file(open(url.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)); // a pipe would wait for a writer
    if (file) return FullDiskAccessStatus::granted;
    return errno == ENOENT ? FullDiskAccessStatus::noDatabase : FullDiskAccessStatus::denied;
}

} // namespace vorn::FullDiskAccess
