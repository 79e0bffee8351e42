#pragma once

#include "common/Nullable.h"
#include "common/reading.h"

#include <QString>

#include <cstdint>

#include "zvt/zvtsdk.h"

// What the sections of the cooler have in common. Any thread.

/// The type of thermo-electric coolers, see zvtMfgGetCoolerType(). Their setpoint is in degrees Celsius.
inline constexpr uint8_t thermoelectricCooler = 1;

/// The camera's name for a type of coolers; a null text for an unknown one.
inline QString coolerTypeText(uint8_t type) { return QString::fromUtf8(zvtCoolerTypeText(type)); }

/// Reads the temperature of what is cooled, the detector or else the flag, and that of the interior of the camera. A
/// failed read leaves its field unset.
inline void fetchCoolerTemperatures(Nullable<float> &actual, Nullable<float> &interior, bool ofDetector,
                                    uint64_t handle)
{
    fetch(actual, ofDetector ? zvtGetFPATemperature : zvtGetFlagTemperature, handle);
    float frontPanel = 0;
    float airGap = 0;
    float internal = 0;
    if (zvtGetSCTemperatures(handle, &frontPanel, &airGap, &internal) == 0)
        interior = internal;
}
