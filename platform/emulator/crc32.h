#pragma once

#include <cstdint>
#include <span>

namespace emulator
{

/// Returns the CRC-32 of some bytes, as Ethernet, gzip and PNG compute it: polynomial 0x04c11db7, reflected, with all
/// bits inverted at the start and at the end.
uint32_t crc32(std::span<const uint8_t> bytes);

} // namespace emulator
