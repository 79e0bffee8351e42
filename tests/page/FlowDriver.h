#pragma once

#include "tests/support/PageDriver.h"
#include "tests/support/RecorderPoll.h"

#include <QColor>
#include <QSet>
#include <QTest>

/// The object names of the icons and of the arrows of the flow diagram.
inline const QStringList icons{"ssdIcon", "ramIcon", "detectorIcon", "desktopIcon"};
inline const QStringList arrows{"ssdToRamArrow", "ramToSsdArrow", "camToRamArrow", "camToAppArrow", "ramPlaybackArrow"};

/// Whether recordings go to the drive, and whether the playback comes from it.
struct Drive {
    bool toDisk = false;
    bool fromDisk = false;
};

/// The flow diagram alone, over the page of a camera. The camera reports the states that the test sets.
class FlowDriver : public PageDriver
{
public:
    explicit FlowDriver(Drive drive = {}, const QString &name = QStringLiteral("ZVT 6900 / 1207"))
    {
        rig().gate().script("zvtSetSsd*", true);
        rig().gate().script("zvtSsd*", true);
        // No poll runs during a download.
        rig().gate().failAlways("zvtSsdAutoDownloadStart");
        sheet = qobject_cast<QQuickItem *>(create(
            "import com.kestrin.hlx.cam.ui.zvt 1.0\nimport zvt.recording\n"
            "Rectangle { z: 10; width: 640; height: 240; color: Look.backColor\n"
            "property int asked: 0; property bool connected: true\n"
            "FlowDiagram { objectName: \"diagram\"; y: 12; x: 12; width: 616\n"
            "model: cameraModel.ssdTabModel; connected: parent.connected; onRefreshRequested: ++parent.asked } }"));
        diagram = sheet->findChild<QQuickItem *>("diagram");
        diagram->setProperty("cameraName", name);
        // The origin of a recording is set by arming.
        setMode(drive.fromDisk);
        rig().gate().script("zvtGetSsdState", Disarmed);
        QMetaObject::invokeMethod(model(), "arm");
        rig().settle();
        setMode(drive.toDisk);
        enter(Disarmed);
    }

    QObject *model() const { return tabModel("ssdTabModel"); }
    void setMode(bool toDisk) { model()->setProperty("recordMode", toDisk ? 1 : 0); }
    /// The camera reports a state, and a poll shows it.
    void enter(int state)
    {
        rig().gate().script("zvtGetSsdState", state);
        startPoll(*model());
        rig().settle();
        QCOMPARE(model()->property("state").toInt(), state);
    }
    QQuickItem *part(const QString &name) const { return diagram->findChild<QQuickItem *>(name); }
    QQuickItem *label(const QString &text) const
    {
        for (QQuickItem *item : shownTexts(*diagram))
            if (item->property("text").toString() == text)
                return item;
        return nullptr;
    }
    /// Whether a text is completely visible within the diagram.
    bool isComplete(const QQuickItem &text) const
    {
        return fits(text, diagram->mapRectToScene(diagram->boundingRect()));
    }
    QRgb color(const QString &name) const { return part(name)->property("color").value<QColor>().rgb(); }
    QRgb palette(const char *name) const { return rootProperty(name).value<QColor>().rgb(); }
    QObject *arrowPulse() const { return diagram->findChild<QObject *>("arrowPulse"); }
    QObject *drivePulse() const { return diagram->findChild<QObject *>("drivePulse"); }
    bool runs() const
    {
        return arrowPulse()->property("running").toBool() || drivePulse()->property("running").toBool();
    }
    /// Holds the running pulse at an opacity, for tests that look at what it changes.
    void holdPulse(double level)
    {
        for (QObject *pulse : {arrowPulse(), drivePulse()})
            if (pulse->property("running").toBool()) {
                pulse->setProperty("paused", true);
                pulse->setProperty("level", level);
            }
    }
    /// Whether a pulse is still held: a pulse that starts again is not.
    bool isHeld() const
    {
        return arrowPulse()->property("paused").toBool() || drivePulse()->property("paused").toBool();
    }
    /// The number of pixels of a part in this color, within a rectangle in coordinates of the part as it is shown.
    int pixels(const QString &name, QRgb color, const QRect &place)
    {
        const QQuickItem *item = part(name);
        const QRect shown = item->mapRectToScene({0, 0, item->width(), item->height()}).toRect();
        const QImage image = grab().copy(place.translated(shown.topLeft()));
        int found = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                found += image.pixel(x, y) == color ? 1 : 0;
        return found;
    }
    QSet<QString> faded() const
    {
        QSet<QString> found;
        for (const QString &name : icons + arrows)
            if (part(name)->opacity() < 1)
                found << name;
        return found;
    }

    QQuickItem *sheet = nullptr;
    QQuickItem *diagram = nullptr;
};
