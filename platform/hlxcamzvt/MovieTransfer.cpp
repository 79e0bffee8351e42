#include "platform/hlxcamzvt/MovieTransfer.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/Link.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/devices/Saturation.h"
#include "platform/emulator/image/output.h"
#include "platform/hlxcamzvt/recordingFile.h"

#include <algorithm>
#include <utility>

namespace hlx::cam
{

using emulator::Camera;
using emulator::Clock;
using emulator::Link;
using emulator::NotConnected;
using emulator::Ok;
using emulator::RecordedFrame;
using emulator::Recorder;
using emulator::Recording;
using emulator::Refused;
using emulator::Status;

namespace
{

constexpr uint32_t mostPasses = 5; ///< Of stage 1.
constexpr qint64 reportMilliseconds = 50;
constexpr int64_t longestWait = 50; ///< Milliseconds: how soon a stop or a disconnection is noticed.

/// Tells the recorder of a transfer while it exists. Needs the camera's lock.
class Announced
{
public:
    explicit Announced(Recorder &recorder) : m_recorder(recorder) { m_recorder.transferBegins(); }
    Announced(const Announced &) = delete;
    Announced &operator=(const Announced &) = delete;
    ~Announced() { m_recorder.transferEnds(); }

private:
    Recorder &m_recorder;
};

bool isSaturated(const std::vector<uint16_t> &counts)
{
    using emulator::Saturation;
    const auto high
        = std::ranges::count_if(counts, [](uint16_t count) { return count >= Saturation::startCountThreshold; });
    return static_cast<double>(high) > Saturation::pixelShare * static_cast<double>(counts.size());
}

} // namespace

Status MovieTransfer::run(Camera &camera, const hlx::CString &path, const Progress &progress, uint32_t first,
                          uint32_t last)
{
    auto *const recorder = camera.device<Recorder>();
    if (!recorder || !recorder->canDownload())
        return emulator::Absent;
    const Announced announced(*recorder);
    // Taken after the announcement, which lets the recorder catch up: what was in the memory may be gone now.
    const std::shared_ptr<const Recording> recording = recorder->memory();
    if (!recording || first > last || first >= recording->frames())
        return Refused;
    last = static_cast<uint32_t>(std::min<uint64_t>(last, recording->frames() - 1));
    MovieTransfer transfer(camera, *recorder, recording, progress, first, last);
    Status status = transfer.create(path) ? Ok : Refused;
    if (status == Ok)
        status = transfer.fetchAll();
    if (status == Ok)
        status = transfer.fetchLost();
    const Camera::Unlocked unlocked(camera);
    transfer.m_writer.Close();
    return status;
}

MovieTransfer::MovieTransfer(Camera &camera, Recorder &recorder, std::shared_ptr<const Recording> recording,
                             const Progress &progress, uint32_t first, uint32_t last)
    : m_camera(camera), m_recorder(recorder), m_link(*camera.device<Link>()), m_recording(std::move(recording)),
      m_progress(progress), m_first(first), m_frames(last - first + 1), m_begin(Clock::now()),
      m_bytesPerSecond(m_link.bytesPerSecond())
{
    m_sinceReport.start();
}

bool MovieTransfer::create(const hlx::CString &path)
{
    const file::MovieDescription description = descriptionOf(m_camera, *m_recording, m_first);
    const Camera::Unlocked unlocked(m_camera);
    const auto objects = reduceObjectsOf(m_camera, *m_recording, m_first, uint64_t{m_first} + m_frames - 1);
    return m_writer.Create(hlx::fileSystem(), path, objects, description);
}

/// Stage 0.
Status MovieTransfer::fetchAll()
{
    m_stage = {0, 0, m_frames};
    for (uint32_t place = 0; place < m_frames; ++place) {
        if (const Status status = fetch(place, 0); status != Ok)
            return status;
        m_stage.done = place + 1;
        const bool isEnd = place == 0 || place + 1 == m_frames;
        if (const Status status = isEnd ? report() : reportSometimes(); status != Ok)
            return status;
    }
    return Ok;
}

/// Stage 1.
Status MovieTransfer::fetchLost()
{
    m_stage = {1, 0, m_lost.size()};
    for (uint32_t pass = 1; pass <= mostPasses && !m_lost.empty(); ++pass) {
        const std::vector<uint32_t> places = std::exchange(m_lost, {});
        for (size_t i = 0; i < places.size(); ++i) {
            if (const Status status = fetch(places[i], pass); status != Ok)
                return status;
            const size_t remaining = places.size() - (i + 1);
            m_stage.done = m_stage.total - m_lost.size() - remaining;
            const bool isFirst = pass == 1 && i == 0;
            const bool isLast = remaining == 0 && (m_lost.empty() || pass == mostPasses);
            if (const Status status = isFirst || isLast ? report() : reportSometimes(); status != Ok)
                return status;
        }
    }
    return m_lost.empty() ? Ok : Refused;
}

/// Lets a frame come over the link, and writes it unless it is lost.
Status MovieTransfer::fetch(uint32_t place, uint32_t pass)
{
    if (const Status status = waitForLink(); status != Ok)
        return status;
    const RecordedFrame frame = m_recorder.recorded(*m_recording, uint64_t{m_first} + place);
    if (m_link.loses(frame.start.number, pass)) {
        m_lost.push_back(place);
        return Ok;
    }
    const Camera::Unlocked unlocked(m_camera);
    return write(place, pass, frame) ? Ok : Refused;
}

/// Waits for the end of the next frame on the link. The time is computed from the begin of the transfer, so that the
/// rounding errors do not add up, and rendering and writing happen while the link works.
Status MovieTransfer::waitForLink()
{
    const emulator::image::Size size = m_recording->size();
    const auto frameBytes = static_cast<int64_t>(
        Recording::frameBytes(static_cast<uint64_t>(size.width), static_cast<uint64_t>(size.height)));
    ++m_sent;
    const auto duration = static_cast<int64_t>(double(m_sent) * double(frameBytes) * 1000 / double(m_bytesPerSecond));
    for (;;) {
        const int64_t remaining = Clock::remaining(m_begin + duration, duration);
        if (const Status status = m_camera.letTimePass(std::min(remaining, longestWait)); status != Ok)
            return status;
        if (remaining <= longestWait)
            return Ok;
        if (const Status status = reportSometimes(); status != Ok)
            return status;
    }
}

bool MovieTransfer::write(uint32_t place, uint32_t pass, const RecordedFrame &frame)
{
    if (!m_recorder.render(frame, emulator::image::Output::Digital, m_counts))
        return false;
    file::MovieFrame record = movieFrameOf(frame);
    record.flags = static_cast<uint8_t>((pass > 0 ? file::MovieFrame::fetchedAgain : 0)
                                        | (isSaturated(m_counts) ? file::MovieFrame::saturated : 0));
    return m_writer.PutFrame(place, m_counts.data(), record);
}

Status MovieTransfer::report()
{
    int result = 0;
    {
        const Camera::Unlocked unlocked(m_camera);
        result = m_progress(m_stage.number, static_cast<unsigned int>(m_stage.done),
                            static_cast<unsigned int>(m_stage.total));
    }
    m_sinceReport.start();
    if (!m_camera.connected())
        return NotConnected;
    return result == 0 ? Ok : emulator::Stopped;
}

/// Reports unless the last report is too new.
Status MovieTransfer::reportSometimes() { return m_sinceReport.elapsed() < reportMilliseconds ? Ok : report(); }

} // namespace hlx::cam
