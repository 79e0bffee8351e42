#pragma once

#include "tests/unit/TabRig.h"

#include "advanced/AdvancedSaturationSettingsModel.h"

#include <QTimer>

#include <chrono>

/// Lets each read return a value that differs from those of a new model, and each setter succeed.
inline void scriptSaturation(emulator::Gate &gate)
{
    gate.script("zvtGetSaturationCountThreshold", 12000);
    gate.script("zvtGetSaturationPixelThreshold", 70000U);
    gate.script("zvtGetSaturatedPixels", 225U);
    gate.script("zvtSetSaturation*", true);
}

/// The saturation settings below a root, with helpers for tests. The camera's values are scripted, or those of its
/// devices. The timer does not fire by itself unless the test sets its interval.
struct Saturation : TabRig<AdvancedSaturationSettingsModel> {
    // The properties of one kind, by preset.
    static inline const QStringList countThresholds{"presetZeroCountThreshold", "presetOneCountThreshold",
                                                    "presetTwoCountThreshold", "presetThreeCountThreshold"};
    static inline const QStringList pixelThresholds{"presetZeroPixelThreshold", "presetOnePixelThreshold",
                                                    "presetTwoPixelThreshold", "presetThreePixelThreshold"};
    static inline const QStringList saturatedPixels{"presetZeroSaturatedPixels", "presetOneSaturatedPixels",
                                                    "presetTwoSaturatedPixels", "presetThreeSaturatedPixels"};

    explicit Saturation(bool scripted = true)
        : TabRig(QStringLiteral("everything"), &ZvtCameraModel::advancedSaturationSettingsModel)
    {
        if (scripted)
            scriptSaturation(gate());
        timer().setInterval(std::chrono::hours(1));
        start();
    }

    /// One call for each preset.
    static QStringList forEachPreset(const QString &call)
    {
        QStringList calls;
        for (int preset = 0; preset < 4; ++preset)
            calls << QStringLiteral("%1 %2").arg(call).arg(preset);
        return calls;
    }

    static QTimer *timerOf(const QObject &model) { return model.findChild<QTimer *>("saturatedPixelsUpdateTimer"); }
    QTimer &timer() const { return *timerOf(model); }
    bool counts() const { return timer().isActive(); }
    /// Lets the timer fire once, also if it is stopped.
    void fire() const { QMetaObject::invokeMethod(&timer(), "timeout"); }
    int value(const QString &property) const { return model.property(property.toLatin1()).toInt(); }
};
