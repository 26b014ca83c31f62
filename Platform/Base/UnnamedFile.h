#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <filesystem>

namespace vorn {

/// Creates a private file in `folder` without a name, which vanishes with the process. Returns an empty descriptor with
/// `errno` set where the system or the file system has no such files.
FileDescriptor createUnnamedFile(const std::filesystem::path& folder) noexcept;

/// Links an unnamed file to `path`. Returns false with `errno` set on failure, EEXIST if the name is taken.
bool nameFile(const FileDescriptor& file, const std::filesystem::path& path) noexcept;

} // namespace vorn
