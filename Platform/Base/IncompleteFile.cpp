#include "Platform/Base/IncompleteFile.h"

#include "Platform/Base/UnnamedFile.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

/// Attempts: each one fails only if a sweep comes between creating the file and locking it.
constexpr int maxAttempts = 100;

/// False when another process holds the lock. True on a file system without locks, where no sweep removes anything.
bool lock(const FileDescriptor& file)
{
    return flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// Removes the file at `path` if this user owns it and no process is writing it.
void removeAbandoned(const fs::path& path)
{
    struct stat facts{};
    if (lstat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_uid != geteuid()) return;
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file && flock(file.get(), LOCK_EX | LOCK_NB) == 0) unlink(path.c_str()); // while it is locked
}

} // namespace

IncompleteFile::IncompleteFile(fs::path folder, FileDescriptor file)
    : folder_(std::move(folder)), file_(std::move(file))
{
}

IncompleteFile::IncompleteFile(IncompleteFile&& other) noexcept
    : folder_(std::move(other.folder_)), name_(std::exchange(other.name_, {})), file_(std::move(other.file_))
{
}

IncompleteFile::~IncompleteFile()
{
    if (hasName()) unlink(name_.c_str());
}

IncompleteFile IncompleteFile::unnamed(const fs::path& folder)
{
    IncompleteFile made(folder, createUnnamedFile(folder.empty() ? "." : folder));
    if (made.isOpen()) lock(made.file_); // no other process can hold it
    return made;
}

IncompleteFile IncompleteFile::named(const fs::path& folder)
{
    for (int swept = 0; swept < maxAttempts; ++swept) {
        fs::path name = folder / names.make();
        IncompleteFile made(folder, createPrivateFile(name));
        if (!made.isOpen()) return made;
        made.name_ = std::move(name);
        struct stat facts{};
        if (lock(made.file_) && fstat(made.file_.get(), &facts) == 0 && facts.st_nlink > 0) return made;
    }
    errno = EBUSY;
    return {folder, FileDescriptor(-1)};
}

bool IncompleteFile::finish() const noexcept
{
    FileDescriptor same(fcntl(file_.get(), F_DUPFD_CLOEXEC, 0));
    return same && same.reset() == 0; // the lock stays
}

bool IncompleteFile::moveTo(const fs::path& path)
{
    if (!hasName()) {
        if (nameFile(file_, path)) return true;
        if (errno != EEXIST) return false;
        // Only a rename replaces atomically, and it needs a name.
        fs::path name = folder_ / names.make();
        if (!nameFile(file_, name)) return false;
        name_ = std::move(name);
    }
    if (rename(name_.c_str(), path.c_str()) != 0) return false;
    name_.clear();
    return true;
}

void IncompleteFile::sweep(const fs::path& folder) noexcept
{
    try {
        std::error_code failure;
        fs::directory_iterator entry(folder.empty() ? "." : folder, failure);
        for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
            if (names.matches(entry->path().filename().native())) removeAbandoned(entry->path());
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): out of memory; the next run sweeps
    }
}

} // namespace vorn
