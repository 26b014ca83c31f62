#include "NimbrelExportKit/Messages/TemporaryItems.h"

#include "NimbrelExportKit/Messages/LockFile.h"
#include "NimbrelExportKit/Messages/TemporaryNames.h"
#include "Platform/Base/IncompleteFile.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace vorn {
namespace {

namespace fs = std::filesystem;

struct Kind {
    UniqueName names;
    mode_t type;
};

constexpr std::array kinds{
    Kind{temporarynames::snapshot, S_IFDIR},
    Kind{temporarynames::archive, S_IFREG},
    Kind{IncompleteFile::names, S_IFREG},
};

std::optional<Kind> kindOf(std::string_view name)
{
    const auto* const found =
        std::ranges::find_if(kinds, [name](const Kind& kind) { return kind.names.matches(name); });
    return found == kinds.end() ? std::nullopt : std::optional(*found);
}

/// Whether the file system does not support locks: then no process ever sweeps there.
bool isLockingUnsupported(const std::error_code& code)
{
    return code == std::errc::no_lock_available || code == std::errc::operation_not_supported ||
           code == std::errc::function_not_supported;
}

/// Whether this user owns `path` and it is of the right type. Refuses symbolic links.
bool isOwn(const fs::path& path, const Kind& kind)
{
    struct stat facts{};
    return lstat(path.c_str(), &facts) == 0 && facts.st_uid == geteuid() && (facts.st_mode & S_IFMT) == kind.type;
}

std::vector<fs::path> itemsIn(const fs::path& directory)
{
    std::vector<fs::path> items;
    for (const auto& entry : fs::directory_iterator(directory)) {
        const auto kind = kindOf(entry.path().filename().native());
        if (kind && isOwn(entry.path(), *kind)) items.push_back(entry.path());
    }
    return items;
}

} // namespace

TemporaryItems::TemporaryItems(fs::path directory, Log log) noexcept
    : directory_(std::move(directory)), log_(std::move(log))
{
    try {
        start();
    } catch (const std::exception& error) {
        logFailure(error);
    }
}

TemporaryItems::~TemporaryItems()
{
    try {
        if (lock_) end();
    } catch (const std::exception& error) {
        logFailure(error);
    }
}

bool TemporaryItems::isName(std::string_view name)
{
    return kindOf(name).has_value();
}

void TemporaryItems::start()
{
    auto lock = std::make_unique<LockFile>(lockPath());
    if (lock->tryLockExclusive()) sweep();
    share(std::move(lock));
}

void TemporaryItems::share(std::unique_ptr<LockFile> lock)
{
    if (!lock->lockShared()) throw std::system_error(EBUSY, std::generic_category());
    lock_ = std::move(lock);
}

fs::path TemporaryItems::lockPath() const
{
    return directory_ / ("vorn-" + std::to_string(geteuid()) + ".lock");
}

void TemporaryItems::holdFor(const fs::path& item)
{
    if (!isName(item.filename().native())) return;
    const std::lock_guard guard(mutex_);
    try {
        // A cleaner of temporary files may have removed the lock file, and other processes would lock a new one. Does
        // not sweep: this process may already have items.
        if (!lock_ || !lock_->isInPlace()) share(std::make_unique<LockFile>(lockPath()));
    } catch (const std::system_error& error) {
        if (!isLockingUnsupported(error.code()))
            throw fs::filesystem_error("cannot share the lock", item, error.code());
    }
}

void TemporaryItems::Files::createPrivateDirectory(const fs::path& directory)
{
    items_.holdFor(directory);
    FileManager::createPrivateDirectory(directory);
}

void TemporaryItems::Files::writeAtomically(ByteView bytes, const fs::path& path)
{
    items_.holdFor(path);
    FileManager::writeAtomically(bytes, path);
}

void TemporaryItems::end()
{
    if (!lock_->tryUpgradeToExclusive()) return;
    sweep();
    lock_->removeFile();
}

/// Never throws: a failed sweep must not keep this process from sharing the lock.
void TemporaryItems::sweep() const noexcept
{
    try {
        std::error_code failure;
        for (const fs::path& item : itemsIn(directory_)) {
            std::error_code code;
            fs::remove_all(item, code); // follows no links
            if (code) failure = code;
        }
        if (failure) throw std::system_error(failure);
    } catch (const std::exception& error) {
        logFailure(error);
    }
}

/// Omits the error's own text, which may name the item.
void TemporaryItems::logFailure(const std::exception& error) const noexcept
{
    try {
        const auto* known = dynamic_cast<const std::system_error*>(&error);
        log_.error("temporary items not swept: " + (known != nullptr ? known->code().message() : "failed"));
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): no memory for the line
    }
}

} // namespace vorn
