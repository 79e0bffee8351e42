#include "platform/emulator/crc32.h"

#include <array>
#include <cstddef>

namespace emulator
{

namespace
{

// Eight bytes are taken at once, since corrections have megabytes. Table k has the effect of a byte with k bytes after
// it.
constexpr size_t step = 8;
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

} // namespace

uint32_t crc32(std::span<const uint8_t> bytes)
{
    uint32_t value = ~uint32_t{0};
    const uint8_t *at = bytes.data();
    size_t left = bytes.size();
    for (; left >= step; left -= step, at += step)
        value = tables[7][(value ^ at[0]) & 0xff] ^ tables[6][((value >> 8) ^ at[1]) & 0xff]
            ^ tables[5][((value >> 16) ^ at[2]) & 0xff] ^ tables[4][(value >> 24) ^ at[3]] ^ tables[3][at[4]]
            ^ tables[2][at[5]] ^ tables[1][at[6]] ^ tables[0][at[7]];
    for (; left > 0; --left, ++at)
        value = (value >> 8) ^ tables[0][(value ^ *at) & 0xff];
    return ~value;
}

} // namespace emulator
