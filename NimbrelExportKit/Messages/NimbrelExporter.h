#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "Platform/Base/CancelFlag.h"
#include "Platform/Base/FileManager.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vorn {

/// How far an export has come.
struct ExportProgress {
    enum class Phase {
        copying, ///< `done` counts bytes
        reading, ///< `done` counts rows; 0 while they are sorted
    };
    Phase phase = Phase::copying;
    std::uint64_t done = 0;
    bool operator==(const ExportProgress&) const = default;
};

/// Copies the Messages database, reads the assistant's conversations from the copy, and deletes the copy.
/// Threads: an export runs on the caller's thread, which should not be the main one.
class NimbrelExporter {
public:
    using OnProgress = std::function<void(const ExportProgress&)>;

    /// How many copies to take before giving up, if each is damaged.
    static constexpr int usualAttempts = 3;

    /// `attempts` below 1 counts as 1.
    NimbrelExporter(std::filesystem::path databaseURL, int attempts,
                    FileManager& fileManager = FileManager::standard());

    int attempts() const noexcept { return attempts_; }

    /// The conversations with `handles`. If the copy is damaged, as Messages may have been writing, it takes another at
    /// once. Throws `NimbrelExportError`, the file manager's error, or `Cancelled` soon after `cancel` is raised; the
    /// copy is deleted before it returns or throws. `onProgress` is called on the caller's thread. ("export" is a
    /// keyword.)
    NimbrelExportResult export_(const std::vector<std::string>& handles, const OnProgress& onProgress = {},
                                const CancelFlag& cancel = CancelFlag::never()) const;

private:
    std::filesystem::path databaseURL_;
    int attempts_;
    FileManager& fileManager_;
};

} // namespace vorn
