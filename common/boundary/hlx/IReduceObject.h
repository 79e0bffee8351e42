#pragma once

#include <memory>

#include "hlx/SGuid.h"

namespace hlx::reduce
{

/// One of the things that turn raw pixels into a picture or a measurement: a calibration, a correction.
class IReduceObject
{
public:
    virtual ~IReduceObject();

    virtual SGuid typeID() const = 0;
    /// Which of several objects of one type this is: the preset of a correction, 0 where there is only one.
    virtual int index() const = 0;
    virtual std::unique_ptr<IReduceObject> clone() const = 0;

protected:
    IReduceObject() = default;
    IReduceObject(const IReduceObject &) = default;
    IReduceObject &operator=(const IReduceObject &) = default;
};

} // namespace hlx::reduce
