#include "VornSandbox/Service/TemporaryUploads.h"

#include "Platform/Base/FileManager.h"
#include "VornSandbox/Service/Secrets.h"

#include <cerrno>
#include <string>
#include <system_error>
#include <vector>

#include <sys/file.h>

namespace vorn::sandbox {
namespace {

constexpr auto prefix = "vorn-sandbox-uploads-";
constexpr auto lockName = "lock";

/// Made under another name and locked before it gets its own: nobody ever sees it unlocked while its owner lives.
FileDescriptor lockFolder(const std::filesystem::path& folder)
{
    const std::filesystem::path unfinished = folder / "lock-unfinished";
    FileDescriptor lock = createPrivateFile(unfinished);
    if (!lock || flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
        throw std::filesystem::filesystem_error("cannot lock", unfinished,
                                                std::error_code(errno, std::generic_category()));
    }
    std::filesystem::rename(unfinished, folder / lockName);
    return lock;
}

void removeIfAbandoned(const std::filesystem::path& folder)
{
    const FileDescriptor lock = openRegularFile(folder / lockName);
    if (!lock || flock(lock.get(), LOCK_EX | LOCK_NB) != 0) return; // in use, somebody else's, or just being made
    std::error_code ignored;                                        // the next run tries again
    std::filesystem::remove_all(folder, ignored);
}

void sweep(const std::filesystem::path& temporary)
{
    std::vector<std::filesystem::path> found;
    std::error_code ignored; // a folder that cannot be listed keeps its leftovers
    for (std::filesystem::directory_iterator entry(temporary, ignored), end; entry != end; entry.increment(ignored)) {
        if (entry->path().filename().string().starts_with(prefix)) found.push_back(entry->path());
    }
    for (const auto& folder : found) removeIfAbandoned(folder);
}

std::filesystem::path makeFolder()
{
    const std::filesystem::path temporary = FileManager::standard().temporaryDirectory();
    sweep(temporary);
    std::filesystem::path folder = temporary / newIdentifier(prefix);
    FileManager::standard().createPrivateDirectory(folder);
    return folder;
}

} // namespace

TemporaryUploads::TemporaryUploads() : path_(makeFolder()), lock_(lockFolder(path_))
{
}

TemporaryUploads::~TemporaryUploads()
{
    std::error_code ignored; // at the end of the program nobody is left to tell
    std::filesystem::remove_all(path_, ignored);
}

} // namespace vorn::sandbox
