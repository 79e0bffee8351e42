#include "hlx/IInterface.h"

#include "platform/emulator/Camera.h"
#include "platform/hlxcam/EmulatedDevice.h"

namespace hlx::cam
{

namespace
{

/// The interfaces of this installation: only the emulator.
class BundledInterfaces final : public CInterfaces
{
public:
    BundledInterfaces() { m_emulator->isEmulator = true; }

    TSharedPtr<IInterface> GetInterfaceOfDevice(const CString &deviceKey) override
    {
        return EmulatedDevice::cameraOf(deviceKey) ? m_emulator : TSharedPtr<IInterface>();
    }

private:
    const TSharedPtr<IInterface> m_emulator = TSharedPtr<IInterface>::make();
};

} // namespace

CInterfaces &interfaces()
{
    // Never destroyed, since other static objects may still call it while the process ends.
    static auto *const registry = new BundledInterfaces;
    return *registry;
}

} // namespace hlx::cam
