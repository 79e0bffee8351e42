#include "platform/emulator/devices/VideoGain.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Identity.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/limits.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr uint8_t boardWithoutDetails = 6;
constexpr double maximumFilterRate = 20;
constexpr double maximumSharpness = 7;

image::Window windowOf(const VideoGain::Region &region) { return {region[0], region[1], region[2], region[3]}; }

/// Refuses a region that is empty or not inside this picture.
Refusal checkRegion(const VideoGain::Region &region, const image::Window &picture)
{
    const image::Window part = windowOf(region);
    if (part.pixels() == 0)
        return u"must not be empty"_s;
    return picture.contains(part) ? Refusal() : u"must be inside the picture"_s;
}

} // namespace

VideoGain::VideoGain(Camera &camera, Section &section)
    : Device(camera), m_sensor(*camera.device<Sensor>()),
      m_enhancesDetails(camera.device<Identity>()->board() != boardWithoutDetails)
{
    const Between counts{0, image::maximumCount};
    const auto checkMethod = [this](image::AgcMethod method) {
        return method != image::AgcMethod::Detail || m_enhancesDetails ? Refusal() : u"must not be 1 on this board"_s;
    };
    const auto checkPresent = [this](const Region &region) { return checkRegion(region, picture()); };
    // A saved region belongs to the window that is restored with it.
    const auto checkSaved = [this](const Region &region) {
        const auto &array = m_sensor.geometry().limits().maximum;
        return checkRegion(region, {0, 0, array.width, array.height});
    };
    const auto &window = m_sensor.geometry().window();
    m_region = {0, 0, window.width, window.height};
    addSettings(section,
                {
                    {u"method"_s, m_settings.method, {Between{0, 3}, checkMethod}, Everywhere},
                    {u"plateau"_s, m_settings.plateau, Between{1, image::maximumCount}, Everywhere},
                    {u"sharpness"_s, m_settings.sharpness, Between{1, maximumSharpness}, Everywhere},
                    {u"threshold"_s, m_settings.threshold, counts, Everywhere},
                    {u"manualLow"_s, m_settings.manualLow, counts, Everywhere},
                    {u"manualHigh"_s, m_settings.manualHigh, counts, Everywhere},
                    {u"filterRate"_s, m_filterRate, Between{0, maximumFilterRate}, Everywhere},
                    {u"filterRateEnabled"_s, m_filterRateEnabled, Everywhere},
                    {u"dampening"_s, m_dampening, Between{0, 1}, Everywhere},
                    {u"dampeningEnabled"_s, m_dampeningEnabled, Everywhere},
                    {u"region"_s, m_region, checkPresent, OtherClient},
                    {u"region"_s, m_region, checkSaved, Profile | Snapshot},
                    {u"regionEnabled"_s, m_regionEnabled, Everywhere},
                    {u"blackHotAvailable"_s, m_blackHotAvailable, Profile | OtherClient},
                    Setting(u"blackHotEnabled"_s, m_blackHotEnabled, Everywhere).onlyIf(m_blackHotAvailable),
                });
}

image::Window VideoGain::region() const { return windowOf(m_region); }

image::Window VideoGain::picture() const
{
    const auto &window = m_sensor.geometry().window();
    return {0, 0, window.width, window.height};
}

image::Window VideoGain::shownPicture() const
{
    const auto *const recorder = camera().device<Recorder>();
    const auto played = recorder ? recorder->shown() : std::nullopt;
    return played ? image::Window{0, 0, played->exposure.window.width, played->exposure.window.height} : picture();
}

double VideoGain::step(double seconds) const
{
    const double share = m_filterRateEnabled ? 1 - std::exp(-m_filterRate * std::max(seconds, 0.0)) : 1;
    return m_dampeningEnabled ? share * double(m_dampening) : share;
}

double VideoGain::stepOfFrames(double step, double frames)
{
    return step < 1 ? 1 - std::pow(1 - step, std::max(frames, 0.0)) : 1;
}

void VideoGain::catchUp()
{
    const auto &window = m_sensor.geometry().window();
    auto &[x, y, width, height] = m_region;
    if (x + width <= window.width && y + height <= window.height)
        return;
    if (x >= window.width || y >= window.height) {
        m_region = {0, 0, window.width, window.height};
        return;
    }
    width = static_cast<uint16_t>(std::min<int>(width, window.width - x));
    height = static_cast<uint16_t>(std::min<int>(height, window.height - y));
}

} // namespace emulator
