#include "Platform/Base/FileManager.h"

#include "Platform/Base/CopyFile.h"
#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/IncompleteFile.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const char* what, const fs::path& path, int code)
{
    throw fs::filesystem_error(what, path, std::error_code(code, std::generic_category()));
}

void writeAll(const FileDescriptor& file, ByteView bytes, const fs::path& path)
{
    while (!bytes.empty()) {
        const ssize_t count = write(file.get(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) fail("cannot write", path, errno);
        if (count > 0) bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

/// False when an unnamed file could not be named here; a named one may still work.
bool writeTo(IncompleteFile file, ByteView bytes, const fs::path& path)
{
    if (!file.isOpen()) fail("cannot write", path, errno);
    writeAll(file.descriptor(), bytes, path);
    if (!file.finish()) fail("cannot write", path, errno);
    if (file.moveTo(path)) return true;
    if (file.hasName()) fail("cannot write", path, errno);
    return false;
}
/// A user's home in the system's user database.
struct KnownHome {
    fs::path path;
    int error = 0; ///< why there is none

    explicit operator bool() const noexcept { return error == 0; }
    const fs::path& operator*() const noexcept { return path; }
};

KnownHome homeOfUser(uid_t user)
{
    constexpr std::size_t longest = 4 * 1024 * 1024;
    std::vector<char> room(16 * 1024);
    passwd entry{};
    passwd* found = nullptr;
    int code = 0;
    do {
        code = getpwuid_r(user, &entry, room.data(), room.size(), &found);
        if (code == ERANGE) room.resize(room.size() * 2); // entries from a network may be long
    } while (code == EINTR || (code == ERANGE && room.size() <= longest));
    if (found == nullptr || *found->pw_dir == '\0') return {{}, code != 0 ? code : ENOENT};
    return {found->pw_dir};
}

/// Creates `folder` and missing folders above it (mode 0700).
void createMissing(const fs::path& folder)
{
    if (folder.empty() || fs::is_directory(folder)) return;
    createMissing(folder.parent_path());
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) fail("cannot create the folder", folder, errno);
}

} // namespace

FileManager& FileManager::standard()
{
    static FileManager manager;
    return manager;
}

fs::path FileManager::homeDirectory()
{
    const auto known = homeOfUser(getuid());
    if (known) return *known;
    const char* chosen = std::getenv("HOME"); // containers run under user ids without an entry
    if (chosen == nullptr || *chosen != '/') fail("this user has no home directory", {}, known.error);
    return chosen;
}

fs::path FileManager::temporaryDirectory()
{
    const char* chosen = std::getenv("TMPDIR");
    return chosen != nullptr && *chosen != '\0' ? fs::path(chosen) : fs::path("/tmp");
}

void FileManager::createPrivateDirectory(const fs::path& directory)
{
    createMissing(directory.parent_path());
    if (mkdir(directory.c_str(), S_IRWXU) != 0) fail("cannot create the folder", directory, errno);
    if (chmod(directory.c_str(), S_IRWXU) == 0) return; // the umask may have removed the owner's rights too
    const int code = errno;
    rmdir(directory.c_str());
    fail("cannot create the folder", directory, code);
}

void FileManager::copyFile(const fs::path& from, const fs::path& to, const CopyProgress& progress)
{
    copyFileContent(from, to, progress);
}

bool FileManager::fileExists(const fs::path& path)
{
    std::error_code failure;
    const fs::file_type type = fs::status(path, failure).type();
    if (type != fs::file_type::none) return type != fs::file_type::not_found;
    // No file can have such a path; other errors may hide one.
    return failure != std::errc::filename_too_long && failure != std::errc::too_many_symbolic_link_levels;
}

void FileManager::remove(const fs::path& path)
{
    fs::remove_all(path);
}

void FileManager::writeAtomically(ByteView bytes, const fs::path& path)
{
    const fs::path folder = path.parent_path();
    IncompleteFile::sweep(folder);
    IncompleteFile unnamed = IncompleteFile::unnamed(folder);
    if (unnamed.isOpen() && writeTo(std::move(unnamed), bytes, path)) return;
    writeTo(IncompleteFile::named(folder), bytes, path);
}

std::int64_t FileManager::fileSize(const fs::path& path)
{
    return static_cast<std::int64_t>(fs::file_size(path));
}

bool isPermissionDenied(const fs::filesystem_error& error)
{
    return error.code() == std::errc::permission_denied || error.code() == std::errc::operation_not_permitted;
}

} // namespace vorn
