#pragma once

#include "tests/page/SetupPage.h"

#include <QRect>

/// The Video page with only the section "AGC ROI Settings" expanded, of a camera that uses a region.
struct AgcRegionSection : SetupPage {
    static constexpr auto header = "AGC ROI Settings";
    static constexpr auto picture = "AGC ROI";

    explicit AgcRegionSection(const Prepare &prepare = useRegion) : SetupPage(QStringLiteral("everything"), prepare)
    {
        click("Video");
        click("General Video Settings");
        click(QLatin1String(header));
        settle();
    }

    static void useRegion(emulator::Camera &camera)
    {
        camera.otherClient().set("agc.region", QVariantList{10, 20, 100, 50});
        camera.otherClient().set("agc.regionEnabled", true);
    }

    QObject *region() const { return tabModel("agcRoiSettings"); }
    bool unsaved() const { return region()->property("windowSizeHasUnsavedValues").toBool(); }
    /// The region in the picture, which is a copy of the model's.
    QRect edited() const { return item(QLatin1String(picture)).property("window").toRect(); }
    QStringList numbers() const { return {text("X Offset"), text("Y Offset"), text("Width"), text("Height")}; }
    bool set(const char *name, const QVariant &value)
    {
        return rig().camera().otherClient().set(QLatin1String(name), value);
    }
    void refresh()
    {
        click("Refresh AGC ROI Settings");
        settle();
    }
    /// How often `action` reads the model.
    template <class Action> qsizetype reads(Action action)
    {
        const size_t mark = rig().gate().mark();
        action();
        settle();
        return rig().callsSince(mark).count("zvtGetVideoAGCROI");
    }
};
