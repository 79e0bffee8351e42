#pragma once

#include "tests/support/PageDriver.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTest>

/// A fake preset for a frame rate box. It stores the chosen index and replaces a typed text by `answer`.
class RateFake : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QStringList rows MEMBER rows NOTIFY changed)
    Q_PROPERTY(int index MEMBER index NOTIFY changed)
    Q_PROPERTY(QString text MEMBER text NOTIFY changed)
    Q_PROPERTY(bool editable MEMBER editable NOTIFY changed)

public:
    Q_INVOKABLE void choose(int chosen)
    {
        calls += QStringLiteral("choose %1").arg(chosen);
        index = chosen;
        emit changed();
    }
    Q_INVOKABLE void take(const QString &typed)
    {
        calls += "take " + typed;
        text = answer.isEmpty() ? text : answer;
        emit changed();
    }

    QStringList rows{"180.25", "120.00", "60.00"};
    int index = 1;
    QString text = "120.00";
    bool editable = true;
    /// Replaces a typed text. If empty, the old text stays, as if the camera had refused the typed one.
    QString answer;
    QStringList calls;

signals:
    void changed();
};

/// Creates a frame rate box, bound to a preset in the same way as on the page.
namespace rateBox
{

inline QQuickItem *create(PageDriver &driver, RateFake &rate, const QString &more = {})
{
    return qobject_cast<QQuickItem *>(
        driver.create("FrameRateComboBox { required property var rate; x: 20; y: 100; Accessible.name: \"Frame Rate\"\n"
                      "model: rate.rows; currentIndex: rate.index; editText: rate.text; editable: rate.editable\n"
                      "onActivated: index => rate.choose(index); onAccepted: rate.take(currentText)\n"
                          + more + "\n}",
                      {{"rate", QVariant::fromValue(&rate)}}));
}

inline QObject *popup(const QQuickItem *box) { return box->findChild<QObject *>("popup"); }
inline bool isOpen(const QQuickItem *box) { return popup(box) && popup(box)->property("visible").toBool(); }

inline QQuickItem *field(const QQuickItem *box)
{
    for (QQuickItem *item : box->childItems())
        if (item->inherits("QQuickTextField"))
            return item;
    return nullptr;
}

inline QString shown(const QQuickItem *box) { return field(box)->property("text").toString(); }

inline void type(PageDriver &driver, const QString &text)
{
    for (const QChar character : text)
        QTest::keyClick(&driver.window(), character.toLatin1());
}

} // namespace rateBox
