#include "VornSandbox/Service/StateFolder.h"

#include "Platform/Base/FileManager.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

#include <sys/file.h>

namespace vorn::sandbox {
namespace {

using std::filesystem::path;
using std::filesystem::perms;

constexpr perms ownerOnly = perms::owner_read | perms::owner_write;

[[noreturn]] void fail(const char* what, const path& file)
{
    throw std::filesystem::filesystem_error(what, file, std::error_code(errno, std::generic_category()));
}

void makePrivateFile(const path& file)
{
    if (std::filesystem::exists(file)) {
        std::filesystem::permissions(file, ownerOnly);
    } else if (!createPrivateFile(file)) {
        fail("cannot make", file);
    }
}

/// The lock goes with the process, however that ends; the file stays.
FileDescriptor lockFolder(const path& folder)
{
    const path file = folder / "lock";
    makePrivateFile(file);
    FileDescriptor lock = openRegularFile(file);
    if (!lock) fail("cannot open", file);
    if (flock(lock.get(), LOCK_EX | LOCK_NB) == 0) return lock;
    if (errno == EWOULDBLOCK) throw std::runtime_error("another sandbox works with it");
    fail("cannot lock", file);
}

std::string reasonOf(const std::exception& error)
{
    const auto* const fromSystem = dynamic_cast<const std::system_error*>(&error);
    return fromSystem == nullptr ? error.what() : fromSystem->code().message();
}

} // namespace

StateFolder::StateFolder(const path& folder) : folder_(folder)
{
    try {
        if (!std::filesystem::is_directory(folder_)) FileManager::standard().createPrivateDirectory(folder_);
        lock_ = lockFolder(folder_);
        makePrivate();
    } catch (const std::exception& error) {
        throw std::runtime_error(fmt::format("cannot keep the state in {}: {}", folder_.string(), reasonOf(error)));
    }
}

/// SQLite gives what it makes beside the database the database's own mode.
void StateFolder::makePrivate() const
{
    makePrivateFile(database());
    for (const char* suffix : {"-wal", "-shm"}) {
        const path beside = database().string() + suffix;
        if (std::filesystem::exists(beside)) std::filesystem::permissions(beside, ownerOnly);
    }
    if (!std::filesystem::is_directory(uploads())) FileManager::standard().createPrivateDirectory(uploads());
    std::filesystem::permissions(uploads(), perms::owner_all);
}

} // namespace vorn::sandbox
