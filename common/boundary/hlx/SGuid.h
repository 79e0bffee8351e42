#pragma once

#include <array>
#include <cstdint>

namespace hlx
{

/// The number of a type, unique in the world.
struct SGuid {
    std::array<uint8_t, 16> bytes{};

    friend bool operator==(const SGuid &, const SGuid &) = default;
};

} // namespace hlx
