#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <filesystem>

namespace vorn {

/// A private file that processes lock, shared or exclusively. The system releases a lock when its process ends, however
/// that happens. Not inherited by child processes.
/// Errors: `std::system_error`.
class LockFile {
public:
    /// Creates the file if it is missing. Refuses a file that another user owns or can access, and anything but a
    /// regular file.
    explicit LockFile(std::filesystem::path path);

    /// Tries to lock exclusively, without waiting. A shared lock held before is lost even on failure.
    bool tryLockExclusive();
    /// Locks shared, waiting up to a second if another process holds the lock exclusively, as any does only briefly;
    /// returns false after that. Downgrading from an exclusive lock is not atomic: another process may lock exclusively
    /// in between.
    bool lockShared();

    /// As `tryLockExclusive`, from a shared lock. Also returns false when the file was removed: other processes may
    /// share the lock on its replacement.
    bool tryUpgradeToExclusive();
    /// Requires the exclusive lock.
    void removeFile() const noexcept;

    /// Whether the path still leads to the locked file.
    bool isInPlace() const;

private:
    template <class Take>
    bool takeFileInPlace(const Take& take);

    std::filesystem::path path_;
    FileDescriptor file_;
};

} // namespace vorn
