#include "platform/emulator/DeviceKind.h"

#include "platform/emulator/devices/Analog.h"
#include "platform/emulator/devices/Athermalization.h"
#include "platform/emulator/devices/AutoFocus.h"
#include "platform/emulator/devices/AutomaticCorrection.h"
#include "platform/emulator/devices/BadPixelLists.h"
#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/Color.h"
#include "platform/emulator/devices/Cooler.h"
#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/CorrectionSetup.h"
#include "platform/emulator/devices/CorrectionStore.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/DetectorGain.h"
#include "platform/emulator/devices/DigitalGain.h"
#include "platform/emulator/devices/EmulatorProperties.h"
#include "platform/emulator/devices/Environment.h"
#include "platform/emulator/devices/FactoryCalibrations.h"
#include "platform/emulator/devices/FieldOfView.h"
#include "platform/emulator/devices/FileTransfer.h"
#include "platform/emulator/devices/FilterWheel.h"
#include "platform/emulator/devices/Flag.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/FocusToDistance.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/FrameSync.h"
#include "platform/emulator/devices/HourMeter.h"
#include "platform/emulator/devices/ImageMode.h"
#include "platform/emulator/devices/Information.h"
#include "platform/emulator/devices/Interfaces.h"
#include "platform/emulator/devices/LensCover.h"
#include "platform/emulator/devices/LensStates.h"
#include "platform/emulator/devices/Link.h"
#include "platform/emulator/devices/Lockin.h"
#include "platform/emulator/devices/NamedVoltages.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/devices/Roic.h"
#include "platform/emulator/devices/Saturation.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/StateStore.h"
#include "platform/emulator/devices/SyncOut.h"
#include "platform/emulator/devices/Temperatures.h"
#include "platform/emulator/devices/Trigger.h"
#include "platform/emulator/devices/VideoGain.h"
#include "platform/emulator/devices/VideoOutput.h"
#include "platform/emulator/devices/VideoOverlay.h"
#include "platform/emulator/devices/VideoPalette.h"
#include "platform/emulator/devices/Zoom.h"

#include <array>

namespace emulator
{

namespace
{

using enum DeviceKind::Presence;
using enum DeviceKind::Memory;
using enum DeviceKind::Snapshot;

template <class D>
constexpr DeviceKind kind(const char *key, DeviceKind::Presence presence, DeviceKind::Memory memory,
                          DeviceKind::Snapshot snapshot)
{
    const auto make = [](Camera &camera, Section &section) -> std::unique_ptr<Device> {
        return std::make_unique<D>(camera, section);
    };
    return {QLatin1String(key), presence, memory, snapshot, make};
}

constexpr std::array kinds{
    kind<Environment>("environment", Always, Forgets, LeftOut),
    kind<EmulatorProperties>("emulator", Always, Forgets, LeftOut),
    kind<CameraClock>("clock", Always, Remembers, LeftOut),
    kind<HourMeter>("hours", Always, Remembers, LeftOut),
    kind<Sensor>("sensor", Always, Forgets, Included),
    kind<Roic>("roic", Always, Remembers, LeftOut),
    kind<Color>("color", Always, Forgets, Included),
    kind<Analog>("analog", WhereListed, Forgets, Included),
    kind<NamedVoltages>("voltages", WhereListed, Remembers, LeftOut),
    kind<DigitalGain>("digital", Always, Forgets, Included),
    kind<Saturation>("saturation", Always, Forgets, Included),
    kind<Cooler>("cooler", WhereListed, Remembers, Included),
    kind<Temperatures>("temperatures", WhereListed, Forgets, LeftOut),
    kind<FilterWheel>("filters", WhereListed, Remembers, Included),
    kind<Flag>("flag", WhereListed, Remembers, LeftOut),
    kind<Corrections>("corrections", WhereListed, Forgets, Included),
    kind<CorrectionSetup>("correctionSetup", WithCorrections, Forgets, LeftOut),
    kind<DetectorGain>("gain", WhereListed, Forgets, Included),
    kind<ImageMode>("image", Always, Forgets, Included),
    kind<FrameSync>("sync", Always, Forgets, Included),
    kind<SyncOut>("syncOut", Always, Forgets, Included),
    kind<Trigger>("trigger", Always, Forgets, Included),
    kind<FrameClock>("frames", Always, Forgets, LeftOut),
    kind<Lockin>("lockin", WhereListed, Forgets, Included),
    kind<Interfaces>("interfaces", Always, Forgets, Included),
    kind<Recorder>("recorder", WhereListed, Forgets, Included),
    kind<Link>("link", WithRecorder, Forgets, LeftOut),
    kind<CorrectionRun>("correctionRun", WithCorrections, Forgets, LeftOut),
    kind<AutomaticCorrection>("automaticCorrection", WithCorrections, Forgets, Included),
    kind<BadPixelLists>("badPixelLists", WithCorrections, Forgets, LeftOut),
    kind<VideoGain>("agc", Always, Forgets, Included),
    kind<VideoOutput>("video", Always, Forgets, Included),
    kind<VideoPalette>("palette", Always, Forgets, Included),
    kind<VideoOverlay>("overlay", Always, Forgets, Included),
    kind<Zoom>("zoom", WhereListed, Remembers, Included),
    kind<FieldOfView>("fieldOfView", WhereListed, Remembers, Included),
    kind<Focus>("focus", WhereListed, Remembers, Included),
    kind<FocusToDistance>("focusToDistance", WhereListed, Forgets, LeftOut),
    kind<AutoFocus>("autoFocus", WhereListed, Forgets, Included),
    kind<LensCover>("cover", WhereListed, Remembers, Included),
    kind<Athermalization>("athermalization", WhereListed, Forgets, Included),
    kind<LensStates>("lensStates", WhereListed, Forgets, LeftOut),
    kind<FactoryCalibrations>("factoryCalibrations", WhereListed, Forgets, Included),
    kind<CorrectionStore>("nucs", WithCorrections, Remembers, LeftOut),
    kind<Information>("information", WhereListed, Forgets, LeftOut),
    kind<FileTransfer>("transfers", Always, Forgets, LeftOut),
    kind<StateStore>("states", Always, Remembers, LeftOut),
};

} // namespace

std::span<const DeviceKind> DeviceKind::all() { return kinds; }

} // namespace emulator
