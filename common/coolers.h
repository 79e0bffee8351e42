#pragma once

#include <cstdint>

/// The type of thermo-electric coolers, see zvtMfgGetCoolerType(). Their setpoint is in degrees Celsius.
inline constexpr uint8_t thermoelectricCooler = 1;
