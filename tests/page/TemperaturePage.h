#pragma once

#include "tests/page/SetupPage.h"

inline const QString coolerSection = QStringLiteral("Cooler Settings");
inline const QString flagSection = QStringLiteral("Flag Settings");

/// The Setup page with one section open, that of the cooler or that of the flag.
class TemperaturePage : public SetupPage
{
public:
    explicit TemperaturePage(
        const QString &section, const QString &profile = QStringLiteral("everything"),
        const Prepare &prepare = [](emulator::Camera &) {})
        : SetupPage(profile, prepare)
    {
        click("General Setup");
        click(section);
        settle();
    }

    emulator::Gate &gate() { return rig().gate(); }
    QObject *cooler() const { return tabModel("setupCoolerSettingsModel"); }
    QObject *flag() const { return tabModel("flagSettings"); }

    /// How often a poll asks for the temperature of the flag within one second. A stopped timer does not fire.
    qsizetype pollsOfASecond(const QObject *model)
    {
        const size_t mark = gate().mark();
        auto *timer = model->findChild<QTimer *>("temperatureTimer");
        if (timer->isActive())
            QMetaObject::invokeMethod(timer, "timeout");
        settle();
        return rig().callsSince(mark).count("zvtGetFlagTemperature");
    }

    void refresh(QObject *model)
    {
        QMetaObject::invokeMethod(model, "refresh");
        settle();
    }
    bool showsRefusal() const
    {
        const QQuickItem *frame = item("Desired").findChild<QQuickItem *>("refusalFrame");
        return frame && frame->isVisible();
    }
};
