#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace vorn {

/// A failure of SQLite, with the stage that failed.
class SQLiteError : public std::exception {
public:
    enum class Stage { open, prepare, bind, step, execute };

    SQLiteError(Stage stage, std::int32_t code, std::string message);

    Stage stage() const noexcept { return stage_; }

    /// SQLite's result code as it was returned, extended codes included (https://sqlite.org/rescode.html).
    std::int32_t code() const noexcept { return code_; }

    const std::string& message() const noexcept { return message_; }

    /// Whether the file is damaged or not a database: a new copy may be sound.
    bool isCorruption() const noexcept;

    /// Such as "SQLite prepare failed (1): no such table: chat".
    const char* what() const noexcept override { return description_.c_str(); }

    bool operator==(const SQLiteError& other) const noexcept;

private:
    Stage stage_;
    std::int32_t code_;
    std::string message_;
    std::string description_;
};

/// The stage as it is written in descriptions: "open", "prepare", "bind", "step", "execute".
std::string_view rawValue(SQLiteError::Stage stage) noexcept;

} // namespace vorn
