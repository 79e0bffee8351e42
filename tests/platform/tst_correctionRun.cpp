#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/Flag.h"
#include "tests/platform/CorrectionRig.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <atomic>
#include <mutex>
#include <thread>

using emulator::Clock;

namespace
{

constexpr int refused = emulator::Refused;
constexpr int64_t second = 1000;

} // namespace

/// The run that makes a correction: its statuses in time.
class tst_correctionRun : public Test
{
    Q_OBJECT

private slots:
    void statusesFollowTheKindOfTheRun_data();
    void statusesFollowTheKindOfTheRun();
    void eachStatusHasItsTextAndItsTime();
    void waitsForTheFlagThatItShows();
    void flagMustStayStable();
    void uncontrolledFlagIsTakenAsItIs();
    void flagTargets_data();
    void flagTargets();
    void continueIsRefusedElsewhere();
    void secondStartIsRefused();
    void presetThatIsNotInUseIsRefused();
    void canBeAbortedAtEveryStatus();
    void abortedRunDropsItsFrames();
    void abortWithoutARunIsRefused();
    void lateLooksFindItsEnd();
    void aLookExposesAFewFramesOnly();
    void callsBetweenLooksDoNotWait();
    void recordDescribesTheCameraOfItsFrames();
    void filesStayWhileACorrectionIsPending();
    void offsetUpdateOfAPartKeepsTheWholeCorrection();
};

void tst_correctionRun::statusesFollowTheKindOfTheRun_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("source");
    QTest::addColumn<bool>("loaded");
    QTest::addColumn<bool>("twinklers");
    QTest::addColumn<bool>("factory");
    QTest::addColumn<QString>("statuses");
    const auto row
        = [](const char *name, int type, int source, bool loaded, bool twinklers, bool factory, const char *statuses) {
              QTest::newRow(name) << type << source << loaded << twinklers << factory << statuses;
          };
    row("two points", 1, 0, true, true, true, "13 1 2 4 5 6 8 9 10 11 14 12 0");
    row("two points, nothing loaded", 1, 0, false, true, true, "13 2 4 5 6 8 9 10 11 14 12 0");
    row("two points without twinklers", 1, 0, true, false, true, "13 1 2 4 5 6 8 9 14 12 0");
    row("two points without factory pixels", 1, 0, true, true, false, "13 1 2 4 5 6 8 9 10 11 12 0");
    row("two points by the flag", 1, 1, true, true, true, "13 1 3 4 5 7 8 9 10 11 14 12 0");
    row("one point", 0, 0, false, true, true, "13 2 4 5 14 12 0");
    row("one point by the flag", 0, 1, true, true, false, "13 1 3 4 5 12 0");
    row("offset update", 2, 0, true, true, true, "13 1 2 4 5 12 0");
    row("offset update by the flag", 2, 1, true, true, true, "13 1 3 4 5 12 0");
}

void tst_correctionRun::statusesFollowTheKindOfTheRun()
{
    QFETCH(const int, type);
    QFETCH(const int, source);
    QFETCH(const bool, loaded);
    QFETCH(const bool, twinklers);
    QFETCH(const bool, factory);
    CorrectionRig rig;
    if (!loaded)
        QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    QCOMPARE(zvtSetTwinklerSetup(rig.handle(), twinklers, 32, 200), 0);
    QCOMPARE(zvtSetNUCUseFactoryBadPixels(rig.handle(), factory), 0);
    QVERIFY(rig.setType(static_cast<uint8_t>(type), static_cast<uint8_t>(source)));
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QTEST(CorrectionRig::statuses(rig.walk()), "statuses");
    QCOMPARE(rig.result(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
}

void tst_correctionRun::eachStatusHasItsTextAndItsTime()
{
    CorrectionRig rig;
    QCOMPARE(rig.text(), "Ready");
    QCOMPARE(zvtSetNUCNumFrames(rig.handle(), 64), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    const auto steps = rig.walk();
    struct Expected {
        const char *text;
        int64_t milliseconds; ///< 0: as long as the operator takes.
    };
    const Expected expected[] = {
        {"Starting", 300},
        {"Saving the present correction", 500},
        {"Place the first source before the lens and press Next", 0},
        {"Collecting 64 frames", 640},
        {"The first source is done", 200},
        {"Place the second source before the lens and press Next", 0},
        {"Collecting 64 frames", 640},
        {"The second source is done", 200},
        {"Collecting 32 frames for twinkling pixels", 320},
        {"The search for twinkling pixels is done", 200},
        {"Applying the factory's bad pixels", 300},
        {"Computing", 800 * CorrectionRig::pixels / 327'680},
        {"Ready", 0},
    };
    QCOMPARE(steps.size(), std::size(expected));
    for (size_t i = 0; i < steps.size(); ++i) {
        QCOMPARE(steps[i].text, expected[i].text);
        if (expected[i].milliseconds > 0)
            QVERIFY2(std::abs(steps[i].milliseconds - expected[i].milliseconds) <= 50, expected[i].text);
    }
}

void tst_correctionRun::waitsForTheFlagThatItShows()
{
    CorrectionRig rig;
    QVERIFY(rig.setType(1, 1));
    QCOMPARE(zvtSetNUCFlagSetpointType(rig.handle(), 1), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(3));
    QVERIFY2(QRegularExpression("^Waiting for the flag: \\d+\\.\\d °C of 20\\.0 °C$").match(rig.text()).hasMatch(),
             qPrintable(rig.text()));
    Clock::advance(400);
    QCOMPARE(rig.exposure().optics.flagCover, 1.0);
    QVERIFY(rig.walkTo(7));
    QVERIFY2(rig.text().endsWith(" of 35.0 °C"), qPrintable(rig.text()));
    QVERIFY(rig.walkTo(8));
    QVERIFY(std::abs(rig.exposure().optics.flagCelsius - 35) < 0.6);
    // The setpoint of the operator has not changed.
    QCOMPARE(settingOf(rig.camera(), "flag.setpoint").toDouble(), 20.0);
    rig.walk();
    QCOMPARE(rig.result(), "0 Done");
    Clock::advance(60 * second);
    QCOMPARE(rig.exposure().optics.flagCover, 0.0);
    QVERIFY(std::abs(rig.exposure().optics.flagCelsius - 20) < 0.2);
}

void tst_correctionRun::flagMustStayStable()
{
    const auto waits = [](uint32_t count) {
        CorrectionRig rig;
        rig.setType(0, 1);
        zvtSetNUCFlagConfig(rig.handle(), 70, 10, count, 60'000);
        zvtStartNUC(rig.handle());
        return rig.walkTo(3) ? rig.walk().front().milliseconds : -1;
    };
    const int64_t once = waits(1);
    QVERIFY(once > 0);
    QCOMPARE(waits(41) - once, int64_t(40 * 250));
}

void tst_correctionRun::uncontrolledFlagIsTakenAsItIs()
{
    CorrectionRig rig("te-cooler");
    QVERIFY(rig.setType(0, 1));
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(3));
    QVERIFY2(QRegularExpression("^Waiting for the flag: \\d+\\.\\d °C$").match(rig.text()).hasMatch(),
             qPrintable(rig.text()));
    const auto steps = rig.walk();
    QCOMPARE(CorrectionRig::statuses(steps), "3 4 5 14 12 0");
    QVERIFY(std::abs(steps[0].milliseconds - emulator::Flag::moveMilliseconds) <= 50);
}

void tst_correctionRun::flagTargets_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::newRow("deltas") << 0 << 4.0 << 11.0;
    QTest::newRow("temperatures") << 1 << 18.5 << 31.5;
}

void tst_correctionRun::flagTargets()
{
    QFETCH(const int, kind);
    QFETCH(const double, low);
    QFETCH(const double, high);
    CorrectionRig rig;
    float frontPanel = 0, airGap = 0, internal = 0;
    QCOMPARE(zvtGetSCTemperatures(rig.handle(), &frontPanel, &airGap, &internal), 0);
    const double above = kind == 0 ? frontPanel : 0;
    const auto set = kind == 0 ? zvtSetNUCFlagSetpointDeltas : zvtSetNUCFlagSetpointTemps;
    QCOMPARE(set(rig.handle(), static_cast<float>(low), static_cast<float>(high)), 0);
    QCOMPARE(zvtSetNUCFlagSetpointType(rig.handle(), static_cast<uint8_t>(kind)), 0);
    QVERIFY(rig.setType(1, 1));
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(4));
    QVERIFY(std::abs(rig.exposure().optics.flagCelsius - above - low) < 0.7);
    QVERIFY(rig.walkTo(8));
    QVERIFY(std::abs(rig.exposure().optics.flagCelsius - above - high) < 0.7);
}

void tst_correctionRun::continueIsRefusedElsewhere()
{
    CorrectionRig rig;
    QCOMPARE(zvtContinueNUC(rig.handle()), refused);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    for (const uint16_t status : {13, 1, 4, 5, 8, 9, 10, 11, 14, 12}) {
        QVERIFY(rig.walkTo(status));
        QCOMPARE(zvtContinueNUC(rig.handle()), refused);
        QCOMPARE(rig.status(), status);
    }
    rig.walk();
    QCOMPARE(zvtContinueNUC(rig.handle()), refused);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    Clock::advance(800);
    QCOMPARE(zvtContinueNUC(rig.handle()), 0);
    QCOMPARE(zvtContinueNUC(rig.handle()), refused);
}

void tst_correctionRun::secondStartIsRefused()
{
    CorrectionRig rig;
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    for (const uint16_t status : {13, 2, 4, 6, 10, 12}) {
        QVERIFY(rig.walkTo(status));
        QCOMPARE(zvtStartNUC(rig.handle()), refused);
        QCOMPARE(zvtDoAutoNUC(rig.handle()), refused);
    }
    rig.walk();
    // A new run drops the pending correction.
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QCOMPARE(zvtAcceptNUC(rig.handle()), refused);
}

void tst_correctionRun::presetThatIsNotInUseIsRefused()
{
    CorrectionRig rig;
    QCOMPARE(zvtSetNUCPreset(rig.handle(), 4), refused);
    QCOMPARE(zvtSetNUCPreset(rig.handle(), 1), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), refused);
    QVERIFY(rig.set("sensor.activePreset", 1));
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    rig.walk();
    QCOMPARE(rig.result(), "0 Done");
    QVERIFY(rig.counts(1)[0] > 0);
    QCOMPARE(rig.counts(0)[0], 0U);
}

void tst_correctionRun::canBeAbortedAtEveryStatus()
{
    for (const uint16_t status : {13, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 14, 12}) {
        CorrectionRig rig;
        QVERIFY(rig.setType(1, status == 3 || status == 7 ? 1 : 0));
        QCOMPARE(zvtStartNUC(rig.handle()), 0);
        QVERIFY(rig.walkTo(status));
        QCOMPARE(zvtAbortNUC(rig.handle()), 0);
        QCOMPARE(rig.status(), uint16_t(0));
        QCOMPARE(rig.result(), "1 Stopped");
        QCOMPARE(zvtAcceptNUC(rig.handle()), refused);
        QCOMPARE(rig.name(), "Factory 2 ms");
        Clock::advance(second);
        QCOMPARE(rig.exposure().optics.flagCover, 0.0);
        QCOMPARE(rig.counts()[0], 0U);
    }
}

// The lock is free while frames are exposed, so that the abort arrives between two of them.
void tst_correctionRun::abortedRunDropsItsFrames()
{
    CorrectionRig rig;
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 512}));
    QCOMPARE(zvtSetNUCNumFrames(rig.handle(), 255), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(4));
    Clock::advance(10 * second);
    const auto &run = *rig.camera().device<emulator::CorrectionRun>();
    uint16_t seen = 999;
    std::atomic<bool> returned = false;
    std::thread looks([&] {
        seen = rig.status();
        returned = true;
    });
    bool aborted = false;
    while (!aborted && !returned) {
        const std::lock_guard lock(rig.camera().mutex());
        aborted = run.busy() && zvtAbortNUC(rig.handle()) == 0;
    }
    looks.join();
    QVERIFY(aborted);
    QVERIFY(!run.busy());
    QCOMPARE(seen, uint16_t(0));
    QCOMPARE(rig.result(), "1 Stopped");
}

void tst_correctionRun::abortWithoutARunIsRefused()
{
    CorrectionRig rig;
    QCOMPARE(zvtAbortNUC(rig.handle()), refused);
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtAbortNUC(rig.handle()), refused);
    QCOMPARE(rig.result(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
}

void tst_correctionRun::lateLooksFindItsEnd()
{
    CorrectionRig rig;
    QVERIFY(rig.setType(0, 1));
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    Clock::advance(60 * second);
    QCOMPARE(rig.status(), uint16_t(3)); // The flag moves when the run is first looked at.
    Clock::advance(300 * second);
    QCOMPARE(rig.status(), uint16_t(0));
    QCOMPARE(rig.result(), "0 Done");
}

void tst_correctionRun::aLookExposesAFewFramesOnly()
{
    CorrectionRig rig;
    QCOMPARE(zvtSetNUCNumFrames(rig.handle(), 255), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(4));
    Clock::advance(3600 * second);
    for (int looks = 0; looks < 3; ++looks)
        QCOMPARE(rig.status(), uint16_t(4));
    QCOMPARE(rig.status(), uint16_t(6));
}

void tst_correctionRun::callsBetweenLooksDoNotWait()
{
    CorrectionRig rig;
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(4));
    Clock::advance(60 * second);
    // Frames are exposed by calls that look at the run only.
    bool on = false;
    QCOMPARE(zvtGetVideoOutputNUCEnabled(rig.handle(), &on), 0);
    QCOMPARE(zvtContinueNUC(rig.handle()), refused);
    QCOMPARE(rig.status(), uint16_t(6));
}

void tst_correctionRun::recordDescribesTheCameraOfItsFrames()
{
    CorrectionRig rig;
    const int level = settingOf(rig.camera(), "gain.level").toInt();
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(12));
    QVERIFY(rig.set("gain.level", level + 1));
    rig.walk();
    QCOMPARE(rig.result(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    QCOMPARE(zvtSaveNUCAs(rig.handle(), 0, "mine"), 0);
    zvtSNUCInfo info{};
    QCOMPARE(zvtQueryNUCInfo(rig.handle(), "mine", &info), 0);
    QCOMPARE(int(info.gainLevel), level);
}

void tst_correctionRun::filesStayWhileACorrectionIsPending()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    const auto stored = [&rig] {
        QStringList all;
        hlx::TArray<zvtSDirEntry> entries;
        zvtListNUCs(rig.handle(), &entries);
        for (const auto &entry : entries)
            all << QString("%1 %2 %3").arg(entry.name.c_str()).arg(entry.size).arg(entry.time100ns);
        const QDir folder(rig.camera().folder() + "/nucs");
        for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden)) {
            QFile file(folder.filePath(name));
            all << name << (file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll().toHex()) : QString());
        }
        return all;
    };
    const QStringList before = stored();
    QCOMPARE(before.size(), 6 + 2);
    for (const uint8_t type : {1, 2}) {
        QVERIFY(rig.setType(type));
        QCOMPARE(rig.run(), "0 Done");
        QCOMPARE(rig.name(), "mine");
        QVERIFY(stored() == before);
    }
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    QVERIFY(stored() == before);
}

void tst_correctionRun::offsetUpdateOfAPartKeepsTheWholeCorrection()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    const auto whole = rig.exposure().correction;
    QVERIFY(rig.set("sensor.window", QVariantList{256, 192, 64, 64}) && rig.setType(2) && rig.showArea(30));
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    QCOMPARE(rig.name(), "mine");
    QVERIFY(rig.useSmallWindow() && rig.showArea(20));
    QCOMPARE(rig.name(), "mine");
    const auto updated = rig.exposure().correction;
    QVERIFY(updated && updated->window == whole->window && updated->gains == whole->gains);
    QVERIFY(updated->offsets != whole->offsets);
    QCOMPARE(updated->offsets[0], whole->offsets[0]);
    QVERIFY(rig.residual() < 5);
    QCOMPARE(zvtSaveNUC(rig.handle(), 0), 0);
    zvtSNUCInfo info{};
    QCOMPARE(zvtQueryNUCInfo(rig.handle(), "mine", &info), 0);
    QCOMPARE(info.width, uint16_t(160));
    QCOMPARE(info.height, uint16_t(128));
}

ZVT_TEST(tst_correctionRun)
#include "tst_correctionRun.moc"
