#include "tests/page/FrameRateBox.h"
#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QColor>
#include <QQmlListReference>

using namespace rateBox;

class tst_FrameRateComboBox : public Test
{
    Q_OBJECT

private slots:
    void showsOneTextAndSelectsAnother();
    void anIndexBringsItsText();
    void aReplacedListLeavesTextAndIndex();
    void aRowIsShownUnderItsNewName();
    void enterCommits_data();
    void enterCommits();
    void theLossOfFocusCommitsWhatWasTyped();
    void halfTypedTextSurvivesADisabledBox();
    void refusedTextStaysMarkedUntilEscape();
    void typingTakesTheToolTipAway();
    void anotherAnswerThanTheTypedOneIsMarked_data();
    void anotherAnswerThanTheTypedOneIsMarked();
    void theLossOfFocusCommitsNothingElse_data();
    void theLossOfFocusCommitsNothingElse();
    void aRefusedTextGivesWay();
    void aReadDoesNotDisturbTyping();
    void escapeTakesBackWhatWasTyped();
    void theUpdateMarkRunsItsCourse();
    void theUpdateMarkStartsAnew();
    void theUpdateMarkStaysUnderThePointer();

private:
    static QQuickItem *mark(const QQuickItem *box) { return box->findChild<QQuickItem *>("updateMark"); }
    static QObject *fade(const QQuickItem *box) { return box->findChild<QObject *>("updateFade"); }
    static QColor colour(const QObject *item) { return item->property("color").value<QColor>(); }
};

void tst_FrameRateComboBox::showsOneTextAndSelectsAnother()
{
    PageDriver driver;
    RateFake rate;
    rate.text = "1.250000";
    const QQuickItem *box = create(driver, rate);
    QCOMPARE(shown(box), "1.250000");
    QCOMPARE(box->property("currentText").toString(), "120.00");
    rate.editable = false;
    emit rate.changed();
    QCOMPARE(shown(box), "120.00");
    QVERIFY(field(box)->property("readOnly").toBool());
    rate.editable = true;
    rate.text = "2.500000";
    emit rate.changed();
    QCOMPARE(shown(box), "2.500000");
}

void tst_FrameRateComboBox::anIndexBringsItsText()
{
    PageDriver driver;
    RateFake rate;
    const QQuickItem *box = create(driver, rate);
    rate.index = 2;
    emit rate.changed();
    QCOMPARE(box->property("currentText").toString(), "60.00");
    // An index without a row does not change the text.
    for (const int index : {-1, 2, 7}) {
        rate.index = index;
        emit rate.changed();
        QCOMPARE(box->property("currentText").toString(), "60.00");
        QCOMPARE(box->property("currentIndex").toInt(), index);
    }
}

void tst_FrameRateComboBox::aReplacedListLeavesTextAndIndex()
{
    PageDriver driver;
    RateFake rate;
    rate.editable = false;
    const QQuickItem *box = create(driver, rate);
    for (const QStringList &rows : {QStringList{"180.25", "120.00", "60.00"}, QStringList{"180.25"}, QStringList{},
                                    QStringList{"180.25", "120.00", "60.00", "30.00"}}) {
        rate.rows = rows;
        emit rate.changed();
        QCOMPARE(shown(box), "120.00");
        QCOMPARE(box->property("currentIndex").toInt(), 1);
    }
    // The same holds for a typed text.
    rate.editable = true;
    emit rate.changed();
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, "99");
    driver.press(Qt::Key_Return);
    rate.rows = QStringList{"170.00", "110.00"};
    emit rate.changed();
    QCOMPARE(box->property("currentText").toString(), "99");
}

void tst_FrameRateComboBox::aRowIsShownUnderItsNewName()
{
    PageDriver driver;
    RateFake rate;
    rate.editable = false;
    const QQuickItem *box = create(driver, rate);
    rate.rows = QStringList{"170.00", "110.00"};
    emit rate.changed();
    QCOMPARE(shown(box), "110.00");
}

void tst_FrameRateComboBox::enterCommits_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void tst_FrameRateComboBox::enterCommits()
{
    QFETCH(const Qt::Key, key);
    PageDriver driver;
    RateFake rate;
    rate.answer = "101.12";
    const QQuickItem *box = create(driver, rate);
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    // Typing replaces the old text.
    type(driver, "101.1");
    QCOMPARE(rate.calls, QStringList());
    driver.press(key);
    QCOMPARE(rate.calls, QStringList("take 101.1"));
    QCOMPARE(box->property("currentText").toString(), "101.1");
    // The field shows the camera's answer.
    QCOMPARE(shown(box), "101.12");
    driver.press(Qt::Key_Tab);
    QVERIFY(!box->hasActiveFocus());
    QCOMPARE(rate.calls.size(), 1);
}

void tst_FrameRateComboBox::theLossOfFocusCommitsWhatWasTyped()
{
    PageDriver driver;
    RateFake rate;
    rate.answer = "99.00";
    QQuickItem *box = create(driver, rate);
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, "99");
    driver.press(Qt::Key_Tab);
    QCOMPARE(rate.calls, QStringList("take 99"));
    QCOMPARE(shown(box), "99.00");
    // The same text is typed again, while the camera shows another value.
    for (int times = 2; times <= 3; ++times) {
        field(box)->forceActiveFocus(Qt::TabFocusReason);
        driver.press(Qt::Key_A, Qt::ControlModifier);
        type(driver, "88");
        driver.press(Qt::Key_Tab);
        QCOMPARE(rate.calls.size(), times);
    }
}

void tst_FrameRateComboBox::halfTypedTextSurvivesADisabledBox()
{
    PageDriver driver;
    RateFake rate;
    QQuickItem *box = create(driver, rate);
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, "88");
    box->setEnabled(false);
    QCOMPARE(rate.calls, QStringList());
    box->setEnabled(true);
    QCOMPARE(shown(box), "88");
    type(driver, "4");
    driver.press(Qt::Key_Return);
    QCOMPARE(rate.calls, QStringList("take 884"));
}

void tst_FrameRateComboBox::refusedTextStaysMarkedUntilEscape()
{
    PageDriver driver;
    RateFake rate;
    QQuickItem *box = create(driver, rate);
    QObject::connect(&rate, &RateFake::changed, box, [box] { QMetaObject::invokeMethod(box, "refuse"); });
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, "abc");
    driver.press(Qt::Key_Return);
    QVERIFY(box->property("refused").toBool());
    QCOMPARE(shown(box), "abc");
    driver.press(Qt::Key_Tab);
    QCOMPARE(shown(box), "abc");
    QCOMPARE(rate.calls, QStringList("take abc"));
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    driver.press(Qt::Key_Escape);
    QVERIFY(!box->property("refused").toBool());
    QCOMPARE(shown(box), "120.00");
}

void tst_FrameRateComboBox::typingTakesTheToolTipAway()
{
    PageDriver driver;
    RateFake rate;
    QQuickItem *box = create(driver, rate, "toolTip: \"A rate\"");
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    QTest::mouseMove(&driver.window(), box->mapToScene({20, 10}).toPoint());
    QTRY_COMPARE(driver.hint(), "A rate");
    type(driver, "5");
    QCOMPARE(driver.hint(), QString());
}

void tst_FrameRateComboBox::anotherAnswerThanTheTypedOneIsMarked_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("marked");
    QTest::newRow("kept") << "33.3"
                          << "33.30" << false;
    QTest::newRow("kept to what can be shown") << "33.333"
                                               << "33.33" << false;
    QTest::newRow("adjusted") << "33.3"
                              << "33.25" << true;
    QTest::newRow("refused") << "99999"
                             << "120.00" << true;
}

void tst_FrameRateComboBox::anotherAnswerThanTheTypedOneIsMarked()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, answer);
    QFETCH(const bool, marked);
    PageDriver driver;
    RateFake rate;
    rate.answer = typed + ".00"; // The value of the model until the camera has been read.
    QQuickItem *box = create(driver, rate, "Component.onCompleted: accepted.connect(expectAnswer)");
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, typed);
    driver.press(Qt::Key_Return);
    rate.text = answer;
    emit rate.changed();
    QCOMPARE(mark(box)->isVisible(), marked);
    QCOMPARE(driver.find("The camera kept another value than the one typed.") != nullptr, marked);
    // The next action in the field removes the mark.
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, "1");
    QVERIFY(!mark(box)->isVisible());
}

void tst_FrameRateComboBox::theLossOfFocusCommitsNothingElse_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("nothing was typed") << QString();
    QTest::newRow("the same was typed") << "120.00";
}

void tst_FrameRateComboBox::theLossOfFocusCommitsNothingElse()
{
    QFETCH(const QString, typed);
    PageDriver driver;
    RateFake rate;
    // Moving the focus through the field must not send a rounded value to the camera.
    rate.text = typed.isEmpty() ? "120.12" : "120.00";
    const QQuickItem *box = create(driver, rate);
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, typed);
    driver.press(Qt::Key_Tab);
    QVERIFY(!box->hasActiveFocus());
    QCOMPARE(rate.calls, QStringList());
}

void tst_FrameRateComboBox::aRefusedTextGivesWay()
{
    PageDriver driver;
    RateFake rate;
    const QQuickItem *box = create(driver, rate);
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, "fast");
    driver.press(Qt::Key_Return);
    QCOMPARE(rate.calls, QStringList("take fast"));
    QCOMPARE(shown(box), "120.00");
}

void tst_FrameRateComboBox::aReadDoesNotDisturbTyping()
{
    PageDriver driver;
    RateFake rate;
    const QQuickItem *box = create(driver, rate);
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, "9");
    rate.text = "119.99";
    emit rate.changed();
    QCOMPARE(shown(box), "9");
    // If the box is no longer editable, the refused text is discarded.
    rate.editable = false;
    emit rate.changed();
    QCOMPARE(shown(box), "120.00");
    driver.press(Qt::Key_Tab);
    QCOMPARE(rate.calls, QStringList());
}

void tst_FrameRateComboBox::escapeTakesBackWhatWasTyped()
{
    PageDriver driver;
    RateFake rate;
    const QQuickItem *box = create(driver, rate);
    field(box)->forceActiveFocus(Qt::TabFocusReason);
    type(driver, "99");
    driver.press(Qt::Key_Escape);
    QCOMPARE(shown(box), "120.00");
    driver.press(Qt::Key_Tab);
    QCOMPARE(rate.calls, QStringList());
}

void tst_FrameRateComboBox::theUpdateMarkRunsItsCourse()
{
    PageDriver driver;
    RateFake rate;
    QQuickItem *box = create(driver, rate);
    QVERIFY(!mark(box));
    QMetaObject::invokeMethod(box, "showFadingIntWidthUpdatedIndicator");
    QVERIFY(
        driver.find("The integration time has been updated. It may have been adjusted to the nearest valid value."));
    QCOMPARE(colour(mark(box)), QColor("white"));
    QVERIFY(fade(box)->property("running").toBool());

    QQmlListReference steps(fade(box), "animations");
    const auto duration = [&steps](int step) { return steps.at(step)->property("duration").toInt(); };
    const auto to = [&steps](int step) { return steps.at(step)->property("to").value<QColor>(); };
    QCOMPARE(steps.count(), 5);
    QCOMPARE(duration(0), 1500);
    QCOMPARE(duration(1), 1100);
    QCOMPARE(to(1), QColor("#666666"));
    QCOMPARE(duration(2), 4000);
    QCOMPARE(duration(3), 600);
    QCOMPARE(to(3), QColor("transparent"));
    QMetaObject::invokeMethod(fade(box), "complete");
    QCOMPARE(colour(mark(box)), QColor("transparent"));
    QVERIFY(!mark(box)->isVisible());
}

void tst_FrameRateComboBox::theUpdateMarkStartsAnew()
{
    PageDriver driver;
    RateFake rate;
    QQuickItem *box = create(driver, rate);
    QMetaObject::invokeMethod(box, "showFadingIntWidthUpdatedIndicator");
    QMetaObject::invokeMethod(fade(box), "pause");
    mark(box)->setProperty("color", QColor("#666666"));
    QMetaObject::invokeMethod(box, "showFadingIntWidthUpdatedIndicator");
    QCOMPARE(colour(mark(box)), QColor("white"));
    QVERIFY(fade(box)->property("running").toBool());
    QVERIFY(!fade(box)->property("paused").toBool());
}

void tst_FrameRateComboBox::theUpdateMarkStaysUnderThePointer()
{
    PageDriver driver;
    RateFake rate;
    QQuickItem *box = create(driver, rate);
    QMetaObject::invokeMethod(box, "showFadingIntWidthUpdatedIndicator");
    driver.settle();
    mark(box)->setProperty("color", QColor("#666666"));
    const QPointF middle = mark(box)->mapToScene({mark(box)->width() / 2, mark(box)->height() / 2});
    QTest::mouseMove(&driver.window(), middle.toPoint());
    QTRY_VERIFY(!fade(box)->property("running").toBool());
    QCOMPARE(colour(mark(box)), QColor("white"));
    // A further answer while the pointer is on the mark does not start the animation either.
    QMetaObject::invokeMethod(box, "showFadingIntWidthUpdatedIndicator");
    QVERIFY(!fade(box)->property("running").toBool());
    QVERIFY(mark(box)->isVisible());
    QTest::mouseMove(&driver.window(), {600, 460});
    QTRY_VERIFY(fade(box)->property("running").toBool());
    QCOMPARE(colour(mark(box)), QColor("white"));
}

ZVT_TEST(tst_FrameRateComboBox)
#include "moc_FrameRateBox.cpp"
#include "tst_FrameRateComboBox.moc"
