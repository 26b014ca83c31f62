#pragma once

#include "VornSandbox/Service/Submissions.h"

#include <cstddef>
#include <filesystem>

namespace vorn::sandbox {

constexpr auto manifestEntryName = "vorn-nimbrel-export.json";
constexpr auto messagesEntryName = "vorn-nimbrel-messages.json";
constexpr std::size_t largestManifest = std::size_t{1024} * 1024;

/// Reads an uploaded archive whole and says what a strict review makes of it: rejected as "media_unreadable" when it is
/// no export, as "export_too_small" when the user has sent fewer than ten of its messages, else approved.
ArchiveVerdict inspectArchive(const std::filesystem::path& archive);

} // namespace vorn::sandbox
