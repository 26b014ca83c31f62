#pragma once

#include <filesystem>

namespace vorn::bench {

/// Each prints its table, with the limit beside every figure. A `history` is a Messages database with the assistant's
/// chat, handle +15550102030.

/// What each screen costs while nobody touches it.
void measureIdleScreens(const std::filesystem::path& history);
/// How long the frames take in which something moves.
void measureFrames(const std::filesystem::path& history);
/// How soon the preview of a scanned chat is painted: of six messages, and of those of `history`.
void measurePreview(const std::filesystem::path& six, const std::filesystem::path& history);
/// What the page with every message of `history` costs: to open, to scroll, to search.
void measureEverything(const std::filesystem::path& history);

} // namespace vorn::bench
