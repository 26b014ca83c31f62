#include "NimbrelExportKit/Messages/MessagesSnapshot.h"

#include "NimbrelExportKit/Messages/FullDiskAccess.h"
#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "NimbrelExportKit/Messages/TemporaryNames.h"

#include <utility>

namespace vorn {
namespace {

namespace fs = std::filesystem;

/// The path of the write-ahead log of the database at `path`.
fs::path logOf(fs::path path)
{
    return path += "-wal";
}

void throwUnlessReadable(const fs::path& source)
{
    switch (FullDiskAccess::probe(source)) {
    case FullDiskAccessStatus::granted: return;
    case FullDiskAccessStatus::noDatabase: throw NimbrelExportError(NimbrelExportError::NoDatabase{});
    case FullDiskAccessStatus::denied: throw NimbrelExportError(NimbrelExportError::AccessDenied{});
    }
}

} // namespace

MessagesSnapshot MessagesSnapshot::take(const fs::path& source, FileManager& fileManager,
                                        const FileManager::CopyProgress& progress)
{
    throwUnlessReadable(source);
    fs::path directory = fileManager.temporaryDirectory() / temporarynames::snapshot.make();
    fileManager.createPrivateDirectory(directory);
    MessagesSnapshot snapshot(std::move(directory), fileManager); // its destructor cleans up from here on
    try {
        fileManager.copyFile(source, snapshot.databaseURL(), progress);
    } catch (const fs::filesystem_error& error) {
        if (isPermissionDenied(error) && error.path1() == source)
            throw NimbrelExportError(NimbrelExportError::AccessDenied{});
        throw;
    }
    if (fileManager.fileExists(logOf(source))) {
        fileManager.copyFile(logOf(source), logOf(snapshot.databaseURL()), progress);
    }
    return snapshot;
}

MessagesSnapshot::MessagesSnapshot(fs::path directory, FileManager& fileManager)
    : directory_(std::move(directory)), fileManager_(&fileManager)
{
}

MessagesSnapshot::MessagesSnapshot(MessagesSnapshot&& other) noexcept
    : directory_(std::exchange(other.directory_, {})), fileManager_(other.fileManager_)
{
}

void MessagesSnapshot::remove() noexcept
{
    if (directory_.empty()) return;
    try {
        fileManager_->remove(directory_);
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): ignored, as the header says
    }
}

} // namespace vorn
