#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

#include <cstdint>

namespace emulator
{

/// The automatic focus with the region of the image that it looks at. It swings around the place where the scene is
/// sharp, less and less, and ends there.
class AutoFocus : public Device
{
public:
    /// Knows in the profile: "regionSize" (pixels, any, also one that cannot be set), "regionPosition",
    /// "showWhenFocusing", "showAlways", and "sceneDistance" (where the scene is, in metres).
    AutoFocus(Camera &camera, Section &section);

    /// Looks around from where the focus is. Refused if another command takes the focus over.
    Status focusFast();
    /// Runs from near to far first.
    Status focusFull();

    uint16_t regionSize() const { return m_regionSize; }
    /// 16, 32, 64, 128, 256 or 512.
    Status setRegionSize(uint16_t pixels);
    uint8_t regionPosition() const { return m_regionPosition; }
    Status setRegionPosition(uint8_t position);
    /// The overlay shows the region while focusing, and at all times.
    bool showWhenFocusing() const { return m_showWhenFocusing; }
    void setShowWhenFocusing(bool show);
    bool showAlways() const { return m_showAlways; }
    void setShowAlways(bool show);

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    /// As in the profile.
    bool set(const QString &name, const QVariant &value) override;

private:
    uint16_t m_regionSize;
    uint8_t m_regionPosition;
    bool m_showWhenFocusing;
    bool m_showAlways;
    double m_sceneDistance;
};

} // namespace emulator
