#pragma once

#include "platform/emulator/Status.h"

#include <cstdint>
#include <vector>

namespace emulator
{

class Section;

/// Which part of a sensor is read out. All presets look through the same window.
class SensorGeometry
{
public:
    struct Size {
        uint16_t width = 0;
        uint16_t height = 0;
        bool operator==(const Size &) const = default;
    };

    struct Window {
        uint16_t x = 0;
        uint16_t y = 0;
        uint16_t width = 0;
        uint16_t height = 0;
        bool operator==(const Window &) const = default;
    };

    /// The steps are those of the sizes and of the offsets alike.
    struct Limits {
        Size minimum;
        Size maximum;
        Size step;
    };

    /// Knows in the profile: minimumSize, maximumSize, increment and windowSizes, all written like "640x512", and
    /// customAllowed and customOffsetAllowed.
    explicit SensorGeometry(Section &section);

    const std::vector<Size> &sizes() const { return m_sizes; }
    bool customAllowed() const { return m_customAllowed; }
    bool customOffsetAllowed() const { return m_customOffsetAllowed; }
    const Limits &limits() const { return m_limits; }
    const Window &window() const { return m_window; }

    /// The standard sizes lie in the middle of the sensor. -1: the window is none of them.
    int sizeIndex() const;
    /// The row behind the last one stands for a free window, where that is allowed, and changes nothing.
    Status setSizeIndex(int index);
    Status setWindow(const Window &window);

private:
    Window centred(const Size &size) const;
    bool fits(const Window &window) const;
    int rowOf(const Size &size) const;

    bool m_customAllowed;
    bool m_customOffsetAllowed;
    Limits m_limits;
    std::vector<Size> m_sizes;
    Window m_window;
};

} // namespace emulator
