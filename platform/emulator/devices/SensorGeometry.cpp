#include "platform/emulator/devices/SensorGeometry.h"

#include "platform/emulator/Section.h"

#include <algorithm>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

SensorGeometry::Size parseSize(const Section &section, const QString &key, const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('x'));
    const SensorGeometry::Size size{parts.value(0).toUShort(), parts.value(1).toUShort()};
    if (parts.size() != 2 || size.width == 0 || size.height == 0)
        section.refuse(key, u"must be a size like 640x512"_s);
    return size;
}

SensorGeometry::Size readSize(Section &section, const QString &key, const QString &fallback)
{
    return parseSize(section, key, section.text(key, fallback));
}

} // namespace

SensorGeometry::SensorGeometry(Section &section)
    : m_customAllowed(section.flag(u"customAllowed"_s, true)),
      m_customOffsetAllowed(section.flag(u"customOffsetAllowed"_s, true)),
      m_limits{readSize(section, u"minimumSize"_s, u"64x4"_s), readSize(section, u"maximumSize"_s, u"640x512"_s),
               readSize(section, u"increment"_s, u"16x4"_s)}
{
    const QString key = u"windowSizes"_s;
    for (const QString &text : section.texts(key, {u"640x512"_s, u"320x256"_s, u"160x128"_s, u"64x4"_s})) {
        m_sizes.push_back(parseSize(section, key, text));
        if (!fits(centred(m_sizes.back())))
            section.refuse(key, u"must lie within the limits"_s);
    }
    if (m_sizes.empty())
        section.refuse(key, u"must name at least one size"_s);
    m_window = centred(m_sizes.front());
}

int SensorGeometry::sizeIndex() const
{
    const Size size{m_window.width, m_window.height};
    return m_window == centred(size) ? indexOf(size) : -1;
}

Status SensorGeometry::setSizeIndex(int index)
{
    const int count = static_cast<int>(m_sizes.size());
    if (index == count && m_customAllowed)
        return Ok;
    if (index < 0 || index >= count)
        return Refused;
    m_window = centred(m_sizes[static_cast<size_t>(index)]);
    return Ok;
}

Status SensorGeometry::setWindow(const Window &window)
{
    const Size size{window.width, window.height};
    if (!fits(window) || (!m_customAllowed && indexOf(size) < 0) || (!m_customOffsetAllowed && window != centred(size)))
        return Refused;
    m_window = window;
    return Ok;
}

SensorGeometry::Window SensorGeometry::centred(const Size &size) const
{
    const auto offset = [](int outer, int inner, int step) {
        return static_cast<uint16_t>(std::max(outer - inner, 0) / 2 / step * step);
    };
    return {offset(m_limits.maximum.width, size.width, m_limits.step.width),
            offset(m_limits.maximum.height, size.height, m_limits.step.height), size.width, size.height};
}

bool SensorGeometry::fits(const Window &window) const
{
    const auto axisFits = [](int offset, int size, int minimum, int maximum, int step) {
        return size >= minimum && offset + size <= maximum && size % step == 0 && offset % step == 0;
    };
    return axisFits(window.x, window.width, m_limits.minimum.width, m_limits.maximum.width, m_limits.step.width)
        && axisFits(window.y, window.height, m_limits.minimum.height, m_limits.maximum.height, m_limits.step.height);
}

int SensorGeometry::indexOf(const Size &size) const
{
    const auto found = std::find(m_sizes.begin(), m_sizes.end(), size);
    return found == m_sizes.end() ? -1 : static_cast<int>(found - m_sizes.begin());
}

} // namespace emulator
