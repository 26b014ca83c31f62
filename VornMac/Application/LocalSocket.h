#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <chrono>
#include <filesystem>

namespace vorn {

/// Returns a non-blocking socket that listens at `path`, replacing whatever is there. Throws `std::system_error`.
FileDescriptor listenAt(const std::filesystem::path& path);

/// The next pending connection of `listener`; empty if there is none or accepting it failed.
FileDescriptor acceptFrom(const FileDescriptor& listener) noexcept;

/// Connects to the socket at `path`; if that fails, returns an empty descriptor with `errno` set. Throws
/// `std::system_error` if `path` is too long or no socket can be made.
FileDescriptor connectTo(const std::filesystem::path& path);

/// Waits, at most until `end`, for data or the end of the stream; returns whether either came.
bool waitToRead(const FileDescriptor& file, std::chrono::steady_clock::time_point end) noexcept;

} // namespace vorn
