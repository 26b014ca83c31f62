#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::sandbox {

/// Reads a ZIP file (APPNOTE.TXT 6.3) of stored and deflated entries; without ZIP64, encryption and several disks.
/// Everything in it is believed only after it was checked: the file may come from anybody.
/// Threads: one at a time. Errors: `ArchiveError`.
class ZipArchive {
public:
    explicit ZipArchive(const std::filesystem::path& file);

    struct Entry {
        std::string name;
        std::uint16_t method = 0; ///< 0 stored, 8 deflated
        std::uint32_t crc = 0;
        std::uint32_t packedSize = 0; ///< bytes in the file
        std::uint32_t size = 0;       ///< bytes once unpacked
        std::uint32_t offset = 0;     ///< of the entry's own header
    };
    /// In the order of the central directory.
    const std::vector<Entry>& entries() const { return entries_; }

    /// Gives the entry's bytes in pieces. Its size and checksum are known to fit only once this returns.
    void read(const Entry& entry, const std::function<void(std::string_view)>& sink) const;

    /// The whole entry, of at most `largest` bytes: a few bytes of the file may unpack to gigabytes.
    std::string text(const Entry& entry, std::size_t largest) const;

private:
    std::string bytesAt(std::uint64_t offset, std::size_t length) const;
    void readDirectory(std::string_view directory, std::size_t count);
    void inflateInto(const Entry& entry, std::uint64_t offset, const std::function<void(std::string_view)>& sink) const;
    void copyInto(const Entry& entry, std::uint64_t offset, const std::function<void(std::string_view)>& sink) const;

    FileDescriptor file_;
    std::uint64_t size_ = 0;
    std::vector<Entry> entries_;
};

} // namespace vorn::sandbox
