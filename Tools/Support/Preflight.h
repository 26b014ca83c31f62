#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// What the command-line programs look at before they begin, so that they can say what is wrong in a true sentence: the
/// texts of the window are about a Mac whose user chose neither. Threads: any.
namespace vorn::preflight {

/// What lies where a Messages database should.
enum class DatabaseFile {
    plausible, ///< or not to be told: only reading it says more
    missing,
    noDatabase, ///< a folder, or a file that does not begin as SQLite's do
};

/// Reads no more than the beginning. An empty file is an empty database.
DatabaseFile databaseFileAt(const std::filesystem::path& path);

/// One line for the user about a `path` that is not plausible; fit for a terminal.
std::string textOf(DatabaseFile file, const std::filesystem::path& path);

/// Whether `output` is the database or one of the files that SQLite keeps beside it, even if they are not there yet.
bool touchesDatabase(const std::filesystem::path& output, const std::filesystem::path& database);

/// What is wrong with the folder for temporary files, as one line for the user; nothing when it is there. Private
/// copies go into it, so it is never created here: it might let others in.
std::optional<std::string> mistakeInTemporaryDirectory();

} // namespace vorn::preflight
