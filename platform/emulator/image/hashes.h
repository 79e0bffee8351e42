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

} // namespace emulator::image
