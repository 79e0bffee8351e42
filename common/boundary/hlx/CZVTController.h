#pragma once

#include "hlx/IDevice.h"
#include "hlx/IZVTController.h"
#include "hlx/TSharedPtr.h"

namespace hlx::cam
{

/// The concrete controller: an IZVTController that knows the device behind it.
class CZVTController : public IZVTController
{
public:
    CZVTController();
    ~CZVTController() override;

    /// The device that the controller drives; null while it drives none. Any thread.
    virtual hlx::TSharedPtr<IDevice> device() = 0;
};

} // namespace hlx::cam
