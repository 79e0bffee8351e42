#include "tests/support/Test.h"
#include "tests/unit/SaturationRig.h"

#include <array>
#include <memory>

namespace
{

/// What the page does with the model: it tells whether it is shown and the camera is connected after each change of
/// one of them, and its header expands and collapses the section.
struct Page {
    explicit Page(AdvancedSaturationSettingsModel &settings) : model(settings) { }

    void tell() const { model.saturatedPixelsUpdateActiveIfVisible(shown && connected); }

    AdvancedSaturationSettingsModel &model;
    bool shown = false;
    bool connected = false;
};

/// When the live count must run. A section that is expanded on a page that cannot be seen counts until the page tells
/// otherwise; a hidden page has no header by which an operator could do so.
struct Rule {
    bool expanded = false;
    bool counts = false;
};

/// One thing that happens to the page, and to the rule.
struct Event {
    const char *name;
    void (*happen)(Page &page, Rule &rule);
};

void expand(Page &page, Rule &rule, bool expanded)
{
    page.model.setVisible(expanded);
    if (expanded != rule.expanded)
        rule.counts = expanded;
    rule.expanded = expanded;
}

void show(Page &page, Rule &rule, bool shown, bool connected)
{
    page.shown = shown;
    page.connected = connected;
    page.tell();
    rule.counts = rule.expanded && shown && connected;
}

constexpr std::array events{
    Event{"expand", [](Page &page, Rule &rule) { expand(page, rule, true); }},
    Event{"collapse", [](Page &page, Rule &rule) { expand(page, rule, false); }},
    Event{"show", [](Page &page, Rule &rule) { show(page, rule, true, page.connected); }},
    Event{"hide", [](Page &page, Rule &rule) { show(page, rule, false, page.connected); }},
    Event{"connect", [](Page &page, Rule &rule) { show(page, rule, page.shown, true); }},
    Event{"disconnect", [](Page &page, Rule &rule) { show(page, rule, page.shown, false); }},
};

/// Processes events until a timer with the shortest interval has fired twice. Others with this interval then have, too.
void letTimersFire()
{
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
    timer.start(0);
    while (ticks < 2)
        QCoreApplication::processEvents();
}

} // namespace

/// The live count of the saturated pixels: when it runs, what it costs, and reads that overlap.
class tst_AdvancedSaturationSettingsModelCount : public Test
{
    Q_OBJECT

private slots:
    void timerIsStoppedAtFirst();
    void expandingStartsTheCount();
    void expandingCountsOnAHiddenPageToo();
    void hidingThePageStopsTheCount();
    void collapsedSectionIsNotCounted();
    void everyOrderOfEventsFollowsTheRule_data();
    void everyOrderOfEventsFollowsTheRule();

    void countReadsEachPresetOnThePool();
    void countTouchesNoFlag();
    void countOfAHiddenSectionIsPublished();
    void failedCountKeepsTheLast();
    void newestCountReplacesARunningOne();
    void countAndRefreshOverlap();
    void lastCountToArriveWins();
    void countOutlivesTheModel();
    void countAsksTheCameraAgainAfterAReconnection();
};

// When it runs

void tst_AdvancedSaturationSettingsModelCount::timerIsStoppedAtFirst()
{
    const AdvancedSaturationSettingsModel model(nullptr);
    const QTimer *timer = Saturation::timerOf(model);
    QVERIFY(!timer->isActive() && !timer->isSingleShot());
    QCOMPARE(timer->interval(), 1000);
}

void tst_AdvancedSaturationSettingsModelCount::expandingStartsTheCount()
{
    Saturation saturation;
    QCOMPARE(saturation.write("visible", true), QStringList());
    QCOMPARE(saturation.log.take(), QStringList("visibleChanged"));
    QVERIFY(saturation.counts());
    saturation.write("visible", true);
    QCOMPARE(saturation.log.take(), QStringList());
    saturation.write("visible", false);
    QCOMPARE(saturation.log.take(), QStringList("visibleChanged"));
    QVERIFY(!saturation.counts());
}

void tst_AdvancedSaturationSettingsModelCount::expandingCountsOnAHiddenPageToo()
{
    Saturation saturation;
    saturation.model.saturatedPixelsUpdateActiveIfVisible(false);
    saturation.model.setVisible(true);
    QVERIFY(saturation.counts());
    // The same value again does not start the timer.
    saturation.model.saturatedPixelsUpdateActiveIfVisible(false);
    saturation.model.setVisible(true);
    QVERIFY(!saturation.counts());
}

void tst_AdvancedSaturationSettingsModelCount::hidingThePageStopsTheCount()
{
    Saturation saturation;
    saturation.model.setVisible(true);
    saturation.model.saturatedPixelsUpdateActiveIfVisible(false);
    QVERIFY(!saturation.counts());
    saturation.model.saturatedPixelsUpdateActiveIfVisible(true);
    QVERIFY(saturation.counts());
}

void tst_AdvancedSaturationSettingsModelCount::collapsedSectionIsNotCounted()
{
    Saturation saturation;
    saturation.model.saturatedPixelsUpdateActiveIfVisible(true);
    QVERIFY(!saturation.counts());
}

void tst_AdvancedSaturationSettingsModelCount::everyOrderOfEventsFollowsTheRule_data()
{
    QTest::addColumn<size_t>("first");
    for (size_t first = 0; first < events.size(); ++first)
        QTest::newRow(events.at(first).name) << first;
}

// All orders of five events. After each order the timer may fire, with the shortest interval, beside one of the test
// that shows that time has passed.
void tst_AdvancedSaturationSettingsModelCount::everyOrderOfEventsFollowsTheRule()
{
    QFETCH(const size_t, first);
    constexpr size_t later = 6 * 6 * 6 * 6;
    Saturation saturation;
    saturation.timer().setInterval(0);
    qsizetype ticks = 0;
    QObject::connect(&saturation.timer(), &QTimer::timeout, this, [&ticks] { ++ticks; });
    const size_t since = saturation.gate().mark();
    for (size_t order = 0; order < later; ++order) {
        Page page(saturation.model);
        Rule rule;
        page.tell();
        page.model.setVisible(false);
        QString happened;
        size_t rest = order;
        for (size_t event = first, step = 0; step < 5; ++step, event = rest % 6, rest /= 6) {
            happened += QLatin1String(events.at(event).name) + QLatin1String(", ");
            events.at(event).happen(page, rule);
            if (saturation.counts() != rule.counts)
                QFAIL(qPrintable(happened + (rule.counts ? "and it does not count" : "and it counts")));
        }
        const qsizetype before = ticks;
        letTimersFire();
        if ((ticks > before) != rule.counts)
            QFAIL(qPrintable(happened + QStringLiteral("and the timer fires %1 times").arg(ticks - before)));
    }
    saturation.model.setVisible(false);
    CameraRig::settle();
    QVERIFY(ticks > 0);
    QCOMPARE(saturation.calls(since, false).size(), 4 * ticks);
    QCOMPARE(saturation.calls(since, false).filter("zvtGetSaturatedPixels").size(), 4 * ticks);
    QCOMPARE(saturation.calls(since, true), QStringList());
}

// What it reads

void tst_AdvancedSaturationSettingsModelCount::countReadsEachPresetOnThePool()
{
    Saturation saturation;
    const size_t since = saturation.gate().mark();
    saturation.fire();
    QCOMPARE(saturation.log.take(), QStringList());
    CameraRig::settle();
    QCOMPARE(saturation.calls(since, false), Saturation::forEachPreset("zvtGetSaturatedPixels"));
    QCOMPARE(saturation.calls(since, true), QStringList());
    QCOMPARE(saturation.log.take(), changedSignals(Saturation::saturatedPixels));
    for (const QString &property : Saturation::saturatedPixels)
        QCOMPARE(saturation.value(property), 225);
}

void tst_AdvancedSaturationSettingsModelCount::countTouchesNoFlag()
{
    Saturation saturation;
    saturation.fire();
    QVERIFY(!saturation.model.refreshing());
    CameraRig::settle();
    QVERIFY(!saturation.model.refreshing() && !saturation.model.hasRefreshed());
    saturation.read();
    saturation.fire();
    QVERIFY(!saturation.model.refreshing() && saturation.model.hasRefreshed());
    CameraRig::settle();
}

void tst_AdvancedSaturationSettingsModelCount::countOfAHiddenSectionIsPublished()
{
    Saturation saturation;
    saturation.model.setVisible(true);
    saturation.gate().hold("zvtGetSaturatedPixels");
    saturation.fire();
    QVERIFY(saturation.gate().waitHeld("zvtGetSaturatedPixels"));
    saturation.model.setVisible(false);
    saturation.log.take();
    saturation.gate().release("*");
    CameraRig::settle();
    QCOMPARE(saturation.log.take(), changedSignals(Saturation::saturatedPixels));
}

void tst_AdvancedSaturationSettingsModelCount::failedCountKeepsTheLast()
{
    Saturation saturation;
    saturation.read();
    saturation.gate().script("zvtGetSaturatedPixels", 9U);
    saturation.gate().failNext("zvtGetSaturatedPixels", 2);
    saturation.log.take();
    saturation.fire();
    CameraRig::settle();
    QStringList published = Saturation::saturatedPixels;
    published.removeAt(1);
    QCOMPARE(saturation.log.take(), changedSignals(published));
    QCOMPARE(saturation.model.presetOneSaturatedPixels(), 225);
    QCOMPARE(saturation.model.presetTwoSaturatedPixels(), 9);
}

// The result of the older read is lost, although all its calls are made. The two reads get different numbers.
void tst_AdvancedSaturationSettingsModelCount::newestCountReplacesARunningOne()
{
    Saturation saturation;
    const size_t since = saturation.gate().mark();
    saturation.gate().hold("zvtGetSaturatedPixels");
    saturation.fire();
    QVERIFY(saturation.gate().waitHeld("zvtGetSaturatedPixels", 1));
    saturation.gate().script("zvtGetSaturatedPixels", {});
    saturation.gate().answerFrom(
        [older = saturation.gate().callsSince(since).at(0).thread](const emulator::Call &call) {
            return emulator::Answer{emulator::Ok, QJsonArray{call.thread == older ? 225 : 9}, {}};
        });
    saturation.fire();
    QVERIFY(saturation.gate().waitHeld("zvtGetSaturatedPixels", 2));
    saturation.gate().release("*");
    CameraRig::settle();
    QCOMPARE(saturation.calls(since, false).size(), 8);
    QCOMPARE(saturation.log.take(), changedSignals(Saturation::saturatedPixels));
    for (const QString &property : Saturation::saturatedPixels)
        QCOMPARE(saturation.value(property), 9);
}

void tst_AdvancedSaturationSettingsModelCount::countAndRefreshOverlap()
{
    Saturation saturation;
    saturation.gate().hold("zvtGetSaturationCountThreshold");
    saturation.model.refresh();
    QVERIFY(saturation.gate().waitHeld("zvtGetSaturationCountThreshold"));
    saturation.log.take();
    saturation.gate().script("zvtGetSaturatedPixels", 9U);
    saturation.fire();
    QTRY_COMPARE(saturation.model.presetThreeSaturatedPixels(), 9);
    QCOMPARE(saturation.log.take(), changedSignals(Saturation::saturatedPixels));
    QVERIFY(saturation.model.refreshing());
    saturation.gate().script("zvtGetSaturatedPixels", 225U);
    saturation.gate().release("*");
    CameraRig::settle();
    QVERIFY(saturation.model.hasRefreshed());
    QCOMPARE(saturation.log.take().size(), 14);
    for (const QString &property : Saturation::saturatedPixels)
        QCOMPARE(saturation.value(property), 225);
}

void tst_AdvancedSaturationSettingsModelCount::lastCountToArriveWins()
{
    Saturation saturation;
    saturation.gate().hold("zvtGetSaturatedPixels");
    saturation.fire();
    QVERIFY(saturation.gate().waitHeld("zvtGetSaturatedPixels"));
    saturation.gate().script("zvtGetSaturatedPixels", 9U);
    saturation.model.updateSaturationPixels(2);
    QCOMPARE(saturation.model.presetTwoSaturatedPixels(), 9);
    saturation.gate().script("zvtGetSaturatedPixels", 225U);
    saturation.gate().release("*");
    CameraRig::settle();
    QCOMPARE(saturation.model.presetTwoSaturatedPixels(), 225);
}

void tst_AdvancedSaturationSettingsModelCount::countOutlivesTheModel()
{
    CameraRig rig;
    scriptSaturation(rig.gate());
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    CameraRig::settle();
    rig.gate().hold("zvtGetSaturatedPixels");
    root->advancedSaturationSettingsModel()->startSaturatedPixelUpdate();
    QVERIFY(rig.gate().waitHeld("zvtGetSaturatedPixels"));
    root.reset();
    rig.gate().release("*");
    CameraRig::settle();
}

void tst_AdvancedSaturationSettingsModelCount::countAsksTheCameraAgainAfterAReconnection()
{
    Saturation saturation;
    saturation.rig.camera().disconnect();
    saturation.fire();
    CameraRig::settle();
    QVERIFY(!saturation.log.take().contains(changedSignal(Saturation::saturatedPixels.first())));
    saturation.rig.camera().connect();
    saturation.fire();
    CameraRig::settle();
    QCOMPARE(saturation.log.take().filter("SaturatedPixels"), changedSignals(Saturation::saturatedPixels));
}

ZVT_TEST(tst_AdvancedSaturationSettingsModelCount)
#include "tst_AdvancedSaturationSettingsModelCount.moc"
