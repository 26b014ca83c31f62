#pragma once

#include "Platform/Base/FileManager.h"
#include "Platform/Base/Log.h"

#include <exception>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string_view>

namespace vorn {

class LockFile;

/// Sweeps what this user's killed processes left in the temporary directory: private copies of the Messages database,
/// archives and unfinished files. Removes items when a process starts or, if another one was alive then, when the last
/// one ends; never while another process has one of these objects. Construct it first, destroy it last, and create
/// items through `files`.
/// Threads: any; construct and destroy it on one. Errors: never throws; what cannot be removed is logged and stays for
/// the next process.
class TemporaryItems {
public:
    TemporaryItems(std::filesystem::path directory, Log log) noexcept;
    ~TemporaryItems();
    TemporaryItems(TemporaryItems&&) = delete;

    /// Whether `name` is that of such an item: one of `temporarynames`, or an unfinished file's.
    static bool isName(std::string_view name);

    /// The system's file manager, for creating items. Without the shared lock, it first tries for up to a second to
    /// take it; while another process may sweep, it throws `filesystem_error` and creates nothing.
    FileManager& files() noexcept { return files_; }

private:
    class Files final : public FileManager {
    public:
        explicit Files(TemporaryItems& items) noexcept : items_(items) {}
        void createPrivateDirectory(const std::filesystem::path& directory) override;
        void writeAtomically(ByteView bytes, const std::filesystem::path& path) override;

    private:
        TemporaryItems& items_;
    };

    void holdFor(const std::filesystem::path& item);
    void start();
    void share(std::unique_ptr<LockFile> lock);
    std::filesystem::path lockPath() const;
    void end();
    void sweep() const noexcept;
    void logFailure(const std::exception& error) const noexcept;

    std::filesystem::path directory_;
    Log log_;
    std::mutex mutex_;               ///< guards the lock after construction
    std::unique_ptr<LockFile> lock_; ///< null while none is held; then nothing is swept at the end
    Files files_{*this};
};

} // namespace vorn
