#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <filesystem>

namespace vorn {

/// Makes a private file in `folder` that has no name, so that nothing of it stays when its process ends, however that
/// happens. None, with `errno`, where the system or the file system has no such files.
FileDescriptor createUnnamedFile(const std::filesystem::path& folder) noexcept;

/// Gives an unnamed file its name. False, with `errno`, when that fails; EEXIST when the name is taken.
bool nameFile(const FileDescriptor& file, const std::filesystem::path& path) noexcept;

} // namespace vorn
