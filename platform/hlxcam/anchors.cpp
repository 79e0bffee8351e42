// The destructors and constructors of the interfaces stand here, so that their type information lives in this library
// and a dynamic cast finds it from every other one.
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
