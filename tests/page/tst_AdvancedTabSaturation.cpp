#include "tests/page/AdvancedPage.h"
#include "tests/support/Test.h"

namespace
{

constexpr auto section = "Saturation Settings";
constexpr auto pixelsCall = "zvtGetSaturatedPixels";
constexpr int statusPage = 0;
constexpr int advancedPage = 4;

QString countOf(int preset) { return QStringLiteral("Preset %1 Count Threshold").arg(preset); }
QString pixelsOf(int preset) { return QStringLiteral("Preset %1 Pixel Threshold").arg(preset); }
QString saturatedOf(int preset) { return QStringLiteral("Preset %1 Saturated Pixels").arg(preset); }

/// The page with only this section expanded.
struct SaturationSection : AdvancedPage {
    SaturationSection() { openOnly(section); }

    void refresh() { AdvancedPage::refresh(section); }
    void fire() const { QMetaObject::invokeMethod(timer(), "timeout"); }
    bool counts() const { return timer()->isActive(); }
    QString saturated(int preset) const { return text(saturatedOf(preset)); }
};

} // namespace

/// The section "Saturation Settings" of the Advanced page, with its live count.
class tst_AdvancedTabSaturation : public Test
{
    Q_OBJECT

private slots:
    void theTableHasItsTitles();
    void eachThresholdIsShownAndSet_data();
    void eachThresholdIsShownAndSet();
    void aThresholdIsWrittenAndItsCountRead();
    void wrongNumbersAreNotSent_data();
    void wrongNumbersAreNotSent();
    void limitsAreAccepted();
    void theCountCannotBeTyped();

    void theHeaderReadsTheCountTwice();
    void theLiveCountMakesFourCalls();
    void theLiveCountChangesOnlyTheCount();
    void aFailedCountKeepsTheNumber();
    void theCountRunsOnlyInView_data();
    void theCountRunsOnlyInView();
    void theHiddenWindowCountsNothing();
    void theTimerCounts();
    void theLiveCountLeavesATypedNumber();
};

void tst_AdvancedTabSaturation::theTableHasItsTitles()
{
    SaturationSection page;
    for (const char *text : {"Count Threshold", "Pixel Threshold", "Saturated Pixels", "Preset 0:", "Preset 3:"})
        QVERIFY2(page.findText(text), text);
}

void tst_AdvancedTabSaturation::eachThresholdIsShownAndSet_data()
{
    QTest::addColumn<int>("preset");
    for (int preset = 0; preset < 4; ++preset)
        QTest::addRow("preset %d", preset) << preset;
}

void tst_AdvancedTabSaturation::eachThresholdIsShownAndSet()
{
    QFETCH(const int, preset);
    SaturationSection page;
    QVERIFY(page.set("saturation.countThresholds", QVariantList{1000, 2000, 3000, 4000}));
    QVERIFY(page.set("saturation.pixelThresholds", QVariantList{10, 200, 3000, 40000}));
    page.refresh();
    QCOMPARE(page.text(countOf(preset)), QString::number((preset + 1) * 1000));
    QCOMPARE(page.text(pixelsOf(preset)), QStringList({"10", "200", "3000", "40000"}).at(preset));
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(countOf(preset)), "12345", Qt::Key_Return); }),
             QStringList(QStringLiteral("zvtSetSaturationCountThreshold %1, 12345").arg(preset)));
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(pixelsOf(preset)), "77"); }),
             QStringList(QStringLiteral("zvtSetSaturationPixelThreshold %1, 77").arg(preset)));
    page.refresh();
    QCOMPARE(page.text(countOf(preset)), "12345");
    QCOMPARE(page.text(pixelsOf(preset)), "77");
}

void tst_AdvancedTabSaturation::aThresholdIsWrittenAndItsCountRead()
{
    SaturationSection page;
    page.gate().script(pixelsCall, 4711);
    const size_t mark = page.gate().mark();
    page.enter(page.item(countOf(2)), "9000", Qt::Key_Return);
    QCOMPARE(page.rig().callsSince(mark), QStringList({"zvtSetSaturationCountThreshold", pixelsCall}));
    QCOMPARE(page.saturated(2), "4711");
    QVERIFY(page.saturated(1) != "4711");
}

void tst_AdvancedTabSaturation::wrongNumbersAreNotSent_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QStringList>("wrong");
    QTest::addColumn<QString>("hint");
    QTest::newRow("count") << countOf(0) << QStringList{"16384", "65536", "-1", "1.5", "x"}
                           << "Not between 0 and 16383";
    QTest::newRow("pixel") << pixelsOf(0) << QStringList{"1048577", "-1", "1.5"} << "Not between 0 and 1048576";
}

void tst_AdvancedTabSaturation::wrongNumbersAreNotSent()
{
    QFETCH(const QString, field);
    QFETCH(const QStringList, wrong);
    QFETCH(const QString, hint);
    SaturationSection page;
    const QString before = page.text(field);
    QStringList hints;
    for (const QString &text : wrong) {
        QCOMPARE(page.commandsOf([&] { page.enter(page.item(field), text, Qt::Key_Return); }), QStringList());
        hints << page.fault(field);
        page.press(Qt::Key_Escape);
        QCOMPARE(page.text(field), before);
    }
    QCOMPARE(hints.first(), hint);
    QVERIFY(!hints.contains(QString()));
}

void tst_AdvancedTabSaturation::limitsAreAccepted()
{
    SaturationSection page;
    QCOMPARE(page.commandsOf([&] {
        page.enter(page.item(countOf(1)), "16383");
        page.enter(page.item(countOf(1)), "0");
        page.enter(page.item(pixelsOf(1)), "1048576");
        page.enter(page.item(pixelsOf(1)), "0");
    }),
             QStringList({"zvtSetSaturationCountThreshold 1, 16383", "zvtSetSaturationCountThreshold 1, 0",
                          "zvtSetSaturationPixelThreshold 1, 1048576", "zvtSetSaturationPixelThreshold 1, 0"}));
}

void tst_AdvancedTabSaturation::theCountCannotBeTyped()
{
    SaturationSection page;
    for (int preset = 0; preset < 4; ++preset) {
        const QQuickItem &count = page.item(saturatedOf(preset));
        QVERIFY(!count.inherits("QQuickTextInput") && !count.activeFocusOnTab());
    }
}

// The live count

// By the read of the section, and at once.
void tst_AdvancedTabSaturation::theHeaderReadsTheCountTwice()
{
    SaturationSection page;
    QCOMPARE(page.calls(pixelsCall, [&] { page.toggle(section); }), 0);
    QVERIFY(!page.counts());
    QCOMPARE(page.calls(pixelsCall, [&] { page.toggle(section); }), 8);
    QVERIFY(page.counts());
    QCOMPARE(page.calls(pixelsCall, [&] { page.refresh(); }), 8);
}

void tst_AdvancedTabSaturation::theLiveCountMakesFourCalls()
{
    SaturationSection page;
    page.gate().script(pixelsCall, 123456);
    const size_t mark = page.gate().mark();
    page.fire();
    page.settle();
    QCOMPARE(page.rig().callsSince(mark), QStringList({pixelsCall, pixelsCall, pixelsCall, pixelsCall}));
    for (int preset = 0; preset < 4; ++preset)
        QCOMPARE(page.saturated(preset), "123456");
}

void tst_AdvancedTabSaturation::theLiveCountChangesOnlyTheCount()
{
    SaturationSection page;
    page.gate().hold(pixelsCall);
    page.fire();
    QVERIFY(page.gate().waitHeld(pixelsCall));
    page.awaitFrame();
    QVERIFY(page.enabled(countOf(0)));
    QVERIFY(!page.item(section).property("sectionLoading").toBool());
    page.gate().release("*");
    page.settle();
}

void tst_AdvancedTabSaturation::aFailedCountKeepsTheNumber()
{
    SaturationSection page;
    page.gate().script(pixelsCall, 55);
    page.fire();
    page.settle();
    page.gate().failAlways(pixelsCall);
    page.fire();
    page.settle();
    page.refresh();
    for (int preset = 0; preset < 4; ++preset)
        QCOMPARE(page.saturated(preset), "55");
}

void tst_AdvancedTabSaturation::theCountRunsOnlyInView_data()
{
    QTest::addColumn<QString>("steps");
    // All orders of four of these steps, one after the other: another page (P) or this one again, collapsing or
    // expanding (S) the section, and disconnecting or connecting (L). The section cannot be clicked on another page.
    const QString kinds = QStringLiteral("PSL");
    for (const QChar first : kinds) {
        QString steps;
        for (const QChar second : kinds)
            for (const QChar third : kinds)
                for (const QChar fourth : kinds)
                    steps += QString(first) + second + third + fourth;
        QTest::addRow("%c first", first.toLatin1()) << steps;
    }
}

void tst_AdvancedTabSaturation::theCountRunsOnlyInView()
{
    QFETCH(const QString, steps);
    SaturationSection page;
    bool shown = true;
    bool expanded = true;
    bool connected = true;
    for (const QChar step : steps) {
        if (step == u'P') {
            shown = !shown;
            page.showTab(shown ? advancedPage : statusPage);
        } else if (step == u'L') {
            connected = !connected;
            if (connected)
                page.rig().camera().connect();
            else
                page.rig().camera().disconnect();
        } else if (shown) {
            expanded = !expanded;
            page.click(section);
        }
        page.settle();
        QCOMPARE(page.counts(), shown && expanded && connected);
    }
}

void tst_AdvancedTabSaturation::theHiddenWindowCountsNothing()
{
    SaturationSection page;
    QVERIFY(page.counts());
    page.window().hide();
    QVERIFY(!page.counts());
    page.window().show();
    QVERIFY(QTest::qWaitForWindowExposed(&page.window()));
    QVERIFY(page.counts());
    page.window().showMinimized();
    QVERIFY(!page.counts());
    page.rig().camera().disconnect();
    page.rig().camera().connect();
    page.settle();
    QVERIFY(!page.counts());
    page.window().showNormal();
    QTRY_VERIFY(page.counts());
}

void tst_AdvancedTabSaturation::theTimerCounts()
{
    SaturationSection page;
    const size_t mark = page.gate().mark();
    page.timer()->setInterval(0);
    QTRY_VERIFY(page.rig().callsSince(mark).count(QLatin1String(pixelsCall)) >= 8);
    page.timer()->stop();
    page.settle();
}

void tst_AdvancedTabSaturation::theLiveCountLeavesATypedNumber()
{
    SaturationSection page;
    page.type(countOf(3), "12");
    page.fire();
    page.settle();
    QCOMPARE(page.text(countOf(3)), "12");
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }), QStringList("zvtSetSaturationCountThreshold 3, 12"));
}

ZVT_TEST(tst_AdvancedTabSaturation)
#include "tst_AdvancedTabSaturation.moc"
