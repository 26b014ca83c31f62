#pragma once

#include <cstddef>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>

namespace vorn::testing {

constexpr int mostFiles = 1024; ///< more than a test opens

/// How many descriptors this process has open.
inline std::size_t openFiles()
{
    std::size_t count = 0;
    for (int number = 0; number < mostFiles; ++number) count += fcntl(number, F_GETFD) == -1 ? 0 : 1;
    return count;
}

/// Whether this process has the file at `path` open.
inline bool isOpen(const std::filesystem::path& path)
{
    struct stat wanted{};
    if (stat(path.c_str(), &wanted) != 0) return false;
    for (int number = 0; number < mostFiles; ++number) {
        struct stat facts{};
        if (fstat(number, &facts) != 0) continue;
        if (facts.st_dev == wanted.st_dev && facts.st_ino == wanted.st_ino) return true;
    }
    return false;
}

} // namespace vorn::testing
