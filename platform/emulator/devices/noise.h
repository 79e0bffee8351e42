#pragma once

#include <cstdint>

namespace emulator
{

/// Deterministic sensor noise: returns a number from -1 to 1 for a time of Clock, a new one for each second. It is the
/// same in every run. The sensors of a camera have different seeds.
inline double noise(uint64_t seed, int64_t milliseconds)
{
    uint64_t bits = seed * 0x9e3779b97f4a7c15u + static_cast<uint64_t>(milliseconds / 1000);
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9u;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebu;
    bits ^= bits >> 31;
    return static_cast<double>(bits >> 11) / static_cast<double>(uint64_t(1) << 52) - 1.0;
}

} // namespace emulator
