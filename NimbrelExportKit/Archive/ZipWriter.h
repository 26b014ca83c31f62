#pragma once

#include "NimbrelExportKit/Archive/Deflate.h"
#include "Platform/Base/Bytes.h"
#include "Platform/Base/CancelFlag.h"
#include "Platform/Base/Dates.h"
#include "Platform/Base/FileManager.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <span>
#include <string>
#include <variant>

namespace vorn {

/// One file of an archive.
struct ZipEntry {
    std::string name;   ///< its path in the archive, UTF-8
    ByteView data;      ///< borrowed: documents are too large to copy
    Instant modified{}; ///< written in local time, in steps of two seconds

    bool operator==(const ZipEntry& other) const; ///< compares the bytes, not where they lie
};

/// Why something cannot be archived.
class ZipWriterError : public std::exception {
public:
    /// A name is empty, longer than 65,534 bytes, or begins with "/".
    struct InvalidName {
        std::string name;
        bool operator==(const InvalidName&) const = default;
    };
    /// More than 65,534 entries, or sizes or offsets that 32 bits cannot hold.
    struct TooLarge {
        bool operator==(const TooLarge&) const = default;
    };
    using Reason = std::variant<InvalidName, TooLarge>;

    ZipWriterError(Reason reason)
        : reason_(std::move(reason)) {} // NOLINT(google-explicit-constructor): a reason converts to its error

    const Reason& reason() const noexcept { return reason_; }
    const char* what() const noexcept override; ///< the name of the case, for logs

    bool operator==(const ZipWriterError& other) const noexcept { return reason_ == other.reason_; }

private:
    Reason reason_;
};

/// Makes ZIP archives in memory: one disk, no ZIP64, no data descriptors, no extra fields, no comments.
/// The format is PKWARE's APPNOTE 2.0 with UTF-8 names (https://pkware.cachefly.net/webdocs/APPNOTE/APPNOTE-6.3.9.TXT).
/// Threads: any.
namespace ZipWriter {

/// Overridable in tests.
struct Settings {
    DeflateEncoder encoder = libdeflateEncoder();
    /// The largest size or offset. The value above it would mean "see the ZIP64 record".
    std::uint64_t largest = 4'294'967'294;
};

/// The archive of `entries`, in their order. An entry that has at most 64 bytes, or that deflating does not shrink, is
/// stored; others are deflated. Memory: the archive's, plus address space of the data's size. Errors: `ZipWriterError`.
ByteBuffer archive(std::span<const ZipEntry> entries, const Settings& settings = {});

/// Writes the archive of `entries` to `path`, replacing what was there; on failure nothing changes there.
/// Errors: `ZipWriterError`, those of `files`, and `Cancelled` if `cancel` is raised before writing begins.
void write(std::span<const ZipEntry> entries, const std::filesystem::path& path,
           FileManager& files = FileManager::standard(), const CancelFlag& cancel = CancelFlag::never());

} // namespace ZipWriter
} // namespace vorn
