#include "platform/hlxcamzvt/makeController.h"

#include "platform/emulator/Status.h"
#include "platform/hlxcamzvt/EmulatedController.h"

#include <utility>

namespace hlx::cam
{

hlx::TSharedPtr<CZVTController> makeController(std::shared_ptr<emulator::Camera> camera)
{
    return hlx::TSharedPtr<EmulatedController>::make(std::move(camera));
}

bool attach(CZVTController &controller, std::shared_ptr<emulator::Camera> camera)
{
    auto *const emulated = dynamic_cast<EmulatedController *>(&controller);
    return emulated && emulated->attach(std::move(camera));
}

int connect(CZVTController &controller)
{
    auto *const emulated = dynamic_cast<EmulatedController *>(&controller);
    return emulated ? emulated->connect() : emulator::InvalidHandle;
}

} // namespace hlx::cam
