#include "tests/support/Test.h"
#include "tests/unit/StatusRig.h"

#include <QSignalSpy>

class tst_StatusTabModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsReadBeforeThePageIsSeen();
    void loadedTurnsTrueOnce();
    void kelvinIsConverted();

    void refreshReadsTheActivePreset();
    void refreshReadsAllPresetsOfASequence();
    void sequenceAtOneRateShowsTheSuperframeRate();
    void failedStepEndsTheRefresh_data();
    void failedStepEndsTheRefresh();
    void unchangedTextIsNotSignalled();
    void textsAreSignalledInOrder();

    void failingReadsOfARefresh();
    void failingReadsOfAPoll();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_StatusTabModel::nothingIsReadBeforeThePageIsSeen()
{
    Status status;
    const size_t mark = status.rig.gate().mark();
    CameraRig::settle();
    QCOMPARE(status.rig.callsSince(mark), QStringList());
    QCOMPARE(status.timer->interval(), 1000);
    QVERIFY(!status.timer->isActive());
}

void tst_StatusTabModel::loadedTurnsTrueOnce()
{
    Status status;
    const QSignalSpy spy(status.model, &StatusTabModel::loadedChanged);
    QStringList order;
    QObject::connect(status.model, &StatusTabModel::visibleChanged, this, [&] { order << "visible"; });
    QObject::connect(status.model, &StatusTabModel::loadedChanged, this, [&] { order << "loaded"; });
    QVERIFY(!status.model->loaded());
    for (const bool visible : {true, true, false, true})
        status.model->setVisible(visible);
    QVERIFY(status.model->loaded());
    QCOMPARE(spy.size(), 1);
    QCOMPARE(order, QStringList({"visible", "loaded", "visible", "visible"}));
}

void tst_StatusTabModel::kelvinIsConverted()
{
    Status status;
    QCOMPARE(status.model->convertKelvinToCelsius(273.15), 0.0);
    QCOMPARE(status.model->convertKelvinToCelsius(77.0), -196.15);
}

// The values that change seldom

void tst_StatusTabModel::refreshReadsTheActivePreset()
{
    Status status;
    status.rig.gate().script("controller.GetWindow", QVariantList{0, 0, 640, 512});
    status.rig.gate().script("controller.GetActivePreset", 2);
    status.rig.gate().script("controller.GetPresetFrameRate", 1180.256);
    status.rig.gate().script("controller.GetPresetIntegrationTime", 1.25);
    const size_t mark = status.rig.gate().mark();
    QCOMPARE(status.refresh(),
             QStringList({"controller.GetWindow", "controller.GetPresetSequencingMode", "controller.GetActivePreset",
                          "controller.GetPresetFrameRate", "controller.GetPresetIntegrationTime"}));
    for (const auto &call : status.rig.gate().callsSince(mark))
        if (call.name == "controller.GetPresetFrameRate" || call.name == "controller.GetPresetIntegrationTime")
            QCOMPARE(call.arguments, std::string("2"));
    QCOMPARE(status.model->frameSize(), QStringLiteral("640x512"));
    QCOMPARE(status.model->frameRate(), systemNumber(1180.26, 2) + " Hz");
    QCOMPARE(status.model->integrationTime(), systemNumber(1.25, 6) + " ms");
}

void tst_StatusTabModel::refreshReadsAllPresetsOfASequence()
{
    Status status;
    status.rig.gate().script("controller.GetPresetSequencingMode", 2);
    status.rig.gate().script("controller.GetPresetIntegrationTime", 0.5);
    status.rig.gate().script("controller.GetPresetFrameRate", 99.999);
    // Always reads four presets, also if the camera has fewer.
    QStringList expected{"controller.GetWindow", "controller.GetPresetSequencingMode", "controller.GetPresetSequence"};
    for (int preset = 0; preset < 4; ++preset)
        expected << "controller.GetPresetIntegrationTime"
                 << "controller.GetPresetFrameRate";
    QCOMPARE(status.refresh(), expected);
    QCOMPARE(status.model->integrationTime(), QStringLiteral("%1 to %1 ms").arg(systemNumber(0.5, 6)));
    QCOMPARE(status.model->frameRate(), QStringLiteral("%1 to %1 Hz").arg(systemNumber(100.0, 2)));

    // The lowest is first, in any order of the presets.
    status.rig.gate().script("controller.GetPresetIntegrationTime", {});
    auto controller = status.rig.controller();
    controller->SetPresetIntegrationTime(0, 1, 3.0);
    controller->SetPresetIntegrationTime(1, 1, 1.0);
    controller->SetPresetIntegrationTime(2, 1, 4.0);
    controller->SetPresetIntegrationTime(3, 1, 2.0);
    double lowest = 0.0;
    double highest = 0.0;
    QVERIFY(controller->GetPresetIntegrationTime(1, &lowest));
    QVERIFY(controller->GetPresetIntegrationTime(2, &highest));
    status.refresh();
    QCOMPARE(status.model->integrationTime(),
             QStringLiteral("%1 to %2 ms").arg(systemNumber(lowest, 6), systemNumber(highest, 6)));
}

void tst_StatusTabModel::sequenceAtOneRateShowsTheSuperframeRate()
{
    Status status;
    status.rig.gate().script("controller.GetPresetSequencingMode", 7);
    status.rig.gate().script("controller.GetSuperframeRate", 12.5);
    QCOMPARE(status.refresh().last(), QStringLiteral("controller.GetSuperframeRate"));
    QCOMPARE(status.model->frameRate(), systemNumber(12.5, 2) + " Hz (Superframe)");
}

void tst_StatusTabModel::failedStepEndsTheRefresh_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("filled"); // The texts that are read: size, time, rate.
    QTest::newRow("window") << 0 << "controller.GetWindow" << 1 << "";
    QTest::newRow("mode") << 0 << "controller.GetPresetSequencingMode" << 1 << "s";
    QTest::newRow("active preset") << 0 << "controller.GetActivePreset" << 1 << "s";
    QTest::newRow("rate") << 0 << "controller.GetPresetFrameRate" << 1 << "s";
    QTest::newRow("time") << 0 << "controller.GetPresetIntegrationTime" << 1 << "sr";
    QTest::newRow("sequence") << 2 << "controller.GetPresetSequence" << 1 << "s";
    QTest::newRow("time of the last preset") << 2 << "controller.GetPresetIntegrationTime" << 4 << "s";
    QTest::newRow("rate of the last preset") << 2 << "controller.GetPresetFrameRate" << 4 << "s";
    QTest::newRow("superframe rate") << 1 << "controller.GetSuperframeRate" << 1 << "st";
}

void tst_StatusTabModel::failedStepEndsTheRefresh()
{
    QFETCH(int, mode);
    QFETCH(QString, failing);
    QFETCH(int, number);
    QFETCH(QString, filled);
    Status status;
    if (mode != 0)
        QVERIFY(status.rig.camera().otherClient().set("sensor.sequencingMode", mode));
    status.rig.gate().failNext(failing.toStdString(), number);
    const QStringList calls = status.refresh();
    QCOMPARE(calls.last(), failing);
    QCOMPARE(!status.model->frameSize().isEmpty(), filled.contains(u's'));
    QCOMPARE(!status.model->integrationTime().isEmpty(), filled.contains(u't'));
    QCOMPARE(!status.model->frameRate().isEmpty(), filled.contains(u'r'));

    // The next successful read sets the other texts, and a failure after it keeps all of them.
    status.refresh();
    const QString frameSize = status.model->frameSize();
    QVERIFY(!frameSize.isEmpty() && !status.model->frameRate().isEmpty() && !status.model->integrationTime().isEmpty());
    status.rig.gate().failNext("controller.GetWindow");
    status.refresh();
    QCOMPARE(status.model->frameSize(), frameSize);
}

void tst_StatusTabModel::unchangedTextIsNotSignalled()
{
    Status status;
    status.refresh();
    const QSignalSpy spy(status.model, &StatusTabModel::frameSizeChanged);
    status.refresh();
    QCOMPARE(spy.size(), 0);
}

void tst_StatusTabModel::textsAreSignalledInOrder()
{
    Status status;
    QStringList order;
    QObject::connect(status.model, &StatusTabModel::integrationTimeChanged, this, [&] { order << "time"; });
    QObject::connect(status.model, &StatusTabModel::frameSizeChanged, this, [&] { order << "size"; });
    QObject::connect(status.model, &StatusTabModel::frameRateChanged, this, [&] { order << "rate"; });
    status.refresh();
    QCOMPARE(order, QStringList({"rate", "size", "time"}));
}

// The walkers

namespace
{

ModelUnderTest poll(const QString &profile = QStringLiteral("everything"))
{
    auto model = modelOf<StatusTabModel>(profile);
    // Hiding and showing the page starts a poll that reads everything.
    model.read = [](QObject *subject) {
        subject->setProperty("visible", false);
        subject->setProperty("visible", true);
    };
    model.ownState << QStringLiteral("loaded");
    return model;
}

} // namespace

void tst_StatusTabModel::failingReadsOfARefresh()
{
    const char *chain = "each step ends the read on its failure";
    walkFailingReads(modelOf<StatusTabModel>(),
                     {{"controller.GetWindow", {{"frameSize", "frameRate", "integrationTime"}, chain}},
                      {"controller.GetPresetSequencingMode", {{"frameRate", "integrationTime"}, chain}},
                      {"controller.GetActivePreset", {{"frameRate", "integrationTime"}, chain}},
                      {"controller.GetPresetFrameRate", {{"frameRate", "integrationTime"}, chain}}});
}

void tst_StatusTabModel::failingReadsOfAPoll()
{
    auto model = poll();
    // Each value differs from that of a model that has read nothing.
    model.prepare = [](CameraRig &rig) {
        rig.gate().script("zvtGetSaturatedFlag", true);
        rig.gate().script("zvtGetFPATemperature", 79.0);
        rig.gate().script("zvtGetFPAColdTemperature", 79.5);
        rig.gate().script("zvtMfgGetCoolerType", 0);
    };
    walkFailingReads(
        model,
        {{"zvtGetSaturatedFlag", {{"saturated"}, "a failed read counts as not saturated", {"saturated"}}},
         {"controller.HasRealTimeClock", {{"time"}, "the other clock is read, and not shown"}},
         {"zvtMfgGetCoolerType", {{"fpaCold"}, "without the type of cooler it is not known what is cold"}},
         {"zvtGetFPATemperature", {{"fpaCold", "fpaTemp"}, "without a temperature nothing is cold"}},
         {"zvtGetFPAColdTemperature", {{}, "the fallback of 80 K judges alike"}},
         {"zvtGetHasLensTemperature", {{"hasLensTemp", "lensTemp"}, "the sensor is asked only if it is there"}},
         {"zvtGetSCTemperatures", {{"airGapTemp", "frontPanelTemp"}, "the other internal reading wins"}},
         {"zvtGetRSTemperatures",
          {{"internalChassisTemp"}, "the first internal reading then stands", {"internalChassisTemp"}}}});
}

void tst_StatusTabModel::heldReadsOutliveTheModel()
{
    walkHeldDeletion(modelOf<StatusTabModel>());
    walkHeldDeletion(poll());
    walkHeldDeletion(poll("te-cooler"));
    walkHeldDeletion(poll("irig"));
}

void tst_StatusTabModel::secondRefreshIsDropped()
{
    walkSecondRefresh(modelOf<StatusTabModel>());
    auto model = poll();
    model.read = [](QObject *subject) { QMetaObject::invokeMethod(subject, "timeoutUpdateTimeTimer"); };
    walkSecondRefresh(model);
}

void tst_StatusTabModel::readsWithoutACamera()
{
    walkNoCamera(modelOf<StatusTabModel>());
    auto model = poll();
    model.read = [](QObject *subject) { QMetaObject::invokeMethod(subject, "timeoutUpdateTimeTimer"); };
    walkNoCamera(model, {"saturated"});
}

void tst_StatusTabModel::randomOperator()
{
    for (uint32_t seed = 1; seed <= 5; ++seed)
        walkRandomOperator(poll(), seed);
}

ZVT_TEST(tst_StatusTabModel)
#include "tst_StatusTabModel.moc"
