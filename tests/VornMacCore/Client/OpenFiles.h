#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include <sys/stat.h>

namespace vorn::testing {

/// The folder that lists this process's descriptors by name. Testing them by number would be a race with the threads
/// that own them.
inline const std::filesystem::path descriptors = "/dev/fd";

/// The open descriptors, including the one used to list them.
inline std::vector<std::filesystem::path> openDescriptors()
{
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::directory_iterator(descriptors)) found.push_back(entry.path());
    return found;
}

/// How many descriptors this process has open.
inline std::size_t openFiles()
{
    return openDescriptors().size() - 1;
}

/// Whether this process has the file at `path` open.
inline bool isOpen(const std::filesystem::path& path)
{
    struct stat wanted{};
    if (stat(path.c_str(), &wanted) != 0) return false;
    for (const auto& each : openDescriptors()) {
        struct stat facts{};
        if (stat(each.c_str(), &facts) != 0) continue;
        if (facts.st_dev == wanted.st_dev && facts.st_ino == wanted.st_ino) return true;
    }
    return false;
}

} // namespace vorn::testing
