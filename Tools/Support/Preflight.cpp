#include "Tools/Support/Preflight.h"

#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/FileManager.h"
#include "Platform/Base/PrintableText.h"
#include "Platform/Base/Text.h"

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vorn::preflight {
namespace {

namespace fs = std::filesystem;

/// `path` with links and dot segments resolved as far as it exists, in lower case because some file systems ignore
/// case.
std::string comparable(const fs::path& path)
{
    std::error_code failure;
    const fs::path resolved = fs::weakly_canonical(fs::absolute(path, failure), failure);
    return text::lowercased((failure ? path : resolved).string());
}

} // namespace

DatabaseFile databaseFileAt(const std::filesystem::path& path)
{
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)); // else a pipe would block
    if (!file) return errno == ENOENT ? DatabaseFile::missing : DatabaseFile::plausible;
    struct stat facts{};
    if (fstat(file.get(), &facts) != 0) return DatabaseFile::plausible;
    if (!S_ISREG(facts.st_mode)) return DatabaseFile::noDatabase;
    constexpr std::string_view magic("SQLite format 3\0", 16); // https://www.sqlite.org/fileformat.html, 1.3
    std::array<char, magic.size()> head{};
    const ssize_t count = pread(file.get(), head.data(), head.size(), 0);
    if (count <= 0) return DatabaseFile::plausible;
    const std::string_view beginning(head.data(), static_cast<std::size_t>(count));
    return beginning == magic ? DatabaseFile::plausible : DatabaseFile::noDatabase;
}

std::string textOf(DatabaseFile file, const std::filesystem::path& path)
{
    const std::string name = printable(path.string());
    return file == DatabaseFile::missing ? "There is no database at " + name + "." : name + " is not a database.";
}

bool touchesDatabase(const fs::path& output, const fs::path& database)
{
    std::error_code failure;
    const fs::path linked = fs::canonical(database, failure);
    for (const fs::path& one : {database, linked}) {
        for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
            fs::path own = one;
            own += suffix;
            if (!one.empty() && comparable(own) == comparable(output)) return true;
        }
    }
    return false;
}

std::string mustBeFileText(const std::string& option)
{
    return option + " must be a file: an archive is not for standard output";
}

std::string mustNotBeDatabaseText(const std::string& option)
{
    return option + " must be a file of its own, not the database";
}

std::optional<std::string> mistakeInTemporaryDirectory()
{
    const std::filesystem::path directory = FileManager::standard().temporaryDirectory();
    std::error_code failure;
    if (std::filesystem::is_directory(directory, failure)) return std::nullopt;
    const std::string reason = failure ? failure.message() : "Not a directory";
    return "The folder for temporary files, " + printable(directory.string()) + ", cannot be used: " + reason +
           ". TMPDIR names it.";
}

} // namespace vorn::preflight
