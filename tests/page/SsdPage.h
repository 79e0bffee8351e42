#pragma once

#include "tests/support/PageDriver.h"
#include "tests/support/RecorderPoll.h"

#include <QColor>
#include <QQmlContext>
#include <QQmlProperty>
#include <QTest>

/// The SSD page of a camera in a window with room for all of it, and the actions of an operator. The poll of the
/// recorder runs only in poll().
class SsdPage : public PageDriver
{
public:
    using Prepare = std::function<void(emulator::Camera &)>;

    explicit SsdPage(
        const Prepare &prepare = [](emulator::Camera &) {}, const QString &profile = QStringLiteral("everything"))
        : PageDriver({.profile = profile, .size = {900, 1000}, .prepare = prepare})
    {
        show();
    }
    explicit SsdPage(const PageSetup &setup) : PageDriver(setup) { show(); }

    emulator::Gate &gate() { return rig().gate(); }
    QObject *recorder() const { return tabModel("ssdTabModel"); }
    QVariant value(const char *property) const { return recorder()->property(property); }
    int state() const { return value("state").toInt(); }
    QObject *banner() const { return object(QStringLiteral("ssdPlaybackBanner")); }
    bool bannerIsShown() const { return banner()->property("visible").toBool(); }

    void refresh()
    {
        QMetaObject::invokeMethod(recorder(), "refresh");
        settle();
    }

    /// Runs the poll of the recorder once, and waits until its result is shown.
    void poll()
    {
        startPoll(*recorder());
        CameraRig::settle();
    }

    /// Advances the clock of the camera by milliseconds, and runs the poll once.
    void advance(int64_t milliseconds)
    {
        emulator::Clock::advance(milliseconds);
        poll();
    }

    /// The camera reports this state from now on, and a poll shows it.
    void enterState(int state)
    {
        gate().script("zvtGetSsdState", state);
        poll();
    }

    /// Sets a value of the camera as another client does.
    bool set(const char *name, const QVariant &value)
    {
        return rig().camera().otherClient().set(QLatin1String(name), value);
    }

    /// The commands that `action` sends to the camera.
    template <class Action> QStringList commandsOf(Action action)
    {
        const size_t mark = gate().mark();
        action();
        settle();
        return commands(mark);
    }

    /// What a box shows.
    QString shown(const QString &box) const { return item(box).property("displayText").toString(); }

    /// The accessible description of an item.
    static QString descriptionOf(const QQuickItem &item)
    {
        return QQmlProperty::read(&item, QStringLiteral("Accessible.description"), qmlContext(&item)).toString();
    }

    /// Chooses a row of a combo box by mouse.
    void chooseRow(const QString &box, const QString &row)
    {
        QQuickItem *before = findText(row);
        click(box);
        QTRY_VERIFY2(findText(row) && findText(row) != before, qPrintable(row));
        settle();
        click(findText(row));
        settle();
    }

    /// Gives page and window another size.
    void resize(QSize size)
    {
        window().resize(size);
        page()->setSize(size);
        settle();
    }

    /// The flow diagram.
    QObject *diagram() const { return object(QStringLiteral("flowDiagram")); }
    /// The color of an icon or an arrow of the flow diagram.
    QColor partColor(const char *part) const { return object(QLatin1String(part))->property("color").value<QColor>(); }
    bool arrowsPulse() const { return object(QStringLiteral("arrowPulse"))->property("running").toBool(); }

    /// The title of the open dialog; empty if none is open.
    QString dialogTitle() const
    {
        for (const QObject *object : page()->findChildren<QObject *>())
            if (object->inherits("QQuickDialog") && object->property("visible").toBool())
                return object->property("title").toString();
        return {};
    }

    /// The texts that open dialogs show, without those in the rows of lists.
    QList<QQuickItem *> dialogTexts() const
    {
        QList<QQuickItem *> texts = shownTexts(*page());
        texts.removeIf([](const QQuickItem *item) {
            while (item != nullptr && !item->inherits("QQuickOverlay"))
                item = item->parentItem();
            return item == nullptr;
        });
        return texts;
    }

private:
    void show()
    {
        click("SSD");
        settle();
    }
};
