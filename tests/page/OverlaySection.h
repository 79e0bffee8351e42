#pragma once

#include "tests/page/SetupPage.h"
#include "tests/support/overlayFlags.h"

/// The Video page with only the section "Overlay Settings" expanded.
struct OverlaySection : SetupPage {
    static constexpr auto header = "Overlay Settings";

    explicit OverlaySection(
        const QString &profile = QStringLiteral("everything"), const Prepare &prepare = [](emulator::Camera &) {})
        : SetupPage(profile, prepare)
    {
        click("Video");
        click("General Video Settings");
        click(QLatin1String(header));
        settle();
    }

    QObject *overlay() const { return tabModel("overlaySettings"); }
    bool set(const char *name, const QVariant &value)
    {
        return rig().camera().otherClient().set(QLatin1String(name), value);
    }
    void refresh()
    {
        click("Refresh Overlay Settings");
        settle();
    }
    void setManufacturingMode(bool on)
    {
        cameraModel()->setProperty("manufacturingMode", on);
        settle();
    }
    /// Gives page and window another size.
    void resize(QSize size)
    {
        window().resize(size);
        page()->setSize(size);
        settle();
    }
    QRectF place(const QString &name) const { return item(name).mapRectToScene(item(name).boundingRect()); }
    /// How often `action` reads the model.
    template <class Action> qsizetype reads(Action action)
    {
        const size_t mark = rig().gate().mark();
        action();
        settle();
        return rig().callsSince(mark).count("zvtGetVideoOverlayPalette");
    }
};
