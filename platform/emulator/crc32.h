#pragma once

#include <cstdint>
#include <span>

namespace emulator
{

/// Returns the CRC-32 of some bytes, as Ethernet, gzip and PNG compute it: polynomial 0x04c11db7, reflected, with all
/// bits inverted at the start and at the end. `before` is that of the bytes before these, if they are in several
/// pieces.
uint32_t crc32(std::span<const uint8_t> bytes, uint32_t before = 0);

} // namespace emulator
