#pragma once

#include <cstdint>
#include <memory>

#include "hlx/IZVTController.h"
#include "hlx/TSharedPtr.h"

class CapabilityBlock;
class QObject;

/// Everything that a pool task needs to reach the camera. A task holds a copy and no model, so a model may be deleted
/// while the task runs. The shared controller keeps the handle valid until the task ends. The last copy may be
/// destroyed on any thread.
struct CameraAccess {
    /// The present access to the camera of `model`, through its root. Without a root it has no camera and capabilities
    /// that are all false or 0. GUI thread only.
    static CameraAccess of(const QObject *model);

    hlx::TSharedPtr<hlx::cam::IZVTController> controller; ///< Null without a camera: its operations then fail.
    uint64_t handle = 0; ///< 0 without a camera: every SDK call then fails.
    std::shared_ptr<const CapabilityBlock> capabilities; ///< The live values; never null.
};
