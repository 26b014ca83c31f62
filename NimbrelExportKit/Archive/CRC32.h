#pragma once

#include "Platform/Base/Bytes.h"

#include <array>
#include <cstdint>

/// The checksum of ZIP (ISO 3309, IEEE 802.3): polynomial 0xEDB88320, reflected; initial and final values inverted.
/// Threads: any.
namespace vorn::CRC32 {

/// For each byte, the checksum's step over its eight bits. Built on first use.
const std::array<std::uint32_t, 256>& table();

/// The checksum of `data`; 0 for no bytes.
std::uint32_t checksum(ByteView data);

} // namespace vorn::CRC32
