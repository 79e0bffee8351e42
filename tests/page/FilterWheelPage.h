#pragma once

#include "tests/page/SetupPage.h"

#include <QColor>
#include <QMap>

inline const QString section = QStringLiteral("Filter Wheel Settings");
inline const QString busyPanel = QStringLiteral("Scanning Filter Wheel...");
inline const QString instructions
    = QStringLiteral("To change the filter:\n\n 1. Remove the lens.\n 2. Remove the filter from the wheel.\n"
                     " 3. Place the new the filter into the wheel.\n 4. Re-attach the lens.\n\n"
                     " Click OK when you are done to refresh.");

/// The Setup page of a camera whose wheel holds four filters, with the section of the filter wheel open.
class FilterWheelPage : public SetupPage
{
public:
    explicit FilterWheelPage(
        const QString &profile = QStringLiteral("everything"), const Prepare &prepare = [](emulator::Camera &) {})
        : SetupPage(profile, [&](emulator::Camera &camera) {
              camera.otherClient().set("filters.current", profile == "everything" ? 13 : 4);
              prepare(camera);
          })
    {
        click("General Setup");
        click(section);
        settle();
    }

    emulator::Gate &gate() { return rig().gate(); }
    QObject *wheel() const { return tabModel("setupFilterWheelSettingsModel"); }

    /// The texts of the cells of a filter's row, from left to right; empty without such a row.
    QStringList rowOf(const QString &filter) const
    {
        QMap<double, QString> texts;
        const QQuickItem *name = findText(filter);
        for (const QQuickItem *text : name ? shownTexts(*name->parentItem()) : QList<QQuickItem *>())
            if (text->objectName() != "filterMark" && text->property("text").toString().at(0).isLetterOrNumber())
                texts.insert(text->mapToScene({}).x(), text->property("text").toString());
        return texts.values();
    }

    /// The colour of the mark before a filter; "none" without a mark.
    QString markOf(const QString &filter) const
    {
        const QQuickItem *mark = findText(filter)->parentItem()->findChild<QQuickItem *>("filterMark");
        return mark->opacity() > 0 ? mark->property("color").value<QColor>().name() : QStringLiteral("none");
    }

    /// Clicks a button and waits until the camera holds the turn of the wheel.
    void startTurn(const QString &button)
    {
        gate().hold("zvtSetCurrentFilterID");
        click(button);
        QVERIFY(gate().waitHeld("zvtSetCurrentFilterID"));
        awaitFrame();
    }
    void endTurn()
    {
        gate().release("*");
        settle();
    }

    bool isBusy(const QString &filter) const
    {
        return findText(filter)->parentItem()->findChild<QQuickItem *>("filterBusy") != nullptr;
    }
};

inline const QString blue = QColor("#18aae2").name();
inline const QString yellow = QColor("yellow").name();
