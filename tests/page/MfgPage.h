#pragma once

#include "tests/page/SectionPage.h"

/// The Mfg page of a connected camera in the manufacturing mode, and the actions of an operator.
struct MfgPage : SectionPage {
    static constexpr int tabIndex = 6;

    explicit MfgPage(
        const QString &profile = QStringLiteral("everything"), const Prepare &prepare = [](emulator::Camera &) {})
        : SectionPage(profile, prepare)
    {
        cameraModel()->setProperty("manufacturingMode", true);
        settle();
        click("Mfg");
        settle();
    }

    QObject *identity() const { return tabModel("mfgTabModel"); }
    QObject *roic() const { return identity()->property("roicConfig").value<QObject *>(); }

    /// Collapses the first section, and expands another one.
    void openOnly(const QString &section)
    {
        toggle("Camera Settings");
        toggle(section);
    }
    /// Replaces the text of a field, and presses Enter.
    void enterNumber(const QString &field, const QString &text)
    {
        enter(item(field), text, Qt::Key_Return);
        settle();
    }
    bool primary(const QString &button) const { return item(button).property("primary").toBool(); }
};

inline const QStringList &mfgSections()
{
    static const QStringList names{
        "Camera Settings",        "NUC Settings",           "Voltage Settings",  "Tools",      "TE Cooler Settings",
        "Corvin Filter Settings", "Miscellaneous Settings", "Emulator Settings", "ROIC Config"};
    return names;
}

/// Gives a camera with a wheel that is not replaceable ("discrete-fov") all sections.
inline void showAllSections(emulator::Camera &camera) { camera.changeMakeUp(QStringLiteral("hasTeCooler"), true); }
