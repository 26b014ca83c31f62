#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <filesystem>

namespace vorn {

/// A file of this user alone that processes lock: many share it, or one is alone with it. The system lets go of a lock
/// when its process ends, however that happens. Not inherited by programs that are started.
/// Errors: `std::system_error`.
class LockFile {
public:
    /// Makes the file if it is missing. Refuses one of another user, one that others may open, and what is no file.
    explicit LockFile(std::filesystem::path path);

    /// Takes the lock for this process alone, without waiting. Whatever happens, it no longer shares it.
    bool tryAlone();
    /// Shares the lock; others are alone with it for moments only, which this waits for. False when a second was not
    /// enough. Also when this process was alone: another one may be so in between.
    bool share();

    /// As `tryAlone`, for one that has shared the lock up to now. False too when the file was removed meanwhile: nobody
    /// can say who else shares it.
    bool tryToEndAlone();
    /// For one that is alone.
    void removeFile() const noexcept;

    /// Whether others find the file that this process locks.
    bool isInPlace() const;

private:
    template <class Take>
    bool takeFileInPlace(const Take& take);

    std::filesystem::path path_;
    FileDescriptor file_;
};

} // namespace vorn
