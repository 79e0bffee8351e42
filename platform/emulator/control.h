#pragma once

// The control interface of the emulator. Tests and the standalone controller use it beside the SDK and the controller.
#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/OtherClient.h"
#include "platform/emulator/Profile.h"
