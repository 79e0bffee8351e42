#include "platform/emulator/devices/EventQueue.h"
#include "tests/platform/LensRig.h"
#include "tests/platform/callTimes.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <vector>

using emulator::EventQueue;

/// What a camera becomes when its identity is written: the events and the capabilities.
class tst_identity : public Test
{
    Q_OBJECT

private slots:
    void writeOfAnotherValueRaisesAnEvent_data() { writes(); }
    void writeOfAnotherValueRaisesAnEvent();
    void writeOfTheSameValueRaisesNone_data() { writes(); }
    void writeOfTheSameValueRaisesNone();
    void refusedWriteRaisesNone();
    void fiveWritesRaiseFiveEvents();
    void writeByAnotherClientIsReportedAsSuch();
    void textsOfAnotherClientAreReported_data();
    void textsOfAnotherClientAreReported();
    void capabilitiesFollowTheNumbers_data();
    void capabilitiesFollowTheNumbers();
    void profilesOwnNumbersBringItsCapabilitiesBack();
    void onlyTheCapabilitiesOfTheNumberChange();
    void textsChangeNoCapability();
    void functionsFollowTheCapability();
    void capabilityWithoutItsDeviceIsAbsent();
    void identityOutlivesTheProcess();
    void statesDoNotChangeTheIdentity();
    void filterWheelIsThatOfTheDevices_data();
    void filterWheelIsThatOfTheDevices();
    void functionsAreFast();

private:
    static void writes();
};

namespace
{

using Write = int (*)(uint64_t handle, bool same);

const QList<Write> &allWrites()
{
    static const QList<Write> list{
        [](uint64_t handle, bool same) { return zvtSetCameraModel(handle, same ? "Campion 640 C" : "Other"); },
        [](uint64_t handle, bool same) { return zvtSetCameraType(handle, same ? 6 : 5); },
        [](uint64_t handle, bool same) { return zvtSetCameraSubtype(handle, same ? 2 : 1); },
        [](uint64_t handle, bool same) { return zvtSetPleoraBoardType(handle, same ? 2 : 0); },
        [](uint64_t handle, bool same) { return zvtSetCameraSN(handle, same ? "ZE-100001" : "Other"); },
    };
    return list;
}

/// The events that a client reads.
std::vector<zvtEEventType> eventsOf(const LensRig &rig)
{
    std::vector<zvtEEventType> events;
    auto event = ZVT_EVENT_NONE;
    while (zvtReadEventQueue(rig.handle(), &event) == 0 && event != ZVT_EVENT_NONE)
        events.push_back(event);
    return events;
}

using Events = std::vector<zvtEEventType>;

bool capability(LensRig &rig, const char *name)
{
    return rig.camera().capabilities().value(QLatin1String(name)).toBool();
}

} // namespace

void tst_identity::writes()
{
    QTest::addColumn<int>("write");
    int write = 0;
    for (const char *name : {"model", "type", "subtype", "interface board", "serial"})
        QTest::newRow(name) << write++;
}

void tst_identity::writeOfAnotherValueRaisesAnEvent()
{
    QFETCH(const int, write);
    const LensRig rig;
    QCOMPARE(allWrites().at(write)(rig.handle(), false), 0);
    QCOMPARE(eventsOf(rig), Events{ZVT_EVENT_MAKE_UP_CHANGED});
    // It is another value only once.
    QCOMPARE(allWrites().at(write)(rig.handle(), false), 0);
    QCOMPARE(eventsOf(rig), Events());
}

void tst_identity::writeOfTheSameValueRaisesNone()
{
    QFETCH(const int, write);
    const LensRig rig;
    QCOMPARE(allWrites().at(write)(rig.handle(), true), 0);
    QCOMPARE(eventsOf(rig), Events());
}

void tst_identity::refusedWriteRaisesNone()
{
    const LensRig rig;
    QCOMPARE(zvtSetCameraModel(rig.handle(), std::string(256, 'x').c_str()), int(emulator::Refused));
    QCOMPARE(zvtSetCameraSN(rig.handle(), "\xff"), int(emulator::Refused));
    QCOMPARE(eventsOf(rig), Events());
}

void tst_identity::fiveWritesRaiseFiveEvents()
{
    const LensRig rig;
    for (const Write write : allWrites())
        QCOMPARE(write(rig.handle(), false), 0);
    QCOMPARE(eventsOf(rig), Events(5, ZVT_EVENT_MAKE_UP_CHANGED));
}

void tst_identity::writeByAnotherClientIsReportedAsSuch()
{
    LensRig rig;
    QVERIFY(rig.set("identity.type", 5) && rig.set("identity.subtype", 1));
    QVERIFY(capability(rig, "hasSsd") && !capability(rig, "hasLockin"));
    QCOMPARE(eventsOf(rig),
             (Events{ZVT_EVENT_MAKE_UP_CHANGED, ZVT_EVENT_SETTINGS_CHANGED, ZVT_EVENT_MAKE_UP_CHANGED,
                     ZVT_EVENT_SETTINGS_CHANGED}));
    QVERIFY(rig.set("identity.subtype", 1));
    QCOMPARE(eventsOf(rig), Events{ZVT_EVENT_SETTINGS_CHANGED});
}

void tst_identity::textsOfAnotherClientAreReported_data()
{
    QTest::addColumn<QString>("same");
    QTest::newRow("model") << QStringLiteral("Campion 640 C");
    QTest::newRow("serial") << QStringLiteral("ZE-100001");
}

void tst_identity::textsOfAnotherClientAreReported()
{
    QFETCH(const QString, same);
    LensRig rig;
    const QJsonObject capabilities = rig.camera().capabilities();
    const QByteArray name = QByteArray("identity.") + QTest::currentDataTag();
    QVERIFY(rig.set(name.constData(), same));
    QCOMPARE(eventsOf(rig), Events{ZVT_EVENT_SETTINGS_CHANGED});
    QVERIFY(rig.set(name.constData(), "Other"));
    QCOMPARE(eventsOf(rig), (Events{ZVT_EVENT_MAKE_UP_CHANGED, ZVT_EVENT_SETTINGS_CHANGED}));
    QVERIFY(rig.set(name.constData(), "Other"));
    QCOMPARE(eventsOf(rig), Events{ZVT_EVENT_SETTINGS_CHANGED});
    QCOMPARE(rig.camera().capabilities(), capabilities);
}

void tst_identity::capabilitiesFollowTheNumbers_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("subtype");
    QTest::addColumn<int>("board");
    QTest::addColumn<bool>("gigEPreset");
    QTest::addColumn<bool>("lockin");
    QTest::addColumn<bool>("ssd");
    const auto row = [](const char *name, const char *profile, int type, int subtype, int board, bool gigEPreset,
                        bool lockin, bool ssd) {
        QTest::newRow(name) << QByteArray(profile) << type << subtype << board << gigEPreset << lockin << ssd;
    };
    row("everything, its own", "everything", 6, 2, 2, true, true, true);
    row("everything, no board", "everything", 6, 2, 0, false, true, true);
    row("everything, one port", "everything", 6, 2, 1, true, true, true);
    row("everything, unknown board", "everything", 6, 2, 255, true, true, true);
    row("everything, lock-in", "everything", 2, 1, 2, true, true, false);
    row("everything, drive", "everything", 5, 1, 2, true, false, true);
    row("everything, another subtype", "everything", 6, 1, 2, true, false, false);
    row("everything, another type", "everything", 2, 2, 2, true, false, false);
    row("everything, drive, no board", "everything", 5, 1, 0, false, false, true);
    row("bare, its own", "bare", 0, 0, 0, false, false, false);
    row("bare, one port", "bare", 0, 0, 1, true, false, false);
    row("bare, lock-in", "bare", 2, 1, 0, false, true, false);
    row("bare, drive", "bare", 5, 1, 0, false, false, true);
    row("bare, unknown type", "bare", 255, 255, 0, false, false, false);
}

void tst_identity::capabilitiesFollowTheNumbers()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const int, type);
    QFETCH(const int, subtype);
    QFETCH(const int, board);
    QFETCH(const bool, gigEPreset);
    QFETCH(const bool, lockin);
    QFETCH(const bool, ssd);
    LensRig rig(profile.constData());
    QJsonObject expected = rig.camera().capabilities();
    expected["hasGigEPreset"] = gigEPreset;
    expected["hasLockin"] = lockin;
    expected["hasSsd"] = ssd;
    QCOMPARE(zvtSetCameraType(rig.handle(), static_cast<uint8_t>(type)), 0);
    QCOMPARE(zvtSetCameraSubtype(rig.handle(), static_cast<uint8_t>(subtype)), 0);
    QCOMPARE(zvtSetPleoraBoardType(rig.handle(), static_cast<uint8_t>(board)), 0);
    QCOMPARE(rig.camera().capabilities(), expected);
}

void tst_identity::profilesOwnNumbersBringItsCapabilitiesBack()
{
    LensRig rig;
    const QJsonObject before = rig.camera().capabilities();
    for (const bool same : {false, true}) {
        for (const Write write : allWrites())
            QCOMPARE(write(rig.handle(), same), 0);
        QCOMPARE(rig.camera().capabilities() == before, same);
    }
}

void tst_identity::onlyTheCapabilitiesOfTheNumberChange()
{
    LensRig rig;
    QVERIFY(rig.camera().changeMakeUp("hasSsd", false) && rig.camera().changeMakeUp("hasGigEPreset", false));
    QCOMPARE(zvtSetPleoraBoardType(rig.handle(), 1), 0);
    QVERIFY(!capability(rig, "hasSsd") && capability(rig, "hasGigEPreset"));
    QVERIFY(rig.camera().changeMakeUp("hasGigEPreset", false));
    QCOMPARE(zvtSetCameraType(rig.handle(), 5), 0);
    QCOMPARE(zvtSetCameraSubtype(rig.handle(), 1), 0);
    QVERIFY(capability(rig, "hasSsd") && !capability(rig, "hasGigEPreset"));
}

void tst_identity::textsChangeNoCapability()
{
    LensRig rig;
    QVERIFY(rig.camera().changeMakeUp("hasSsd", false));
    const QJsonObject before = rig.camera().capabilities();
    QCOMPARE(zvtSetCameraModel(rig.handle(), "Other"), 0);
    QCOMPARE(zvtSetCameraSN(rig.handle(), "Other"), 0);
    QCOMPARE(rig.camera().capabilities(), before);
}

void tst_identity::functionsFollowTheCapability()
{
    const LensRig rig;
    uint8_t preset = 9;
    QCOMPARE(zvtSetPleoraBoardType(rig.handle(), 0), 0);
    QCOMPARE(zvtGetGigEPreset(rig.handle(), &preset), int(emulator::Absent));
    QCOMPARE(zvtSetPleoraBoardType(rig.handle(), 3), 0);
    QCOMPARE(zvtGetGigEPreset(rig.handle(), &preset), 0);
}

void tst_identity::capabilityWithoutItsDeviceIsAbsent()
{
    LensRig rig("bare");
    uint8_t coupling = 9;
    QCOMPARE(zvtSetCameraType(rig.handle(), 2), 0);
    QCOMPARE(zvtSetCameraSubtype(rig.handle(), 1), 0);
    QVERIFY(capability(rig, "hasLockin"));
    QCOMPARE(zvtGetLockinCoupling(rig.handle(), &coupling), int(emulator::Absent));
    QCOMPARE(zvtSetLockinCoupling(rig.handle(), 1), int(emulator::Absent));
    QCOMPARE(zvtSetCameraType(rig.handle(), 5), 0);
    QVERIFY(capability(rig, "hasSsd"));
    QCOMPARE(zvtSsdArm(rig.handle()), int(emulator::Absent));
    QCOMPARE(coupling, uint8_t(9));
}

void tst_identity::identityOutlivesTheProcess()
{
    LensRig rig;
    for (const Write write : allWrites())
        QCOMPARE(write(rig.handle(), false), 0);
    const QJsonObject capabilities = rig.camera().capabilities();
    rig.open("everything");
    QCOMPARE(settingOf(rig.camera(), "identity.model").toString(), "Other");
    QCOMPARE(settingOf(rig.camera(), "identity.type").toInt(), 5);
    QCOMPARE(rig.camera().capabilities(), capabilities);
    // Nothing has changed since the connection.
    QCOMPARE(eventsOf(rig), Events());
    // The camera still knows the numbers of its profile.
    for (const Write write : allWrites())
        QCOMPARE(write(rig.handle(), true), 0);
    QCOMPARE(rig.camera().capabilities(), rig.camera().profile().capabilities());
}

void tst_identity::statesDoNotChangeTheIdentity()
{
    LensRig rig;
    const QJsonObject before = rig.camera().snapshot();
    for (const Write write : allWrites())
        QCOMPARE(write(rig.handle(), false), 0);
    const QJsonObject capabilities = rig.camera().capabilities();
    eventsOf(rig);
    rig.camera().restore(before);
    QCOMPARE(settingOf(rig.camera(), "identity.serial").toString(), "Other");
    QCOMPARE(rig.camera().capabilities(), capabilities);
    QCOMPARE(eventsOf(rig), Events());
}

void tst_identity::filterWheelIsThatOfTheDevices_data()
{
    QTest::addColumn<int>("present");
    QTest::newRow("everything") << 1;
    // Its filters cannot be replaced.
    QTest::newRow("discrete-fov") << 1;
    QTest::newRow("bare") << 0;
    // These remove the wheel of the profile that they extend.
    QTest::newRow("low-cost") << 0;
    QTest::newRow("board-6") << 0;
}

void tst_identity::filterWheelIsThatOfTheDevices()
{
    QFETCH(const int, present);
    LensRig rig(QTest::currentDataTag());
    uint8_t value = 9;
    QCOMPARE(zvtGetFilterWheelPresent(rig.handle(), &value), 0);
    QCOMPARE(int(value), present);
    // It is not a capability.
    QVERIFY(rig.camera().changeMakeUp("hasFilterWheel", present == 0));
    QCOMPARE(zvtSetCameraType(rig.handle(), 1), 0);
    QCOMPARE(zvtGetFilterWheelPresent(rig.handle(), &value), 0);
    QCOMPARE(int(value), present);
}

void tst_identity::functionsAreFast()
{
    LensRig rig;
    const size_t mark = rig.camera().gate().mark();
    for (int pass = 0; pass < 3; ++pass) {
        for (const bool same : {false, true})
            for (const Write write : allWrites())
                QCOMPARE(write(rig.handle(), same), 0);
        uint8_t number = 0;
        for (const auto read : {zvtGetBoardType, zvtGetCameraType, zvtGetCameraSubtype, zvtGetDetectorType,
                                zvtGetReadout, zvtGetPleoraBoardType, zvtGetFilterWheelPresent, zvtGetVariant})
            QCOMPARE(read(rig.handle(), &number), 0);
        char text[256] = "";
        for (const auto read : {zvtGetCameraSN, zvtGetCameraModel})
            QCOMPARE(read(rig.handle(), text, sizeof text), 0);
    }
    QVERIFY(slowestFunction(rig.camera().gate(), mark) < std::chrono::milliseconds(1));
}

ZVT_TEST(tst_identity)
#include "tst_identity.moc"
