#pragma once

#include "Platform/Base/Log.h"

#include <exception>
#include <filesystem>
#include <memory>
#include <string_view>

namespace vorn {

class LockFile;

/// What this user's Vorn processes keep in the temporary directory: private copies of the Messages database, archives,
/// and archives that are not finished. A process that is killed leaves them behind; the next one removes them when it
/// starts, or, where another was alive at that time, the last one when it ends. What belongs to a living process stays,
/// as long as that has one of these objects: make it before anything else is put there, and let it go last.
/// Threads: any, one at a time. Nothing is thrown: what cannot be removed is logged and stays for the next process.
class TemporaryItems {
public:
    TemporaryItems(std::filesystem::path directory, Log log) noexcept;
    ~TemporaryItems();
    TemporaryItems(TemporaryItems&&) = delete;

    /// Whether an item of this name is one: "vorn-messages-" and a UUID, "vorn-nimbrel-", a UUID and ".zip", or what an
    /// unfinished file is called, ".incomplete-" and a UUID; a UUID as `newUUID` writes it.
    static bool isName(std::string_view name);

private:
    void start();
    void end();
    void sweep() const noexcept;
    void logFailure(const std::exception& error) const noexcept;

    std::filesystem::path directory_;
    Log log_;
    std::unique_ptr<LockFile> lock_; ///< null when there is none; then nothing is swept
};

} // namespace vorn
