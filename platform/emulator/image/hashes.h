#pragma once

#include <cstdint>

// Random numbers that depend only on their inputs, so that a frame is a pure function of its exposure. Any thread.

namespace emulator::image
{

/// The distance of the inputs of mixed() for neighbouring pixels or frames.
constexpr uint64_t hashStep = 0x9e3779b97f4a7c15u;

/// Returns 64 random bits for an input.
constexpr uint64_t mixed(uint64_t bits)
{
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9u;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebu;
    return bits ^ (bits >> 31);
}

/// Returns a number of the standard normal distribution for 64 random bits: the sum of four uniform numbers, which lies
/// between -3.47 and 3.47. It needs no logarithm, whose last digit may differ between libraries.
constexpr float standardNormal(uint64_t bits)
{
    constexpr float mean = 131'070;
    constexpr float deviation = 37'837.22f;
    const uint32_t sum
        = static_cast<uint32_t>((bits & 0xffff) + ((bits >> 16) & 0xffff) + ((bits >> 32) & 0xffff) + (bits >> 48));
    return (static_cast<float>(sum) - mean) / deviation;
}

/// Two numbers of the standard normal distribution.
struct NormalPair {
    float first;
    float second;
};

/// Returns two independent numbers for 64 random bits: for each of them the sum of four of the bytes, which lies
/// between -3.45 and 3.45. This is quicker than two calls of standardNormal().
constexpr NormalPair standardNormals(uint64_t bits)
{
    constexpr uint64_t everySecondByte = 0x00ff00ff00ff00ff;
    constexpr float mean = 510;
    constexpr float perDeviation = 1 / 147.8005f;
    uint64_t sums = (bits & everySecondByte) + ((bits >> 8) & everySecondByte);
    sums += sums >> 16;
    return {(static_cast<float>(static_cast<int>(sums & 0xffff)) - mean) * perDeviation,
            (static_cast<float>(static_cast<int>(sums >> 32 & 0xffff)) - mean) * perDeviation};
}

} // namespace emulator::image
