#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <filesystem>

namespace vorn {

/// Creates a private file without a name in `folder`, which vanishes with its process. Empty, with `errno` set, where
/// the system or the file system has no such files.
FileDescriptor createUnnamedFile(const std::filesystem::path& folder) noexcept;

/// Links an unnamed file to `path`. On failure false with `errno` set, EEXIST if the name is taken.
bool nameFile(const FileDescriptor& file, const std::filesystem::path& path) noexcept;

} // namespace vorn
