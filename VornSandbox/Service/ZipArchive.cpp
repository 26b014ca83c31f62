#include "VornSandbox/Service/ZipArchive.h"

#include "VornSandbox/Service/ArchiveError.h"

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

namespace vorn::sandbox {
namespace {

using Sink = std::function<void(std::string_view)>;

constexpr std::size_t endSize = 22;
constexpr std::size_t longestComment = 65535;
constexpr std::size_t directoryEntrySize = 46;
constexpr std::size_t localHeaderSize = 30;
constexpr std::size_t pieceSize = 256 * std::size_t{1024};
constexpr std::uint16_t encrypted = 1;

constexpr std::string_view endMark = "PK\5\6";
constexpr std::string_view directoryMark = "PK\1\2";
constexpr std::string_view localMark = "PK\3\4";

std::uint32_t number(std::string_view bytes, std::size_t at, std::size_t length)
{
    std::uint32_t value = 0;
    for (std::size_t i = length; i-- > 0;) value = (value << 8U) | static_cast<unsigned char>(bytes.at(at + i));
    return value;
}

std::uint16_t number16(std::string_view bytes, std::size_t at)
{
    return static_cast<std::uint16_t>(number(bytes, at, 2));
}

std::uint32_t number32(std::string_view bytes, std::size_t at)
{
    return number(bytes, at, 4);
}

/// Counts what comes out of an entry against what its directory says.
class Verifier {
public:
    Verifier(const ZipArchive::Entry& entry, const Sink& sink) : entry_(entry), sink_(sink) {}

    void take(std::string_view piece)
    {
        size_ += piece.size();
        if (size_ > entry_.size) throw ArchiveError("The entry " + entry_.name + " is longer than it says.");
        crc_ = crc32(crc_, reinterpret_cast<const Bytef*>(piece.data()), static_cast<uInt>(piece.size()));
        sink_(piece);
    }
    void finish() const
    {
        if (size_ != entry_.size) throw ArchiveError("The entry " + entry_.name + " is shorter than it says.");
        if (crc_ != entry_.crc) throw ArchiveError("The entry " + entry_.name + " has a wrong checksum.");
    }

private:
    const ZipArchive::Entry& entry_;
    const Sink& sink_;
    std::uint64_t size_ = 0;
    uLong crc_ = 0;
};

/// zlib's decoder of raw DEFLATE.
class Inflater {
public:
    Inflater()
    {
        if (inflateInit2(&stream_, -MAX_WBITS) != Z_OK) throw ArchiveError("The decoder does not start.");
    }
    ~Inflater() { inflateEnd(&stream_); }
    Inflater(Inflater&&) = delete;

    /// Whether the stream has ended with `input`.
    bool take(std::string& input, Verifier& verifier)
    {
        std::string output(pieceSize, '\0');
        stream_.next_in = reinterpret_cast<Bytef*>(input.data());
        stream_.avail_in = static_cast<uInt>(input.size());
        while (true) {
            stream_.next_out = reinterpret_cast<Bytef*>(output.data());
            stream_.avail_out = static_cast<uInt>(output.size());
            const int result = inflate(&stream_, Z_NO_FLUSH);
            if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
                throw ArchiveError("An entry's compressed bytes are damaged.");
            }
            verifier.take(std::string_view(output).substr(0, output.size() - stream_.avail_out));
            if (result == Z_STREAM_END) return true;
            if (stream_.avail_out > 0) return false; // wants more input
        }
    }

private:
    z_stream stream_{};
};

} // namespace

ZipArchive::ZipArchive(const std::filesystem::path& file) : file_(openRegularFile(file))
{
    struct stat status{};
    if (!file_ || fstat(file_.get(), &status) != 0) throw ArchiveError("The archive cannot be opened.");
    size_ = static_cast<std::uint64_t>(status.st_size);
    if (size_ < endSize) throw ArchiveError("The archive is too short for a ZIP file.");
    const std::uint64_t tailSize = std::min<std::uint64_t>(size_, endSize + longestComment);
    const std::string tail = bytesAt(size_ - tailSize, tailSize);
    const auto end = tail.rfind(endMark);
    if (end == std::string::npos || end + endSize > tail.size()) {
        throw ArchiveError("The archive is no ZIP file: it has no directory.");
    }
    const std::string_view record = std::string_view(tail).substr(end);
    readDirectory(bytesAt(number32(record, 16), number32(record, 12)), number16(record, 10));
}

std::string ZipArchive::bytesAt(std::uint64_t offset, std::size_t length) const
{
    if (offset > size_ || length > size_ - offset) throw ArchiveError("The archive points beyond its end.");
    std::string bytes(length, '\0');
    for (std::size_t done = 0; done < length;) {
        const ssize_t count = pread(file_.get(), bytes.data() + done, length - done, static_cast<off_t>(offset + done));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) throw ArchiveError("The archive cannot be read.");
        done += static_cast<std::size_t>(count);
    }
    return bytes;
}

void ZipArchive::readDirectory(std::string_view directory, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (directory.size() < directoryEntrySize || !directory.starts_with(directoryMark)) {
            throw ArchiveError("The archive's directory is damaged.");
        }
        const std::size_t nameSize = number16(directory, 28);
        const std::size_t length =
            directoryEntrySize + nameSize + number16(directory, 30) + std::size_t{number16(directory, 32)};
        if (length > directory.size()) throw ArchiveError("The archive's directory is damaged.");
        if ((number16(directory, 8) & encrypted) != 0) throw ArchiveError("The archive is encrypted.");
        entries_.push_back({.name = std::string(directory.substr(directoryEntrySize, nameSize)),
                            .method = number16(directory, 10),
                            .crc = number32(directory, 16),
                            .packedSize = number32(directory, 20),
                            .size = number32(directory, 24),
                            .offset = number32(directory, 42)});
        directory.remove_prefix(length);
    }
}

void ZipArchive::read(const Entry& entry, const Sink& sink) const
{
    const std::string header = bytesAt(entry.offset, localHeaderSize);
    if (!header.starts_with(localMark)) throw ArchiveError("The entry " + entry.name + " is not where it should be.");
    const std::uint64_t offset =
        std::uint64_t{entry.offset} + localHeaderSize + number16(header, 26) + number16(header, 28);
    switch (entry.method) {
    case 0: copyInto(entry, offset, sink); break;
    case 8: inflateInto(entry, offset, sink); break;
    default: throw ArchiveError("The entry " + entry.name + " is compressed in an unknown way.");
    }
}

std::string ZipArchive::text(const Entry& entry, std::size_t largest) const
{
    if (entry.size > largest) throw ArchiveError("The entry " + entry.name + " is too large.");
    std::string text;
    read(entry, [&](std::string_view piece) { text += piece; });
    return text;
}

void ZipArchive::copyInto(const Entry& entry, std::uint64_t offset, const Sink& sink) const
{
    Verifier verifier(entry, sink);
    for (std::uint64_t done = 0; done < entry.packedSize;) {
        const std::string piece = bytesAt(offset + done, std::min<std::uint64_t>(pieceSize, entry.packedSize - done));
        verifier.take(piece);
        done += piece.size();
    }
    verifier.finish();
}

void ZipArchive::inflateInto(const Entry& entry, std::uint64_t offset, const Sink& sink) const
{
    Verifier verifier(entry, sink);
    Inflater inflater;
    bool ended = false;
    for (std::uint64_t done = 0; done < entry.packedSize && !ended;) {
        std::string piece = bytesAt(offset + done, std::min<std::uint64_t>(pieceSize, entry.packedSize - done));
        done += piece.size();
        ended = inflater.take(piece, verifier);
    }
    if (!ended) throw ArchiveError("The entry " + entry.name + " breaks off.");
    verifier.finish();
}

} // namespace vorn::sandbox
