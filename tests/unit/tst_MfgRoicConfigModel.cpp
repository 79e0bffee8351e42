#include "tests/support/Test.h"
#include "tests/unit/TabRig.h"

#include "manufacturing/MfgRoicConfigModel.h"

#include <cmath>
#include <limits>

namespace
{

const QStringList reads{"zvtGetMfgOverrideRoicConfig", "zvtGetMfgHasExtraLSync",    "zvtGetMfgLineDeadWidth",
                        "zvtGetMfgPreIntDeadWidth",    "zvtGetMfgPostIntDeadWidth", "zvtGetMfgPreDeadRows",
                        "zvtGetMfgPostDeadRows",       "zvtGetClockFrequency"};
const QStringList clockSignals = changedSignals({"lineDeadWidth", "preIntWidth", "postIntWidth"});
const QStringList valueSignals = changedSignals({"overrideDefaults", "hasExtraLSync", "lineDeadWidth", "preIntWidth",
                                                 "postIntWidth", "preDeadRows", "postDeadRows"});

/// Lets each read return a value that differs from those of a new model, and each write succeed.
void scriptRoic(CameraRig &rig)
{
    rig.gate().script("zvtGetMfgOverrideRoicConfig", 1);
    rig.gate().script("zvtGetMfgHasExtraLSync", 1);
    rig.gate().script("zvtGetMfgLineDeadWidth", 20);
    rig.gate().script("zvtGetMfgPreIntDeadWidth", 300);
    rig.gate().script("zvtGetMfgPostIntDeadWidth", 4294967295U);
    rig.gate().script("zvtGetMfgPreDeadRows", 3);
    rig.gate().script("zvtGetMfgPostDeadRows", 4);
    rig.gate().script("zvtGetClockFrequency", 20000000);
    rig.gate().script("zvtSetMfg*", true);
}

struct Roic : TabRig<MfgRoicConfigModel> {
    Roic() : TabRig(QStringLiteral("everything"))
    {
        scriptRoic(rig);
        start();
    }

    /// Reads the model with another clock.
    void readClock(uint32_t hz)
    {
        gate().script("zvtGetClockFrequency", hz);
        read();
    }
};

ModelUnderTest roicModel()
{
    auto model = modelOf<MfgRoicConfigModel>();
    model.prepare = scriptRoic;
    return model;
}

} // namespace

/// The timing of the readout circuit: its read, its writes, and the times of its widths.
class tst_MfgRoicConfigModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder();
    void valuesAreThoseOfTheCamera();
    void clockIsSignalledFirst();
    void unchangedValuesAreNotSignalled();
    void changedClockSignalsTheTimes();
    void changedWidthSignalsOnce();
    void sectionStaysEnabledInLaterReads();

    void timesDependOnTheClock();
    void widthIsItsTimeWithoutAClock();
    void timesAreRoundedUp_data();
    void timesAreRoundedUp();
    void timesOutOfRangeSetTheWidthZero_data();
    void timesOutOfRangeSetTheWidthZero();
    void clockOfZeroGivesNoWidth();
    void timesAreWrittenAsWidths();
    void timeOfTheSameWidthWritesNothing();

    void writes_data();
    void writes();
    void refusedWriteSpringsBack_data();
    void refusedWriteSpringsBack();
    void overrideIsReadBack();
    void overrideThatTheCameraIgnoresSpringsBack();
    void refusedOverrideIsNotReadBack();
    void overrideThatCannotBeReadBackSpringsBack();
    void writeWithoutACameraSpringsBack_data();
    void writeWithoutACameraSpringsBack();
    void timingReachesTheCamera();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_MfgRoicConfigModel::nothingIsKnownAtFirst()
{
    Roic roic;
    for (const char *flag : {"refreshing", "hasRefreshed", "overrideDefaults", "hasExtraLSync"})
        QCOMPARE(roic.model.property(flag), QVariant(false));
    for (const char *number : {"lineDeadWidth", "preIntWidth", "postIntWidth", "preDeadRows", "postDeadRows"})
        QCOMPARE(roic.model.property(number), QVariant(0U));
    for (const char *time : {"lineDeadTime", "preIntTime", "postIntTime"})
        QCOMPARE(roic.model.property(time), QVariant(0.0));
}

// Reading

void tst_MfgRoicConfigModel::readsInOrder()
{
    Roic roic;
    QCOMPARE(roic.read(), reads);
}

void tst_MfgRoicConfigModel::valuesAreThoseOfTheCamera()
{
    Roic roic;
    roic.read();
    QVERIFY(roic.model.overrideDefaults() && roic.model.hasExtraLSync());
    QCOMPARE(roic.model.lineDeadWidth(), 20U);
    QCOMPARE(roic.model.preIntWidth(), 300U);
    QCOMPARE(roic.model.postIntWidth(), 4294967295U);
    QCOMPARE(roic.model.preDeadRows(), 3U);
    QCOMPARE(roic.model.postDeadRows(), 4U);
}

void tst_MfgRoicConfigModel::clockIsSignalledFirst()
{
    Roic roic;
    roic.model.refresh();
    QCOMPARE(roic.log.take(), QStringList("refreshingChanged"));
    CameraRig::settle();
    QCOMPARE(roic.log.take(), clockSignals + valueSignals + QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(roic.model.hasRefreshed() && !roic.model.refreshing());
}

void tst_MfgRoicConfigModel::unchangedValuesAreNotSignalled()
{
    Roic roic;
    roic.read();
    roic.log.take();
    roic.read();
    QCOMPARE(roic.log.take(), QStringList({"refreshingChanged", "refreshingChanged"}));
}

void tst_MfgRoicConfigModel::changedClockSignalsTheTimes()
{
    Roic roic;
    roic.read();
    roic.log.take();
    roic.readClock(10000000);
    QCOMPARE(roic.log.take(), QStringList("refreshingChanged") + clockSignals + QStringList("refreshingChanged"));
    QCOMPARE(roic.model.lineDeadTime(), 2.0);
}

void tst_MfgRoicConfigModel::changedWidthSignalsOnce()
{
    Roic roic;
    roic.read();
    roic.log.take();
    roic.gate().script("zvtGetMfgPreIntDeadWidth", 301);
    roic.read();
    QCOMPARE(roic.log.take(), QStringList({"refreshingChanged", "preIntWidthChanged", "refreshingChanged"}));
}

void tst_MfgRoicConfigModel::sectionStaysEnabledInLaterReads()
{
    Roic roic;
    roic.read();
    roic.model.refresh();
    QVERIFY(roic.model.refreshing() && roic.model.hasRefreshed());
    CameraRig::settle();
    QVERIFY(!roic.model.refreshing() && roic.model.hasRefreshed());
    QCOMPARE(roic.log.take().count("hasRefreshedChanged"), 1);
}

// Times

void tst_MfgRoicConfigModel::timesDependOnTheClock()
{
    Roic roic;
    roic.read();
    QCOMPARE(roic.model.lineDeadTime(), 1.0);
    QCOMPARE(roic.model.preIntTime(), 15.0);
    QCOMPARE(roic.model.postIntTime(), 4294967295 / 20.0);
    roic.readClock(12500000);
    QCOMPARE(roic.model.lineDeadTime(), 1.6);
}

void tst_MfgRoicConfigModel::widthIsItsTimeWithoutAClock()
{
    Roic roic;
    roic.gate().failAlways("zvtGetClockFrequency");
    roic.read();
    QCOMPARE(roic.model.lineDeadTime(), 20.0);
    QCOMPARE(roic.model.preIntTime(), 300.0);
    // A later failure keeps the frequency that was read.
    roic.gate().failNever();
    roic.read();
    roic.gate().failAlways("zvtGetClockFrequency");
    roic.read();
    QCOMPARE(roic.model.lineDeadTime(), 1.0);
}

void tst_MfgRoicConfigModel::timesAreRoundedUp_data()
{
    QTest::addColumn<uint>("clock");
    QTest::addColumn<double>("time");
    QTest::addColumn<uint>("width");
    QTest::newRow("a little") << 1000000U << 0.01 << 1U;
    QTest::newRow("smallest") << 1000000U << std::numeric_limits<double>::denorm_min() << 1U;
    QTest::newRow("whole") << 1000000U << 7.0 << 7U;
    QTest::newRow("a little more") << 1000000U << 7.0001 << 8U;
    QTest::newRow("fast clock") << 20000000U << 1.01 << 21U;
    QTest::newRow("time of the width 7") << 12500000U << 7 / 12.5 << 8U;
    QTest::newRow("time of the width 31") << 15000000U << 31 / 15.0 << 32U;
    QTest::newRow("slow clock") << 1U << 1.0 << 1U;
    QTest::newRow("nothing") << 20000000U << 0.0 << 0U;
    QTest::newRow("greatest") << 1000000U << 4294967295.0 << 4294967295U;
    QTest::newRow("rounded up to the greatest") << 1000000U << 4294967294.5 << 4294967295U;
}

void tst_MfgRoicConfigModel::timesAreRoundedUp()
{
    QFETCH(const uint, clock);
    QFETCH(const double, time);
    QFETCH(const uint, width);
    Roic roic;
    roic.readClock(clock);
    for (const auto &[timeName, widthName] :
         {std::pair("lineDeadTime", "lineDeadWidth"), {"preIntTime", "preIntWidth"}, {"postIntTime", "postIntWidth"}}) {
        roic.model.setProperty(timeName, time);
        QCOMPARE(roic.model.property(widthName).toUInt(), width);
    }
}

void tst_MfgRoicConfigModel::timesOutOfRangeSetTheWidthZero_data()
{
    QTest::addColumn<double>("time");
    QTest::newRow("a little negative") << -0.01;
    QTest::newRow("negative") << -2.0;
    QTest::newRow("very negative") << -1e300;
    QTest::newRow("one too many") << 4294967295.5;
    QTest::newRow("two too many") << 4294967297.0;
    QTest::newRow("huge") << 1e300;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
    QTest::newRow("not a number") << std::nan("");
}

void tst_MfgRoicConfigModel::timesOutOfRangeSetTheWidthZero()
{
    QFETCH(const double, time);
    Roic roic;
    roic.readClock(1000000);
    QCOMPARE(roic.write("lineDeadTime", time), QStringList("zvtSetMfgLineDeadWidth 0"));
    QCOMPARE(roic.model.lineDeadWidth(), 0U);
}

void tst_MfgRoicConfigModel::clockOfZeroGivesNoWidth()
{
    Roic roic;
    roic.readClock(0);
    QVERIFY(std::isinf(roic.model.lineDeadTime()));
    roic.model.setLineDeadTime(5);
    QCOMPARE(roic.model.lineDeadWidth(), 0U);
    QVERIFY(std::isnan(roic.model.lineDeadTime()));
    roic.model.setPreIntTime(roic.model.preIntTime());
    QCOMPARE(roic.model.preIntWidth(), 0U);
}

void tst_MfgRoicConfigModel::timesAreWrittenAsWidths()
{
    Roic roic;
    roic.read();
    QCOMPARE(roic.write("lineDeadTime", 2.0), QStringList("zvtSetMfgLineDeadWidth 40"));
    QCOMPARE(roic.log.take(), QStringList("lineDeadWidthChanged"));
    QCOMPARE(roic.write("preIntTime", 10.0), QStringList("zvtSetMfgPreIntDeadWidth 200"));
    QCOMPARE(roic.log.take(), QStringList("preIntWidthChanged"));
    QCOMPARE(roic.write("postIntTime", 0.5), QStringList("zvtSetMfgPostIntDeadWidth 10"));
    QCOMPARE(roic.log.take(), QStringList("postIntWidthChanged"));
}

void tst_MfgRoicConfigModel::timeOfTheSameWidthWritesNothing()
{
    Roic roic;
    roic.read();
    QCOMPARE(roic.write("lineDeadTime", 0.96), QStringList());
    QCOMPARE(roic.log.take(), QStringList());
}

// Writes

void tst_MfgRoicConfigModel::writes_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("call");
    QTest::newRow("hasExtraLSync") << QVariant(false) << "zvtSetMfgHasExtraLSync 0";
    QTest::newRow("lineDeadWidth") << QVariant(40U) << "zvtSetMfgLineDeadWidth 40";
    QTest::newRow("preIntWidth") << QVariant(4294967295U) << "zvtSetMfgPreIntDeadWidth 4294967295";
    QTest::newRow("postIntWidth") << QVariant(200U) << "zvtSetMfgPostIntDeadWidth 200";
    QTest::newRow("preDeadRows") << QVariant(0U) << "zvtSetMfgPreDeadRows 0";
    QTest::newRow("postDeadRows") << QVariant(255U) << "zvtSetMfgPostDeadRows 255";
}

void tst_MfgRoicConfigModel::writes()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    const char *property = QTest::currentDataTag();
    Roic roic;
    roic.read();
    QCOMPARE(roic.write(property, value), QStringList(call));
    QCOMPARE(roic.log.take(), QStringList(changedSignal(property)));
    QCOMPARE(roic.model.property(property), value);
    QCOMPARE(roic.write(property, value), QStringList());
    QCOMPARE(roic.log.take(), QStringList());
}

void tst_MfgRoicConfigModel::refusedWriteSpringsBack_data() { writes_data(); }

void tst_MfgRoicConfigModel::refusedWriteSpringsBack()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    const char *property = QTest::currentDataTag();
    Roic roic;
    roic.read();
    const QVariant before = roic.model.property(property);
    roic.gate().failAlways("zvtSetMfg*");
    QCOMPARE(roic.write(property, value), QStringList(call));
    QCOMPARE(roic.log.take(), QStringList(changedSignal(property)));
    QCOMPARE(roic.model.property(property), before);
}

void tst_MfgRoicConfigModel::overrideIsReadBack()
{
    Roic roic;
    QCOMPARE(roic.write("overrideDefaults", true),
             QStringList({"zvtSetMfgOverrideRoicConfig 1", "zvtGetMfgOverrideRoicConfig"}));
    QCOMPARE(roic.log.take(), QStringList("overrideDefaultsChanged"));
    QVERIFY(roic.model.overrideDefaults());
    QCOMPARE(roic.write("overrideDefaults", true), QStringList());
    QCOMPARE(roic.log.take(), QStringList());
    roic.gate().script("zvtGetMfgOverrideRoicConfig", 0);
    QCOMPARE(roic.write("overrideDefaults", false).first(), QStringLiteral("zvtSetMfgOverrideRoicConfig 0"));
    QVERIFY(!roic.model.overrideDefaults());
}

void tst_MfgRoicConfigModel::overrideThatTheCameraIgnoresSpringsBack()
{
    Roic roic;
    roic.gate().script("zvtGetMfgOverrideRoicConfig", 0);
    QCOMPARE(roic.write("overrideDefaults", true).size(), 2);
    QCOMPARE(roic.log.take(), QStringList("overrideDefaultsChanged"));
    QVERIFY(!roic.model.overrideDefaults());
}

void tst_MfgRoicConfigModel::refusedOverrideIsNotReadBack()
{
    Roic roic;
    roic.gate().failNext("zvtSetMfgOverrideRoicConfig");
    QCOMPARE(roic.write("overrideDefaults", true), QStringList("zvtSetMfgOverrideRoicConfig 1"));
    QCOMPARE(roic.log.take(), QStringList("overrideDefaultsChanged"));
    QVERIFY(!roic.model.overrideDefaults());
}

void tst_MfgRoicConfigModel::overrideThatCannotBeReadBackSpringsBack()
{
    Roic roic;
    roic.gate().failNext("zvtGetMfgOverrideRoicConfig");
    QCOMPARE(roic.write("overrideDefaults", true).size(), 2);
    QCOMPARE(roic.log.take(), QStringList("overrideDefaultsChanged"));
    QVERIFY(!roic.model.overrideDefaults());
}

void tst_MfgRoicConfigModel::writeWithoutACameraSpringsBack_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("signal");
    for (const char *flag : {"overrideDefaults", "hasExtraLSync"})
        QTest::newRow(flag) << QVariant(true) << changedSignal(flag);
    for (const char *number : {"lineDeadWidth", "preIntWidth", "postIntWidth", "preDeadRows", "postDeadRows"})
        QTest::newRow(number) << QVariant(40U) << changedSignal(number);
    QTest::newRow("lineDeadTime") << QVariant(2.0) << "lineDeadWidthChanged";
    QTest::newRow("preIntTime") << QVariant(2.0) << "preIntWidthChanged";
    QTest::newRow("postIntTime") << QVariant(2.0) << "postIntWidthChanged";
}

void tst_MfgRoicConfigModel::writeWithoutACameraSpringsBack()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, signal);
    const char *property = QTest::currentDataTag();
    Roic disconnected;
    disconnected.rig.camera().disconnect();
    ZvtCameraModel rootWithoutAController({}, nullptr);
    MfgRoicConfigModel withoutAController(&rootWithoutAController);
    MfgRoicConfigModel withoutARoot(nullptr);
    for (MfgRoicConfigModel *model : {&disconnected.model, &withoutAController, &withoutARoot}) {
        const QVariant before = model->property(property);
        SignalLog log(model);
        QVERIFY(model->setProperty(property, value));
        QCOMPARE(log.take(), QStringList(signal));
        QCOMPARE(model->property(property), before);
    }
}

void tst_MfgRoicConfigModel::timingReachesTheCamera()
{
    TabRig<MfgRoicConfigModel> roic(QStringLiteral("everything"));
    roic.start();
    roic.read();
    QVERIFY(!roic.model.overrideDefaults());
    const uint defaultWidth = roic.model.lineDeadWidth();
    // The camera refuses it without the override.
    roic.model.setLineDeadWidth(40);
    QCOMPARE(roic.model.lineDeadWidth(), defaultWidth);
    roic.model.setOverrideDefaults(true);
    roic.model.setLineDeadWidth(40);
    roic.model.setPreIntTime(10);
    roic.model.setPostDeadRows(2);
    MfgRoicConfigModel another(&roic.root);
    another.refresh();
    CameraRig::settle();
    QVERIFY(another.overrideDefaults());
    QCOMPARE(another.lineDeadWidth(), 40U);
    QCOMPARE(another.preIntTime(), 10.0);
    QCOMPARE(another.postDeadRows(), 2U);
    roic.model.setOverrideDefaults(false);
    roic.read();
    QCOMPARE(roic.model.lineDeadWidth(), defaultWidth);
}

// The walkers

void tst_MfgRoicConfigModel::failingReads()
{
    const char *const ofWidth = "its time is missing too";
    walkFailingReads(roicModel(),
                     {{"zvtGetMfgLineDeadWidth", {{"lineDeadWidth", "lineDeadTime"}, ofWidth}},
                      {"zvtGetMfgPreIntDeadWidth", {{"preIntWidth", "preIntTime"}, ofWidth}},
                      {"zvtGetMfgPostIntDeadWidth", {{"postIntWidth", "postIntTime"}, ofWidth}},
                      {"zvtGetClockFrequency",
                       {{"lineDeadTime", "preIntTime", "postIntTime"}, "the times are computed with the default"}}});
}

void tst_MfgRoicConfigModel::heldReadsOutliveTheModel() { walkHeldDeletion(roicModel()); }

void tst_MfgRoicConfigModel::secondRefreshIsDropped() { walkSecondRefresh(roicModel()); }

void tst_MfgRoicConfigModel::readsWithoutACamera() { walkNoCamera(roicModel()); }

void tst_MfgRoicConfigModel::randomOperator() { walkRandomOperator(roicModel(), 911); }

ZVT_TEST(tst_MfgRoicConfigModel)
#include "tst_MfgRoicConfigModel.moc"
