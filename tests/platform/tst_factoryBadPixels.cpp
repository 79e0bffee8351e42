#include "platform/emulator/devices/BadPixelFolder.h"
#include "platform/emulator/devices/RecordedSettings.h"
#include "tests/platform/BadPixelRig.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cstdlib>

#include <unistd.h>

using List = hlx::BadPixelFile;
using Pixels = BadPixelRig::Pixels;

/// The factory's list of bad pixels: its first contents, its changes by corrections, and what it does to them.
class tst_factoryBadPixels : public Test
{
    Q_OBJECT

private slots:
    void isThereFromTheFirstStart();
    void isNotReplacedAtTheNextStart();
    void theFirstListLeavesAFileAlone();
    void comesBackIfItIsRemoved();
    void camerasWithoutCorrectionsHaveNone();
    void createReplacesItByTheUnion();
    void createPassesPresetsWithoutACorrectionOver();
    void createNeedsACorrection_data();
    void createNeedsACorrection();
    void appendAddsToIt();
    void outlivesTheProcess();
    void applyChangesThePictureAtOnce();
    void applyIsCounted();
    void applyIsKeptByASave();
    void applyTakesThePresetsOfTheMask();
    void theListOfTheArrayFitsEveryWindow();
    void applyFollowsTheFlips_data();
    void applyFollowsTheFlips();
    void applyChangesAPendingCorrection();
    void damagedListsAreRefused_data();
    void damagedListsAreRefused();
    void createReplacesADamagedList();
    void aListOfAnotherWindowIsRefused();
    void aListOfTheSizeOfTheWindowFitsAtAnyPlace();
    void isReplacedAsAWhole();
    void recordingsHaveTheNewFlags();
};

namespace
{

constexpr int refused = emulator::Refused;
constexpr auto path = BadPixelRig::factoryPath;
constexpr uint32_t all = BadPixelRig::all;

Pixels together(Pixels one, const Pixels &other)
{
    one.insert(other.begin(), other.end());
    return one;
}

/// A good pixel of the window of a rig.
constexpr List::Pixel good{80, 64};

} // namespace

void tst_factoryBadPixels::isThereFromTheFirstStart()
{
    BadPixelRig rig;
    rig.camera().flushMemory();
    const auto list = List::load(hlx::fileSystem(), qPrintable(rig.pathOf(path)));
    QCOMPARE(rig.sizeOf(list), "640x512");
    emulator::image::Exposure exposure;
    exposure.window = {0, 0, 640, 512};
    exposure.detector = rig.camera().device<emulator::Sensor>()->array().mapsFor(exposure.window);
    const auto known = emulator::image::factoryList(exposure);
    QCOMPARE(list->pixels.size(), static_cast<size_t>(std::ranges::count(known, 1)));
    for (const auto &pixel : list->pixels)
        QVERIFY(known[size_t{pixel.y} * 640 + pixel.x] != 0);
    QVERIFY(list->pixels.size() > 300);
    QVERIFY(rig.download(path) && rig.download(path)->pixels == list->pixels);
    QVERIFY(rig.download("flashfs/../flashfs/system/factoryConfig/factory.bpl").has_value());
}

void tst_factoryBadPixels::isNotReplacedAtTheNextStart()
{
    BadPixelRig rig;
    QVERIFY(rig.putFactoryList(List{160, 128, {good}}));
    rig.camera().disconnect();
    rig.camera().connect();
    rig.camera().flushMemory();
    QCOMPARE(rig.sizeOf(rig.download(path)), "160x128");
    rig.open("everything");
    rig.camera().flushMemory();
    QCOMPARE(rig.sizeOf(rig.download(path)), "160x128");
}

// Another program may write it while the camera is about to.
void tst_factoryBadPixels::theFirstListLeavesAFileAlone()
{
    const QTemporaryDir folder;
    emulator::BadPixelFolder files(folder.path(), [] {
        return std::make_shared<const emulator::image::BadPixelMap>(emulator::image::BadPixelMap{{0, 0, 8, 4}});
    });
    const auto size = [&files] {
        const auto list = files.read(emulator::BadPixelFolder::factoryPath);
        return list ? list->window.width : 0;
    };
    files.provideFactoryList();
    QCOMPARE(size(), 8);
    const QString file = folder.path() + QLatin1String(path);
    QVERIFY(QDir().mkpath(QFileInfo(file).path()) && List({16, 4, {}}).save(hlx::fileSystem(), qPrintable(file)));
    QCOMPARE(size(), 16);
    QVERIFY(!files.unwritten(QLatin1String(path)));
    files.write();
    QVERIFY(files.isWritten());
    QCOMPARE(size(), 16);
}

void tst_factoryBadPixels::comesBackIfItIsRemoved()
{
    BadPixelRig rig;
    const auto before = rig.download(path);
    QVERIFY(rig.removeFactoryList());
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), all), 0);
    QVERIFY(rig.removeFactoryList());
    QVERIFY(before && rig.pixelsOf(rig.download(path)) == rig.pixelsOf(before));
    QVERIFY(rig.removeFactoryList());
    rig.camera().disconnect();
    rig.camera().connect();
    rig.camera().flushMemory();
    QVERIFY(QFile::exists(rig.pathOf(path)));
}

void tst_factoryBadPixels::camerasWithoutCorrectionsHaveNone()
{
    BadPixelRig rig;
    rig.open("bare");
    QVERIFY(!rig.download(path));
    for (const auto function : {zvtMfgFactoryBPLCreate, zvtMfgFactoryBPLAppend, zvtMfgFactoryBPLApply})
        QVERIFY(function(rig.handle(), all) != 0);
}

void tst_factoryBadPixels::createReplacesItByTheUnion()
{
    BadPixelRig rig;
    QVERIFY(rig.useNarrowLimits() && rig.make("narrow"));
    const Pixels first = rig.flagged(0);
    const Pixels second = rig.flagged(1);
    QVERIFY(first != second && first.size() > 10 * second.size());
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 2), 0);
    const auto list = rig.download(path);
    QCOMPARE(rig.sizeOf(list), "160x128");
    QVERIFY(rig.pixelsOf(list) == second);
    QVERIFY(std::ranges::is_sorted(list->pixels, {}, [](const auto &pixel) { return std::pair(pixel.y, pixel.x); }));
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 3), 0);
    QVERIFY(rig.pixelsOf(rig.download(path)) == together(first, second));
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 1), 0);
    QVERIFY(rig.pixelsOf(rig.download(path)) == first);
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), all), 0);
    QVERIFY(rig.pixelsOf(rig.download(path)) == together(first, second));
}

void tst_factoryBadPixels::createPassesPresetsWithoutACorrectionOver()
{
    BadPixelRig rig;
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 2 | 4 | 8), 0);
    QVERIFY(rig.pixelsOf(rig.download(path)) == rig.flagged(1));
}

void tst_factoryBadPixels::createNeedsACorrection_data()
{
    QTest::addColumn<uint32_t>("presets");
    QTest::newRow("no preset") << 0U;
    QTest::newRow("presets without one") << 12U;
    QTest::newRow("presets that the camera lacks") << 0xFFFFFFF0U;
}

void tst_factoryBadPixels::createNeedsACorrection()
{
    QFETCH(const uint32_t, presets);
    BadPixelRig rig;
    const auto before = rig.download(path);
    for (const auto function : {zvtMfgFactoryBPLCreate, zvtMfgFactoryBPLAppend, zvtMfgFactoryBPLApply})
        QCOMPARE(function(rig.handle(), presets), refused);
    QVERIFY(before && rig.pixelsOf(rig.download(path)) == rig.pixelsOf(before));
}

void tst_factoryBadPixels::appendAddsToIt()
{
    BadPixelRig rig;
    const Pixels factory = rig.pixelsOf(rig.download(path));
    QCOMPARE(zvtMfgFactoryBPLAppend(rig.handle(), 1), 0);
    const auto whole = rig.download(path);
    QCOMPARE(rig.sizeOf(whole), "640x512");
    Pixels added;
    for (const auto &[x, y] : rig.flagged(0))
        added.emplace(x + 240, y + 192);
    QVERIFY(rig.pixelsOf(whole) == together(factory, added) && rig.pixelsOf(whole) != factory);

    QVERIFY(rig.putFactoryList(List{160, 128, {good}}));
    QCOMPARE(zvtMfgFactoryBPLAppend(rig.handle(), 3), 0);
    const Pixels flagged = together(rig.flagged(0), rig.flagged(1));
    QVERIFY(rig.pixelsOf(rig.download(path)) == together(flagged, {{good.x, good.y}}));
}

void tst_factoryBadPixels::outlivesTheProcess()
{
    BadPixelRig rig;
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 1), 0);
    const Pixels created = rig.pixelsOf(rig.download(path));
    rig.open("everything");
    QVERIFY(rig.pixelsOf(rig.download(path)) == created);
}

void tst_factoryBadPixels::applyChangesThePictureAtOnce()
{
    BadPixelRig rig;
    QVERIFY(rig.make("mine") && rig.putFactoryList(List{160, 128, {good}}));
    QVERIFY(!rig.flagged().contains({good.x, good.y}));
    const auto before = rig.output();
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), all), 0);
    QVERIFY(rig.flagged().contains({good.x, good.y}));
    const auto repaired = rig.output();
    QCOMPARE(before.size(), repaired.size());
    const size_t place = size_t{good.y} * 160 + good.x;
    const auto differs = [&](const FrameRig::Counts &other) {
        std::vector<size_t> places;
        for (size_t i = 0; i < before.size(); ++i)
            if (before[i] != other[i])
                places.push_back(i);
        return places;
    };
    // A repaired pixel has the mean of its neighbours.
    QVERIFY(differs(repaired) == std::vector{place});
    QVERIFY(std::abs(2 * repaired[place] - before[place - 1] - before[place + 1]) <= 1);
    // The switch shows it, and all others.
    const Pixels flagged = rig.flagged();
    QVERIFY(rig.set("corrections.showBadPixels", true));
    const auto shown = rig.output();
    for (size_t i = 0; i < shown.size(); ++i) {
        const bool isBad = flagged.contains({int(i % 160), int(i / 160)});
        QVERIFY2(isBad ? shown[i] == 16'383 : shown[i] == repaired[i], QByteArray::number(i));
    }
}

void tst_factoryBadPixels::applyIsCounted()
{
    BadPixelRig rig;
    QCOMPARE(zvtSetNUCUseFactoryBadPixels(rig.handle(), false), 0);
    QVERIFY(rig.make("mine"));
    const auto before = rig.counts();
    QCOMPARE(before[1], 0U);
    QVERIFY(before[0] > before[2]);
    QVERIFY(rig.putFactoryList(List{160, 128, {good}}));
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), 1), 0);
    const auto after = rig.counts();
    QCOMPARE(after[0], before[0] + 1);
    // Those of the list on which the run was not based are counted now, too.
    QCOMPARE(after[2], before[2]);
    QCOMPARE(after[1], after[0] - after[2]);
    // The other numbers are those of the run.
    QVERIFY(std::equal(after.begin() + 3, after.end(), before.begin() + 3));
    QCOMPARE(zvtSaveNUC(rig.handle(), 0), 0);
    zvtSNUCInfo info{};
    QCOMPARE(zvtQueryNUCInfo(rig.handle(), "mine", &info), 0);
    QCOMPARE(info.totalBadPixels, after[0]);
    QCOMPARE(info.factoryBadPixels, after[1]);
}

void tst_factoryBadPixels::applyIsKeptByASave()
{
    BadPixelRig rig;
    QVERIFY(rig.make("mine") && rig.putFactoryList(List{160, 128, {good}}));
    const Pixels before = rig.flagged();
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), 1), 0);
    QCOMPARE(rig.name(), "mine");
    const Pixels applied = rig.flagged();
    QVERIFY(applied == together(before, {{good.x, good.y}}));
    // The file has not changed.
    QCOMPARE(zvtLoadNUC(rig.handle(), 0, "mine"), 0);
    QVERIFY(rig.flagged() == before);
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), 1), 0);
    QCOMPARE(zvtSaveNUC(rig.handle(), 0), 0);
    QCOMPARE(zvtLoadNUC(rig.handle(), 0, "mine"), 0);
    QVERIFY(rig.flagged() == applied);
}

void tst_factoryBadPixels::applyTakesThePresetsOfTheMask()
{
    BadPixelRig rig;
    QVERIFY(rig.putFactoryList(List{160, 128, {good}}));
    const Pixels first = rig.flagged(0);
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), 2 | 4), 0);
    QVERIFY(rig.flagged(1).contains({good.x, good.y}));
    QVERIFY(rig.flagged(0) == first);
    QVERIFY(rig.name(2).isEmpty());
}

void tst_factoryBadPixels::theListOfTheArrayFitsEveryWindow()
{
    BadPixelRig rig;
    QVERIFY(rig.make("mine"));
    QVERIFY(rig.putFactoryList(List{640, 512, {{0, 0}, {uint16_t(240 + good.x), uint16_t(192 + good.y)}}}));
    const Pixels before = rig.flagged(0);
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), all), 0);
    QVERIFY(rig.flagged(0) == together(before, {{good.x, good.y}}));
    // The other preset has a correction of the whole array.
    QVERIFY(rig.useWholeArray());
    QVERIFY(rig.flagged(1).contains({0, 0}) && rig.flagged(1).contains({240 + good.x, 192 + good.y}));
}

void tst_factoryBadPixels::applyFollowsTheFlips_data()
{
    QTest::addColumn<bool>("mirrored");
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<bool>("ofTheArray"); // The correction.
    for (const bool ofTheArray : {false, true}) {
        const char *const text = ofTheArray ? "the array" : "the window";
        QTest::addRow("mirrored, %s", text) << true << false << ofTheArray;
        QTest::addRow("inverted, %s", text) << false << true << ofTheArray;
        QTest::addRow("both, %s", text) << true << true << ofTheArray;
    }
}

void tst_factoryBadPixels::applyFollowsTheFlips()
{
    QFETCH(const bool, mirrored);
    QFETCH(const bool, inverted);
    QFETCH(const bool, ofTheArray);
    BadPixelRig rig;
    QVERIFY(rig.set("image.reverted", mirrored) && rig.set("image.inverted", inverted));
    // Not in the middle of the array, so that a wrong flip of the array is seen.
    QVERIFY(rig.set("sensor.window", QVariantList{64, 32, 160, 128}));
    QVERIFY(ofTheArray || rig.make("mine"));
    constexpr List::Pixel corner{3, 5};
    QVERIFY(rig.putFactoryList(List{160, 128, {corner}}));
    const auto before = rig.output();
    QVERIFY(!rig.flagged(0, mirrored, inverted).contains({corner.x, corner.y}));
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), 1), 0);
    const auto after = rig.output();
    const size_t column = mirrored ? 159 - corner.x : corner.x;
    const size_t row = inverted ? 127 - corner.y : corner.y;
    QVERIFY(before[row * 160 + column] != after[row * 160 + column]);
    QVERIFY(rig.flagged(0, mirrored, inverted).contains({corner.x, corner.y}));
    QVERIFY(rig.pixelsOf(rig.exported()) == rig.flagged(0, mirrored, inverted));
}

void tst_factoryBadPixels::applyChangesAPendingCorrection()
{
    BadPixelRig rig;
    QCOMPARE(rig.run(), "0 Done");
    QVERIFY(rig.putFactoryList(List{160, 128, {good}}));
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), 1), 0);
    QVERIFY(rig.flagged().contains({good.x, good.y}));
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    QVERIFY(rig.flagged().contains({good.x, good.y}));
}

void tst_factoryBadPixels::damagedListsAreRefused_data() { BadPixelRig::addDamagedLists(); }

void tst_factoryBadPixels::damagedListsAreRefused()
{
    QFETCH(const QByteArray, content);
    BadPixelRig rig;
    QVERIFY(rig.putFactoryList(content));
    const Pixels before = rig.flagged();
    QCOMPARE(zvtMfgFactoryBPLAppend(rig.handle(), all), refused);
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), all), refused);
    QVERIFY(rig.flagged() == before);
    QFile file(rig.pathOf(path));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), content);
}

void tst_factoryBadPixels::createReplacesADamagedList()
{
    BadPixelRig rig;
    QVERIFY(rig.putFactoryList(QByteArray("damaged")));
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 1), 0);
    QVERIFY(rig.pixelsOf(rig.download(path)) == rig.flagged());
}

void tst_factoryBadPixels::aListOfAnotherWindowIsRefused()
{
    BadPixelRig rig;
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 1), 0);
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 320, 256}));
    QCOMPARE(zvtMfgFactoryBPLAppend(rig.handle(), 1), refused);
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), 1), refused);
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 1), 0);
    QCOMPARE(rig.sizeOf(rig.download(path)), "320x256");
}

// A list has a size, but no place.
void tst_factoryBadPixels::aListOfTheSizeOfTheWindowFitsAtAnyPlace()
{
    BadPixelRig rig;
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 2), 0);
    const Pixels created = rig.pixelsOf(rig.download(path));
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 160, 128}));
    const Pixels before = rig.flagged(1);
    QVERIFY(!created.empty() && together(before, created).size() > before.size());
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), 2), 0);
    QVERIFY(rig.flagged(1) == together(before, created));
    QCOMPARE(zvtMfgFactoryBPLAppend(rig.handle(), 2), 0);
    QVERIFY(rig.pixelsOf(rig.download(path)) == together(before, created));
}

void tst_factoryBadPixels::isReplacedAsAWhole()
{
    BadPixelRig rig;
    rig.camera().flushMemory();
    const auto before = rig.download(path);
    const QString kept = rig.pathOf("/flashfs/system/factoryConfig/kept.bpl");
    QCOMPARE(::link(qPrintable(rig.pathOf(path)), qPrintable(kept)), 0);
    QCOMPARE(zvtMfgFactoryBPLAppend(rig.handle(), 1), 0);
    rig.camera().flushMemory();
    QVERIFY(rig.pixelsOf(rig.download(path)) != rig.pixelsOf(before));
    QVERIFY(rig.pixelsOf(rig.download("/flashfs/system/factoryConfig/kept.bpl")) == rig.pixelsOf(before));
}

void tst_factoryBadPixels::recordingsHaveTheNewFlags()
{
    BadPixelRig rig;
    QVERIFY(rig.make("mine") && rig.putFactoryList(List{160, 128, {good}}));
    const auto *const corrections = rig.camera().device<emulator::Corrections>();
    const auto before = corrections->toRecord(0);
    QCOMPARE(corrections->toRecord(0), before);
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), 1), 0);
    const auto after = corrections->toRecord(0);
    QVERIFY(after != before);
    const size_t place = size_t{good.y} * 160 + good.x;
    QVERIFY((before->correction()->table->flags[place] & 1) == 0);
    QVERIFY((after->correction()->table->flags[place] & 1) != 0);
}

ZVT_TEST(tst_factoryBadPixels)
#include "tst_factoryBadPixels.moc"
