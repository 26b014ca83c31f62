#pragma once

#include <filesystem>
#include <utility>

#include <unistd.h>

namespace vorn {

/// An open file's descriptor, closed when the object dies; -1 when there is none.
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

    /// Closes now, for those who want to know: some file systems report a failed write only here.
    int reset() noexcept { return number_ < 0 ? 0 : close(std::exchange(number_, -1)); }

private:
    int number_;
};

/// Opens a file for reading and waits for nobody: a pipe would keep its reader for ever. None, with `errno`, when that
/// fails and when it is something else than a file.
FileDescriptor openRegularFile(const std::filesystem::path& path) noexcept;

/// Makes a new file that only this user may read and write, whatever the process's mask, and opens it for writing.
/// None, with `errno`, when that fails; also when there is a file already.
FileDescriptor createPrivateFile(const std::filesystem::path& path) noexcept;

} // namespace vorn
