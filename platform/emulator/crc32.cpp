#include "platform/emulator/crc32.h"

#include <array>
#include <cstddef>

namespace emulator
{

namespace
{

// Sixteen bytes are taken at once, since corrections and frames have megabytes. Table k has the effect of a byte with k
// bytes after it.
constexpr size_t step = 16;
using Tables = std::array<std::array<uint32_t, 256>, step>;

constexpr Tables makeTables()
{
    constexpr uint32_t reflectedPolynomial = 0xedb88320;
    Tables tables{};
    for (uint32_t byte = 0; byte < 256; ++byte) {
        uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ ((value & 1) != 0 ? reflectedPolynomial : 0);
        tables[0][byte] = value;
    }
    for (size_t k = 1; k < step; ++k)
        for (size_t byte = 0; byte < 256; ++byte)
            tables[k][byte] = (tables[k - 1][byte] >> 8) ^ tables[0][tables[k - 1][byte] & 0xff];
    return tables;
}

constexpr Tables tables = makeTables();

/// The effect of four bytes with `after` bytes after them.
uint32_t effectOf(const uint8_t *bytes, uint32_t value, size_t after)
{
    return tables[after + 3][(value ^ bytes[0]) & 0xff] ^ tables[after + 2][((value >> 8) ^ bytes[1]) & 0xff]
        ^ tables[after + 1][((value >> 16) ^ bytes[2]) & 0xff] ^ tables[after][(value >> 24) ^ bytes[3]];
}

} // namespace

uint32_t crc32(std::span<const uint8_t> bytes, uint32_t before)
{
    uint32_t value = ~before;
    const uint8_t *at = bytes.data();
    size_t left = bytes.size();
    for (; left >= step; left -= step, at += step)
        value = effectOf(at, value, 12) ^ effectOf(at + 4, 0, 8) ^ effectOf(at + 8, 0, 4) ^ effectOf(at + 12, 0, 0);
    for (; left > 0; --left, ++at)
        value = (value >> 8) ^ tables[0][(value ^ *at) & 0xff];
    return ~value;
}

} // namespace emulator
