#include "Platform/SQLite/SQLiteError.h"

#include <fmt/format.h>
#include <sqlite3.h>

namespace vorn {

SQLiteError::SQLiteError(Stage stage, std::int32_t code, std::string message)
    : stage_(stage), code_(code), message_(std::move(message)),
      description_(fmt::format("SQLite {} failed ({}): {}", rawValue(stage), code, message_))
{
}

bool SQLiteError::isCorruption() const noexcept
{
    const std::int32_t primary = code_ & 0xFF; // an extended code carries its primary one in the low byte
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

bool SQLiteError::operator==(const SQLiteError& other) const noexcept
{
    return stage_ == other.stage_ && code_ == other.code_ && message_ == other.message_;
}

std::string_view rawValue(SQLiteError::Stage stage) noexcept
{
    switch (stage) {
    case SQLiteError::Stage::open: return "open";
    case SQLiteError::Stage::prepare: return "prepare";
    case SQLiteError::Stage::bind: return "bind";
    case SQLiteError::Stage::step: return "step";
    case SQLiteError::Stage::execute: return "execute";
    }
    return {};
}

} // namespace vorn
