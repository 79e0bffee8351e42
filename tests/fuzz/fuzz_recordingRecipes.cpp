// Feeds the reader of recordings with whatever the fuzzer invents. It must neither crash nor allocate beyond what the
// input can pay for, and a recording that it accepts must be readable when it is written again.
#include <cstdlib>
#include <vector>

#include "platform/emulator/devices/RecordedSettings.h"
#include "platform/emulator/devices/Recording.h"
#include "platform/emulator/devices/RecordingRecipe.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    using emulator::RecordedCorrection;
    const auto correction = std::make_shared<RecordedCorrection>(RecordedCorrection::Read());
    const emulator::RecordingRecipe recipe{{data, data + size}, {correction}};
    const auto recording = emulator::fromRecipe(recipe);
    if (!recording)
        return 0;
    const auto written = emulator::toRecipe(*recording);
    if (written.bytes.size() > size || recording->abated() != emulator::fromRecipe(written)->abated())
        std::abort();
    return 0;
}
