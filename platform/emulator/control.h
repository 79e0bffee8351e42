#pragma once

// The control face of the emulator: what tests and the standalone controller may do to an emulated camera beside using
// it through the SDK and the controller.
#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Profile.h"
