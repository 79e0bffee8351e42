#include "common/CameraRoot.h"

#include "common/CameraAccess.h"
#include "common/CapabilityBlock.h"

#include <QObject>

CameraRoot::~CameraRoot() = default;

CameraRoot *CameraRoot::of(const QObject *model)
{
    for (QObject *parent = model->parent(); parent; parent = parent->parent())
        if (auto *root = dynamic_cast<CameraRoot *>(parent))
            return root;
    return nullptr;
}

CameraAccess CameraAccess::of(const QObject *model)
{
    CameraRoot *root = CameraRoot::of(model);
    if (!root)
        return {{}, 0, std::make_shared<const CapabilityBlock>()};
    auto controller = root->controller();
    const uint64_t handle = controller ? controller->GetHandle() : 0;
    return {std::move(controller), handle, root->capabilities()};
}
