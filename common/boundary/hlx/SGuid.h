#pragma once

#include <array>
#include <cstdint>

namespace hlx
{

/// A globally unique number of a type.
struct SGuid {
    std::array<uint8_t, 16> bytes{};

    friend bool operator==(const SGuid &, const SGuid &) = default;
};

} // namespace hlx
