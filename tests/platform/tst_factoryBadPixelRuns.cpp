#include "tests/platform/BadPixelRig.h"
#include "tests/support/Test.h"

#include <algorithm>

using List = hlx::BadPixelFile;
using Pixels = BadPixelRig::Pixels;

/// Runs that make corrections, and the factory's list of bad pixels.
class tst_factoryBadPixelRuns : public Test
{
    Q_OBJECT

private slots:
    void useTheChangedList();
    void useTheFirstList_data();
    void useTheFirstList();
    void useAListOfTheArray_data();
    void useAListOfTheArray();
    void areRefusedWithADamagedList_data();
    void areRefusedWithADamagedList();
    void areRefusedWithAListOfAnotherWindow();
    void needTheListOnlyIfTheyUseIt();
    void endWithAListThatIsDamagedMeanwhile();
    void theCountsAreThoseOfTheCorrectionInUse();
};

namespace
{

constexpr int refused = emulator::Refused;
constexpr auto path = BadPixelRig::factoryPath;

/// A good pixel of the window of a rig.
constexpr List::Pixel good{80, 64};

void addFlips()
{
    QTest::addColumn<bool>("mirrored");
    QTest::addColumn<bool>("inverted");
    QTest::newRow("plain") << false << false;
    QTest::newRow("mirrored") << true << false;
    QTest::newRow("inverted") << false << true;
    QTest::newRow("both") << true << true;
}

} // namespace

void tst_factoryBadPixelRuns::useTheChangedList()
{
    BadPixelRig rig;
    QCOMPARE(zvtSetNUCUseFactoryBadPixels(rig.handle(), true), 0);
    QVERIFY(rig.putFactoryList(List{160, 128, {good}}));
    QVERIFY(rig.make("mine"));
    QVERIFY(rig.flagged().contains({good.x, good.y}));
    QCOMPARE(rig.counts()[1], 1U);
    QCOMPARE(rig.counts()[2], rig.counts()[0] - 1);
    QCOMPARE(zvtSetNUCUseFactoryBadPixels(rig.handle(), false), 0);
    QVERIFY(rig.make("mine"));
    QVERIFY(!rig.flagged().contains({good.x, good.y}));
}

void tst_factoryBadPixelRuns::useTheFirstList_data() { addFlips(); }

// Without a file when the run uses it, and with its file: the flags and the counts are the same.
void tst_factoryBadPixelRuns::useTheFirstList()
{
    QFETCH(const bool, mirrored);
    QFETCH(const bool, inverted);
    BadPixelRig rig;
    QVERIFY(rig.set("image.reverted", mirrored) && rig.set("image.inverted", inverted) && rig.useOnlyTheList());
    auto exposure = rig.exposure();
    exposure.detector = rig.camera().device<emulator::Sensor>()->array().mapsFor(exposure.window);
    const auto known = emulator::image::factoryList(exposure);
    const auto size = static_cast<uint32_t>(std::ranges::count(known, 1));
    QVERIFY(size > 5);
    for (const bool hasFile : {false, true}) {
        QCOMPARE(zvtStartNUC(rig.handle()), 0);
        QVERIFY(rig.walkTo(14));
        QVERIFY(hasFile || rig.removeFactoryList());
        QCOMPARE(QFile::exists(rig.pathOf(path)), hasFile);
        rig.walk();
        QCOMPARE(rig.result(), "0 Done");
        const auto table = rig.camera().device<emulator::Corrections>()->table(0);
        for (size_t i = 0; i < known.size(); ++i)
            QCOMPARE(int(table->flags[i]), known[i] != 0 ? 3 : 0);
        QCOMPARE(rig.counts()[0], size);
        QCOMPARE(rig.counts()[1], size);
        QCOMPARE(rig.counts()[2], 0U);
        rig.camera().flushMemory();
        QVERIFY(QFile::exists(rig.pathOf(path)));
    }
}

void tst_factoryBadPixelRuns::useAListOfTheArray_data() { addFlips(); }

void tst_factoryBadPixelRuns::useAListOfTheArray()
{
    QFETCH(const bool, mirrored);
    QFETCH(const bool, inverted);
    BadPixelRig rig;
    QVERIFY(rig.set("image.reverted", mirrored) && rig.set("image.inverted", inverted) && rig.useOnlyTheList());
    QVERIFY(rig.set("sensor.window", QVariantList{64, 32, 160, 128}));
    // The first and the last one are outside of the window.
    QVERIFY(rig.putFactoryList(List{640, 512, {{0, 0}, {64, 32}, {67, 37}, {223, 159}, {224, 160}}}));
    QCOMPARE(rig.run(), "0 Done");
    QVERIFY(rig.flagged(0, mirrored, inverted) == (Pixels{{0, 0}, {3, 5}, {159, 127}}));
    QCOMPARE(rig.counts()[1], 3U);
}

void tst_factoryBadPixelRuns::areRefusedWithADamagedList_data() { BadPixelRig::addDamagedLists(); }

void tst_factoryBadPixelRuns::areRefusedWithADamagedList()
{
    QFETCH(const QByteArray, content);
    BadPixelRig rig;
    QCOMPARE(rig.run(), "0 Done");
    QVERIFY(rig.putFactoryList(content));
    QCOMPARE(zvtStartNUC(rig.handle()), refused);
    QCOMPARE(rig.status(), uint16_t(0));
    // The correction of the last run still waits for the decision.
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 1), 0);
    QCOMPARE(rig.run(), "0 Done");
}

void tst_factoryBadPixelRuns::areRefusedWithAListOfAnotherWindow()
{
    BadPixelRig rig;
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 1), 0);
    QVERIFY(rig.useWholeArray());
    QCOMPARE(zvtStartNUC(rig.handle()), refused);
    QVERIFY(rig.useSmallWindow());
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
}

void tst_factoryBadPixelRuns::needTheListOnlyIfTheyUseIt()
{
    BadPixelRig rig;
    QVERIFY(rig.putFactoryList(QByteArray("damaged")));
    // An update of the offsets keeps the bad pixels.
    QVERIFY(rig.setType(2));
    QCOMPARE(rig.run(), "0 Done");
    QVERIFY(rig.setType(1));
    QCOMPARE(zvtStartNUC(rig.handle()), refused);
    QCOMPARE(zvtSetNUCUseFactoryBadPixels(rig.handle(), false), 0);
    QCOMPARE(rig.run(), "0 Done");
    QVERIFY(rig.counts()[0] > 0);
    QCOMPARE(rig.counts()[1], 0U);
    QCOMPARE(rig.counts()[2], rig.counts()[0]);
}

void tst_factoryBadPixelRuns::endWithAListThatIsDamagedMeanwhile()
{
    BadPixelRig rig;
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(14));
    QVERIFY(rig.putFactoryList(QByteArray("damaged")));
    rig.walk();
    QCOMPARE(rig.result(), "2 Invalid parameters");
}

void tst_factoryBadPixelRuns::theCountsAreThoseOfTheCorrectionInUse()
{
    BadPixelRig rig;
    const auto loaded = static_cast<uint32_t>(rig.flagged().size());
    QVERIFY(rig.useNarrowLimits());
    QCOMPARE(rig.run(), "0 Done");
    QVERIFY(rig.counts()[0] > 10 * loaded);
    // The counts of the last run stay until those of another correction are known.
    QCOMPARE(zvtDiscardNUC(rig.handle()), 0);
    QVERIFY(rig.counts()[0] > 10 * loaded);
    QVERIFY(rig.putFactoryList(List{160, 128, {good}}));
    QVERIFY(!rig.flagged().contains({good.x, good.y}));
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), 1), 0);
    // These are those of the whole correction, which is one of the array.
    const auto table = rig.camera().device<emulator::Corrections>()->table(0);
    const auto bad = std::ranges::count_if(table->flags, [](uint8_t flags) { return (flags & 1) != 0; });
    QCOMPARE(rig.counts()[0], static_cast<uint32_t>(bad));
}

ZVT_TEST(tst_factoryBadPixelRuns)
#include "tst_factoryBadPixelRuns.moc"
