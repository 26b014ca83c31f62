#pragma once

#include "Platform/Base/Bytes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vorn::testing {

/// The fields of a local header, as in the file.
struct LocalHeader {
    std::uint32_t signature = 0;
    std::uint16_t versionNeeded = 0, flags = 0, method = 0, time = 0, date = 0;
    std::uint32_t checksum = 0, packedSize = 0, size = 0;
    std::uint16_t nameLength = 0, extraLength = 0;
    std::string name;
};

/// The fields of a record of the central directory.
struct CentralRecord {
    std::uint32_t signature = 0;
    std::uint16_t madeBy = 0, versionNeeded = 0, flags = 0, method = 0, time = 0, date = 0;
    std::uint32_t checksum = 0, packedSize = 0, size = 0;
    std::uint16_t nameLength = 0, extraLength = 0, commentLength = 0, disk = 0, internalAttributes = 0;
    std::uint32_t externalAttributes = 0, offset = 0;
    std::string name;
};

struct EndRecord {
    std::uint32_t signature = 0;
    std::uint16_t disk = 0, directoryDisk = 0, countHere = 0, count = 0;
    std::uint32_t directorySize = 0, directoryOffset = 0;
    std::uint16_t commentLength = 0;
};

struct ArchivedFile {
    LocalHeader local;
    CentralRecord central;
    std::size_t offset = 0; ///< of its local header
    ByteBuffer packed;
    std::string content; ///< inflated if the method requires it
};

struct ReadArchive {
    std::vector<ArchivedFile> files;
    std::size_t directoryOffset = 0; ///< of the first byte after the files
    std::size_t directorySize = 0;
    EndRecord end;
};

/// Reads an archive from its first byte to its last, with each field in the place that the format gives it. Throws
/// `std::runtime_error` if bytes are missing or left over, or if a deflated file does not inflate to its size.
ReadArchive readArchive(ByteView bytes);

} // namespace vorn::testing
