#pragma once

#include <filesystem>
#include <utility>

#include <unistd.h>

namespace vorn {

/// An open file's descriptor, closed when the object is destroyed; -1 when there is none.
class FileDescriptor {
public:
    explicit FileDescriptor(int number) noexcept : number_(number) {}
    ~FileDescriptor() { reset(); }
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }

    int get() const noexcept { return number_; }
    explicit operator bool() const noexcept { return number_ >= 0; }

    /// Closes now and returns what `close` does: some file systems report a failed write only here.
    int reset() noexcept { return number_ < 0 ? 0 : close(std::exchange(number_, -1)); }

private:
    int number_;
};

/// Opens a regular file for reading, without blocking on a pipe. Returns an empty descriptor with `errno` set on
/// failure, and for anything other than a regular file.
FileDescriptor openRegularFile(const std::filesystem::path& path) noexcept;

/// Creates a file that only this user may read and write, whatever the umask, and opens it for writing. Returns an
/// empty descriptor with `errno` set on failure, including when the file exists.
FileDescriptor createPrivateFile(const std::filesystem::path& path) noexcept;

} // namespace vorn
