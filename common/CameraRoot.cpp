#include "common/CameraRoot.h"

#include <QObject>

CameraRoot::~CameraRoot() = default;

CameraRoot *CameraRoot::of(const QObject *model)
{
    for (QObject *parent = model->parent(); parent; parent = parent->parent())
        if (auto *root = dynamic_cast<CameraRoot *>(parent))
            return root;
    return nullptr;
}
