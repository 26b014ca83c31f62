#pragma once

#include <span>
#include <string_view>

/// The statements that make an empty Messages database of a current macOS. Run them in this order: tables, rows,
/// indexes, triggers. Some triggers call functions that only Messages registers with its connection, so rows go in
/// before them or through a connection that has functions of those names.
namespace vorn::sampleSchema {

std::span<const std::string_view> tables() noexcept;
std::span<const std::string_view> indexes() noexcept;
std::span<const std::string_view> triggers() noexcept;

/// Names of the functions that the triggers expect, any number of arguments each.
std::span<const char* const> messagesFunctions() noexcept;

} // namespace vorn::sampleSchema
