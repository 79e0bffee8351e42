#include "common/CameraAccess.h"

#include "common/CameraRoot.h"
#include "common/CapabilityBlock.h"

#include <utility>

CameraAccess CameraAccess::of(const QObject *model)
{
    CameraRoot *root = CameraRoot::of(model);
    if (!root)
        return {{}, 0, std::make_shared<const CapabilityBlock>()};
    auto controller = root->controller();
    const uint64_t handle = controller ? controller->GetHandle() : 0;
    return {std::move(controller), handle, root->capabilities()};
}
