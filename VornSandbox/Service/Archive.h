#pragma once

#include "Platform/SQLite/SQLiteDatabase.h"
#include "VornSandbox/Service/Settings.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

/// Reads uploaded archives, which may come from anyone, with libzip and nlohmann's parser: not with the code that the
/// export writes them with.
namespace vorn::sandbox {

/// An archive that cannot be read as an export, with a sentence that says why.
class ArchiveError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The result of reading an archive. `asChecked` is how a strict review would end.
struct ArchiveVerdict {
    Outcome asChecked;
    std::string finding; ///< for users: what the archive holds, or why it cannot be read
};

/// Reads the whole archive and returns a strict review's outcome: rejected as "media_unreadable" if it is not an
/// export, as "export_too_small" if fewer than ten of its messages are the user's, otherwise approved. Threads: any.
ArchiveVerdict inspectArchive(const std::filesystem::path& archive);

/// The messages of an archive in pages: unpacked once into a temporary database, so that the last page of a long
/// history comes as fast as the first. SQLite keeps it in a file without a name, which vanishes with the object or the
/// process. Threads: one at a time. Errors: `ArchiveError`, `SQLiteError`.
class MessagePages {
public:
    static constexpr std::int64_t perPage = 50;

    explicit MessagePages(const std::filesystem::path& archive);

    std::int64_t count() const { return count_; }
    const nlohmann::json& manifest() const { return manifest_; } ///< null when it cannot be read

    /// Returns the messages of page `page`, counted from 0, as an array of unchecked values; empty beyond the last
    /// page.
    nlohmann::json page(std::int64_t page) const;

private:
    SQLiteDatabase pages_;
    nlohmann::json manifest_;
    std::int64_t count_ = 0;
};

} // namespace vorn::sandbox
