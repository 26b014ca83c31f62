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

/// What this user's Vorn processes keep in the temporary directory: private copies of the Messages database, archives,
/// and archives that are not finished. A process that is killed leaves them behind; the next one removes them when it
/// starts, or, where another was alive at that time, the last one when it ends. What belongs to a living process stays,
/// as long as that has one of these objects: make it before anything else is put there, make items with its `files`,
/// and let it go last. Threads: any; it is made and let go on one. Nothing is thrown here: what cannot be removed is
/// logged and stays for the next process.
class TemporaryItems {
public:
    TemporaryItems(std::filesystem::path directory, Log log) noexcept;
    ~TemporaryItems();
    TemporaryItems(TemporaryItems&&) = delete;

    /// Whether an item of this name is one: of `temporarynames`, or an unfinished file.
    static bool isName(std::string_view name);

    /// The system's files, for those who make items. Whatever kept this process from sharing the lock, it is tried
    /// again before an item is made, for a second at most; none is made (`filesystem_error`) while another process may
    /// sweep it.
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
    std::mutex mutex_;               ///< guards the lock once the object is made
    std::unique_ptr<LockFile> lock_; ///< null when there is none; then nothing is swept
    Files files_{*this};
};

} // namespace vorn
