#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <filesystem>

namespace vorn {

/// A private file that processes lock, shared or exclusively. The system releases a lock when its process ends, however
/// that happens. Not inherited by child processes.
/// Errors: `std::system_error`.
class LockFile {
public:
    /// Creates the file if it is missing. Refuses a file of another user or open to others, and anything but a file.
    explicit LockFile(std::filesystem::path path);

    /// Tries to lock exclusively, without waiting. A shared lock is lost either way.
    bool tryLockExclusive();
    /// Locks shared, waiting up to a second for an exclusive lock, which others hold only briefly; false after that.
    /// Downgrading from an exclusive lock is not atomic: another process may be exclusive in between.
    bool lockShared();

    /// As `tryLockExclusive`, from a shared lock. Also false when the file was removed: then it is unknown who else
    /// shares it.
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
