#pragma once

#include "hlx/IDevice.h"
#include "hlx/IZVTController.h"
#include "hlx/TSharedPtr.h"

namespace hlx::cam
{

/// An IZVTController that also returns its device.
class CZVTController : public IZVTController
{
public:
    CZVTController();
    ~CZVTController() override;

    /// The device that the controller drives, null if it drives none. Any thread.
    virtual hlx::TSharedPtr<IDevice> device() = 0;
};

} // namespace hlx::cam
