#pragma once

#include <memory>

#include "hlx/SGuid.h"

namespace hlx::reduce
{

/// A calibration or a correction of a movie: it turns raw pixels into an image or a measurement.
class IReduceObject
{
public:
    virtual ~IReduceObject();

    /// The same for all objects of a class.
    virtual SGuid typeID() const = 0;
    /// Distinguishes the objects of one type: the preset of a correction; 0 for a calibration.
    virtual int index() const = 0;
    virtual std::unique_ptr<IReduceObject> clone() const = 0;

protected:
    IReduceObject() = default;
    IReduceObject(const IReduceObject &) = default;
    IReduceObject &operator=(const IReduceObject &) = default;
};

} // namespace hlx::reduce
