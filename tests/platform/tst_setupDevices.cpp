#include "tests/platform/LensRig.h"
#include "tests/support/Test.h"

/// The simple settings of the camera: gain levels, image orientation and sensitivity, frame sync source.
class tst_setupDevices : public Test
{
    Q_OBJECT

private slots:
    void gainLevelsHaveNames();
    void gainLevelsMayHaveNone();
    void gainLevelsEndWithThoseOfTheCamera();
    void anotherClientSetsTheGain();
    void theImageIsFlipped();
    void theHighSensitivityModeIsSetWhereAvailable();
    void aFrameStartsByWhatTheCameraHas();
    void aCameraMayHaveATriLevelInput();
    void refusesSettingsOfOtherClients();
    void snapshotsHoldThem();
    void everyOtherClientRaisesAnEvent();

private:
    static QString gainName(uint64_t handle, uint8_t level)
    {
        char text[100] = "old";
        return zvtGetGainLevelName(handle, level, text, sizeof text) == 0 ? QString::fromUtf8(text)
                                                                          : QStringLiteral("failed");
    }
    static bool flag(int (*get)(uint64_t, bool *), uint64_t handle)
    {
        bool value = false;
        return get(handle, &value) == 0 && value;
    }
    static uint8_t byte(int (*get)(uint64_t, uint8_t *), uint64_t handle)
    {
        uint8_t value = 255;
        get(handle, &value);
        return value;
    }
};

void tst_setupDevices::gainLevelsHaveNames()
{
    LensRig rig;
    QVERIFY(flag(zvtGetGainLevelsAreNamed, rig.handle()));
    QCOMPARE(gainName(rig.handle(), 0), QStringLiteral("Low"));
    QCOMPARE(gainName(rig.handle(), 2), QStringLiteral("High"));
    QCOMPARE(gainName(rig.handle(), 3), QStringLiteral("failed"));
}

void tst_setupDevices::gainLevelsMayHaveNone()
{
    LensRig rig("speed-moves");
    QVERIFY(!flag(zvtGetGainLevelsAreNamed, rig.handle()));
    rig.open("edge-values");
    QVERIFY(flag(zvtGetGainLevelsAreNamed, rig.handle()));
    QCOMPARE(gainName(rig.handle(), 0), QString());
    // The whole characters that fit into the buffer of 100 bytes.
    QCOMPARE(gainName(rig.handle(), 1).size(), 99);
    QVERIFY(gainName(rig.handle(), 2).startsWith(QStringLiteral("Äöü")));
    QVERIFY(!gainName(rig.handle(), 2).contains(QChar::ReplacementCharacter));
    QCOMPARE(gainName(rig.handle(), 3), QStringLiteral("failed"));
}

void tst_setupDevices::gainLevelsEndWithThoseOfTheCamera()
{
    LensRig rig;
    QCOMPARE(byte(zvtGetGainLevel, rig.handle()), uint8_t(0));
    QCOMPARE(zvtSetGainLevel(rig.handle(), 2), 0);
    for (const uint8_t level : {uint8_t(3), uint8_t(255)})
        QCOMPARE(zvtSetGainLevel(rig.handle(), level), int(emulator::Refused));
    QCOMPARE(byte(zvtGetGainLevel, rig.handle()), uint8_t(2));
    rig.open("edge-values");
    QCOMPARE(byte(zvtGetGainLevel, rig.handle()), uint8_t(254));
    rig.open("bare");
    QCOMPARE(zvtSetGainLevel(rig.handle(), 0), int(emulator::Absent));
}

void tst_setupDevices::anotherClientSetsTheGain()
{
    LensRig rig;
    QVERIFY(rig.set("gain.level", 1));
    QVERIFY(rig.set("gain.named", false));
    QCOMPARE(byte(zvtGetGainLevel, rig.handle()), uint8_t(1));
    QVERIFY(!flag(zvtGetGainLevelsAreNamed, rig.handle()));
}

void tst_setupDevices::theImageIsFlipped()
{
    LensRig rig("bare");
    QVERIFY(!flag(zvtGetRevertEnabled, rig.handle()) && !flag(zvtGetInvertEnabled, rig.handle()));
    QCOMPARE(zvtSetRevertEnabled(rig.handle(), true), 0);
    QVERIFY(flag(zvtGetRevertEnabled, rig.handle()) && !flag(zvtGetInvertEnabled, rig.handle()));
    QCOMPARE(zvtSetInvertEnabled(rig.handle(), true), 0);
    QCOMPARE(zvtSetRevertEnabled(rig.handle(), false), 0);
    QVERIFY(!flag(zvtGetRevertEnabled, rig.handle()) && flag(zvtGetInvertEnabled, rig.handle()));
    QVERIFY(rig.set("image.reverted", true) && rig.set("image.inverted", false));
    QVERIFY(flag(zvtGetRevertEnabled, rig.handle()) && !flag(zvtGetInvertEnabled, rig.handle()));
}

void tst_setupDevices::theHighSensitivityModeIsSetWhereAvailable()
{
    LensRig rig;
    QVERIFY(flag(zvtGetHSMAvailable, rig.handle()));
    QCOMPARE(zvtSetHSMEnabled(rig.handle(), true), 0);
    QVERIFY(flag(zvtGetHSMEnabled, rig.handle()));
    QVERIFY(rig.set("image.hsmEnabled", false));
    QVERIFY(!flag(zvtGetHSMEnabled, rig.handle()));
    QVERIFY(rig.set("image.hsmAvailable", false));
    QVERIFY(!flag(zvtGetHSMAvailable, rig.handle()));
    bool enabled = true;
    QCOMPARE(zvtGetHSMEnabled(rig.handle(), &enabled), int(emulator::Refused));
    QVERIFY(enabled);
    QCOMPARE(zvtSetHSMEnabled(rig.handle(), true), int(emulator::Refused));
    QVERIFY(!rig.set("image.hsmEnabled", true));
}

void tst_setupDevices::aFrameStartsByWhatTheCameraHas()
{
    LensRig rig("low-cost");
    QCOMPARE(byte(zvtGetFrameSyncSource, rig.handle()), uint8_t(0));
    QVERIFY(!flag(zvtGetTriLevelSyncSourceAvailable, rig.handle()));
    for (const uint8_t source : {1, 2})
        QCOMPARE(zvtSetFrameSyncSource(rig.handle(), source), 0);
    for (const uint8_t source : {uint8_t(3), uint8_t(255)})
        QCOMPARE(zvtSetFrameSyncSource(rig.handle(), source), int(emulator::Refused));
    QCOMPARE(byte(zvtGetFrameSyncSource, rig.handle()), uint8_t(2));
    QVERIFY(rig.set("sync.source", 1));
    QCOMPARE(byte(zvtGetFrameSyncSource, rig.handle()), uint8_t(1));
}

void tst_setupDevices::aCameraMayHaveATriLevelInput()
{
    LensRig rig("edge-values");
    QVERIFY(flag(zvtGetTriLevelSyncSourceAvailable, rig.handle()));
    QCOMPARE(byte(zvtGetFrameSyncSource, rig.handle()), uint8_t(3));
    QCOMPARE(zvtSetFrameSyncSource(rig.handle(), 0), 0);
    QCOMPARE(zvtSetFrameSyncSource(rig.handle(), 3), 0);
}

void tst_setupDevices::refusesSettingsOfOtherClients()
{
    LensRig rig;
    const QJsonObject before = rig.camera().snapshot();
    for (const auto &value : {QVariant(3), QVariant(-1), QVariant(0.5), QVariant(true), QVariant("1"), QVariant()}) {
        QVERIFY(!rig.set("gain.level", value));
        QVERIFY(!rig.set("sync.source", value));
    }
    for (const auto *name :
         {"gain.named", "image.reverted", "image.inverted", "image.hsmAvailable", "image.hsmEnabled"})
        QVERIFY(!rig.set(name, 1));
    for (const auto *name : {"gain.colour", "image.colour", "sync.colour"})
        QVERIFY(!rig.set(name, true));
    QCOMPARE(rig.camera().snapshot(), before);
}

void tst_setupDevices::snapshotsHoldThem()
{
    LensRig rig;
    const QJsonObject before = rig.camera().snapshot();
    QCOMPARE(zvtSetGainLevel(rig.handle(), 1), 0);
    QCOMPARE(zvtSetRevertEnabled(rig.handle(), true), 0);
    QCOMPARE(zvtSetInvertEnabled(rig.handle(), true), 0);
    QCOMPARE(zvtSetHSMEnabled(rig.handle(), true), 0);
    QCOMPARE(zvtSetFrameSyncSource(rig.handle(), 1), 0);
    const QJsonObject after = rig.camera().snapshot();
    rig.camera().restore(before);
    QCOMPARE(rig.camera().snapshot(), before);
    QCOMPARE(byte(zvtGetGainLevel, rig.handle()), uint8_t(0));
    rig.camera().restore(after);
    QCOMPARE(byte(zvtGetGainLevel, rig.handle()), uint8_t(1));
    QVERIFY(flag(zvtGetRevertEnabled, rig.handle()) && flag(zvtGetInvertEnabled, rig.handle()));
    QVERIFY(flag(zvtGetHSMEnabled, rig.handle()));
    QCOMPARE(byte(zvtGetFrameSyncSource, rig.handle()), uint8_t(1));
}

void tst_setupDevices::everyOtherClientRaisesAnEvent()
{
    LensRig rig;
    QVERIFY(rig.set("gain.level", 1));
    QVERIFY(rig.camera().changeMakeUp(QStringLiteral("hasLensCover"), false));
    QVERIFY(!rig.set("gain.level", 9));
    for (const int expected : {2, 1, 0}) {
        auto event = static_cast<zvtEEventType>(77);
        QCOMPARE(zvtReadEventQueue(rig.handle(), &event), 0);
        QCOMPARE(int(event), expected);
    }
}

ZVT_TEST(tst_setupDevices)
#include "tst_setupDevices.moc"
