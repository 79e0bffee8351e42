#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// The names for the numbers of a camera's identity. The functions return null for a number without a name.
namespace zvt
{

inline constexpr std::array typeNames{"Hazel", "Sorrel", "Bracken", "Tansy", "Yarrow", "Teasel", "Campion"};

inline constexpr size_t maxSubtypes = 3;
inline constexpr std::array<std::array<const char *, maxSubtypes>, typeNames.size()> subtypeNames{{
    {"Core", "Boxed", nullptr},
    {"Core", "Boxed", "Weatherproof"},
    {"Bench", "Lock-in", nullptr},
    {"Handheld", nullptr, nullptr},
    {"Long range", "Gimbal", "Mast"},
    {"High speed", "High speed, drive", nullptr},
    {"Science", "Science, vacuum", "Science, cold filter"},
}};

inline constexpr std::array readoutNames{"R320-A", "R640-A", "R640-D", "R1280-A", "R1280-D", "R512-S", "R384-U"};
inline constexpr std::array detectorNames{"InSb", "MCT", "SLS", "InGaAs", "Microbolometer", "MCT, two colors"};
inline constexpr std::array pleoraBoardNames{"None", "GigE, one port", "GigE, two ports", "GigE, ten gigabit"};
inline constexpr std::array variantNames{"Standard", "Extended range", "Export", "Demonstrator"};

inline constexpr const char *nameIn(std::span<const char *const> names, uint8_t number)
{
    return number < names.size() ? names[number] : nullptr;
}

inline constexpr const char *subtypeName(uint8_t type, uint8_t subtype)
{
    return type < subtypeNames.size() ? nameIn(subtypeNames[type], subtype) : nullptr;
}

} // namespace zvt
