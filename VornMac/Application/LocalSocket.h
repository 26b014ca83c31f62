#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <chrono>
#include <filesystem>

namespace vorn {

/// Listens at `path`, replacing the socket that is there. Does not block. Throws `std::system_error`.
FileDescriptor listenAt(const std::filesystem::path& path);

/// The next pending connection of `listener`; empty when there is none.
FileDescriptor acceptFrom(const FileDescriptor& listener) noexcept;

/// Connects to the socket at `path`; on failure empty with `errno` set.
FileDescriptor connectTo(const std::filesystem::path& path);

/// Waits until there is something to read, or the end of the stream, until `end` at most; returns whether there is.
bool waitToRead(const FileDescriptor& file, std::chrono::steady_clock::time_point end) noexcept;

} // namespace vorn
