#pragma once

#include "tests/page/SetupPage.h"

/// Scripts what the Correction page reads: corrections in all four presets, and settings that are not those at start.
inline void scriptCorrections(emulator::Camera &camera)
{
    camera.gate().script("zvtGetNUCName", "Sky");
    camera.gate().script("zvtGetShowBadPixels", true);
    camera.gate().script("zvtGetAutoNUCSetup", QVariantList{true, true, 2.5, false, 30});
    camera.gate().script("zvtGetDigitalOutputNUCEnabled", false);
    camera.gate().script("zvtGetVideoOutputNUCEnabled", true);
    camera.gate().script("zvtGetBadPixelCorrectionMethod", 2);
    for (const char *setting :
         {"zvtSetShowBadPixels", "zvtSetAutoNUCSetup", "zvtSetDigitalOutputNUCEnabled", "zvtSetVideoOutputNUCEnabled",
          "zvtDoAutoNUC", "zvtUnloadNUC", "zvtLoadNUC", "zvtSaveNUCAs"})
        camera.gate().script(setting, true);
}

/// The Correction page of a connected camera, and the actions of an operator.
class CorrectionPage : public SetupPage
{
public:
    explicit CorrectionPage(const Prepare &prepare = scriptCorrections,
                            const QString &profile = QStringLiteral("everything"))
        : SetupPage(profile, prepare)
    {
        click("Correction");
        settle();
    }

    emulator::Gate &gate() { return rig().gate(); }
    QObject *model() const { return tabModel("correctionTabModel"); }
    QString nameOf(int preset) const { return text(QStringLiteral("NUC %1").arg(preset)); }
    void refresh()
    {
        click("Refresh");
        settle();
    }

    /// Changes the sequencing mode and the use of the presets, without a click.
    void sequence(int mode, const QVariantList &dwellCounts, const QVariantList &subframes)
    {
        general()->setProperty("sequencingMode", mode);
        int number = 0;
        for (QObject *preset : cameraModel()->children()) {
            if (!preset->inherits("ZvtCameraPresetModel"))
                continue;
            preset->setProperty("dwellCount", dwellCounts.value(number));
            preset->setProperty("subframeEnabled", subframes.value(number));
            ++number;
        }
        settle();
    }
};

/// The buttons of the row of a preset, by their accessible names.
inline QStringList buttonsOf(int preset)
{
    QStringList names;
    for (const char *name :
         {"Show NUC Info", "Perform New NUC", "Save Current NUC", "Load Existing NUC", "Unload Current NUC"})
        names << QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(preset);
    return names;
}
