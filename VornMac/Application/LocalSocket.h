#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <chrono>
#include <filesystem>

namespace vorn {

/// Waits at `path` for connections, in place of whoever did before. Does not block. Throws `std::system_error`.
FileDescriptor listenAt(const std::filesystem::path& path);

/// The next connection that waits at `listener`; none when there is none.
FileDescriptor acceptFrom(const FileDescriptor& listener) noexcept;

/// Connects to whoever waits at `path`; none, with `errno`, when nobody does.
FileDescriptor connectTo(const std::filesystem::path& path);

/// Waits until there is something to read, or an end, but no longer than `end`. Says whether there is.
bool waitToRead(const FileDescriptor& file, std::chrono::steady_clock::time_point end) noexcept;

} // namespace vorn
