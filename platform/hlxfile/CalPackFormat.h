#pragma once

#include <cstdint>
#include <string_view>

namespace hlx
{

/// The first bytes of a cal pack file.
constexpr std::string_view calPackMagic = "HLX-CAL\n";
constexpr uint32_t calPackVersion = 1;

} // namespace hlx
