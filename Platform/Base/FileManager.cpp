#include "Platform/Base/FileManager.h"

#include "Platform/Base/CopyFile.h"
#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/UUID.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

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

/// Removes a half-written file unless it has been moved to where it belongs.
struct Leftover {
    const fs::path& path;
    bool moved = false;
    ~Leftover()
    {
        if (!moved) unlink(path.c_str());
    }
};

} // namespace

FileManager& FileManager::standard()
{
    static FileManager manager;
    return manager;
}

fs::path FileManager::homeDirectory()
{
    std::vector<char> buffer(16 * 1024);
    passwd entry{};
    passwd* found = nullptr;
    const int code = getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    if (found == nullptr) fail("this user has no home directory", {}, code != 0 ? code : ENOENT);
    return found->pw_dir;
}

fs::path FileManager::temporaryDirectory()
{
    const char* chosen = std::getenv("TMPDIR");
    return chosen != nullptr && *chosen != '\0' ? fs::path(chosen) : fs::path("/tmp");
}

void FileManager::createPrivateDirectory(const fs::path& directory)
{
    fs::create_directories(directory.parent_path());
    if (mkdir(directory.c_str(), S_IRWXU) != 0) fail("cannot make the folder", directory, errno);
    if (chmod(directory.c_str(), S_IRWXU) == 0)
        return; // the process's mask may have taken rights away from the owner too
    const int code = errno;
    rmdir(directory.c_str());
    fail("cannot make the folder", directory, code);
}

void FileManager::copyFile(const fs::path& from, const fs::path& to, const CopyProgress& progress)
{
    copyFileContent(from, to, progress);
}

bool FileManager::fileExists(const fs::path& path)
{
    return fs::exists(path);
}

void FileManager::remove(const fs::path& path)
{
    fs::remove_all(path);
}

void FileManager::writeAtomically(ByteView bytes, const fs::path& path)
{
    const fs::path beside =
        path.parent_path() / (".incomplete-" + newUUID()); // a name of its own: any may be as long as names can be
    FileDescriptor file = createPrivateFile(beside);
    if (!file) fail("cannot write", path, errno);
    Leftover leftover{beside};
    writeAll(file, bytes, path);
    if (file.reset() != 0) fail("cannot write", path, errno);
    if (rename(beside.c_str(), path.c_str()) != 0) fail("cannot write", path, errno);
    leftover.moved = true;
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
