#pragma once

#include <filesystem>

namespace vorn::bench {

/// Each prints its table and returns whether every goal in it is reached. A `history` is a Messages database with the
/// assistant's chat, handle +15550102030.

/// What each screen costs while nobody touches it.
bool measureIdleScreens(const std::filesystem::path& history);
/// How long the frames take in which something moves.
bool measureFrames(const std::filesystem::path& history);
/// How soon the preview of a scanned chat is painted: of six messages, and of those of `history`.
bool measurePreview(const std::filesystem::path& six, const std::filesystem::path& history);
/// What the page with every message of `history` costs: to open, beside that of the `small` one, to scroll, to search.
bool measureEverything(const std::filesystem::path& small, const std::filesystem::path& history);

} // namespace vorn::bench
