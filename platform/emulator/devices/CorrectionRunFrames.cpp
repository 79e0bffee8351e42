// The frames of a run that makes a correction, and what is made of them.
#include "platform/emulator/devices/CorrectionRun.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/BadPixelLists.h"
#include "platform/emulator/devices/Cooler.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/Trigger.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace emulator
{

namespace
{

// Milliseconds.
constexpr int64_t leastCollectingTime = 200;
constexpr int64_t computingTime = 800; ///< For so many pixels:
constexpr int64_t pixelsOfComputingTime = 327'680;
constexpr int64_t automaticComputingTime = 600;

constexpr uint32_t mostFramesOfALook = 64;

bool isCold(const Camera &camera)
{
    const auto *const cooler = camera.device<Cooler>();
    float cold = 0;
    return !cooler || cooler->coldTemperature(cold) != Ok || cooler->temperature() <= cold;
}

} // namespace

bool CorrectionRun::parametersAreValid() const
{
    const image::BadPixelLimits &limits = m_values.limits;
    const bool judges = limits.detect && m_values.type != CorrectionSetup::OffsetUpdate;
    if (judges && (limits.adMin >= limits.adMax || (twoPoint() && limits.gainMin >= limits.gainMax)))
        return false;
    if (m_values.frames == 0 || (twoPoint() && limits.twinklers && m_values.twinklerFrames == 0))
        return false;
    if (internal() && (!m_flag.exists() || (twoPoint() && !m_flag.controlled())))
        return false;
    const bool updates = m_values.type == CorrectionSetup::OffsetUpdate;
    return isCold(camera()) && (!updates || camera().device<Corrections>()->isLoaded(m_values.preset));
}

size_t CorrectionRun::source() const
{
    switch (m_status) {
    case CollectingFirst:
        return First;
    case CollectingSecond:
        return Second;
    default:
        return Twinkling;
    }
}

bool CorrectionRun::collecting() const
{
    return m_status == CollectingFirst || m_status == CollectingSecond || m_status == CollectingTwinklers;
}

uint32_t CorrectionRun::wantedFrames() const
{
    return m_status == CollectingTwinklers ? m_values.twinklerFrames : m_values.frames;
}

/// Returns the frames of the preset per second at present.
double CorrectionRun::frameRate() const
{
    const Sensor &sensor = *camera().device<Sensor>();
    const double rate = camera().device<FrameClock>()->averageRate();
    if (camera().device<Trigger>()->mode() == Trigger::PresetAdvance)
        return sensor.activePreset() == m_values.preset ? rate : 0;
    double all = 0;
    for (int preset = 0; preset < sensor.numPresets(); ++preset)
        all += sensor.repeats(preset);
    return all > 0 ? rate * sensor.repeats(m_values.preset) / all : 0;
}

int64_t CorrectionRun::collectingMilliseconds(double rate) const
{
    return std::max(leastCollectingTime, static_cast<int64_t>(std::ceil(wantedFrames() * 1000.0 / rate)));
}

int64_t CorrectionRun::computingMilliseconds() const
{
    return m_automatic ? automaticComputingTime : computingTime * m_readout.window.pixels() / pixelsOfComputingTime;
}

/// Returns how many frames of the present step have come so far.
uint32_t CorrectionRun::dueFrames() const
{
    const double rate = frameRate();
    if (rate <= 0)
        return m_collected;
    const int64_t duration = collectingMilliseconds(rate);
    const int64_t passed = duration - Clock::remaining(m_stepStart + duration, duration);
    if (passed >= duration)
        return wantedFrames();
    return std::min(wantedFrames(), static_cast<uint32_t>(static_cast<double>(passed) * rate / 1000));
}

Status CorrectionRun::look()
{
    catchUp();
    uint32_t most = mostFramesOfALook;
    while (running() && !m_busy && ((collecting() && exposeDueFrames(most)) || (m_status == Computing && compute())))
        catchUp();
    return camera().connected() ? Ok : NotConnected;
}

/// Exposes at most so many of the frames that have come since the last look, and subtracts them from `most`. Returns
/// false if it exposes none.
bool CorrectionRun::exposeDueFrames(uint32_t &most)
{
    const uint32_t due = dueFrames();
    const auto newest = camera().device<FrameClock>()->newest(m_values.preset);
    if (due <= m_collected || !newest || most == 0)
        return false;
    const uint32_t missing = due - m_collected;
    const uint32_t count = std::min(missing, most);
    most -= count;
    const uint64_t number = m_number;
    const Collector collector = m_collectors.at(source());
    image::Exposure exposure = camera().exposure(*newest);
    bool added = true;
    m_busy = true;
    {
        const Camera::Unlocked unlocked(camera());
        exposure.detector = camera().device<Sensor>()->array().mapsFor(exposure.window);
        exposure.frameNumber -= missing;
        for (uint32_t i = 0; i < count && added && m_number == number; ++i) {
            ++exposure.frameNumber;
            added = collector->add(exposure);
        }
    }
    m_busy = false;
    if (m_number != number)
        return true; // The run has ended. The next one, if there is one, continues.
    m_collected += count;
    // The window is too large for frames.
    if (!added)
        finish(Aborted);
    return true;
}

/// Computes the correction at the end of its time. Returns false before and afterwards.
bool CorrectionRun::compute()
{
    const int64_t duration = computingMilliseconds();
    if (m_computed || Clock::remaining(m_stepStart + duration, duration) > 0)
        return false;
    const uint64_t number = m_number;
    const CorrectionSetup::Values values = m_values;
    auto collectors = std::exchange(m_collectors, {});
    std::optional<Made> made;
    m_busy = true;
    {
        const Camera::Unlocked unlocked(camera());
        if (auto correction = make(values, collectors))
            made = Made{std::make_shared<const image::CorrectionTable>(std::move(correction->table)),
                        correction->counts};
        collectors = {};
    }
    m_busy = false;
    if (m_number == number) {
        m_computed = true;
        m_made = std::move(made);
    }
    return true;
}

/// Called without the camera's lock.
std::optional<image::MadeCorrection> CorrectionRun::make(const CorrectionSetup::Values &values,
                                                         const std::array<Collector, sources> &collectors)
{
    const image::FrameCollector &first = *collectors[First];
    if (values.type == CorrectionSetup::OffsetUpdate) {
        const auto old = camera().device<Corrections>()->table(values.preset);
        return old ? image::updateOffsets(*old, first) : std::nullopt;
    }
    const image::Exposure &exposure = first.exposure();
    auto factoryList = camera().device<BadPixelLists>()->factoryList(exposure.window, exposure.optics);
    // It may have been changed during the run.
    if (!factoryList && usesFactoryList(values))
        return std::nullopt;
    // Without a list, all bad pixels count as new ones.
    const image::Judgement judgement{values.limits, std::move(factoryList).value_or(std::vector<uint8_t>()),
                                     values.useFactoryBadPixels};
    if (values.type == CorrectionSetup::OnePoint)
        return image::makeOnePoint(first, judgement);
    return image::makeTwoPoint(first, *collectors[Second], collectors[Twinkling].get(), judgement);
}

} // namespace emulator
