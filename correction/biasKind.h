#pragma once

#include <cstdint>

/// The bias kind (zvtSNUCInfo::biasKind) of a detector with two biases.
inline constexpr uint8_t twoBiases = 2;
