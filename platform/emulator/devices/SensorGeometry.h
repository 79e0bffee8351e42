#pragma once

#include "platform/emulator/Status.h"

#include <cstdint>
#include <vector>

namespace emulator
{

class Section;

/// The window of a sensor that is read out. All presets use the same window. Sizes and offsets are pixels.
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

    /// Sizes are multiples of the step, and so are offsets.
    struct Limits {
        Size minimum;
        Size maximum;
        Size step;
    };

    /// Profile keys: "minimumSize", "maximumSize", "increment" (the step) and the list "windowSizes", all like
    /// "640x512"; "customAllowed" (other sizes than these), "customOffsetAllowed" (windows that are not centred).
    explicit SensorGeometry(Section &section);

    const std::vector<Size> &sizes() const { return m_sizes; }
    bool customAllowed() const { return m_customAllowed; }
    bool customOffsetAllowed() const { return m_customOffsetAllowed; }
    const Limits &limits() const { return m_limits; }
    const Window &window() const { return m_window; }

    /// The row of sizes() for the present window, which must be centred. -1 for any other window.
    int sizeIndex() const;
    /// Sets a centred window of the size in this row. The row after the last one is the custom window: it changes
    /// nothing and is refused unless custom sizes are allowed. Other rows are refused.
    Status setSizeIndex(int index);
    /// Refuses windows that are outside of the limits or are not allowed.
    Status setWindow(const Window &window);

private:
    Window centred(const Size &size) const;
    bool fits(const Window &window) const;
    int indexOf(const Size &size) const;

    bool m_customAllowed;
    bool m_customOffsetAllowed;
    Limits m_limits;
    std::vector<Size> m_sizes;
    Window m_window;
};

} // namespace emulator
