#include "tests/platform/CorrectionRig.h"
#include "tests/support/Test.h"

#include <QFile>

#include <cmath>

using emulator::Clock;
using emulator::image::Output;

namespace
{

constexpr int refused = emulator::Refused;
constexpr uint64_t smallSize = 1028 + 9 * CorrectionRig::pixels;

} // namespace

/// The corrections in use: loading and saving them, and the decision about a new one.
class tst_corrections : public Test
{
    Q_OBJECT

private slots:
    void loadTakesItsTime_data();
    void loadTakesItsTime();
    void loadIsRefused_data();
    void loadIsRefused();
    void loadImprovesThePicture();
    void unloadBringsTheRawPictureBack();
    void windowOutsideUnloads();
    void oneChangeOfTheWindowRaisesOneEvent();
    void fileThatIsReplacedBeforeItsFirstUseHasItsOwnWindow();
    void damagedFileIsDroppedWithOneEvent();
    void windowThatIsSetDuringALoadRefusesIt();
    void pendingCorrectionIsInUseUntilTheDecision();
    void acceptedCorrectionHasNoNameUntilItIsSaved();
    void offsetUpdateKeepsTheNameAndTheFile();
    void loadDropsThePendingCorrection();
    void decisionNeedsAPendingCorrection();
    void saveNeedsACorrectionAndAName();
    void savedCorrectionIsTheSame();
    void savedCorrectionDescribesItsRun();
    void saveReplacesAFactoryCorrection();
    void saveNeedsSpace();
    void switchesChangeTheirOutput();
    void badPixelsAreShownOrRepaired();
    void repairNeedsTheCapability();
    void factoryCalibrationLoadsItsCorrection();

private:
    static QString pathOf(CorrectionRig &rig, const QString &name)
    {
        return rig.camera().folder() + "/nucs/" + name + ".nuc";
    }
};

void tst_corrections::loadTakesItsTime_data()
{
    QTest::addColumn<bool>("small");
    QTest::addColumn<int64_t>("milliseconds");
    QTest::newRow("640x512") << false << int64_t(300 + 2'950'148 / 20'000);
    QTest::newRow("160x128") << true << int64_t(300 + smallSize / 20'000);
}

void tst_corrections::loadTakesItsTime()
{
    QFETCH(const bool, small);
    QFETCH(const int64_t, milliseconds);
    CorrectionRig rig;
    QVERIFY(!small || rig.make("mine"));
    const int64_t before = Clock::now();
    QCOMPARE(zvtLoadNUC(rig.handle(), 2, small ? "mine" : "Factory 1 ms"), 0);
    QCOMPARE(Clock::now() - before, milliseconds);
    QCOMPARE(rig.name(2), small ? "mine" : "Factory 1 ms");
    QCOMPARE(rig.name(3), "");
}

void tst_corrections::loadIsRefused_data()
{
    QTest::addColumn<int>("preset");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("unknown") << 0 << QByteArray("none");
    QTest::newRow("empty name") << 0 << QByteArray("");
    QTest::newRow("no such preset") << 4 << QByteArray("mine");
    QTest::newRow("damaged") << 0 << QByteArray("damaged");
    QTest::newRow("damaged table") << 0 << QByteArray("damaged table");
    QTest::newRow("window not inside") << 0 << QByteArray("part");
}

void tst_corrections::loadIsRefused()
{
    QFETCH(const int, preset);
    QFETCH(const QByteArray, name);
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    QFile file(pathOf(rig, "mine"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    QCOMPARE(content.size(), qsizetype(smallSize));
    const auto write = [&rig](const char *other, const QByteArray &bytes) {
        QFile copy(pathOf(rig, other));
        return copy.open(QIODevice::WriteOnly) && copy.write(bytes) == bytes.size();
    };
    QVERIFY(write("damaged", content.left(2000)));
    QByteArray changed = content;
    changed[5000] = char(changed[5000] ^ 1);
    QVERIFY(write("damaged table", changed));
    QVERIFY(rig.set("sensor.window", QVariantList{256, 192, 64, 64}) && rig.make("part") && rig.useSmallWindow());
    QCOMPARE(zvtLoadNUC(rig.handle(), 0, "mine"), 0);
    const int64_t before = Clock::now();
    QCOMPARE(zvtLoadNUC(rig.handle(), static_cast<uint8_t>(preset), name.constData()), refused);
    QCOMPARE(Clock::now(), before);
    QCOMPARE(rig.name(), "mine");
}

void tst_corrections::loadImprovesThePicture()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    QVERIFY(rig.showArea(27));
    const double raw = rig.residual();
    QVERIFY(std::abs(raw - rig.rawResidual()) < 0.1 * raw);
    QCOMPARE(zvtLoadNUC(rig.handle(), 0, "mine"), 0);
    QVERIFY2(rig.residual() < raw / 50, qPrintable(QString::number(raw / rig.residual())));
}

void tst_corrections::unloadBringsTheRawPictureBack()
{
    CorrectionRig rig;
    QVERIFY(largestDifference(rig.output(), rig.newest()) > 100);
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    QCOMPARE(rig.name(), "");
    QCOMPARE(rig.output(), rig.newest());
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    QCOMPARE(zvtUnloadNUC(rig.handle(), 4), refused);
}

void tst_corrections::windowOutsideUnloads()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    QVERIFY(rig.set("sensor.window", QVariantList{256, 192, 64, 64}));
    rig.events();
    QCOMPARE(rig.name(), "mine");
    // A part of the window uses its part of the correction.
    QVERIFY(rig.showArea(27) && rig.residual() < 5);
    rig.events();
    const auto setWindow = [&rig] { return rig.set("sensor.window", QVariantList{0, 0, 320, 256}); };
    QVERIFY(setWindow());
    QCOMPARE(rig.name(), "");
    QCOMPARE(rig.name(1), "Factory 1 ms");
    QCOMPARE(rig.events(), 2); // The first one is that of the window.
    QCOMPARE(rig.output(), rig.newest());
    // The pending correction goes, too.
    QVERIFY(rig.useSmallWindow());
    QCOMPARE(rig.run(), "0 Done");
    QVERIFY(setWindow());
    QCOMPARE(zvtAcceptNUC(rig.handle()), refused);
}

void tst_corrections::oneChangeOfTheWindowRaisesOneEvent()
{
    CorrectionRig rig;
    QCOMPARE(zvtLoadNUC(rig.handle(), 1, "Factory 1 ms"), 0);
    QVERIFY(rig.make("mine"));
    QCOMPARE(zvtLoadNUC(rig.handle(), 2, "mine"), 0);
    QCOMPARE(rig.run(), "0 Done");
    rig.events();
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 320, 256}));
    QCOMPARE(rig.events(), 2); // The first one is that of the window.
    QCOMPARE(rig.names(), QStringList({"", "Factory 1 ms", "", ""}));
    QCOMPARE(zvtDiscardNUC(rig.handle()), refused);
}

// A correction that another client has selected is read when it is first used.
void tst_corrections::fileThatIsReplacedBeforeItsFirstUseHasItsOwnWindow()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    QVERIFY(rig.set("sensor.window", QVariantList{256, 192, 64, 64}) && rig.make("part") && rig.useSmallWindow());
    QVERIFY(rig.set("corrections.names", QStringList({"mine", "", "", ""})));
    QVERIFY(QFile::remove(pathOf(rig, "mine")) && QFile::rename(pathOf(rig, "part"), pathOf(rig, "mine")));
    rig.events();
    QCOMPARE(rig.output(), rig.newest());
    QCOMPARE(rig.name(), "");
    QCOMPARE(rig.events(), 1);
    // A larger one stays in larger windows.
    QVERIFY(rig.make("mine") && rig.set("sensor.window", QVariantList{256, 192, 64, 64}) && rig.make("part"));
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    QVERIFY(rig.set("corrections.names", QStringList({"part", "", "", ""})));
    QVERIFY(QFile::remove(pathOf(rig, "part")) && QFile::rename(pathOf(rig, "mine"), pathOf(rig, "part")));
    rig.output();
    QVERIFY(rig.useSmallWindow());
    QCOMPARE(rig.name(), "part");
}

void tst_corrections::damagedFileIsDroppedWithOneEvent()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    QVERIFY(rig.set("corrections.names", QStringList({"mine", "", "", ""})));
    QVERIFY(QFile::remove(pathOf(rig, "mine")));
    rig.events();
    QCOMPARE(rig.output(), rig.newest());
    QCOMPARE(rig.name(), "");
    rig.output();
    QCOMPARE(rig.events(), 1);
}

// A second client changes the window while the first one waits.
void tst_corrections::windowThatIsSetDuringALoadRefusesIt()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    bool isSet = false;
    Clock::duringNextWait([&] { isSet = rig.set("sensor.window", QVariantList{0, 0, 320, 256}); });
    QCOMPARE(zvtLoadNUC(rig.handle(), 0, "mine"), refused);
    QVERIFY(isSet);
    QCOMPARE(rig.name(), "");
}

void tst_corrections::pendingCorrectionIsInUseUntilTheDecision()
{
    CorrectionRig rig;
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    const QStringList names = rig.names();
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(rig.name(), "");
    QCOMPARE(rig.names(), names);
    QVERIFY(rig.showArea(27) && rig.residual() < 3);
    QCOMPARE(zvtDiscardNUC(rig.handle()), 0);
    QCOMPARE(rig.output(), rig.newest());
    QCOMPARE(zvtAcceptNUC(rig.handle()), refused);
    // The old correction comes back.
    QCOMPARE(zvtLoadNUC(rig.handle(), 0, "Factory 2 ms"), 0);
    QVERIFY(rig.showArea(20));
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(rig.name(), "Factory 2 ms");
    QCOMPARE(zvtDiscardNUC(rig.handle()), 0);
    // It was made at another temperature of the case.
    QVERIFY(rig.showArea(27) && rig.residual() < rig.rawResidual() / 10);
    QCOMPARE(rig.name(), "Factory 2 ms");
}

void tst_corrections::acceptedCorrectionHasNoNameUntilItIsSaved()
{
    CorrectionRig rig;
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    QCOMPARE(rig.name(), "");
    QVERIFY(rig.showArea(27) && rig.residual() < 3);
    QCOMPARE(zvtNUCExists(rig.handle(), "mine"), refused);
    QCOMPARE(zvtSaveNUC(rig.handle(), 0), refused);
    const int64_t before = Clock::now();
    QCOMPARE(zvtSaveNUCAs(rig.handle(), 0, "mine"), 0);
    QCOMPARE(Clock::now() - before, int64_t(300 + smallSize / 20'000));
    QCOMPARE(rig.name(), "mine");
    QCOMPARE(zvtNUCExists(rig.handle(), "mine"), 0);
    QCOMPARE(zvtSaveNUC(rig.handle(), 0), 0);
}

void tst_corrections::offsetUpdateKeepsTheNameAndTheFile()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    const auto contentOf = [&rig] {
        QFile file(pathOf(rig, "mine"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QByteArray saved = contentOf();
    // The case warms up.
    QVERIFY(rig.set("environment.ambient", 30));
    Clock::advance(3'600'000);
    QVERIFY(rig.showArea(27));
    const double stale = rig.residual();
    QVERIFY(rig.setType(2));
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(rig.name(), "mine");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    QCOMPARE(rig.name(), "mine");
    QVERIFY2(rig.residual() < stale / 4, qPrintable(QString::number(stale)));
    QCOMPARE(contentOf(), saved);
    QCOMPARE(zvtSaveNUC(rig.handle(), 0), 0);
    QVERIFY(contentOf() != saved && contentOf().size() == saved.size());
}

void tst_corrections::loadDropsThePendingCorrection()
{
    CorrectionRig rig;
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtLoadNUC(rig.handle(), 1, "Factory 1 ms"), 0);
    QCOMPARE(zvtLoadNUC(rig.handle(), 0, "Factory 2 ms"), 0);
    QCOMPARE(zvtAcceptNUC(rig.handle()), refused);
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    QCOMPARE(zvtDiscardNUC(rig.handle()), refused);
}

void tst_corrections::decisionNeedsAPendingCorrection()
{
    CorrectionRig rig;
    QCOMPARE(zvtAcceptNUC(rig.handle()), refused);
    QCOMPARE(zvtDiscardNUC(rig.handle()), refused);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(12));
    QCOMPARE(zvtAcceptNUC(rig.handle()), refused);
    QCOMPARE(zvtDiscardNUC(rig.handle()), refused);
    rig.walk();
    QCOMPARE(zvtDiscardNUC(rig.handle()), 0);
}

void tst_corrections::saveNeedsACorrectionAndAName()
{
    CorrectionRig rig;
    QCOMPARE(zvtSaveNUC(rig.handle(), 2), refused);
    QCOMPARE(zvtSaveNUCAs(rig.handle(), 2, "mine"), refused);
    QCOMPARE(zvtSaveNUC(rig.handle(), 4), refused);
    QCOMPARE(zvtSaveNUCAs(rig.handle(), 4, "mine"), refused);
    for (const char *bad : {"", " ", "a/b", "a:b"})
        QCOMPARE(zvtSaveNUCAs(rig.handle(), 0, bad), refused);
    QCOMPARE(zvtSaveNUCAs(rig.handle(), 0, std::string(201, 'x').c_str()), refused);
    QCOMPARE(rig.name(), "Factory 2 ms");
    const std::string longest(200, 'x');
    QCOMPARE(zvtSaveNUCAs(rig.handle(), 0, longest.c_str()), 0);
    QCOMPARE(rig.name(), QString::fromStdString(longest));
}

void tst_corrections::savedCorrectionIsTheSame()
{
    CorrectionRig rig;
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    const auto made = rig.exposure().correction;
    QCOMPARE(zvtSaveNUCAs(rig.handle(), 0, "mine"), 0);
    QCOMPARE(zvtLoadNUC(rig.handle(), 1, "Factory 1 ms"), 0);
    QCOMPARE(zvtUnloadNUC(rig.handle(), 0), 0);
    QCOMPARE(zvtLoadNUC(rig.handle(), 0, "mine"), 0);
    const auto read = rig.exposure().correction;
    QVERIFY(made && read && made != read);
    QCOMPARE(read->gains, made->gains);
    QCOMPARE(read->offsets, made->offsets);
    QCOMPARE(read->flags, made->flags);
}

void tst_corrections::savedCorrectionDescribesItsRun()
{
    CorrectionRig rig;
    QVERIFY(rig.setType(1, 1));
    QCOMPARE(zvtSetNUCNumFrames(rig.handle(), 20), 0);
    QCOMPARE(zvtSetNUCSetup(rig.handle(), 0.7F, 1.4F, 900, 14'000, true), 0);
    QCOMPARE(zvtSetTwinklerSetup(rig.handle(), true, 24, 150), 0);
    QVERIFY(rig.make("mine"));
    zvtSNUCInfo info{};
    QCOMPARE(zvtQueryNUCInfo(rig.handle(), "mine", &info), 0);
    QCOMPARE(info.nucType, 1);
    QCOMPARE(info.nucSource, 1);
    QCOMPARE(info.numFrames, 20U);
    QCOMPARE(info.width, 160);
    QCOMPARE(info.integrationWidth, 40'000U);
    QCOMPARE(info.gainMinimum, 0.7F);
    QCOMPARE(info.gainMaximum, 1.4F);
    QCOMPARE(info.adMinimum, 900);
    QCOMPARE(info.adMaximum, 14'000);
    QVERIFY(info.detectBadPixels && info.detectTwinklers);
    QCOMPARE(info.twinklerFrames, 24U);
    QCOMPARE(info.twinklerDelta, 150);
    const std::array<uint32_t, 10> counts{
        info.totalBadPixels,        info.factoryBadPixels,     info.newBadPixels,          info.twinklingPixels,
        info.aboveGainMaximum,      info.belowGainMinimum,     info.aboveAdMaximumSource1, info.belowAdMinimumSource1,
        info.aboveAdMaximumSource2, info.belowAdMinimumSource2};
    QCOMPARE(counts, rig.counts());
    QVERIFY(counts[0] > 10 && counts[1] > 5 && counts[0] == counts[1] + counts[2]);
}

void tst_corrections::saveReplacesAFactoryCorrection()
{
    CorrectionRig rig;
    bool factory = false;
    QCOMPARE(zvtIsFactoryNUC(rig.handle(), "Factory 1 ms", &factory), 0);
    QVERIFY(factory);
    QVERIFY(rig.make("Factory 1 ms"));
    QCOMPARE(zvtIsFactoryNUC(rig.handle(), "Factory 1 ms", &factory), 0);
    QVERIFY(!factory);
    QCOMPARE(rig.name(), "Factory 1 ms");
}

void tst_corrections::saveNeedsSpace()
{
    CorrectionRig rig;
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    uint64_t bytes = 0;
    QCOMPARE(zvtGetNUCFreeSpace(rig.handle(), &bytes), 0);
    const uint64_t used = 536'870'912 - bytes;
    QVERIFY(rig.set("nucs.capacity", QVariant::fromValue(used + smallSize - 1)));
    QCOMPARE(zvtSaveNUCAs(rig.handle(), 0, "mine"), refused);
    QCOMPARE(rig.name(), "");
    QCOMPARE(zvtNUCExists(rig.handle(), "mine"), refused);
    QVERIFY(rig.set("nucs.capacity", QVariant::fromValue(used + smallSize)));
    QCOMPARE(zvtSaveNUCAs(rig.handle(), 0, "mine"), 0);
    QCOMPARE(zvtGetNUCFreeSpace(rig.handle(), &bytes), 0);
    QCOMPARE(bytes, uint64_t(0));
    // A correction takes the place of the one that it replaces.
    QCOMPARE(zvtSaveNUC(rig.handle(), 0), 0);
}

void tst_corrections::switchesChangeTheirOutput()
{
    CorrectionRig rig;
    const auto raw = rig.newest();
    bool on = false;
    QCOMPARE(zvtGetVideoOutputNUCEnabled(rig.handle(), &on), 0);
    QVERIFY(on);
    QCOMPARE(zvtGetDigitalOutputNUCEnabled(rig.handle(), &on), 0);
    QVERIFY(!on);
    QVERIFY(rig.output(Output::Video) != raw);
    QCOMPARE(rig.output(Output::Digital), raw);
    QCOMPARE(zvtSetVideoOutputNUCEnabled(rig.handle(), false), 0);
    QCOMPARE(zvtSetDigitalOutputNUCEnabled(rig.handle(), true), 0);
    QCOMPARE(rig.output(Output::Video), raw);
    QVERIFY(rig.output(Output::Digital) != raw);
}

void tst_corrections::badPixelsAreShownOrRepaired()
{
    CorrectionRig rig;
    QVERIFY(rig.make("mine"));
    const auto white = [&rig] { return std::ranges::count(rig.output(), 16'383); };
    QCOMPARE(white(), 0);
    QCOMPARE(zvtSetShowBadPixels(rig.handle(), true), 0);
    QCOMPARE(white(), rig.counts()[0]);
    QCOMPARE(zvtSetShowBadPixels(rig.handle(), false), 0);
    const auto gradient = rig.output();
    QCOMPARE(zvtSetBadPixelCorrectionMethod(rig.handle(), 1), 0);
    const auto nearest = rig.output();
    QCOMPARE(zvtSetBadPixelCorrectionMethod(rig.handle(), 2), 0);
    const auto none = rig.output();
    QVERIFY(gradient != nearest && nearest != none && gradient != none);
    QCOMPARE(zvtSetBadPixelCorrectionMethod(rig.handle(), 3), refused);
    uint8_t method = 9;
    QCOMPARE(zvtGetBadPixelCorrectionMethod(rig.handle(), &method), 0);
    QCOMPARE(method, 2);
}

void tst_corrections::repairNeedsTheCapability()
{
    CorrectionRig rig;
    QVERIFY(rig.camera().changeMakeUp("hasBadPixelCorrection", false));
    uint8_t method = 9;
    QCOMPARE(zvtGetBadPixelCorrectionMethod(rig.handle(), &method), int(emulator::Absent));
    QCOMPARE(zvtSetBadPixelCorrectionMethod(rig.handle(), 1), int(emulator::Absent));
    QVERIFY(!rig.set("corrections.repair", 1));
    QCOMPARE(method, 9);
}

void tst_corrections::factoryCalibrationLoadsItsCorrection()
{
    CorrectionRig rig;
    QVERIFY(rig.set("factoryCalibrations.selected", 0));
    QCOMPARE(rig.name(), "10 to 60 °C");
    QVERIFY(rig.showArea(27));
    const double corrected = rig.residual();
    QVERIFY2(corrected > 0 && corrected < rig.rawResidual() / 10, qPrintable(QString::number(corrected)));
    // A calibration whose correction has been deleted changes the integration time only.
    QCOMPARE(zvtDeleteNUC(rig.handle(), "50 to 150 °C"), 0);
    QVERIFY(rig.set("factoryCalibrations.selected", 1));
    QCOMPARE(rig.name(), "10 to 60 °C");
}

ZVT_TEST(tst_corrections)
#include "tst_corrections.moc"
