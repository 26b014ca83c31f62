#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// Checks that the command-line programs make before they begin, so that their errors name the actual mistake: the
/// window's texts assume a Mac whose user chose neither database nor folder. Threads: any.
namespace vorn::preflight {

/// What is found at the path of a Messages database.
enum class DatabaseFile {
    plausible, ///< only reading it tells more
    missing,
    noDatabase, ///< a folder, or a file without the SQLite header
};

/// Reads only the beginning. An empty file is an empty database.
DatabaseFile databaseFileAt(const std::filesystem::path& path);

/// One line for the user about a `path` that is not plausible; fit for a terminal.
std::string textOf(DatabaseFile file, const std::filesystem::path& path);

/// Whether `output` is the database or one of the files that SQLite keeps beside it, even if they are not there yet.
bool touchesDatabase(const std::filesystem::path& output, const std::filesystem::path& database);

/// Texts for an option that must name a new archive but names no file, or the database; fit for a terminal.
std::string mustBeFileText(const std::string& option);
std::string mustNotBeDatabaseText(const std::string& option);

/// What is wrong with the folder for temporary files, as one line for the user; nothing if it exists. Private copies go
/// into it, so it is never created here, where its permissions might be too wide.
std::optional<std::string> mistakeInTemporaryDirectory();

} // namespace vorn::preflight
