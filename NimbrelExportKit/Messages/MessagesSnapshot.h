#pragma once

#include "Platform/Base/FileManager.h"

#include <filesystem>

namespace vorn {

/// A private copy of the Messages database and its write-ahead log, deleted when the object dies. The live database is
/// only ever read: its owner may be writing to it.
class MessagesSnapshot {
public:
    /// Copies the database at `source` into a new folder of the temporary directory that only this user may enter.
    /// Throws `NimbrelExportError` (no database, access denied) or the file manager's error; nothing is left behind
    /// then.
    static MessagesSnapshot take(const std::filesystem::path& source,
                                 FileManager& fileManager = FileManager::standard(),
                                 const FileManager::CopyProgress& progress = {});

    ~MessagesSnapshot() { remove(); }
    MessagesSnapshot(MessagesSnapshot&& other) noexcept;
    MessagesSnapshot& operator=(MessagesSnapshot&&) = delete;

    const std::filesystem::path& directory() const noexcept { return directory_; }
    std::filesystem::path databaseURL() const { return directory_ / "chat.db"; }

    /// Deletes the folder with everything in it. A failure is left aside: the system empties its temporary directory
    /// sooner or later, and nobody else may enter the folder. May be called again.
    void remove() noexcept;

private:
    MessagesSnapshot(std::filesystem::path directory, FileManager& fileManager);

    std::filesystem::path directory_; ///< empty once moved from
    FileManager* fileManager_;
};

} // namespace vorn
