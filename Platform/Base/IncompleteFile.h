#pragma once

#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/UniqueName.h"

#include <filesystem>

namespace vorn {

/// A new private file that gets its name once it is whole; removed with the object before that. A process that is
/// killed leaves nothing of an unnamed one. A named one stays, called ".incomplete-" and a UUID; it is locked while its
/// process lives, so that `sweep` knows. Threads: any, one at a time. Errors: none is thrown, `errno` says why.
class IncompleteFile {
public:
    static constexpr UniqueName names{".incomplete-", ""};

    /// In `folder`; not open where that fails, as for an unnamed one where the system has no such files.
    static IncompleteFile unnamed(const std::filesystem::path& folder);
    static IncompleteFile named(const std::filesystem::path& folder);

    ~IncompleteFile();
    IncompleteFile(IncompleteFile&& other) noexcept;

    bool isOpen() const noexcept { return static_cast<bool>(file_); }
    bool hasName() const noexcept { return !name_.empty(); }
    const FileDescriptor& descriptor() const noexcept { return file_; }

    /// Whether all that was written has arrived: some file systems report a failed write only when a file is closed.
    bool finish() const noexcept;
    /// Moves it to `path`, replacing what is there in one step.
    bool moveTo(const std::filesystem::path& path);

    /// Removes the named ones that this user's processes left in `folder` when they were killed; never one that is
    /// still being written. What cannot be removed stays.
    static void sweep(const std::filesystem::path& folder) noexcept;

private:
    IncompleteFile(std::filesystem::path folder, FileDescriptor file);

    std::filesystem::path folder_;
    std::filesystem::path name_; ///< empty while there is none to remove
    FileDescriptor file_;
};

} // namespace vorn
