#pragma once

/// The files of the folder "data", embedded unchanged.
namespace vorn::sampleData {

// The SQL that creates an empty Messages database of a current macOS. Run it in this order: tables, handles and chats,
// indexes, triggers. Some triggers call functions that only Messages registers with its connection: after them, adding
// or changing a chat fails, and so does removing a message or an attachment.
extern const char* const tables;
extern const char* const indexes;
extern const char* const triggers;

/// What the people in a history say, as JSON. A '#' and a letter stand for one of the words listed under that letter.
extern const char* const texts;

} // namespace vorn::sampleData
