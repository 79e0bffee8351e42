#include "platform/hlxcamzvt/EmulatedController.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/GatePass.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/StateStore.h"
#include "platform/emulator/memberCalls.h"
#include "platform/hlxcam/EmulatedDevice.h"
#include "platform/hlxcamzvt/EmulatedVideoSource.h"
#include "platform/hlxcamzvt/MovieTransfer.h"

#include <algorithm>
#include <utility>

namespace hlx::cam
{

using emulator::controllerCall;
using emulator::dispatchController;
using emulator::passGate;
using emulator::Recorder;
using emulator::Sensor;
using emulator::StateStore;

namespace
{

/// Microseconds from the beginning of the year. A field outside of its range counts as it is, up to 10^5 units.
int64_t inYear(const hlx::CDateTime &time)
{
    constexpr int64_t second = 1'000'000;
    const auto of = [](int field, int64_t unit) { return std::clamp(field, -100'000, 100'000) * unit; };
    return of(time.dayOfYear() - 1, 86'400 * second) + of(time.hour(), 3600 * second) + of(time.minute(), 60 * second)
        + of(time.second(), second) + of(time.millisecond(), 1000) + of(time.microsecond(), 1);
}

} // namespace

EmulatedController::EmulatedController(std::shared_ptr<emulator::Camera> camera) { attach(std::move(camera)); }

EmulatedController::~EmulatedController() { stopListening(); }

bool EmulatedController::attach(std::shared_ptr<emulator::Camera> camera)
{
    if (const auto present = this->camera(); present && present->connected())
        return false;
    stopListening();
    Target target;
    if (camera) {
        target.device = hlx::TSharedPtr<EmulatedDevice>::make(camera);
        if (const auto *sensor = camera->device<Sensor>(); sensor && sensor->hasVideoStream())
            target.videoSource = hlx::TSharedPtr<EmulatedVideoSource>::make(camera);
        target.camera = std::move(camera);
    }
    {
        const std::lock_guard lock(m_mutex);
        std::swap(m_target, target);
    }
    listen();
    return true;
}

int EmulatedController::connect()
{
    const auto subject = camera();
    emulator::GatePass pass(subject ? subject->gate() : emulator::Sdk::gate(), "controller.Connect", {});
    pass.wait();
    // Without the camera's lock, since the listeners of the connection take other locks.
    const auto answer = [&]() -> int {
        if (!subject)
            return emulator::InvalidHandle;
        subject->connect();
        return emulator::Ok;
    };
    return pass.answer(true, answer);
}

void EmulatedController::listen()
{
    const auto subject = camera();
    if (!subject)
        return;
    m_listener = subject->onConnectionChanged([this] { announceConnection(); });
    if (subject->connected())
        announceConnection();
}

void EmulatedController::stopListening()
{
    // Waits while a notification runs on another thread.
    if (const auto subject = camera())
        subject->removeListener(m_listener);
}

void EmulatedController::announceConnection()
{
    capabilities.configure(this);
    // Last, since a delegate may release this controller.
    FireValueChanged("Connected");
}

std::shared_ptr<emulator::Camera> EmulatedController::camera() const
{
    const std::lock_guard lock(m_mutex);
    return m_target.camera;
}

hlx::TSharedPtr<IDevice> EmulatedController::device()
{
    const std::lock_guard lock(m_mutex);
    return m_target.device;
}

bool EmulatedController::IsConnected()
{
    bool connected = false;
    const auto subject = camera();
    passGate(
        subject, "controller.IsConnected",
        [&] {
            connected = subject->connected();
            return emulator::Ok;
        },
        &connected);
    return connected;
}

uint64_t EmulatedController::GetHandle()
{
    uint64_t handle = 0;
    const auto subject = camera();
    passGate(
        subject, "controller.GetHandle",
        [&] {
            handle = subject->handle();
            return emulator::Ok;
        },
        &handle);
    return handle;
}

hlx::TSharedPtr<IVideoSource> EmulatedController::GetVideoSource()
{
    hlx::TSharedPtr<IVideoSource> source;
    dispatchController(camera(), "controller.GetVideoSource", [&](emulator::Camera &) {
        const std::lock_guard lock(m_mutex);
        source = m_target.videoSource;
        return source ? emulator::Ok : emulator::Absent;
    });
    return source;
}

bool EmulatedController::HasRealTimeClock()
{
    bool has = false;
    const auto subject = camera();
    passGate(
        subject, "controller.HasRealTimeClock",
        [&] {
            if (!subject->connected())
                return emulator::NotConnected;
            has = subject->profile().hasRealTimeClock();
            return emulator::Ok;
        },
        &has);
    return has;
}

bool EmulatedController::LoadFactoryDefaults()
{
    return readCapabilitiesAfter(
        controllerCall<&StateStore::loadFactoryDefaults>(camera(), "controller.LoadFactoryDefaults"));
}

bool EmulatedController::LoadHardDefaults()
{
    return readCapabilitiesAfter(
        controllerCall<&StateStore::loadHardDefaults>(camera(), "controller.LoadHardDefaults"));
}

bool EmulatedController::LoadState(const char *name)
{
    return readCapabilitiesAfter(controllerCall<&StateStore::load>(camera(), "controller.LoadState", name));
}

bool EmulatedController::readCapabilitiesAfter(bool loaded)
{
    if (loaded)
        capabilities.configure(this);
    return loaded;
}

bool EmulatedController::CanDownload()
{
    return emulator::controllerOnDevice<Recorder>(camera(), "controller.CanDownload",
                                                  [](Recorder &recorder) { return recorder.canDownload(); });
}

bool EmulatedController::DownloadMovie(hlx::CString path, hlx::delegate<int(int, unsigned int, unsigned int)> progress,
                                       unsigned int first, unsigned int last)
{
    const auto transfer
        = [&](emulator::Camera &camera) { return MovieTransfer::run(camera, path, progress, first, last); };
    return dispatchController(camera(), "controller.DownloadMovie", transfer, path, progress, first, last);
}

bool EmulatedController::FindFrameRange(hlx::CDateTime start, hlx::CDateTime end, unsigned int *first,
                                        unsigned int *last)
{
    const auto find
        = [&](Recorder &recorder) { return recorder.findFrames(inYear(start), inYear(end), *first, *last); };
    return emulator::controllerOnDevice<Recorder>(camera(), "controller.FindFrameRange", find, start, end, first, last);
}

} // namespace hlx::cam
