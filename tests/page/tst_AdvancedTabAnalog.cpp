#include "tests/page/AdvancedPage.h"
#include "tests/support/Test.h"

/// The section "Analog Settings" of the Advanced page.
class tst_AdvancedTabAnalog : public Test
{
    Q_OBJECT

private slots:
    void theLabelsTellTheUnits();
    void eachVoltageIsShownAndSet_data();
    void eachVoltageIsShownAndSet();
    void wrongNumbersAreNotSent_data();
    void wrongNumbersAreNotSent();
    void decimalsAndExponentsAreAccepted();
    void limitsAreThoseOfTheCamera();
    void equalLimitsAreLimits();
    void withoutLimitsNoNumberIsAccepted_data();
    void withoutLimitsNoNumberIsAccepted();
    void skimmingIsSwitched_data();
    void skimmingIsSwitched();
    void theSkimmingSwitchWritesTheOppositeOfTheValue();
    void skimmingNeedsTheCamera();
    void refusedVoltageStaysUntilARead();
};

namespace
{

constexpr auto section = "Analog Settings";

/// The page with only this section expanded, of a camera that skims.
struct AnalogSection : AdvancedPage {
    explicit AnalogSection(const Prepare &prepare = skim) : AdvancedPage(prepare) { openOnly(section); }

    static void skim(emulator::Camera &camera) { camera.otherClient().set("analog.skimmingEnabled", true); }
    void refresh() { AdvancedPage::refresh(section); }
};

} // namespace

void tst_AdvancedTabAnalog::theLabelsTellTheUnits()
{
    AnalogSection page;
    for (const char *text : {"Global Analog Offset (v):", "Detector Bias (mv):", "Skimming (v):"})
        QVERIFY2(page.findText(text), text);
    const auto left = [](const QQuickItem &item) { return item.mapToScene({}).x(); };
    const QQuickItem &box = page.item("Enable Skimming");
    QVERIFY(left(box) + box.width() <= left(*page.findText("Skimming (v):")));
    QCOMPARE(left(page.item("Skimming (v)")), left(page.item("Detector Bias (mv)")));
}

void tst_AdvancedTabAnalog::eachVoltageIsShownAndSet_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("command");
    QTest::newRow("Global Analog Offset (v)") << "analog.globalOffset" << -1.25 << "-1.250"
                                              << "4.125"
                                              << "zvtSetGlobalOffsetVoltage 4.125";
    QTest::newRow("Detector Bias (mv)") << "analog.bias" << 123.5 << "123.50"
                                        << "300.25"
                                        << "zvtSetFPABias 300.25";
    QTest::newRow("Skimming (v)") << "analog.skimmingVoltage" << 0.5 << "0.500"
                                  << "2.125"
                                  << "zvtSetSkimmingVoltage 2.125";
}

void tst_AdvancedTabAnalog::eachVoltageIsShownAndSet()
{
    QFETCH(const QString, key);
    QFETCH(const double, value);
    QFETCH(const QString, shown);
    QFETCH(const QString, typed);
    QFETCH(const QString, command);
    const QString field = QString::fromLatin1(QTest::currentDataTag());
    AnalogSection page;
    QVERIFY(page.set(key.toLatin1(), value));
    page.refresh();
    QCOMPARE(page.text(field), shown);
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(field), typed, Qt::Key_Return); }), QStringList(command));
    const QString entered = page.text(field);
    QVERIFY(entered.startsWith(typed));
    page.refresh();
    QCOMPARE(page.text(field), entered);
}

void tst_AdvancedTabAnalog::wrongNumbersAreNotSent_data()
{
    QTest::addColumn<QStringList>("wrong");
    QTest::addColumn<QString>("hint");
    QTest::newRow("Global Analog Offset (v)") << QStringList{"5.001", "-5.001", "1e1", "x"} << "Not between -5 and 5";
    QTest::newRow("Detector Bias (mv)") << QStringList{"500.01", "-0.01", "1e3"} << "Not between 0 and 500";
    QTest::newRow("Skimming (v)") << QStringList{"3.301", "-0.001", "x"} << "Not between 0 and 3.3";
}

void tst_AdvancedTabAnalog::wrongNumbersAreNotSent()
{
    QFETCH(const QStringList, wrong);
    QFETCH(const QString, hint);
    const QString field = QString::fromLatin1(QTest::currentDataTag());
    AnalogSection page;
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

void tst_AdvancedTabAnalog::decimalsAndExponentsAreAccepted()
{
    AnalogSection page;
    QCOMPARE(page.commandsOf([&] {
        page.enter(page.item("Global Analog Offset (v)"), "1.0625");
        page.enter(page.item("Detector Bias (mv)"), "1.25e2");
        page.enter(page.item("Skimming (v)"), "0.0625");
    }),
             QStringList({"zvtSetGlobalOffsetVoltage 1.0625", "zvtSetFPABias 125", "zvtSetSkimmingVoltage 0.0625"}));
}

// The limit 3.3 is a little less than 3.3 as a number of type float.
void tst_AdvancedTabAnalog::limitsAreThoseOfTheCamera()
{
    AnalogSection page;
    QCOMPARE(page.commandsOf([&] {
        page.enter(page.item("Global Analog Offset (v)"), "-5");
        page.enter(page.item("Detector Bias (mv)"), "500");
        page.enter(page.item("Skimming (v)"), "3.3");
    }),
             QStringList({"zvtSetGlobalOffsetVoltage -5", "zvtSetFPABias 500", "zvtSetSkimmingVoltage 3.3"}));
    page.refresh();
    QCOMPARE(page.text("Skimming (v)"), "3.300");
}

void tst_AdvancedTabAnalog::equalLimitsAreLimits()
{
    AnalogSection page;
    page.gate().script("zvtGetFPABiasLimits", QVariantList{5.0, 5.0});
    page.refresh();
    page.enter(page.item("Detector Bias (mv)"), "6", Qt::Key_Return);
    QCOMPARE(page.fault("Detector Bias (mv)"), "Not between 5 and 5");
    QCOMPARE(page.commandsOf([&] { page.enter(page.item("Detector Bias (mv)"), "5", Qt::Key_Return); }),
             QStringList("zvtSetFPABias 5"));
}

void tst_AdvancedTabAnalog::withoutLimitsNoNumberIsAccepted_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("Global Analog Offset (v)") << "zvtGetGlobalOffsetVoltageLimits";
    QTest::newRow("Detector Bias (mv)") << "zvtGetFPABiasLimits";
    QTest::newRow("Skimming (v)") << "zvtGetSkimmingVoltageLimits";
}

void tst_AdvancedTabAnalog::withoutLimitsNoNumberIsAccepted()
{
    QFETCH(const QString, call);
    const QString field = QString::fromLatin1(QTest::currentDataTag());
    AnalogSection page([&](emulator::Camera &camera) {
        AnalogSection::skim(camera);
        QVERIFY(camera.otherClient().set("analog.globalOffset", 1.0));
        camera.gate().failAlways(call.toStdString());
    });
    QVERIFY(page.enabled(field));
    for (const char *text : {"0", "0.5", "1"}) {
        QCOMPARE(page.commandsOf([&] { page.enter(page.item(field), text, Qt::Key_Return); }), QStringList());
        QCOMPARE(page.fault(field), "Limits not read");
        page.press(Qt::Key_Escape);
    }
    page.gate().failNever();
    page.refresh();
    QCOMPARE(page.commandsOf([&] { page.enter(page.item(field), "0.5", Qt::Key_Return); }).size(), 1);
}

void tst_AdvancedTabAnalog::skimmingIsSwitched_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_AdvancedTabAnalog::skimmingIsSwitched()
{
    QFETCH(const bool, byKeyboard);
    AnalogSection page([](emulator::Camera &) {});
    const QQuickItem *label = page.findText("Skimming (v):");
    QVERIFY(!page.checked("Enable Skimming") && !page.enabled("Skimming (v)") && !label->isEnabled());
    QCOMPARE(page.commandsOf([&] { page.use("Enable Skimming", byKeyboard); }),
             QStringList("zvtSetSkimmingEnabled true"));
    QVERIFY(page.checked("Enable Skimming") && page.enabled("Skimming (v)") && label->isEnabled());
    QCOMPARE(page.commandsOf([&] { page.use("Enable Skimming", byKeyboard); }),
             QStringList("zvtSetSkimmingEnabled false"));
    QVERIFY(!page.checked("Enable Skimming") && !page.enabled("Skimming (v)") && !label->isEnabled());
    QVERIFY(page.set("analog.skimmingEnabled", true));
    page.refresh();
    QVERIFY(page.checked("Enable Skimming") && page.enabled("Skimming (v)"));
}

void tst_AdvancedTabAnalog::theSkimmingSwitchWritesTheOppositeOfTheValue()
{
    AnalogSection page;
    // The check box shows another state than that of the model.
    page.item("Enable Skimming").setProperty("checked", false);
    QCOMPARE(page.commandsOf([&] { page.click("Enable Skimming"); }), QStringList("zvtSetSkimmingEnabled false"));
}

void tst_AdvancedTabAnalog::skimmingNeedsTheCamera()
{
    AnalogSection page([](emulator::Camera &camera) { camera.changeMakeUp("hasSkimming", false); });
    for (const char *name : {"Enable Skimming", "Skimming (v)"})
        QVERIFY(!page.find(name));
    QVERIFY(!page.findText("Skimming (v):"));
    QVERIFY(page.find("Detector Bias (mv)"));
    QVERIFY(!page.analog()->property("skimmingEnabled").toBool());
}

void tst_AdvancedTabAnalog::refusedVoltageStaysUntilARead()
{
    AnalogSection page;
    const QString before = page.text("Detector Bias (mv)");
    page.gate().failAlways("zvtSetFPABias");
    page.enter(page.item("Detector Bias (mv)"), "100");
    page.settle();
    QCOMPARE(page.text("Detector Bias (mv)"), "100.00");
    page.refresh();
    QCOMPARE(page.text("Detector Bias (mv)"), before);
}

ZVT_TEST(tst_AdvancedTabAnalog)
#include "tst_AdvancedTabAnalog.moc"
