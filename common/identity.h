#pragma once

#include "common/reading.h"

#include <QString>

#include <cstdint>

#include "zvt/zvtsdk.h"

// The model and the serial number of a camera; empty if they cannot be read. Any thread, one SDK call each.

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
