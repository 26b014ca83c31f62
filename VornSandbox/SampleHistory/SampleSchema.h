#pragma once

#include <array>

/// The SQL that makes an empty Messages database of a current macOS. Run it in this order: tables, rows, indexes,
/// triggers. Some triggers call functions that only Messages registers with its connection, so rows go in before them
/// or through a connection that has functions of those names.
namespace vorn::sampleSchema {

extern const char* const tables;
extern const char* const indexes;
extern const char* const triggers;

/// Names of the functions that the triggers expect, any number of arguments each.
inline constexpr std::array functions{"after_delete_message_plugin", "before_delete_attachment_path",
                                      "delete_attachment_path", "verify_chat"};

} // namespace vorn::sampleSchema
