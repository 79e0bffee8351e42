#include "platform/emulator/SetupError.h"
#include "tests/platform/CorrectionRig.h"
#include "tests/platform/callTimes.h"
#include "tests/support/Test.h"

#include <cmath>
#include <limits>
#include <string>

/// The voltages of the electronics by their names.
class tst_namedVoltages : public Test
{
    Q_OBJECT

private slots:
    void areListedInOrder_data();
    void areListedInOrder();
    void describeThemselves_data();
    void describeThemselves();
    void valuesAreTakenWithinTheirLimits_data();
    void valuesAreTakenWithinTheirLimits();
    void fixedVoltagesAreRefused();
    void unknownNamesAreRefused();
    void aFailureLeavesTheOutputsAlone();
    void displayNamesFillAnyBuffer();
    void namesAreAppended();
    void camerasWithoutThemHaveAnEmptyList();
    void referenceShiftsTheCounts();
    void detectorCommonChangesTheResponse();
    void aLoadedCorrectionStopsFitting_data();
    void aLoadedCorrectionStopsFitting();
    void skimmingAndOffsetAreThoseOfTheDetector();
    void skimmingAndOffsetChangeTheFrames();
    void skimmingIsMissingWhileItIsNotAvailable();
    void outliveTheProcessButAreNotInStates();
    void otherClientsSetThem();
    void startWithThoseOfTheProfile();
    void keysOfAProfileAreChecked_data();
    void keysOfAProfileAreChecked();
    void returnAtOnce();
};

namespace
{

constexpr int refused = emulator::Refused;

QStringList listOf(uint64_t handle)
{
    hlx::TArray<hlx::CString> names;
    if (zvtListVoltages(handle, &names) != 0)
        return {QStringLiteral("failed")};
    QStringList list;
    for (const auto &name : names)
        list << QString::fromUtf8(name.c_str());
    return list;
}

float voltsOf(const LensRig &rig, const char *name)
{
    float volts = -99;
    zvtGetVoltage(rig.handle(), name, &volts);
    return volts;
}

/// All voltages that can be set.
QList<float> editable(const LensRig &rig)
{
    QList<float> volts;
    for (const char *name : {"VREF", "VDET", "VSKIM", "VOFFS"})
        volts << voltsOf(rig, name);
    return volts;
}

/// A camera with a blackbody of 27 C before it.
struct VoltageRig : FrameRig {
    VoltageRig()
    {
        if (!useSmallWindow() || !showArea(27))
            qFatal("the camera has no blackbody");
    }
    int setVolts(const char *name, float volts) { return zvtSetVoltage(handle(), name, volts); }
};

} // namespace

void tst_namedVoltages::areListedInOrder_data()
{
    QTest::addColumn<QString>("names");
    const QString all = QStringLiteral("VDDA VREF VDET VSKIM VOFFS VHEAT");
    for (const char *profile : {"everything", "discrete-fov", "board-6"})
        QTest::newRow(profile) << all;
    // Without skimming.
    QTest::newRow("te-cooler") << QStringLiteral("VDDA VREF VDET VOFFS VHEAT");
    for (const char *profile : {"bare", "low-cost"})
        QTest::newRow(profile) << QString();
}

void tst_namedVoltages::areListedInOrder()
{
    QFETCH(const QString, names);
    const LensRig rig(QTest::currentDataTag());
    QCOMPARE(listOf(rig.handle()).join(QLatin1Char(' ')), names);
}

void tst_namedVoltages::describeThemselves_data()
{
    QTest::addColumn<QByteArray>("displayName");
    QTest::addColumn<bool>("editable");
    QTest::addColumn<float>("volts");
    QTest::addColumn<float>("minimum");
    QTest::addColumn<float>("maximum");
    QTest::newRow("VDDA") << QByteArray("Analog supply") << false << 5.0f << 5.0f << 5.0f;
    QTest::newRow("VREF") << QByteArray("Reference") << true << 1.65f << 1.0f << 2.3f;
    QTest::newRow("VDET") << QByteArray("Detector common") << true << 2.4f << 1.8f << 3.0f;
    QTest::newRow("VSKIM") << QByteArray("Skimming") << true << 1.2f << 0.0f << 3.3f;
    QTest::newRow("VOFFS") << QByteArray("Global offset") << true << 0.0f << -5.0f << 5.0f;
    QTest::newRow("VHEAT") << QByteArray("Flag heater") << false << 0.0f << 0.0f << 0.0f;
}

void tst_namedVoltages::describeThemselves()
{
    QFETCH(const QByteArray, displayName);
    QFETCH(const bool, editable);
    QFETCH(const float, volts);
    QFETCH(const float, minimum);
    QFETCH(const float, maximum);
    const char *const name = QTest::currentDataTag();
    const LensRig rig;
    char text[100] = "";
    QCOMPARE(zvtGetVoltageDisplayName(rig.handle(), name, text, sizeof text), 0);
    QCOMPARE(QByteArray(text), displayName);
    QCOMPARE(voltsOf(rig, name), volts);
    uint8_t flag = 77;
    QCOMPARE(zvtGetVoltageEditable(rig.handle(), name, &flag), 0);
    QCOMPARE(flag, uint8_t(editable ? 1 : 0));
    float lowest = -99;
    float highest = -99;
    QCOMPARE(zvtGetVoltageLimits(rig.handle(), name, &lowest, &highest), 0);
    QCOMPARE(lowest, minimum);
    QCOMPARE(highest, maximum);
}

void tst_namedVoltages::valuesAreTakenWithinTheirLimits_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"VREF", "VDET", "VSKIM", "VOFFS"})
        QTest::newRow(name) << QByteArray(name);
}

void tst_namedVoltages::valuesAreTakenWithinTheirLimits()
{
    QFETCH(const QByteArray, name);
    const LensRig rig;
    const float infinite = std::numeric_limits<float>::infinity();
    float minimum = 0;
    float maximum = 0;
    QCOMPARE(zvtGetVoltageLimits(rig.handle(), name.constData(), &minimum, &maximum), 0);
    for (const float value : {minimum, maximum, (minimum + maximum) / 2}) {
        QCOMPARE(zvtSetVoltage(rig.handle(), name.constData(), value), 0);
        for (const float wrong : {std::nextafter(minimum, -infinite), std::nextafter(maximum, infinite), infinite,
                                  -infinite, std::numeric_limits<float>::quiet_NaN()})
            QCOMPARE(zvtSetVoltage(rig.handle(), name.constData(), wrong), refused);
        QCOMPARE(voltsOf(rig, name.constData()), value);
    }
}

void tst_namedVoltages::fixedVoltagesAreRefused()
{
    const LensRig rig;
    for (const char *name : {"VDDA", "VHEAT"}) {
        const float volts = voltsOf(rig, name);
        for (const float value : {volts, volts + 0.1f})
            QCOMPARE(zvtSetVoltage(rig.handle(), name, value), refused);
        QCOMPARE(voltsOf(rig, name), volts);
    }
}

void tst_namedVoltages::unknownNamesAreRefused()
{
    const LensRig rig;
    const QList<float> before = editable(rig);
    for (const char *name : {"", "vref", "VREF ", "VREFX", "Reference"}) {
        QCOMPARE(zvtSetVoltage(rig.handle(), name, 2), refused);
        QCOMPARE(voltsOf(rig, name), -99.0f);
    }
    QCOMPARE(editable(rig), before);
}

void tst_namedVoltages::aFailureLeavesTheOutputsAlone()
{
    const LensRig rig;
    float volts = 9;
    float other = 9;
    uint8_t flag = 9;
    char text[100] = "before";
    QCOMPARE(zvtGetVoltage(rig.handle(), "VNONE", &volts), refused);
    QCOMPARE(zvtGetVoltageLimits(rig.handle(), "VNONE", &volts, &other), refused);
    QCOMPARE(zvtGetVoltageEditable(rig.handle(), "VNONE", &flag), refused);
    QCOMPARE(zvtGetVoltageDisplayName(rig.handle(), "VNONE", text, sizeof text), refused);
    QVERIFY(volts == 9 && other == 9 && flag == 9);
    QCOMPARE(QByteArray(text), QByteArray("before"));
}

void tst_namedVoltages::displayNamesFillAnyBuffer()
{
    const LensRig rig;
    const std::string name = "Detector common";
    for (uint32_t size = 0; size <= 100; ++size) {
        std::string buffer(size + 8, '#');
        const int status = zvtGetVoltageDisplayName(rig.handle(), "VDET", buffer.data(), size);
        QCOMPARE(buffer.substr(size), std::string(8, '#'));
        if (status == 0 && size > 0)
            QCOMPARE(std::string(buffer.c_str()), name.substr(0, size - 1));
        if (size > name.size())
            QCOMPARE(status, 0);
    }
}

void tst_namedVoltages::namesAreAppended()
{
    LensRig rig;
    hlx::TArray<hlx::CString> names;
    names.add(hlx::CString("before"));
    QCOMPARE(zvtListVoltages(rig.handle(), &names), 0);
    QCOMPARE(names.size(), size_t(7));
    QCOMPARE(std::string(names[0].c_str()), std::string("before"));
    QCOMPARE(std::string(names[1].c_str()), std::string("VDDA"));
    rig.camera().disconnect();
    QVERIFY(zvtListVoltages(rig.handle(), &names) != 0);
    QCOMPARE(names.size(), size_t(7));
}

void tst_namedVoltages::camerasWithoutThemHaveAnEmptyList()
{
    const LensRig rig("bare");
    hlx::TArray<hlx::CString> names;
    QCOMPARE(zvtListVoltages(rig.handle(), &names), 0);
    QCOMPARE(names.size(), size_t(0));
    float volts = 9;
    QVERIFY(zvtGetVoltage(rig.handle(), "VREF", &volts) != 0);
    QCOMPARE(volts, 9.0f);
    QVERIFY(zvtSetVoltage(rig.handle(), "VREF", 1.65f) != 0);
}

void tst_namedVoltages::referenceShiftsTheCounts()
{
    VoltageRig rig;
    const double before = rig.mean();
    QCOMPARE(rig.setVolts("VREF", 2.15f), 0);
    const double up = rig.mean() - before;
    QVERIFY2(std::abs(up - 400) < 5, QByteArray::number(up));
    QCOMPARE(rig.setVolts("VREF", 1.15f), 0);
    const double down = rig.mean() - before;
    QVERIFY2(std::abs(down + 400) < 5, QByteArray::number(down));
    QCOMPARE(rig.setVolts("VREF", 1.65f), 0);
    QCOMPARE(rig.mean(), before);
}

void tst_namedVoltages::detectorCommonChangesTheResponse()
{
    VoltageRig rig;
    const auto response = [&rig] {
        rig.showArea(35);
        const double warm = rig.mean();
        rig.showArea(20);
        return warm - rig.mean();
    };
    const double before = response();
    for (const float volts : {1.8f, 3.0f}) {
        QCOMPARE(rig.setVolts("VDET", volts), 0);
        const double ratio = response() / before;
        QVERIFY2(std::abs(ratio - (1 + 0.3 * (double(volts) - 2.4))) < 0.01, QByteArray::number(ratio));
    }
    QCOMPARE(rig.setVolts("VDET", 2.4f), 0);
    QCOMPARE(response(), before);
}

void tst_namedVoltages::aLoadedCorrectionStopsFitting_data()
{
    QTest::addColumn<float>("volts");
    QTest::addColumn<float>("start");
    QTest::newRow("VREF") << 1.85f << 1.65f;
    QTest::newRow("VDET") << 2.6f << 2.4f;
}

void tst_namedVoltages::aLoadedCorrectionStopsFitting()
{
    QFETCH(const float, volts);
    QFETCH(const float, start);
    const char *const name = QTest::currentDataTag();
    CorrectionRig rig;
    QVERIFY(rig.make("mine") && rig.showArea(27));
    const double fitting = rig.residual();
    QVERIFY2(fitting > 0 && fitting < 3, QByteArray::number(fitting));
    QCOMPARE(zvtSetVoltage(rig.handle(), name, volts), 0);
    const double stale = rig.residual();
    QVERIFY2(stale > 5 * fitting, QByteArray::number(stale / fitting));
    QCOMPARE(zvtSetVoltage(rig.handle(), name, start), 0);
    QVERIFY(rig.residual() < 3);
}

void tst_namedVoltages::skimmingAndOffsetAreThoseOfTheDetector()
{
    const LensRig rig;
    float volts = 0;
    QCOMPARE(zvtSetVoltage(rig.handle(), "VSKIM", 0.75f), 0);
    QCOMPARE(zvtGetSkimmingVoltage(rig.handle(), &volts), 0);
    QCOMPARE(volts, 0.75f);
    QCOMPARE(zvtSetSkimmingVoltage(rig.handle(), 2.5f), 0);
    QCOMPARE(voltsOf(rig, "VSKIM"), 2.5f);
    QCOMPARE(zvtSetVoltage(rig.handle(), "VOFFS", -1.5f), 0);
    QCOMPARE(zvtGetGlobalOffsetVoltage(rig.handle(), &volts), 0);
    QCOMPARE(volts, -1.5f);
    QCOMPARE(zvtSetGlobalOffsetVoltage(rig.handle(), 3), 0);
    QCOMPARE(voltsOf(rig, "VOFFS"), 3.0f);
}

void tst_namedVoltages::skimmingAndOffsetChangeTheFrames()
{
    VoltageRig rig;
    const double before = rig.mean();
    QCOMPARE(rig.setVolts("VOFFS", 1), 0);
    const double offset = rig.mean() - before;
    QVERIFY2(std::abs(offset - 400) < 5, QByteArray::number(offset));
    QCOMPARE(rig.setVolts("VOFFS", 0), 0);
    QCOMPARE(rig.setVolts("VSKIM", 1), 0);
    QCOMPARE(rig.mean(), before); // Skimming is off.
    QCOMPARE(zvtSetSkimmingEnabled(rig.handle(), true), 0);
    const double skimmed = rig.mean() - before;
    QVERIFY2(skimmed > -610 && skimmed < -570, QByteArray::number(skimmed));
}

void tst_namedVoltages::skimmingIsMissingWhileItIsNotAvailable()
{
    LensRig rig;
    QVERIFY(rig.set("analog.skimmingAvailable", false));
    QCOMPARE(listOf(rig.handle()).join(QLatin1Char(' ')), QStringLiteral("VDDA VREF VDET VOFFS VHEAT"));
    float volts = 9;
    QCOMPARE(zvtGetVoltage(rig.handle(), "VSKIM", &volts), refused);
    QCOMPARE(zvtSetVoltage(rig.handle(), "VSKIM", 1), refused);
    QVERIFY(rig.set("analog.skimmingAvailable", true));
    QCOMPARE(listOf(rig.handle()).size(), 6);
}

void tst_namedVoltages::outliveTheProcessButAreNotInStates()
{
    LensRig rig;
    const QJsonObject start = rig.camera().snapshot();
    QCOMPARE(zvtSetVoltage(rig.handle(), "VREF", 1.25f), 0);
    QCOMPARE(zvtSetVoltage(rig.handle(), "VDET", 2.75f), 0);
    QCOMPARE(zvtSetVoltage(rig.handle(), "VOFFS", 2), 0);
    QVERIFY(!rig.camera().snapshot().contains(QLatin1String("voltages")));
    rig.camera().restore(start);
    QCOMPARE(voltsOf(rig, "VREF"), 1.25f);
    QCOMPARE(voltsOf(rig, "VDET"), 2.75f);
    QCOMPARE(voltsOf(rig, "VOFFS"), 0.0f);
    rig.open("everything");
    QCOMPARE(voltsOf(rig, "VREF"), 1.25f);
    QCOMPARE(voltsOf(rig, "VDET"), 2.75f);
}

void tst_namedVoltages::otherClientsSetThem()
{
    LensRig rig;
    QVERIFY(rig.set("voltages.reference", 2.0));
    QVERIFY(rig.set("voltages.detectorCommon", 2.0));
    QCOMPARE(voltsOf(rig, "VREF"), 2.0f);
    QCOMPARE(voltsOf(rig, "VDET"), 2.0f);
    // The settings are floats, which cannot have exactly these limits.
    const auto setLimit = [&rig](const char *setting, const char *name, double volts) {
        return rig.set(setting, volts) && voltsOf(rig, name) == static_cast<float>(volts);
    };
    QVERIFY(setLimit("voltages.reference", "VREF", 1.0) && setLimit("voltages.reference", "VREF", 2.3));
    QVERIFY(setLimit("voltages.detectorCommon", "VDET", 1.8) && setLimit("voltages.detectorCommon", "VDET", 3.0));
    for (const double wrong : {0.999999, 2.300001})
        QVERIFY(!rig.set("voltages.reference", wrong));
    for (const double wrong : {1.799999, 3.000001})
        QVERIFY(!rig.set("voltages.detectorCommon", wrong));
    QVERIFY(!rig.set("voltages.reference", "high"));
    QCOMPARE(voltsOf(rig, "VREF"), 2.3f);
    QCOMPARE(voltsOf(rig, "VDET"), 3.0f);
}

void tst_namedVoltages::startWithThoseOfTheProfile()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    const double usual = rig.mean();
    rig.openWith(R"({"voltages": {"reference": 2.3, "detectorCommon": 1.8}})");
    QCOMPARE(voltsOf(rig, "VREF"), 2.3f);
    QCOMPARE(voltsOf(rig, "VDET"), 1.8f);
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    const double start = rig.mean();
    QCOMPARE(zvtSetVoltage(rig.handle(), "VREF", 1.65f), 0);
    QVERIFY(std::abs(start - rig.mean() - 520) < 10 && rig.mean() < usual - 500);
    QCOMPARE(zvtSetVoltage(rig.handle(), "VDET", 2.4f), 0);
    QVERIFY(std::abs(usual - rig.mean()) < 5);
    rig.openWith(R"({"voltages": {"reference": 1.0, "detectorCommon": 3.0}})");
    QCOMPARE(voltsOf(rig, "VREF"), 1.0f);
    QCOMPARE(voltsOf(rig, "VDET"), 3.0f);
}

void tst_namedVoltages::keysOfAProfileAreChecked_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("value");
    const auto row = [](const char *key, const char *value) {
        QTest::addRow("%s %s", key, value) << QByteArray(key) << QByteArray(value);
    };
    for (const char *value : {"0.999999", "2.300001", R"("high")", "true"})
        row("reference", value);
    for (const char *value : {"1.799999", "3.000001", "[2.4]"})
        row("detectorCommon", value);
    row("VREF", "1.65");
}

void tst_namedVoltages::keysOfAProfileAreChecked()
{
    QFETCH(const QByteArray, key);
    QFETCH(const QByteArray, value);
    const QByteArray devices = R"({"voltages": {")" + key + "\": " + value + "}}";
    FrameRig rig;
    try {
        rig.openWith(devices.constData());
        QFAIL("it was accepted");
    } catch (const emulator::SetupError &error) {
        QVERIFY2(QByteArray(error.what()).contains("devices.voltages." + key + ':'), error.what());
    }
}

void tst_namedVoltages::returnAtOnce()
{
    LensRig rig;
    const size_t mark = rig.camera().gate().mark();
    for (int turn = 0; turn < 5; ++turn) {
        QCOMPARE(listOf(rig.handle()).size(), 6);
        for (const char *name : {"VREF", "VDET", "VSKIM", "VOFFS"}) {
            char text[100] = "";
            uint8_t flag = 0;
            float minimum = 0;
            float maximum = 0;
            QCOMPARE(zvtGetVoltageDisplayName(rig.handle(), name, text, sizeof text), 0);
            QCOMPARE(zvtGetVoltageEditable(rig.handle(), name, &flag), 0);
            QCOMPARE(zvtGetVoltageLimits(rig.handle(), name, &minimum, &maximum), 0);
            const float volts = turn % 2 == 0 ? minimum : maximum;
            QCOMPARE(zvtSetVoltage(rig.handle(), name, volts), 0);
            QCOMPARE(voltsOf(rig, name), volts);
        }
    }
    QVERIFY(slowestFunction(rig.camera().gate(), mark) < std::chrono::milliseconds(1));
}

ZVT_TEST(tst_namedVoltages)
#include "tst_namedVoltages.moc"
