#pragma once

#include "tests/page/SetupPage.h"

#include <QPoint>

inline constexpr auto editorName = "Video Output Position";

/// The Setup page with only this section expanded.
struct VideoSection : SetupPage {
    explicit VideoSection(
        const QString &profile = QStringLiteral("everything"), const Prepare &prepare = [](emulator::Camera &) {})
        : SetupPage(profile, prepare)
    {
        click("General Setup");
        click(QStringLiteral("Video Output Settings"));
        settle();
    }

    QObject *video() const { return tabModel("videoOutputSettings"); }
    QPoint offset() const { return video()->property("videoOutputOffset").toPoint(); }
    QQuickItem &editor() const { return item(editorName); }
    bool marked(const QString &field) const { return !item(field).property("fault").toString().isEmpty(); }
    bool set(const char *name, const QVariant &value)
    {
        return rig().camera().otherClient().set(QLatin1String(name), value);
    }
    void refresh()
    {
        click("Refresh Video Output Settings");
        settle();
    }
    /// How often `action` reads the model.
    template <class Action> qsizetype reads(Action action)
    {
        const size_t mark = rig().gate().mark();
        action();
        settle();
        return rig().callsSince(mark).count("zvtGetVideoOffset");
    }
};
