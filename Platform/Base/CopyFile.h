#pragma once

#include "Platform/Base/FileManager.h"

namespace vorn {

/// Implements `FileManager::copyFile` in the fastest way that the system offers.
void copyFileContent(const std::filesystem::path& from, const std::filesystem::path& to,
                     const FileManager::CopyProgress& progress);

} // namespace vorn
