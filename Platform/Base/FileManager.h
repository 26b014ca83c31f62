#pragma once

#include "Platform/Base/Bytes.h"

#include <cstdint>
#include <filesystem>
#include <functional>

namespace vorn {

/// The files and folders of the current user. Tests hand in one that refuses.
/// Threads: any. Errors: `std::filesystem::filesystem_error`, with the path and the system's code.
class FileManager {
public:
    /// Called as a copy goes on with the bytes copied so far. What it throws ends the copy.
    using CopyProgress = std::function<void(std::uint64_t copied)>;

    virtual ~FileManager() = default;

    /// The system's own.
    static FileManager& standard();

    /// From the system's user database, as `HOME` may say something else; `HOME` for a user whom it does not know.
    virtual std::filesystem::path homeDirectory();

    /// `TMPDIR`, else the system's folder for temporary files.
    virtual std::filesystem::path temporaryDirectory();

    /// Makes `directory`, and the folders above it that are missing; only this user may enter it (mode 0700).
    virtual void createPrivateDirectory(const std::filesystem::path& directory);

    /// Copies the content of `from` into the new file `to`, which only this user may read (mode 0600); fails if it
    /// exists. Shares the blocks instead where the file system can. On failure `to` may be left behind, incomplete; the
    /// error names the file that was at fault.
    virtual void copyFile(const std::filesystem::path& from, const std::filesystem::path& to,
                          const CopyProgress& progress);

    /// Throws nothing. What cannot be looked at counts as there: using it says why it cannot be used.
    virtual bool fileExists(const std::filesystem::path& path);

    /// Removes a file, or a folder with everything in it. Removing what is not there is no failure.
    virtual void remove(const std::filesystem::path& path);

    /// Writes `bytes` to a new file beside `path` and moves it there, replacing what was there: `path` is never seen
    /// half written. On failure nothing of the new file is left and what was there stays. Where a killed process may
    /// leave a part, the next write into the same folder removes it.
    virtual void writeAtomically(ByteView bytes, const std::filesystem::path& path);

    /// The size of the file in bytes as the file system reports it.
    virtual std::int64_t fileSize(const std::filesystem::path& path);
};

/// Whether `error` says that this process may not do what it asked for.
bool isPermissionDenied(const std::filesystem::filesystem_error& error);

} // namespace vorn
