#include "tests/platform/LensRig.h"
#include "tests/platform/writeProfile.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QJsonArray>
#include <QTemporaryDir>

#include <cmath>
#include <limits>

namespace
{

using ByteGetter = int (*)(uint64_t, uint8_t *);
using ByteSetter = int (*)(uint64_t, uint8_t);
using DelayGetter = std::function<int(uint64_t, float *)>;
using DelaySetter = std::function<int(uint64_t, float)>;

constexpr int refused = emulator::Refused;

QString timeOf(uint64_t handle)
{
    uint16_t day = 0;
    uint8_t hour = 0;
    uint8_t minute = 0;
    uint8_t second = 0;
    uint16_t millisecond = 0;
    uint16_t microsecond = 0;
    if (zvtGetIRIGTriggerTime(handle, &day, &hour, &minute, &second, &millisecond, &microsecond) != 0)
        return {};
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(day)
        .arg(hour)
        .arg(minute)
        .arg(second)
        .arg(millisecond)
        .arg(microsecond);
}

} // namespace

/// The settings of frame sync, trigger and sync output: what the camera takes, keeps and restores.
class tst_syncDevices : public Test
{
    Q_OBJECT

private slots:
    void choicesAreTakenInTheirRange_data();
    void choicesAreTakenInTheirRange();
    void delaysAreStoredAsClocks_data();
    void delaysAreStoredAsClocks();
    void impossibleDelaysAreRefused_data() { delaysAreStoredAsClocks_data(); }
    void impossibleDelaysAreRefused();
    void eachPresetHasItsDelay();
    void ratesAreTakenInTheirRange();
    void countsAreTakenInTheirRange();
    void timesAreTakenInTheirRange_data();
    void timesAreTakenInTheirRange();
    void otherClientsSetThem_data();
    void otherClientsSetThem();
    void snapshotsHoldThem();
    void everyCameraHasThem();
};

void tst_syncDevices::choicesAreTakenInTheirRange_data()
{
    QTest::addColumn<ByteGetter>("get");
    QTest::addColumn<ByteSetter>("set");
    QTest::addColumn<int>("last");
    QTest::newRow("frame sync mode") << &zvtGetFrameSyncMode << &zvtSetFrameSyncMode << 1;
    QTest::newRow("frame sync polarity") << &zvtGetFrameSyncPolarity << &zvtSetFrameSyncPolarity << 1;
    QTest::newRow("sync out source") << &zvtGetSyncOutSource << &zvtSetSyncOutSource << 2;
    QTest::newRow("sync out polarity") << &zvtGetSyncOutPolarity << &zvtSetSyncOutPolarity << 1;
    QTest::newRow("trigger mode") << &zvtGetTriggerMode << &zvtSetTriggerMode << 2;
    QTest::newRow("trigger source") << &zvtGetTriggerSource << &zvtSetTriggerSource << 3;
    QTest::newRow("trigger polarity") << &zvtGetTriggerPolarity << &zvtSetTriggerPolarity << 1;
}

void tst_syncDevices::choicesAreTakenInTheirRange()
{
    QFETCH(const ByteGetter, get);
    QFETCH(const ByteSetter, set);
    QFETCH(const int, last);
    LensRig rig;
    uint8_t value = 9;
    QCOMPARE(get(rig.handle(), &value), 0);
    QCOMPARE(value, uint8_t(0));
    for (int choice = last; choice >= 0; --choice) {
        QCOMPARE(set(rig.handle(), static_cast<uint8_t>(choice)), 0);
        QCOMPARE(get(rig.handle(), &value), 0);
        QCOMPARE(int(value), choice);
    }
    for (const int choice : {last + 1, 255})
        QCOMPARE(set(rig.handle(), static_cast<uint8_t>(choice)), refused);
    QCOMPARE(get(rig.handle(), &value), 0);
    QCOMPARE(value, uint8_t(0));
}

void tst_syncDevices::delaysAreStoredAsClocks_data()
{
    QTest::addColumn<DelayGetter>("get");
    QTest::addColumn<DelaySetter>("set");
    QTest::newRow("frame sync") << DelayGetter(zvtGetFrameSyncDelay) << DelaySetter(zvtSetFrameSyncDelay);
    QTest::newRow("trigger") << DelayGetter(zvtGetTriggerDelay) << DelaySetter(zvtSetTriggerDelay);
    QTest::newRow("sync out") << DelayGetter([](uint64_t handle, float *delay) {
        return zvtGetSyncOutDelay(handle, 3, delay);
    }) << DelaySetter([](uint64_t handle, float delay) { return zvtSetSyncOutDelay(handle, 3, delay); });
}

void tst_syncDevices::delaysAreStoredAsClocks()
{
    QFETCH(const DelayGetter, get);
    QFETCH(const DelaySetter, set);
    LensRig rig;
    // A clock is 0.05 us.
    const QMap<float, float> stored{
        {0.0F, 0.0F},      {0.024F, 0.0F}, {0.026F, 0.05F}, {12.34F, 12.35F}, {1'000'000.0F, 1'000'000.0F},
        {999.99F, 1000.0F}};
    for (auto it = stored.cbegin(); it != stored.cend(); ++it) {
        QCOMPARE(set(rig.handle(), it.key()), 0);
        float delay = -1;
        QCOMPARE(get(rig.handle(), &delay), 0);
        QCOMPARE(delay, it.value());
    }
}

void tst_syncDevices::impossibleDelaysAreRefused()
{
    QFETCH(const DelayGetter, get);
    QFETCH(const DelaySetter, set);
    LensRig rig;
    QCOMPARE(set(rig.handle(), 5.0F), 0);
    for (const float delay : {-0.05F, -1e-6F, 1'000'000.1F, std::nanf(""), std::numeric_limits<float>::infinity(),
                              -std::numeric_limits<float>::infinity()})
        QCOMPARE(set(rig.handle(), delay), refused);
    float delay = -1;
    QCOMPARE(get(rig.handle(), &delay), 0);
    QCOMPARE(delay, 5.0F);
}

void tst_syncDevices::eachPresetHasItsDelay()
{
    LensRig rig;
    for (const uint8_t preset : {0, 1, 2, 3})
        QCOMPARE(zvtSetSyncOutDelay(rig.handle(), preset, float(preset) * 10), 0);
    float delay = -1;
    for (const uint8_t preset : {0, 1, 2, 3}) {
        QCOMPARE(zvtGetSyncOutDelay(rig.handle(), preset, &delay), 0);
        QCOMPARE(delay, float(preset) * 10);
    }
    QCOMPARE(zvtGetSyncOutDelay(rig.handle(), 4, &delay), refused);
    QCOMPARE(zvtSetSyncOutDelay(rig.handle(), 4, 1), refused);
    QCOMPARE(delay, 30.0F);
}

void tst_syncDevices::ratesAreTakenInTheirRange()
{
    LensRig rig;
    double rate = 0;
    for (const double hertz : {0.01, 100'000.0, 29.9999850000075}) {
        QCOMPARE(zvtSetInternalTriggerRate(rig.handle(), hertz), 0);
        QCOMPARE(zvtGetInternalTriggerRate(rig.handle(), &rate), 0);
        QVERIFY(rate == hertz);
    }
    for (const double hertz : {0.0, 0.0099, 100'000.1, -1.0, std::nan(""), double(INFINITY)})
        QCOMPARE(zvtSetInternalTriggerRate(rig.handle(), hertz), refused);
    QCOMPARE(zvtGetInternalTriggerRate(rig.handle(), &rate), 0);
    QVERIFY(rate == 29.9999850000075);
}

void tst_syncDevices::countsAreTakenInTheirRange()
{
    LensRig rig;
    uint32_t count = 0;
    for (const uint32_t sequences : {1'000'000U, 1U}) {
        QCOMPARE(zvtSetSequenceCount(rig.handle(), sequences), 0);
        QCOMPARE(zvtGetSequenceCount(rig.handle(), &count), 0);
        QCOMPARE(count, sequences);
    }
    for (const uint32_t sequences : {0U, 1'000'001U, UINT32_MAX})
        QCOMPARE(zvtSetSequenceCount(rig.handle(), sequences), refused);
    QCOMPARE(zvtGetSequenceCount(rig.handle(), &count), 0);
    QCOMPARE(count, 1U);
}

void tst_syncDevices::timesAreTakenInTheirRange_data()
{
    QTest::addColumn<QList<int>>("time");
    QTest::addColumn<bool>("possible");
    QTest::newRow("first") << QList{1, 0, 0, 0, 0, 0} << true;
    QTest::newRow("last") << QList{366, 23, 59, 59, 999, 999} << true;
    QTest::newRow("no day") << QList{0, 0, 0, 0, 0, 0} << false;
    QTest::newRow("day") << QList{367, 0, 0, 0, 0, 0} << false;
    QTest::newRow("hour") << QList{1, 24, 0, 0, 0, 0} << false;
    QTest::newRow("minute") << QList{1, 0, 60, 0, 0, 0} << false;
    QTest::newRow("second") << QList{1, 0, 0, 60, 0, 0} << false;
    QTest::newRow("millisecond") << QList{1, 0, 0, 0, 1000, 0} << false;
    QTest::newRow("microsecond") << QList{1, 0, 0, 0, 0, 1000} << false;
}

void tst_syncDevices::timesAreTakenInTheirRange()
{
    QFETCH(const QList<int>, time);
    QFETCH(const bool, possible);
    LensRig rig;
    QCOMPARE(zvtSetIRIGTriggerTime(rig.handle(), 7, 6, 5, 4, 3, 2), 0);
    const auto byte = [&time](int part) { return static_cast<uint8_t>(time.at(part)); };
    const auto word = [&time](int part) { return static_cast<uint16_t>(time.at(part)); };
    QCOMPARE(zvtSetIRIGTriggerTime(rig.handle(), word(0), byte(1), byte(2), byte(3), word(4), word(5)),
             possible ? 0 : refused);
    QStringList parts;
    for (const int part : time)
        parts << QString::number(part);
    QCOMPARE(timeOf(rig.handle()), possible ? parts.join(' ') : "7 6 5 4 3 2");
}

void tst_syncDevices::otherClientsSetThem_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("good");
    QTest::addColumn<QVariantList>("bad");
    QTest::addColumn<QByteArray>("profile");
    const auto row = [](const char *name, const QVariant &good, const QVariantList &bad) {
        QTest::newRow(name) << QByteArray(name) << good << bad << QByteArray("everything");
    };
    row("sync.source", 2, {3, -1, 0.5, "External"});
    QTest::newRow("sync.source with a tri-level input")
        << QByteArray("sync.source") << QVariant(3) << QVariantList{4, -1} << QByteArray("edge-values");
    row("sync.mode", 1, {2, -1, 0.5, "1"});
    row("sync.delay", 12.35, {-1, 1'000'001, "1"});
    row("sync.polarity", 1, {2});
    row("sync.externalRate", 59.94, {-1, 1'000'001});
    row("sync.triggerRate", 59.94, {-1, 1'000'001});
    row("sync.trigger", false, {1, "now"});
    row("syncOut.source", 2, {3});
    row("syncOut.polarity", 1, {2});
    row("syncOut.delays", QVariantList{1, 2, 3, 1'000'000}, {QVariantList{1, 2, 3}, QVariantList{1, 2, 3, -1}, 1});
    row("trigger.mode", 2, {3, 4, -1});
    row("trigger.source", 3, {4});
    row("trigger.delay", 0.05, {-0.05});
    row("trigger.polarity", 1, {2});
    row("trigger.internalRate", 0.01, {0, 100'001});
    row("trigger.sequenceCount", 1'000'000, {0, 1'000'001, 1.5});
    row("trigger.time", QVariantList{366, 23, 59, 59, 999, 999},
        {QVariantList{0, 0, 0, 0, 0, 0}, QVariantList{1, 0, 0, 60, 0, 0}, QVariantList{1, 0, 0, 0, 0}});
}

void tst_syncDevices::otherClientsSetThem()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QVariant, good);
    QFETCH(const QVariantList, bad);
    QFETCH(const QByteArray, profile);
    LensRig rig(profile.constData());
    const auto value = [&]() -> QJsonValue {
        for (const auto &setting : rig.camera().settings())
            if (setting.name == QLatin1String(name))
                return setting.value;
        return QJsonValue::Undefined;
    };
    QVERIFY(!value().isUndefined());
    QVERIFY(rig.set(name, good));
    const QJsonValue after = value();
    QCOMPARE(after, QJsonValue::fromVariant(good));
    for (const QVariant &wrong : bad)
        QVERIFY2(!rig.set(name, wrong), qPrintable(wrong.toString()));
    QCOMPARE(value(), after);
}

void tst_syncDevices::snapshotsHoldThem()
{
    const QTemporaryDir folder;
    LensRig rig(writeProfile(folder.path(), "everything", R"({"sync": {"triLevel": true}})").toUtf8().constData());
    const QJsonObject before = rig.camera().snapshot();
    for (const auto &[name, value] : std::initializer_list<std::pair<const char *, QVariant>>{
             {"sync.source", 3},
             {"sync.mode", 1},
             {"sync.delay", 12.35},
             {"sync.polarity", 1},
             {"syncOut.source", 2},
             {"syncOut.polarity", 1},
             {"syncOut.delays", QVariantList{1, 2, 3, 999'999.95}},
             {"sensor.sequencingMode", 2},
             {"trigger.mode", 3},
             {"trigger.source", 3},
             {"trigger.delay", 0.05},
             {"trigger.polarity", 1},
             {"trigger.internalRate", 29.9999850000075},
             {"trigger.sequenceCount", 12},
             {"trigger.time", QVariantList{366, 23, 59, 59, 999, 999}}})
        QVERIFY2(rig.set(name, value), name);
    // The signals belong to other equipment.
    QVERIFY(rig.set("sync.triggerRate", 77) && rig.set("sync.externalRate", 77) && rig.set("sync.trigger", true));
    const QJsonObject after = rig.camera().snapshot();
    QCOMPARE(after.value("sync").toObject().keys(), QStringList({"delay", "polarity", "source"}));
    rig.camera().restore(before);
    QCOMPARE(rig.camera().snapshot(), before);
    QCOMPARE(timeOf(rig.handle()), "1 0 0 0 0 0");
    rig.camera().restore(after);
    QCOMPARE(rig.camera().snapshot(), after);
    uint8_t value = 9;
    QCOMPARE(zvtGetTriggerMode(rig.handle(), &value), 0);
    QCOMPARE(value, uint8_t(3));
    QCOMPARE(zvtGetFrameSyncSource(rig.handle(), &value), 0);
    QCOMPARE(value, uint8_t(3));
}

void tst_syncDevices::everyCameraHasThem()
{
    for (const char *profile : {"everything", "low-cost", "bare", "te-cooler", "board-6", "edge-values"}) {
        LensRig rig(profile);
        uint8_t value = 0;
        float delay = -1;
        double rate = 0;
        uint32_t count = 0;
        QCOMPARE(zvtGetTriggerMode(rig.handle(), &value), 0);
        QCOMPARE(zvtGetFrameSyncMode(rig.handle(), &value), 0);
        QCOMPARE(zvtGetSyncOutDelay(rig.handle(), 3, &delay), 0);
        QCOMPARE(zvtGetInternalTriggerRate(rig.handle(), &rate), 0);
        QCOMPARE(zvtGetSequenceCount(rig.handle(), &count), 0);
        QVERIFY(!timeOf(rig.handle()).isEmpty());
        QVERIFY(rate >= 0.01 && count >= 1);
    }
}

ZVT_TEST(tst_syncDevices)
#include "tst_syncDevices.moc"
