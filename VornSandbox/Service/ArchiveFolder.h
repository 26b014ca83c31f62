#pragma once

#include "VornSandbox/Service/TemporaryUploads.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::sandbox {

/// A part's bytes while they arrive. Leaves nothing behind unless it is kept.
class IncomingPart {
public:
    explicit IncomingPart(std::filesystem::path file);
    ~IncomingPart();
    IncomingPart(IncomingPart&&) = delete;

    void write(std::string_view bytes);
    std::int64_t size() const;

    /// Its entity tag, in quotes as HTTP has it. Call it once, after the last write.
    std::string finish();

    const std::filesystem::path& file() const { return file_; }

private:
    struct Writer;
    std::filesystem::path file_;
    std::unique_ptr<Writer> writer_;
};

/// The files of uploads: parts as they came, then the archive made of them. Nothing is held in memory.
/// Threads: any, for different submissions. Errors: `std::filesystem::filesystem_error`.
class ArchiveFolder {
public:
    /// Keeps the files in `folder`, or in a private temporary one that goes with the object. What an earlier run left
    /// unfinished is removed.
    explicit ArchiveFolder(const std::optional<std::filesystem::path>& folder);
    ArchiveFolder(ArchiveFolder&&) = delete;

    std::unique_ptr<IncomingPart> receivePart(const std::string& submissionId);

    /// Makes a received part part `number`, in place of an earlier one.
    void keepPart(const IncomingPart& part, const std::string& submissionId, std::int64_t number);

    struct Assembled {
        std::int64_t size = 0;
        std::string sha256; ///< 64 lower-case hexadecimal digits
    };

    /// Joins the parts 1 to `count` to the archive; the parts stay.
    Assembled assemble(const std::string& submissionId, std::int64_t count);
    void dropParts(const std::string& submissionId);
    void removeAll(const std::string& submissionId);

    std::filesystem::path archive(const std::string& submissionId) const;

private:
    std::filesystem::path folderOf(const std::string& submissionId) const;
    std::filesystem::path partFile(const std::string& submissionId, std::int64_t number) const;

    std::optional<TemporaryUploads> temporary_;
    std::filesystem::path root_;
};

} // namespace vorn::sandbox
