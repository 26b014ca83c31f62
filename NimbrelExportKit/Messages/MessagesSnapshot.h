#pragma once

#include "Platform/Base/FileManager.h"

#include <filesystem>

namespace vorn {

/// A private copy of the Messages database and its write-ahead log, deleted with the object. Never writes to the live
/// database, to which Messages may be writing.
class MessagesSnapshot {
public:
    /// Copies the database at `source` into a new folder of the temporary directory that only this user may enter.
    /// Throws `NimbrelExportError` (no database, access denied) or the file manager's error, and leaves nothing behind.
    static MessagesSnapshot take(const std::filesystem::path& source,
                                 FileManager& fileManager = FileManager::standard(),
                                 const FileManager::CopyProgress& progress = {});

    ~MessagesSnapshot() { remove(); }
    MessagesSnapshot(MessagesSnapshot&& other) noexcept;
    MessagesSnapshot& operator=(MessagesSnapshot&&) = delete;

    const std::filesystem::path& directory() const noexcept { return directory_; }
    std::filesystem::path databaseURL() const { return directory_ / "chat.db"; }

    /// Deletes the folder with its content. Ignores failures: the folder is private, and swept later. Idempotent.
    void remove() noexcept;

private:
    MessagesSnapshot(std::filesystem::path directory, FileManager& fileManager);

    std::filesystem::path directory_; ///< empty once moved from
    FileManager* fileManager_;
};

} // namespace vorn
