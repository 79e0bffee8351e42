#pragma once

#include <cstdint>

#include "hlx/CRCalFile.h"
#include "hlx/IReduceObject.h"

namespace hlx::reduce
{

/// The calibration of a movie.
class CRCalReduceObject : public IReduceObject
{
public:
    static SGuid classTypeID();

    SGuid typeID() const override { return classTypeID(); }
    int index() const override { return 0; }
    std::unique_ptr<IReduceObject> clone() const override;

    uint8_t flag = 0; ///< 1 if replaced after the recording, else 0. Must stay the first member after the base.
    CRCalFile calibration;
};

} // namespace hlx::reduce
