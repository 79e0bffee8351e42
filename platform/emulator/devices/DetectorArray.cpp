#include "platform/emulator/devices/DetectorArray.h"

#include "platform/emulator/Section.h"
#include "platform/emulator/image/Exposure.h"

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

image::Light::Band readBand(Section &section)
{
    const QString key = u"band"_s;
    const QString name = section.text(key, u"medium"_s);
    if (name == u"short"_s)
        return image::Light::Short;
    if (name == u"medium"_s)
        return image::Light::Medium;
    if (name == u"long"_s)
        return image::Light::Long;
    section.refuse(key, u"must be short, medium or long"_s);
}

image::Detector::Properties readProperties(Section section)
{
    image::Detector::Properties properties;
    const auto read = [&section](const char *key, float &value, double minimum, double maximum) {
        value = static_cast<float>(section.number(QLatin1String(key), value, minimum, maximum));
    };
    const auto readFaults = [&section](const char *key, uint32_t &perMillion) {
        constexpr int maximumPerMillion = 100'000;
        perMillion = static_cast<uint32_t>(section.integer(QLatin1String(key), int(perMillion), 0, maximumPerMillion));
    };
    properties.seed = static_cast<uint64_t>(section.integer(u"seed"_s, int(properties.seed), 0, INT32_MAX));
    constexpr double full = image::Detector::maximumCount;
    read("vignetting", properties.vignetting, 0, 1);
    read("gainDeviation", properties.gainDeviation, 0, 1);
    read("offset", properties.offset, 0, full);
    read("offsetDeviation", properties.offsetDeviation, 0, full);
    read("columnDeviation", properties.columnDeviation, 0, full);
    // With these, more light never gives less signal.
    read("curvature", properties.curvature, 0, 0.1);
    read("curvatureDeviation", properties.curvatureDeviation, 0, 0.015);
    read("drift", properties.drift, -full, full);
    read("driftDeviation", properties.driftDeviation, 0, full);
    read("voltageDeviation", properties.voltageDeviation, 0, full);
    read("biasDeviation", properties.biasDeviation, 0, 0.1);
    readFaults("dead", properties.dead);
    readFaults("hot", properties.hot);
    readFaults("weak", properties.weak);
    readFaults("strong", properties.strong);
    readFaults("twinkling", properties.twinkling);
    read("readNoise", properties.readNoise, 0, full);
    read("reducedReadNoise", properties.reducedReadNoise, 0, full);
    section.finish();
    return properties;
}

} // namespace

DetectorArray::DetectorArray(Section &section, const image::Size &size)
    : m_size(size), m_band(readBand(section)),
      m_saturatingMilliseconds(section.number(u"saturatingIntegrationTime"_s, 4, 0.001, 10'000)),
      m_properties(readProperties(section.section(u"detector"_s)))
{
}

void DetectorArray::expose(image::Exposure &exposure) const
{
    exposure.band = m_band;
    exposure.readout.saturatingTime = m_saturatingMilliseconds;
    exposure.detector = presentMaps(exposure.window);
}

std::shared_ptr<const image::Detector> DetectorArray::mapsFor(const image::Window &window)
{
    if (auto maps = presentMaps(window))
        return maps;
    const std::lock_guard lock(m_making);
    // Another thread may have made them meanwhile.
    if (auto maps = presentMaps(window))
        return maps;
    const image::Window whole{0, 0, m_size.width, m_size.height};
    auto maps = image::Detector::make(m_properties, m_size, whole.hasFrames() ? whole : window);
    if (maps)
        m_maps = maps;
    return maps;
}

std::shared_ptr<const image::Detector> DetectorArray::presentMaps(const image::Window &window) const
{
    std::shared_ptr<const image::Detector> maps = m_maps;
    return maps && maps->window().contains(window) ? maps : nullptr;
}

} // namespace emulator
