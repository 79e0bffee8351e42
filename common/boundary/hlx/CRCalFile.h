#pragma once

#include "hlx/CString.h"
#include "hlx/TArray.h"

namespace hlx::reduce
{

/// A radiometric calibration: the polynomial that turns counts into the measured value, and where it holds. Callers
/// assign it and look at nothing inside.
class CRCalFile
{
public:
    CString name;
    float low = 0.0F; ///< The lowest value that the calibration covers, in Kelvin.
    float high = 0.0F; ///< The highest one.
    TArray<float> coefficients; ///< Of counts to the power of the index.
};

} // namespace hlx::reduce
