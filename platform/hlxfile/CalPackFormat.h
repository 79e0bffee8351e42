#pragma once

#include <cstdint>
#include <string_view>

namespace hlx
{

/// What a cal pack file begins with.
constexpr std::string_view calPackMagic = "HLX-CAL\n";
constexpr uint32_t calPackVersion = 1;

} // namespace hlx
