#include "NimbrelExportKit/Messages/LockFile.h"

#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr auto sharedLockTimeout = 1s;
constexpr auto betweenTries = 5ms;
/// How often to start over: each time, another process must have removed the file at exactly the wrong moment.
constexpr int mostReplacements = 100;

[[noreturn]] void fail(const char* what, int code)
{
    throw std::system_error(code, std::generic_category(), what);
}

FileDescriptor openPrivate(const std::filesystem::path& path)
{
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    FileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, ownerOnly));
    struct stat facts{};
    if (!file || fstat(file.get(), &facts) != 0) fail("cannot open the lock", errno);
    if (!S_ISREG(facts.st_mode) || facts.st_uid != geteuid() || (facts.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        fail("the lock is not private", EPERM);
    // The umask may have removed the owner's rights too.
    if ((facts.st_mode & ownerOnly) != ownerOnly && fchmod(file.get(), ownerOnly) != 0)
        fail("cannot open the lock", errno);
    return file;
}

bool lockNow(const FileDescriptor& file, int kind)
{
    while (flock(file.get(), kind | LOCK_NB) != 0) {
        if (errno == EINTR) continue;
        if (errno == EWOULDBLOCK) return false;
        fail("cannot lock", errno);
    }
    return true;
}

} // namespace

LockFile::LockFile(std::filesystem::path path) : path_(std::move(path)), file_(openPrivate(path_))
{
}

bool LockFile::tryLockExclusive()
{
    return takeFileInPlace([this] { return lockNow(file_, LOCK_EX); });
}

bool LockFile::lockShared()
{
    const auto end = std::chrono::steady_clock::now() + sharedLockTimeout;
    return takeFileInPlace([this, end] {
        while (!lockNow(file_, LOCK_SH)) {
            if (std::chrono::steady_clock::now() >= end) return false;
            std::this_thread::sleep_for(betweenTries);
        }
        return true;
    });
}

bool LockFile::tryUpgradeToExclusive()
{
    return lockNow(file_, LOCK_EX) && isInPlace();
}

void LockFile::removeFile() const noexcept
{
    unlink(path_.c_str());
}

/// The last process removes the file. One that opened it before that would lock a file that no other process finds, so
/// it opens the path again.
template <class Take>
bool LockFile::takeFileInPlace(const Take& take)
{
    for (int replaced = 0; replaced < mostReplacements; ++replaced) {
        if (!take()) return false;
        if (isInPlace()) return true;
        file_ = openPrivate(path_);
    }
    return false;
}

bool LockFile::isInPlace() const
{
    struct stat held{};
    struct stat found{};
    return fstat(file_.get(), &held) == 0 && lstat(path_.c_str(), &found) == 0 && held.st_dev == found.st_dev &&
           held.st_ino == found.st_ino;
}

} // namespace vorn
