#pragma once

#include "hlx/CString.h"
#include "hlx/TSharedPtr.h"

namespace hlx::cam
{

/// An interface through which cameras are reached: a frame grabber, a network adapter or the emulator.
struct IInterface {
    IInterface() = default;
    IInterface(const IInterface &) = delete;
    IInterface &operator=(const IInterface &) = delete;
    virtual ~IInterface();

    bool isEmulator = false; ///< The cameras of this interface are emulated in software.
};

/// The framework's registry of interfaces. Any thread.
class CInterfaces
{
public:
    CInterfaces() = default;
    CInterfaces(const CInterfaces &) = delete;
    CInterfaces &operator=(const CInterfaces &) = delete;
    virtual ~CInterfaces();

    /// The interface on which the device with this key (IDevice::key()) was found; null if no device has the key.
    virtual hlx::TSharedPtr<IInterface> GetInterfaceOfDevice(const hlx::CString &deviceKey) = 0;
};

/// The one registry of the process.
CInterfaces &interfaces();

} // namespace hlx::cam
