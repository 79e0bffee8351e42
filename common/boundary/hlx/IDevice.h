#pragma once

#include "hlx/CProperties.h"
#include "hlx/CString.h"

namespace hlx::cam
{

/// The device behind a controller: what the framework found on one of its interfaces. Any thread.
class IDevice
{
public:
    IDevice() = default;
    IDevice(const IDevice &) = delete;
    IDevice &operator=(const IDevice &) = delete;
    virtual ~IDevice();

    /// The name under which the registry of interfaces knows this device.
    virtual hlx::CString key() const = 0;

    virtual CProperties &properties() = 0;
};

} // namespace hlx::cam
