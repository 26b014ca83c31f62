#pragma once

#include "Platform/Base/FileManager.h"

#include <filesystem>
#include <string_view>

namespace vorn {

enum class FullDiskAccessStatus { granted, denied, noDatabase };

/// Where the Messages database is, whether this process may read it, and where the user grants that. Threads: any.
namespace FullDiskAccess {

/// In the current user's home directory; looked up on each call.
std::filesystem::path messagesDatabaseURL(FileManager& fileManager = FileManager::standard());

/// The Full Disk Access list in System Settings.
inline constexpr std::string_view settingsURL =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles";

/// The Privacy & Security page, for when the system refuses to open `settingsURL`.
inline constexpr std::string_view fallbackSettingsURL =
    "x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension";

/// Opens the file for reading and closes it at once; its content is never read.
FullDiskAccessStatus probe(const std::filesystem::path& url);

} // namespace FullDiskAccess
} // namespace vorn
