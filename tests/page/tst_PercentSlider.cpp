#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QKeyEvent>
#include <QSignalSpy>
#include <QUrl>

#include <cmath>

class tst_PercentSlider : public Test
{
    Q_OBJECT

private slots:
    void followsItsLaw_data();
    void followsItsLaw();
    void springsBack();
    void stopsWhenItIsDisabled();
    void aHeldArrowKeyMoves_data();
    void aHeldArrowKeyMoves();
    void stopsWhenItLosesTheFocus_data();
    void stopsWhenItLosesTheFocus();

private:
    /// A slider; the centre of its thumb moves from x = 12 to x = 212.
    static QQuickItem *create(PageDriver &driver);
};

QQuickItem *tst_PercentSlider::create(PageDriver &driver)
{
    return qobject_cast<QQuickItem *>(driver.create("PercentSlider { width: 224; height: 28; y: 100 }"));
}

void tst_PercentSlider::followsItsLaw_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("image");
    const auto law = [](double p) {
        const double least = std::pow(10, 0.01);
        return (std::pow(10, p) - least) / (10 - least) * 0.99 + 0.01;
    };
    QTest::newRow("at rest") << 112 << 0.0 << 0.0 << "stop";
    QTest::newRow("the least") << 113 << 0.01 << 0.01 << "play1";
    QTest::newRow("slowly") << 152 << 0.4 << law(0.4) << "play1";
    QTest::newRow("faster") << 182 << 0.7 << law(0.7) << "play2";
    QTest::newRow("fast") << 207 << 0.95 << law(0.95) << "play3";
    QTest::newRow("fastest") << 212 << 1.0 << 1.0 << "play3";
    QTest::newRow("beyond the end") << 222 << 1.0 << 1.0 << "play3";
    QTest::newRow("slowly back") << 72 << -0.4 << -law(0.4) << "play1";
    QTest::newRow("fastest back") << 2 << -1.0 << -1.0 << "play3";
}

void tst_PercentSlider::followsItsLaw()
{
    QFETCH(const int, x);
    QFETCH(const double, position);
    QFETCH(const double, value);
    QFETCH(const QString, image);
    PageDriver driver;
    QQuickItem *slider = create(driver);
    QTest::mousePress(&driver.window(), Qt::LeftButton, Qt::NoModifier, {x, 114});
    QCOMPARE(slider->property("position").toDouble(), position);
    QVERIFY(std::abs(slider->property("value").toDouble() - value) < 1e-9);
    const QObject *thumb = slider->findChild<QObject *>("thumbImage");
    QCOMPARE(thumb->property("source").toUrl().fileName(), image + ".png");
    QCOMPARE(thumb->property("mirror").toBool(), position < 0);
    QCOMPARE(thumb->property("status").toInt(), 1);
    QTest::mouseRelease(&driver.window(), Qt::LeftButton, Qt::NoModifier, {x, 114});
    QCOMPARE(slider->property("value").toDouble(), 0.0);
}

void tst_PercentSlider::springsBack()
{
    PageDriver driver;
    QQuickItem *slider = create(driver);
    const QSignalSpy moves(slider, SIGNAL(valueChanged()));
    QTest::mousePress(&driver.window(), Qt::LeftButton, Qt::NoModifier, {200, 114});
    QTest::mouseMove(&driver.window(), {20, 114});
    QVERIFY(slider->property("value").toDouble() < 0);
    QTest::mouseMove(&driver.window(), {20, 400});
    QVERIFY(slider->property("value").toDouble() < 0);
    QTest::mouseRelease(&driver.window(), Qt::LeftButton, Qt::NoModifier, {20, 400});
    QCOMPARE(slider->property("value").toDouble(), 0.0);
    QCOMPARE(moves.count(), 3);
    // A hovering pointer moves nothing.
    QTest::mouseMove(&driver.window(), {200, 114});
    QCOMPARE(slider->property("value").toDouble(), 0.0);
}

void tst_PercentSlider::stopsWhenItIsDisabled()
{
    PageDriver driver;
    QQuickItem *slider = create(driver);
    QTest::mousePress(&driver.window(), Qt::LeftButton, Qt::NoModifier, {200, 114});
    QVERIFY(slider->property("value").toDouble() > 0);
    slider->setEnabled(false);
    QCOMPARE(slider->property("value").toDouble(), 0.0);
    QTest::mouseRelease(&driver.window(), Qt::LeftButton, Qt::NoModifier, {200, 114});
}

void tst_PercentSlider::aHeldArrowKeyMoves_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<double>("position");
    QTest::addColumn<QString>("image");
    QTest::newRow("slowly") << Qt::Key_Right << Qt::KeyboardModifiers() << 0.3 << "play1";
    QTest::newRow("slowly back") << Qt::Key_Left << Qt::KeyboardModifiers() << -0.3 << "play1";
    QTest::newRow("faster") << Qt::Key_Right << Qt::KeyboardModifiers(Qt::ShiftModifier) << 0.6 << "play2";
    QTest::newRow("at full speed back") << Qt::Key_Left << Qt::KeyboardModifiers(Qt::ControlModifier) << -1.0
                                        << "play3";
}

void tst_PercentSlider::aHeldArrowKeyMoves()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const double, position);
    QFETCH(const QString, image);
    PageDriver driver;
    QQuickItem *slider = create(driver);
    slider->forceActiveFocus(Qt::TabFocusReason);
    const QSignalSpy moves(slider, SIGNAL(valueChanged()));
    QTest::keyPress(&driver.window(), key, modifiers);
    QCOMPARE(slider->property("position").toDouble(), position);
    QCOMPARE(slider->property("value").toDouble() < 0, position < 0);
    QCOMPARE(slider->findChild<QObject *>("thumbImage")->property("source").toUrl().fileName(), image + ".png");
    // Key repetition neither stops the move nor starts it again.
    for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
        QKeyEvent repeat(type, key, modifiers, QString(), true);
        QCoreApplication::sendEvent(&driver.window(), &repeat);
    }
    QCOMPARE(slider->property("position").toDouble(), position);
    QCOMPARE(moves.count(), 1);
    QTest::keyRelease(&driver.window(), key);
    QCOMPARE(slider->property("value").toDouble(), 0.0);
    QCOMPARE(moves.count(), 2);
}

void tst_PercentSlider::stopsWhenItLosesTheFocus_data()
{
    QTest::addColumn<QString>("cause");
    for (const char *cause : {"focus", "enabled", "visible", "window"})
        QTest::newRow(cause) << cause;
}

void tst_PercentSlider::stopsWhenItLosesTheFocus()
{
    QFETCH(const QString, cause);
    PageDriver driver;
    QQuickItem *slider = create(driver);
    slider->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyPress(&driver.window(), Qt::Key_Right);
    QVERIFY(slider->property("value").toDouble() > 0);
    QQuickWindow other;
    if (cause == "focus") {
        QTest::keyPress(&driver.window(), Qt::Key_Tab);
    } else if (cause == "window") {
        other.show();
        other.requestActivate();
    } else {
        slider->setProperty(qPrintable(cause), false);
    }
    QTRY_COMPARE(slider->property("value").toDouble(), 0.0);
}

ZVT_TEST(tst_PercentSlider)
#include "tst_PercentSlider.moc"
