#include "tests/NimbrelExportKit/Archive/ArchiveReader.h"

#include <stdexcept>

#include <zlib.h>

namespace vorn::testing {
namespace {

class Cursor {
public:
    explicit Cursor(ByteView bytes) : all_(bytes) {}

    std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
    std::uint32_t u32() { return number(4); }
    ByteView bytes(std::size_t count)
    {
        if (all_.size() - at_ < count) throw std::runtime_error("the archive ends too early");
        at_ += count;
        return all_.subspan(at_ - count, count);
    }
    std::string text(std::size_t count) { return std::string(textOf(bytes(count))); }
    std::uint32_t peek() const { return Cursor(all_.subspan(at_)).u32(); }
    std::size_t position() const { return at_; }
    bool atEnd() const { return at_ == all_.size(); }

private:
    std::uint32_t number(std::size_t size)
    {
        const ByteView field = bytes(size);
        std::uint32_t value = 0;
        for (std::size_t i = size; i > 0; --i) value = value << 8U | std::to_integer<std::uint32_t>(field[i - 1]);
        return value;
    }

    ByteView all_;
    std::size_t at_ = 0;
};

LocalHeader readLocalHeader(Cursor& from)
{
    LocalHeader header;
    header.signature = from.u32();
    header.versionNeeded = from.u16();
    header.flags = from.u16();
    header.method = from.u16();
    header.time = from.u16();
    header.date = from.u16();
    header.checksum = from.u32();
    header.packedSize = from.u32();
    header.size = from.u32();
    header.nameLength = from.u16();
    header.extraLength = from.u16();
    header.name = from.text(header.nameLength);
    return header;
}

CentralRecord readCentralRecord(Cursor& from)
{
    CentralRecord record;
    record.signature = from.u32();
    record.madeBy = from.u16();
    record.versionNeeded = from.u16();
    record.flags = from.u16();
    record.method = from.u16();
    record.time = from.u16();
    record.date = from.u16();
    record.checksum = from.u32();
    record.packedSize = from.u32();
    record.size = from.u32();
    record.nameLength = from.u16();
    record.extraLength = from.u16();
    record.commentLength = from.u16();
    record.disk = from.u16();
    record.internalAttributes = from.u16();
    record.externalAttributes = from.u32();
    record.offset = from.u32();
    record.name = from.text(record.nameLength);
    return record;
}

EndRecord readEndRecord(Cursor& from)
{
    EndRecord end;
    end.signature = from.u32();
    end.disk = from.u16();
    end.directoryDisk = from.u16();
    end.countHere = from.u16();
    end.count = from.u16();
    end.directorySize = from.u32();
    end.directoryOffset = from.u32();
    end.commentLength = from.u16();
    return end;
}

std::string inflated(ByteView packed, std::size_t size)
{
    std::string content(size, '\0');
    z_stream stream{};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) throw std::runtime_error("zlib does not start");
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(content.data());
    stream.avail_out = static_cast<uInt>(size);
    const int code = inflate(&stream, Z_FINISH);
    const bool whole = code == Z_STREAM_END && stream.avail_in == 0 && stream.avail_out == 0;
    inflateEnd(&stream);
    if (!whole) throw std::runtime_error("a file does not inflate");
    return content;
}

ArchivedFile readFile(Cursor& from)
{
    ArchivedFile file;
    file.offset = from.position();
    file.local = readLocalHeader(from);
    const ByteView packed = from.bytes(file.local.packedSize);
    file.packed.assign(packed.begin(), packed.end());
    file.content = file.local.method == 8 ? inflated(packed, file.local.size) : std::string(textOf(packed));
    return file;
}

} // namespace

ReadArchive readArchive(ByteView bytes)
{
    Cursor from(bytes);
    ReadArchive archive;
    while (from.peek() == 0x04034B50) archive.files.push_back(readFile(from));
    archive.directoryOffset = from.position();
    for (ArchivedFile& file : archive.files) file.central = readCentralRecord(from);
    archive.directorySize = from.position() - archive.directoryOffset;
    archive.end = readEndRecord(from);
    if (!from.atEnd()) throw std::runtime_error("there is something behind the end record");
    return archive;
}

} // namespace vorn::testing
