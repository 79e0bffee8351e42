#pragma once

#include "tests/page/SectionPage.h"

/// The Advanced page of a connected camera, and the actions of an operator.
struct AdvancedPage : SectionPage {
    explicit AdvancedPage(
        const Prepare &prepare = [](emulator::Camera &) {}, const QString &profile = QStringLiteral("everything"))
        : SectionPage(profile, prepare)
    {
        // Tests fire the timer of the live count.
        timer()->setInterval(std::chrono::hours(1));
        click("Advanced");
        settle();
    }

    QObject *digital() const { return tabModel("advancedTabModel"); }
    QObject *analog() const { return tabModel("advancedAnalogSettingsModel"); }
    QObject *saturation() const { return tabModel("advancedSaturationSettingsModel"); }
    QObject *lockin() const { return tabModel("advancedLockinSettingsModel"); }
    QObject *misc() const { return tabModel("advancedMiscSettingsModel"); }
    QTimer *timer() const { return saturation()->findChild<QTimer *>(QStringLiteral("saturatedPixelsUpdateTimer")); }

    /// Collapses the first section, and expands another one.
    void openOnly(const QString &section)
    {
        toggle("Digital Settings");
        toggle(section);
    }
};

inline const QStringList &advancedSections()
{
    static const QStringList names{"Digital Settings", "Analog Settings", "Saturation Settings", "Lockin Settings",
                                   "Miscellaneous Settings"};
    return names;
}
