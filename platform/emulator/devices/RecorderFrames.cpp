// The frames in the memory of the recorder.
#include "platform/emulator/devices/Recorder.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/crc32.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/output.h"

#include <mutex>

namespace emulator
{

namespace
{

uint32_t checksumOf(const std::vector<uint16_t> &counts)
{
    std::vector<uint8_t> bytes;
    bytes.reserve(2 * counts.size());
    for (const uint16_t count : counts) {
        bytes.push_back(static_cast<uint8_t>(count & 0xFF));
        bytes.push_back(static_cast<uint8_t>(count >> 8));
    }
    return crc32(bytes);
}

} // namespace

RecordedFrame Recorder::recorded(const Recording &recording, uint64_t frame) const
{
    const FrameStart start = recording.start(frame);
    const Recording::Segment &segment = recording.segment(frame);
    const RecordedSettings::Preset &preset = segment.settings->presets[static_cast<size_t>(start.preset)];
    const RecordedSettings &settings = *segment.settings;
    RecordedFrame result{start, CameraClock::realTimeOf(start.microseconds / 1000 + settings.realTimeShift),
                         camera().device<CameraClock>()->irigTimeOf(recording.irigTime(frame)), preset.exposure,
                         preset.correction};
    segment.motion.putInto(result.exposure);
    result.exposure.frameNumber = start.number;
    result.exposure.scene.microseconds = start.microseconds;
    return result;
}

bool Recorder::render(const RecordedFrame &frame, image::Output output, std::vector<uint16_t> &counts) const
{
    image::Exposure exposure = frame.exposure;
    exposure.detector = m_sensor.array().mapsFor(exposure.window);
    if (frame.correction) {
        if (const auto correction = frame.correction->correction())
            exposure.correction = correction->table;
        else if (frame.correction->isLost())
            return false;
    }
    return image::renderOutput(exposure, output, counts);
}

std::optional<RecordedFrame> Recorder::shown() const
{
    const RecorderMachine::State state = m_machine.state();
    const bool shows = state == RecorderMachine::Playing || state == RecorderMachine::Paused
        || state == RecorderMachine::MovieLoaded;
    if (!shows || memory()->frames() == 0)
        return std::nullopt;
    return recorded(*memory(), m_machine.playbackFrame(now()));
}

std::optional<PlayedFrame> Recorder::frame(uint64_t number)
{
    std::unique_lock lock(camera().mutex());
    camera().catchUp();
    if (!memory() || number >= memory()->frames())
        return std::nullopt;
    const RecordedFrame recorded = this->recorded(*memory(), number);
    lock.unlock();
    const image::Window &window = recorded.exposure.window;
    PlayedFrame played{{recorded.start, {window.width, window.height}, {}}, recorded.irigTime, 0};
    if (!render(recorded, image::Output::Digital, played.frame.counts))
        return std::nullopt;
    played.checksum = checksumOf(played.frame.counts);
    return played;
}

} // namespace emulator
