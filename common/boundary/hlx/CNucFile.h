#pragma once

#include <cstdint>

#include "hlx/CString.h"
#include "hlx/TArray.h"

namespace hlx
{

/// A non-uniformity correction: a gain and an offset for each pixel, row by row from the top. Both arrays hold width
/// times height values; a missing gain is 1, a missing offset 0. Callers only pass it on.
class CNucFile
{
public:
    CString name;
    uint16_t width = 0;
    uint16_t height = 0;
    TArray<float> gains;
    TArray<float> offsets; ///< A/D counts.
};

} // namespace hlx
