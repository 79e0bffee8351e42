#pragma once

#include "common/reading.h"

#include <QString>

#include <cstdint>

#include "zvt/zvtsdk.h"

// The texts by which a camera is known, empty if they can not be read. Any thread.

inline QString readCameraModel(uint64_t handle)
{
    constexpr uint32_t size = 128;
    return textOr<size>({}, zvtGetCameraModel, handle);
}

inline QString readCameraSerial(uint64_t handle)
{
    constexpr uint32_t size = 64;
    return textOr<size>({}, zvtGetCameraSN, handle);
}
