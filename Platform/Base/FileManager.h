#pragma once

#include "Platform/Base/Bytes.h"

#include <cstdint>
#include <filesystem>
#include <functional>

namespace vorn {

/// Files and folders of the current user. Replaceable in tests.
/// Threads: any. Errors: `std::filesystem::filesystem_error`, with the path and the system's code.
class FileManager {
public:
    /// Called with the bytes copied so far. An exception from it ends the copy and reaches the caller.
    using CopyProgress = std::function<void(std::uint64_t copied)>;

    virtual ~FileManager() = default;

    /// The one that acts on the real file system.
    static FileManager& standard();

    /// From the system's user database, since `HOME` may be changed; `HOME` for a user without an entry.
    virtual std::filesystem::path homeDirectory();

    /// `TMPDIR`, else the system's folder for temporary files.
    virtual std::filesystem::path temporaryDirectory();

    /// Creates `directory` (mode 0700) and missing folders above it. Fails if it exists.
    virtual void createPrivateDirectory(const std::filesystem::path& directory);

    /// Copies the content of `from` into the new file `to`, which only this user may read (mode 0600); fails if it
    /// exists. Where the file system can, clones the file instead, sharing its blocks. On failure `to` may be left
    /// behind, incomplete. The error names `from` when that is known to be at fault, otherwise `to`.
    virtual void copyFile(const std::filesystem::path& from, const std::filesystem::path& to,
                          const CopyProgress& progress);

    /// Never throws. A path that cannot be examined counts as existing: using it reports why.
    virtual bool fileExists(const std::filesystem::path& path);

    /// Removes a file, or a folder with its content. A missing path is not a failure.
    virtual void remove(const std::filesystem::path& path);

    /// Writes `bytes` to a new file beside `path` and renames it, replacing what was there: `path` is never half
    /// written. On failure the new file is removed and the old one stays. A file left behind by a killed process is
    /// removed by the next write to the same folder.
    virtual void writeAtomically(ByteView bytes, const std::filesystem::path& path);

    /// The size of the file in bytes.
    virtual std::int64_t fileSize(const std::filesystem::path& path);
};

/// Whether `error` means that permission was denied.
bool isPermissionDenied(const std::filesystem::filesystem_error& error);

} // namespace vorn
