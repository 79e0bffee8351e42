// Defines the destructors and constructors of the interfaces, so that their type information is in this library only
// and a dynamic_cast works across libraries.
#include "hlx/CZVTController.h"
#include "hlx/IInterface.h"

namespace hlx::cam
{

IZVTController::IZVTController() = default;
IZVTController::~IZVTController() = default;

CZVTController::CZVTController() = default;
CZVTController::~CZVTController() = default;

IVideoSource::~IVideoSource() = default;

CProperties::~CProperties() = default;

IDevice::~IDevice() = default;

IInterface::~IInterface() = default;

CInterfaces::~CInterfaces() = default;

} // namespace hlx::cam
