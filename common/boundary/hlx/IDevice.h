#pragma once

#include "hlx/CProperties.h"
#include "hlx/CString.h"

namespace hlx::cam
{

/// A device that the framework found on one of its interfaces; a controller drives it. Any thread.
class IDevice
{
public:
    IDevice() = default;
    IDevice(const IDevice &) = delete;
    IDevice &operator=(const IDevice &) = delete;
    virtual ~IDevice();

    /// The name of this device in the registry of interfaces, see CInterfaces::GetInterfaceOfDevice().
    virtual hlx::CString key() const = 0;

    virtual CProperties &properties() = 0;
};

} // namespace hlx::cam
