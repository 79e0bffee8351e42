#pragma once

#include <cstdint>
#include <memory>

#include "hlx/IZVTController.h"
#include "hlx/TSharedPtr.h"

class CapabilityBlock;
class QObject;

/// All that a pool task needs to reach the camera. A task holds a copy and no model, so that every model may die while
/// the task runs. The shared controller keeps the handle valid for the time of the task; the last copy may die on any
/// thread.
struct CameraAccess {
    /// How `model` reaches its camera now. GUI thread only.
    static CameraAccess of(const QObject *model);

    hlx::TSharedPtr<hlx::cam::IZVTController> controller; ///< Null without a camera: its operations count as failed.
    uint64_t handle = 0; ///< 0 without a camera: every SDK call fails then.
    std::shared_ptr<const CapabilityBlock> capabilities; ///< Live values; never null.
};
