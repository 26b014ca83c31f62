#pragma once

#include <filesystem>

namespace vorn::bench {

/// Each prints its table and returns whether every goal in it is reached. A `history` is a Messages database with the
/// assistant's chat, handle +15550102030.

/// The cost of each screen while it is idle.
bool measureIdleScreens(const std::filesystem::path& history);
/// The duration of frames in which something moves.
bool measureFrames(const std::filesystem::path& history);
/// How soon the preview of a scanned chat is painted: one of six messages, and that of `history`.
bool measurePreview(const std::filesystem::path& six, const std::filesystem::path& history);
/// The page with every message of `history`: opening it, compared with that of `small`, scrolling and searching.
bool measureEverything(const std::filesystem::path& small, const std::filesystem::path& history);

} // namespace vorn::bench
