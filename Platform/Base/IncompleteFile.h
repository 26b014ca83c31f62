#pragma once

#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/UniqueName.h"

#include <filesystem>

namespace vorn {

/// A new private file that is moved to its path once complete, and otherwise removed when the object is destroyed. A
/// killed process leaves nothing of an unnamed file; a named one (".incomplete-" and a UUID) stays until `sweep`
/// removes it, and is locked while its process lives. Threads: any, one at a time. Errors: sets `errno`; throws only
/// `std::bad_alloc`.
class IncompleteFile {
public:
    static constexpr UniqueName names{".incomplete-", ""};

    /// Creates the file in `folder`; not open on failure, for example where the system has no unnamed files.
    static IncompleteFile unnamed(const std::filesystem::path& folder);
    static IncompleteFile named(const std::filesystem::path& folder);

    ~IncompleteFile();
    IncompleteFile(IncompleteFile&& other) noexcept;

    bool isOpen() const noexcept { return static_cast<bool>(file_); }
    bool hasName() const noexcept { return !name_.empty(); }
    const FileDescriptor& descriptor() const noexcept { return file_; }

    /// Whether all writes succeeded: some file systems report a failure only when a file is closed.
    bool finish() const noexcept;
    /// Moves the file to `path`, atomically replacing any file there. Returns false on failure.
    bool moveTo(const std::filesystem::path& path);

    /// Removes the named files that this user's killed processes left in `folder`; never one that is being written.
    /// Ignores failures.
    static void sweep(const std::filesystem::path& folder) noexcept;

private:
    IncompleteFile(std::filesystem::path folder, FileDescriptor file);

    std::filesystem::path folder_;
    std::filesystem::path name_; ///< empty when there is no file to remove
    FileDescriptor file_;
};

} // namespace vorn
