#pragma once

#include "hlx/CString.h"
#include "hlx/TArray.h"

namespace hlx::reduce
{

/// A radiometric calibration: the polynomial that turns counts into the measured value, and its range. Callers only
/// assign it.
class CRCalFile
{
public:
    CString name;
    float low = 0.0F; ///< The least value that the calibration covers, in Kelvin.
    float high = 0.0F; ///< The greatest value, in Kelvin.
    TArray<float> coefficients; ///< Coefficient n is that of the count to the power of n.
};

} // namespace hlx::reduce
