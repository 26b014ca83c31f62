#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <vector>

namespace vorn::sandbox {

/// The messages of an archive, to be looked at page by page: unpacked once into a file beside it, with an index of
/// where pages start, so that the last page of a long history comes as fast as the first. The file goes with the
/// object. Threads: one at a time. Errors: `ArchiveError`, `std::filesystem::filesystem_error`.
class MessagePages {
public:
    static constexpr std::int64_t perPage = 50;

    /// Unpacks `archive` to `unpacked`, in place of what is there.
    MessagePages(const std::filesystem::path& archive, std::filesystem::path unpacked);
    MessagePages(MessagePages&&) = delete;

    std::int64_t count() const { return count_; }
    const nlohmann::json& manifest() const { return manifest_; } ///< null when it cannot be read

    /// The messages of page `page`, counted from 0, as an array of whatever they are; empty beyond the last one.
    nlohmann::json page(std::int64_t page) const;

private:
    /// A private file, removed with the object.
    struct UnpackedFile {
        explicit UnpackedFile(std::filesystem::path at);
        ~UnpackedFile();
        UnpackedFile(UnpackedFile&&) = delete;
        std::filesystem::path path;
    };

    UnpackedFile unpacked_;
    nlohmann::json manifest_;
    std::vector<std::uint64_t> starts_; ///< of each page in the file, and of its end
    std::int64_t count_ = 0;
};

} // namespace vorn::sandbox
