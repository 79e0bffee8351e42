#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/modelOf.h"
#include "tests/support/overlayFlags.h"

#include "video/OverlaySettingsModel.h"

#include <thread>

/// The overlay settings below a root, with helpers for tests.
struct Overlay {
    explicit Overlay(const QString &profile = QStringLiteral("everything"), bool connected = true)
        : rig(profile, connected), root(rig.controller(), nullptr), model(*root.overlaySettings())
    {
        CameraRig::settle(); // The root reads the general setup.
        log.watch(&model);
    }

    emulator::Gate &gate() { return rig.gate(); }

    /// The calls of `action`, with their arguments, on the GUI thread or on pool threads.
    template <class Action> QStringList callsOf(Action action, bool onGui = true)
    {
        const size_t mark = gate().mark();
        action();
        CameraRig::settle();
        QStringList calls;
        for (const auto &call : gate().callsSince(mark))
            if (call.name.starts_with("zvt") && (call.thread == std::this_thread::get_id()) == onGui)
                calls << QString::fromStdString(call.name + " " + call.arguments).trimmed();
        return calls;
    }
    QStringList read()
    {
        return callsOf([&] { model.refresh(); }, false);
    }
    /// Writes a property. Returns the calls.
    QStringList write(const char *property, const QVariant &value)
    {
        return callsOf([&] { model.setProperty(property, value); });
    }
    /// Reads the model. Returns the signals.
    QStringList signalsOfRead()
    {
        log.take();
        read();
        return log.take();
    }
    void setEquipment(const QString &capability, bool has)
    {
        rig.camera().changeMakeUp(capability, has);
        rig.controller()->capabilities.configure(rig.controller().get());
        root.cameraCapabilitiesModel()->configure();
    }
    bool shows(const char *property) const { return model.property(property).toBool(); }

    CameraRig rig;
    ZvtCameraModel root;
    OverlaySettingsModel &model;
    SignalLog log;
};

/// A colour of the model: its properties begin with `name`.
struct OverlayColor {
    QString name;
    const char *suffix;
    bool mayBeTransparent;

    QByteArray index() const { return (name + QStringLiteral("ColorIndex")).toLatin1(); }
    QByteArray color() const { return (name + QStringLiteral("Color")).toLatin1(); }
    QByteArray hasColor() const { return (name + QStringLiteral("HasColor")).toLatin1(); }
    std::string getter() const { return std::string("zvtGetVideoOverlay") + suffix; }
    std::string setter() const { return std::string("zvtSetVideoOverlay") + suffix; }
    QString command(int index) const
    {
        return QStringLiteral("%1 %2").arg(QString::fromStdString(setter())).arg(index);
    }
    QStringList signalNames() const
    {
        QStringList names{index() + "Changed", color() + "Changed"};
        if (mayBeTransparent)
            names << hasColor() + "Changed";
        return names;
    }
};

inline const QList<OverlayColor> overlayColors{{"overlayText", "TextColor", true},
                                               {"overlayTextBackground", "TextBackground", true},
                                               {"agcRoi", "AGCROIColor", false},
                                               {"focusRoi", "FocusROIColor", false}};

/// Lets each read return a value that differs from those of a new model, but for the palette, which the camera returns.
inline void scriptOverlay(emulator::Gate &gate)
{
    gate.script("zvtGetVideoOverlayShowMessage", true);
    gate.script("zvtGetVideoOverlayEnabled", true);
    for (const OverlayFlag &flag : overlayFlags)
        gate.script(flag.getter(), true);
    for (int color = 0; color < overlayColors.size(); ++color)
        gate.script(overlayColors.at(color).getter(), color + 2);
    gate.script("zvtGetHasLensTemperature", 1);
    gate.script("zvtGetVideoOverlayTextColorsAvailable", false);
    gate.script("zvtGetVideoOverlayUserDefinedFieldAvailable", true);
    gate.script("zvtGetVideoOverlayShowUserDefinedField", true);
    gate.script("zvtGetVideoOverlayUserDefinedFieldText", QStringLiteral("Bench 3 µ"));
}
