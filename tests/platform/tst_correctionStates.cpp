#include "tests/platform/CorrectionRig.h"
#include "tests/support/Test.h"

#include <QFile>

/// Corrections in snapshots and states, and for other clients.
class tst_correctionStates : public Test
{
    Q_OBJECT

private slots:
    void snapshotHoldsNamesAndSwitches();
    void stateLoadsTheCorrectionsThatExist();
    void stateWithoutACorrectionUnloads_data();
    void stateWithoutACorrectionUnloads();
    void stateReadsItsCorrectionAgain();
    void deletedCorrectionGoesWithTheState();
    void stateWithASmallerWindowLoadsItsCorrection();
    void startsInItsState();
    void otherClientsLoadCorrections();
    void otherClientsUnloadACorrectionWithoutAName();
};

void tst_correctionStates::snapshotHoldsNamesAndSwitches()
{
    CorrectionRig rig;
    const QJsonObject before = rig.camera().snapshot();
    QVERIFY(rig.make("mine"));
    QVERIFY(rig.set("corrections.videoCorrected", false) && rig.set("corrections.digitalCorrected", true)
            && rig.set("corrections.repair", 2) && rig.set("corrections.showBadPixels", true)
            && rig.set("automaticCorrection.deltaTemp", 2.5) && rig.set("automaticCorrection.enabled", true)
            && rig.set("correctionSetup.type", 2));
    const QJsonObject changed = rig.camera().snapshot();
    QVERIFY(!changed.contains("correctionSetup"));
    rig.camera().restore(before);
    QCOMPARE(rig.name(), "Factory 2 ms");
    QCOMPARE(rig.camera().snapshot(), before);
    rig.camera().restore(changed);
    QCOMPARE(rig.name(), "mine");
    QCOMPARE(rig.camera().snapshot(), changed);
    QVERIFY(rig.set("corrections.showBadPixels", false));
    QCOMPARE(rig.output(), rig.newest());
}

void tst_correctionStates::stateLoadsTheCorrectionsThatExist()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    QCOMPARE(zvtLoadNUC(rig.handle(), 1, "mine"), 0);
    QCOMPARE(zvtUnloadNUC(rig.handle(), 2), 0);
    QCOMPARE(zvtLoadNUC(rig.handle(), 3, "Factory 1 ms"), 0);
    QCOMPARE(zvtSaveStateAs(rig.handle(), "a"), 0);
    for (const uint8_t preset : {0, 1, 2, 3})
        QCOMPARE(zvtLoadNUC(rig.handle(), preset, "Factory 2 ms"), 0);
    QCOMPARE(zvtDeleteNUC(rig.handle(), "mine"), 0);
    QVERIFY(rig.set("states.current", "a"));
    QCOMPARE(rig.names(), QStringList({"", "", "", "Factory 1 ms"}));
}

void tst_correctionStates::stateWithoutACorrectionUnloads_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::newRow("accepted, not saved") << true;
    QTest::newRow("pending") << false;
}

void tst_correctionStates::stateWithoutACorrectionUnloads()
{
    QFETCH(const bool, accepted);
    CorrectionRig rig;
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    const QJsonObject state = rig.camera().snapshot();
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(accepted ? zvtAcceptNUC(rig.handle()) : 0, 0);
    QVERIFY(rig.output() != rig.newest());
    rig.camera().restore(state);
    QCOMPARE(rig.output(), rig.newest());
    QCOMPARE(zvtAcceptNUC(rig.handle()), int(emulator::Refused));
    QCOMPARE(zvtSaveNUCAs(rig.handle(), 0, "mine"), int(emulator::Refused));
}

// An accepted offset update has the name of the saved correction, but other offsets.
void tst_correctionStates::stateReadsItsCorrectionAgain()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    const QJsonObject state = rig.camera().snapshot();
    const auto saved = rig.output();
    QVERIFY(rig.setType(2) && rig.showArea(30));
    QCOMPARE(rig.run(), "0 Done");
    QVERIFY(rig.showArea(20) && rig.output() != saved);
    rig.camera().restore(state);
    QCOMPARE(zvtDiscardNUC(rig.handle()), int(emulator::Refused));
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    const auto updated = rig.exposure().correction;
    rig.camera().restore(state);
    QCOMPARE(rig.name(), "mine");
    rig.output();
    QVERIFY(rig.exposure().correction && rig.exposure().correction->offsets != updated->offsets);
}

void tst_correctionStates::deletedCorrectionGoesWithTheState()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    const QJsonObject state = rig.camera().snapshot();
    QVERIFY(QFile::remove(rig.camera().folder() + "/nucs/mine.nuc"));
    QCOMPARE(rig.name(), "mine");
    rig.camera().restore(state);
    QCOMPARE(rig.name(), "");
    QCOMPARE(rig.output(), rig.newest());
}

// The state's window is not yet in use when the corrections are loaded.
void tst_correctionStates::stateWithASmallerWindowLoadsItsCorrection()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    QCOMPARE(zvtSaveStateAs(rig.handle(), "a"), 0);
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 512}));
    QCOMPARE(rig.name(), "");
    QVERIFY(rig.set("states.current", "a"));
    QCOMPARE(rig.name(), "mine");
    QVERIFY(rig.showArea(27) && rig.residual() < 3);
}

void tst_correctionStates::startsInItsState()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    QCOMPARE(zvtDeleteNUC(rig.handle(), "Factory 1 ms"), 0);
    QCOMPARE(rig.name(1), "Factory 1 ms");
    QCOMPARE(zvtSaveStateAs(rig.handle(), "a"), 0);
    rig.open("everything");
    QCOMPARE(rig.names(), QStringList({"mine", "", "", ""}));
    QVERIFY(rig.exposure().window.width == 160);
    rig.coolDetector();
    QVERIFY(rig.showArea(27) && rig.residual() < 30);
}

void tst_correctionStates::otherClientsLoadCorrections()
{
    CorrectionRig rig;
    QVERIFY(rig.set("corrections.names", QStringList({"10 to 60 °C", "Factory 1 ms", "", "Factory 2 ms"})));
    QCOMPARE(rig.name(), "10 to 60 °C");
    QCOMPARE(rig.name(3), "Factory 2 ms");
    QCOMPARE(rig.event(), ZVT_EVENT_SETTINGS_CHANGED);
    for (const QStringList &bad : {QStringList{"none", "", "", ""}, QStringList{"", "", ""}, QStringList()})
        QVERIFY(!rig.set("corrections.names", bad));
    QVERIFY(rig.set("sensor.window", QVariantList{256, 192, 64, 64}) && rig.make("part") && rig.useSmallWindow());
    QVERIFY(!rig.set("corrections.names", QStringList({"part", "", "", ""})));
    QCOMPARE(rig.name(1), "Factory 1 ms");
    QVERIFY(rig.set("corrections.names", QStringList({"", "", "", ""})));
    QCOMPARE(rig.name(3), "");
}

void tst_correctionStates::otherClientsUnloadACorrectionWithoutAName()
{
    CorrectionRig rig;
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    QStringList names = rig.names();
    QCOMPARE(names[0], "");
    QVERIFY(rig.set("corrections.names", names));
    QCOMPARE(rig.output(), rig.newest());
    // A correction that has not changed stays, and so does one that is pending for it.
    QCOMPARE(zvtLoadNUC(rig.handle(), 0, "Factory 2 ms"), 0);
    QCOMPARE(rig.run(), "0 Done");
    names = rig.names();
    names[2] = "Factory 1 ms";
    QVERIFY(rig.set("corrections.names", names));
    QCOMPARE(rig.names(), names);
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
}

ZVT_TEST(tst_correctionStates)
#include "tst_correctionStates.moc"
