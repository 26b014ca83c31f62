#pragma once

/// The files of the folder "data", embedded unchanged.
namespace vorn::sampleData {

// The SQL that makes an empty Messages database of a current macOS. Run it in this order: tables, handles and chats,
// indexes, triggers. Some triggers call functions that only Messages registers with its connection: whoever adds a chat
// after them, or removes anything, fails.
extern const char* const tables;
extern const char* const indexes;
extern const char* const triggers;

/// What the people of a history say, as JSON. A '#' and a letter stand for one of the words of that letter.
extern const char* const texts;

} // namespace vorn::sampleData
