#include "NimbrelExportKit/Archive/ZipWriter.h"

#include "NimbrelExportKit/Archive/CRC32.h"

#include <algorithm>
#include <cstring>

namespace vorn {
namespace {

using namespace ZipWriter;

constexpr std::size_t largestCount = 65'534;
constexpr std::size_t longestName = 65'534;
constexpr std::size_t largestStored = 64; ///< in bytes; deflating so little rarely pays

constexpr std::size_t localHeaderSize = 30;
constexpr std::size_t centralRecordSize = 46;
constexpr std::size_t endRecordSize = 22;

constexpr std::uint16_t versionNeeded = 20;    ///< 2.0: DEFLATE
constexpr std::uint16_t madeByUnix = 0x0314;   ///< host system 3, version 2.0
constexpr std::uint16_t utf8Names = 0x0800;    ///< general purpose bit 11
constexpr std::uint32_t mode0644 = 0x81A40000; ///< Unix mode 0100644 in the high half

enum Method : std::uint16_t { stored = 0, deflated = 8 };

/// Writes consecutive little-endian fields into memory that is large enough.
class FieldWriter {
public:
    explicit FieldWriter(std::byte* at) : at_(at) {}

    FieldWriter& u16(std::uint16_t value) { return put(value, 2); }
    FieldWriter& u32(std::uint32_t value) { return put(value, 4); }
    void bytes(ByteView bytes)
    {
        if (!bytes.empty()) std::memcpy(at_, bytes.data(), bytes.size());
    }

private:
    FieldWriter& put(std::uint32_t value, int size)
    {
        for (; size > 0; --size, value >>= 8U) *at_++ = static_cast<std::byte>(value & 0xFFU);
        return *this;
    }

    std::byte* at_;
};

struct DosDateTime {
    std::uint16_t time;
    std::uint16_t date;
};

DosDateTime dosDateTime(Instant instant)
{
    const CalendarTime local = localTime(instant);
    const int year = std::clamp(local.year, 1980, 2107) - 1980;
    return {static_cast<std::uint16_t>(local.hour << 11 | local.minute << 5 | local.second / 2),
            static_cast<std::uint16_t>(year << 9 | local.month << 5 | local.day)};
}

/// What both headers of an entry contain.
struct Member {
    const std::string& name;
    Method method;
    DosDateTime modified;
    std::uint32_t checksum;
    std::uint32_t packedSize;
    std::uint32_t size;

    /// The 26 bytes that both headers share.
    FieldWriter& writeShared(FieldWriter& to) const
    {
        to.u16(versionNeeded).u16(utf8Names).u16(method).u16(modified.time).u16(modified.date);
        to.u32(checksum).u32(packedSize).u32(size);
        return to.u16(static_cast<std::uint16_t>(name.size())).u16(0); // no extra field
    }
};

/// An archive under construction: its entries, and the central directory that follows them.
class Archive {
public:
    explicit Archive(const Settings& settings) : deflate_(settings.encoder), largest_(settings.largest) {}

    /// Reserves address space for `entries` at their full size, so that nothing is moved later. Memory is used only
    /// where bytes are written.
    void reserve(std::span<const ZipEntry> entries)
    {
        std::uint64_t sum = endRecordSize;
        for (const ZipEntry& entry : entries) {
            if (entry.data.size() > largest_ || sum > largest_) break; // `add` decides: earlier entries may shrink
            sum += localHeaderSize + centralRecordSize + 2 * entry.name.size() + entry.data.size();
        }
        local_.reserve(sum);
    }

    void add(const ZipEntry& entry)
    {
        check(entry);
        const std::size_t offset = local_.size();
        const std::size_t payload = offset + localHeaderSize + entry.name.size();
        const std::uint32_t checksum = CRC32::checksum(entry.data);
        local_.resize(payload + entry.data.size());
        const auto room = std::span(local_).subspan(payload);
        const auto packedSize = entry.data.size() > largestStored ? deflate_.compress(entry.data, room) : std::nullopt;
        if (!packedSize) FieldWriter(room.data()).bytes(entry.data);
        local_.resize(payload + packedSize.value_or(entry.data.size()));

        const Member member{entry.name,
                            packedSize ? deflated : stored,
                            dosDateTime(entry.modified),
                            checksum,
                            static_cast<std::uint32_t>(local_.size() - payload),
                            static_cast<std::uint32_t>(entry.data.size())};
        writeLocalHeader(member, offset);
        appendCentralRecord(member, static_cast<std::uint32_t>(offset));
        ++count_;
    }

    ByteBuffer finish() &&
    {
        const std::size_t directory = local_.size();
        if (std::uint64_t{directory} + central_.size() > largest_) throw ZipWriterError(ZipWriterError::TooLarge{});
        local_.insert(local_.end(), central_.begin(), central_.end());
        appendEndRecord(static_cast<std::uint32_t>(directory));
        return std::move(local_);
    }

private:
    void check(const ZipEntry& entry) const
    {
        const std::string& name = entry.name;
        if (name.empty() || name.size() > longestName || name.front() == '/') {
            throw ZipWriterError(ZipWriterError::InvalidName{name});
        }
        if (entry.data.size() > largest_ || local_.size() > largest_) throw ZipWriterError(ZipWriterError::TooLarge{});
    }

    void writeLocalHeader(const Member& member, std::size_t offset)
    {
        FieldWriter to(local_.data() + offset);
        to.u32(0x04034B50);
        member.writeShared(to).bytes(bytesOf(member.name));
    }

    void appendCentralRecord(const Member& member, std::uint32_t offset)
    {
        FieldWriter to(grow(central_, centralRecordSize + member.name.size()));
        to.u32(0x02014B50).u16(madeByUnix);
        member.writeShared(to);
        to.u16(0).u16(0).u16(0); // comment length, disk, internal attributes
        to.u32(mode0644).u32(offset).bytes(bytesOf(member.name));
    }

    void appendEndRecord(std::uint32_t directory)
    {
        FieldWriter to(grow(local_, endRecordSize));
        to.u32(0x06054B50).u16(0).u16(0).u16(count_).u16(count_);                  // this disk, the directory's disk
        to.u32(static_cast<std::uint32_t>(central_.size())).u32(directory).u16(0); // comment length
    }

    static std::byte* grow(ByteBuffer& buffer, std::size_t size)
    {
        buffer.resize(buffer.size() + size);
        return buffer.data() + (buffer.size() - size);
    }

    CheckedDeflate deflate_;
    std::uint64_t largest_;
    ByteBuffer local_;
    ByteBuffer central_;
    std::uint16_t count_ = 0;
};

} // namespace

bool ZipEntry::operator==(const ZipEntry& other) const
{
    return name == other.name && modified == other.modified && std::ranges::equal(data, other.data);
}

const char* ZipWriterError::what() const noexcept
{
    return std::holds_alternative<InvalidName>(reason_) ? "invalidName" : "tooLarge";
}

ByteBuffer ZipWriter::archive(std::span<const ZipEntry> entries, const Settings& settings)
{
    if (entries.size() > largestCount) throw ZipWriterError(ZipWriterError::TooLarge{});
    Archive archive(settings);
    archive.reserve(entries);
    for (const ZipEntry& entry : entries) archive.add(entry);
    return std::move(archive).finish();
}

void ZipWriter::write(std::span<const ZipEntry> entries, const std::filesystem::path& path, FileManager& files,
                      const CancelFlag& cancel)
{
    const ByteBuffer bytes = archive(entries);
    cancel.check();
    files.writeAtomically(bytes, path);
}

} // namespace vorn
