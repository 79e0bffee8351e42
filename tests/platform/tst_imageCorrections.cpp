#include "platform/emulator/image/makeCorrection.h"
#include "tests/platform/ImageFixture.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

using namespace imageFixture;

/// Corrections made from frames of flat fields, and what they leave.
class tst_imageCorrections : public Test
{
    Q_OBJECT

private slots:
    void initTestCase();
    void twoPointsBeforeTheLens();
    void twoPointsByTheFlag();
    void onePoint();
    void warmerCaseAndOffsetUpdate();
    void mirroredIsWorseThanNone();
    void findsTheFaults();
    void factoryListHoldsFourOfFive();
    void factoryListIsUsedOnDemand();
    void classesAreCounted_data();
    void classesAreCounted();
    void sourcesMustDiffer();
    void framesMustFitTogether();
    void deadPixelsAreLeftAlone();
    void offsetUpdateKeepsGainsAndBadPixels();
    void offsetUpdateOfAPart();
    void factoryCorrectionIsFlat();
    void collectorKeepsMeanAndExtremes();
    void aMovedTableKeepsItsSharedValues();

private:
    Exposure m_exposure;
    FrameCollector m_cold; ///< 20 C.
    FrameCollector m_warm; ///< 35 C.
    FrameCollector m_twinkling;
};

namespace
{

QByteArray text(double number) { return QByteArray::number(number); }

Exposure corrected(Exposure exposure, CorrectionTable table)
{
    exposure.correction = std::make_shared<const CorrectionTable>(std::move(table));
    return exposure;
}

/// No pixel is bad by its counts or its response.
constexpr BadPixelLimits noLimits{.detect = false, .twinklers = false};

} // namespace

void tst_imageCorrections::initTestCase()
{
    m_exposure = exposureOf(Scene::Area, {}, {640, 512});
    m_cold = collect(areaOf(m_exposure, 20), 16);
    Exposure next = areaOf(m_exposure, 35);
    next.frameNumber = 16;
    m_warm = collect(next, 16);
    next.frameNumber = 32;
    m_twinkling = collect(next, 32);
}

void tst_imageCorrections::twoPointsBeforeTheLens()
{
    const auto made = makeTwoPoint(m_cold, m_warm, &m_twinkling, {});
    QVERIFY(made);
    const Exposure seen = areaOf(m_exposure, 27);
    const double raw = residualOf(seen);
    const double residual = residualOf(corrected(seen, made->table));
    QVERIFY2(raw > 50 * residual, text(raw / residual));
    // The other output is not corrected.
    QCOMPARE(outputOf(corrected(seen, made->table), Output::Digital), frameOf(seen));
}

void tst_imageCorrections::twoPointsByTheFlag()
{
    Exposure flag = m_exposure;
    flag.optics.flagCover = 1;
    flag.optics.flagCelsius = 20;
    const FrameCollector cold = collect(flag, 16);
    flag.optics.flagCelsius = 35;
    flag.frameNumber = 16;
    const auto made = makeTwoPoint(cold, collect(flag, 16), nullptr, {});
    QVERIFY(made);
    const Exposure seen = areaOf(m_exposure, 27);
    const double ratio = residualOf(seen) / residualOf(corrected(seen, made->table));
    // The flag does not see the shading of the lens.
    QVERIFY2(ratio > 10 && ratio < 50, text(ratio));
}

void tst_imageCorrections::onePoint()
{
    const auto made = makeOnePoint(collect(areaOf(m_exposure, 27), 16), {});
    QVERIFY(made);
    QVERIFY(std::ranges::all_of(made->table.gains, [](float gain) { return gain == 1; }));
    const double there = residualOf(corrected(areaOf(m_exposure, 27), made->table));
    const double elsewhere = residualOf(corrected(areaOf(m_exposure, 35), made->table));
    QVERIFY2(there < 3, text(there));
    QVERIFY2(elsewhere > 60, text(elsewhere));
}

void tst_imageCorrections::warmerCaseAndOffsetUpdate()
{
    const auto made = makeTwoPoint(m_cold, m_warm, nullptr, {});
    Exposure seen = corrected(areaOf(m_exposure, 27), made->table);
    const double before = residualOf(seen);
    seen.readout.caseCelsius += 5;
    const double warmer = residualOf(seen);
    QVERIFY2(warmer > 5 * before, text(warmer / before));
    const auto updated = updateOffsets(made->table, collect(seen, 16));
    QVERIFY(updated);
    const double after = residualOf(corrected(seen, updated->table));
    QVERIFY2(after < 2.5, text(after));
}

void tst_imageCorrections::mirroredIsWorseThanNone()
{
    const auto made = makeTwoPoint(m_cold, m_warm, nullptr, {});
    for (const bool inverted : {false, true}) {
        Exposure seen = areaOf(m_exposure, 27);
        seen.optics.mirrored = true;
        seen.optics.inverted = inverted;
        const double raw = residualOf(seen);
        const double residual = residualOf(corrected(seen, made->table));
        QVERIFY2(residual > 1.2 * raw, text(residual / raw));
    }
}

void tst_imageCorrections::findsTheFaults()
{
    const auto made = makeTwoPoint(m_cold, m_warm, &m_twinkling, {});
    const std::vector<uint8_t> faults = faultsOf(m_exposure);
    const auto isBad = [&](size_t i) { return (made->table.flags[i] & CorrectionTable::Bad) != 0; };
    int faulty = 0;
    int found = 0;
    int wrong = 0;
    for (size_t i = 0; i < faults.size(); ++i) {
        faulty += faults[i];
        found += faults[i] != 0 && isBad(i) ? 1 : 0;
        wrong += faults[i] == 0 && isBad(i) ? 1 : 0;
    }
    QVERIFY2(found >= 0.95 * faulty, text(double(found) / faulty));
    QVERIFY2(wrong <= 20, text(wrong));
    QCOMPARE(made->counts.total, uint32_t(found + wrong));
    QVERIFY(made->counts.twinkling > 30 && made->counts.twinkling < 100);
    QCOMPARE(made->counts.factory, 0u);
}

void tst_imageCorrections::factoryListHoldsFourOfFive()
{
    const std::vector<uint8_t> faults = faultsOf(m_exposure);
    const std::vector<uint8_t> list = factoryList(m_exposure);
    QCOMPARE(list.size(), faults.size());
    for (size_t i = 0; i < list.size(); ++i)
        QVERIFY(list[i] <= faults[i]);
    const auto share = double(std::ranges::count(list, 1)) / double(std::ranges::count(faults, 1));
    QVERIFY2(share > 0.75 && share < 0.85, text(share));

    // It belongs to the array, whatever part is read out and however it is flipped.
    Exposure part = m_exposure;
    part.window = {100, 40, 320, 256};
    part.optics.mirrored = true;
    part.optics.inverted = true;
    const std::vector<uint8_t> flipped = factoryList(part);
    QCOMPARE(flipped.size(), size_t(320 * 256));
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 320; ++x)
            QCOMPARE(flipped[static_cast<size_t>((255 - y) * 320 + 319 - x)],
                     list[static_cast<size_t>((40 + y) * 640 + 100 + x)]);
    QVERIFY(factoryList({}).empty());
}

void tst_imageCorrections::factoryListIsUsedOnDemand()
{
    Judgement judgement{.factoryList = factoryList(m_exposure)};
    const auto size = static_cast<uint32_t>(std::ranges::count(judgement.factoryList, 1));
    const auto found = makeTwoPoint(m_cold, m_warm, &m_twinkling, judgement);
    judgement.useFactoryList = true;
    const auto used = makeTwoPoint(m_cold, m_warm, &m_twinkling, judgement);
    QCOMPARE(found->counts.factory, 0u);
    QCOMPARE(used->counts.factory, size);
    // The list adds pixels that were not found; it has no pixels that are new.
    QVERIFY(used->counts.total >= found->counts.total);
    QCOMPARE(used->counts.newlyBad, found->counts.newlyBad);
    QCOMPARE(used->counts.newlyBad, used->counts.total - size);
    QVERIFY(used->counts.newlyBad > size / 10);
    judgement.limits = noLimits;
    const auto only = makeTwoPoint(m_cold, m_warm, &m_twinkling, judgement);
    QCOMPARE(only->counts, (BadPixelCounts{.total = size, .factory = size}));
    for (size_t i = 0; i < only->table.flags.size(); ++i)
        QCOMPARE(only->table.flags[i] != 0, judgement.factoryList[i] != 0);
    const auto onePoint = makeOnePoint(m_cold, judgement);
    QCOMPARE(onePoint->counts, only->counts);
}

void tst_imageCorrections::classesAreCounted_data()
{
    QTest::addColumn<int>("kind"); // Of the faults of the array.
    QTest::addColumn<int>("adMin");
    QTest::addColumn<int>("adMax");
    QTest::addColumn<QByteArray>("expected"); // 1 for each class that contains the faults, in the order of the counts.
    using Kind = Detector::Fault::Kind;
    const auto row = [](const char *name, Kind kind, int adMin, int adMax, const char *expected) {
        QTest::newRow(name) << int(kind) << adMin << adMax << QByteArray(expected);
    };
    row("strong", Kind::Strong, 1000, 15'000, "1010100000");
    row("strong, one limit", Kind::Strong, 1000, 10'000, "1010100010");
    row("strong, both limits", Kind::Strong, 1000, 8200, "1010101010");
    row("weak", Kind::Weak, 1000, 15'000, "1010010000");
    row("weak, one limit", Kind::Weak, 4000, 15'000, "1010010100");
    row("dead", Kind::Dead, 1000, 15'000, "1010010101");
    row("dead, wide limits", Kind::Dead, 0, 65'535, "1010010000");
    row("hot", Kind::Hot, 1000, 15'000, "1010011010");
    row("twinkling", Kind::Twinkling, 1000, 15'000, "1011000000");
}

void tst_imageCorrections::classesAreCounted()
{
    QFETCH(const int, kind);
    QFETCH(const int, adMin);
    QFETCH(const int, adMax);
    QFETCH(const QByteArray, expected);
    Detector::Properties properties = imageFixture::corrected();
    properties.offset = 500;
    uint32_t *const rates[]
        = {&properties.dead, &properties.hot, &properties.weak, &properties.strong, &properties.twinkling};
    *rates[kind] = 20'000;
    const Exposure exposure = exposureOf(Scene::Area, properties);
    const auto faults = static_cast<uint32_t>(exposure.detector->faults().size());
    QVERIFY(faults > 200);
    Judgement judgement;
    judgement.limits.adMin = static_cast<uint16_t>(adMin);
    judgement.limits.adMax = static_cast<uint16_t>(adMax);
    const FrameCollector warm = collect(areaOf(exposure, 35), 32);
    const auto made = makeTwoPoint(collect(areaOf(exposure, 20), 16), warm, &warm, judgement);
    QVERIFY(made);
    const BadPixelCounts &counts = made->counts;
    QByteArray classes;
    for (const uint32_t count :
         {counts.total, counts.factory, counts.newlyBad, counts.twinkling, counts.aboveGainMax, counts.belowGainMin,
          counts.aboveAdMaxSource1, counts.belowAdMinSource1, counts.aboveAdMaxSource2, counts.belowAdMinSource2}) {
        QVERIFY(count == 0 || count == faults);
        classes += count > 0 ? '1' : '0';
    }
    QCOMPARE(classes, expected);
    judgement.limits.detect = false;
    judgement.limits.twinklers = false;
    QCOMPARE(makeTwoPoint(warm, collect(areaOf(exposure, 20), 16), &warm, judgement)->counts, BadPixelCounts());
}

void tst_imageCorrections::sourcesMustDiffer()
{
    QVERIFY(!makeTwoPoint(m_cold, collect(areaOf(m_exposure, 20.2), 4), nullptr, {}));
    QVERIFY(makeTwoPoint(m_cold, collect(areaOf(m_exposure, 20.6), 4), nullptr, {.limits = noLimits}));
    // Which of them is warmer does not matter.
    const auto made = makeTwoPoint(m_warm, m_cold, nullptr, {});
    QVERIFY(made);
    QVERIFY(residualOf(corrected(areaOf(m_exposure, 27), made->table)) < 3);
}

void tst_imageCorrections::framesMustFitTogether()
{
    const FrameCollector none;
    QVERIFY(!makeOnePoint(none, {}));
    QVERIFY(!makeTwoPoint(none, m_warm, nullptr, {}));
    QVERIFY(!makeTwoPoint(m_cold, none, nullptr, {}));
    QVERIFY(!makeTwoPoint(m_cold, m_warm, &none, {}));
    QVERIFY(!updateOffsets(makeOnePoint(m_cold, {})->table, none));
    Exposure other = areaOf(m_exposure, 35);
    other.optics.mirrored = true;
    QVERIFY(!makeTwoPoint(m_cold, collect(other, 1), nullptr, {}));
    other.optics.mirrored = false;
    other.window = {16, 0, 320, 512};
    QVERIFY(!makeTwoPoint(m_cold, collect(other, 1), nullptr, {}));

    FrameCollector collector = collect(m_exposure, 1);
    QVERIFY(!collector.add(other));
    other.window = m_exposure.window;
    other.optics.inverted = true;
    QVERIFY(!collector.add(other));
    QVERIFY(!collector.add({}));
    QCOMPARE(collector.frames(), 1);
    QVERIFY(collector.add(areaOf(m_exposure, 30)));
    QCOMPARE(collector.frames(), 2);
    // The list makes all pixels bad.
    const Judgement allBad{.factoryList = std::vector<uint8_t>(m_cold.pixels(), 1), .useFactoryList = true};
    QVERIFY(!makeOnePoint(m_cold, allBad));
    QVERIFY(!makeTwoPoint(m_cold, m_warm, nullptr, allBad));
}

void tst_imageCorrections::deadPixelsAreLeftAlone()
{
    const auto made = makeTwoPoint(m_cold, m_warm, nullptr, {});
    int dead = 0;
    for (const Detector::Fault &fault : m_exposure.detector->faults())
        if (fault.kind == Detector::Fault::Dead) {
            const auto i = static_cast<size_t>(fault.y * 640 + fault.x);
            QCOMPARE(made->table.gains[i], 1.0f);
            QCOMPARE(made->table.offsets[i], 0.0f);
            QCOMPARE(made->table.flags[i], uint8_t(CorrectionTable::Bad));
            ++dead;
        }
    QVERIFY(dead > 100);
}

void tst_imageCorrections::offsetUpdateKeepsGainsAndBadPixels()
{
    const auto made
        = makeTwoPoint(m_cold, m_warm, &m_twinkling, {.factoryList = factoryList(m_exposure), .useFactoryList = true});
    const FrameCollector other = collect(areaOf(m_exposure, 30), 4);
    const auto updated = updateOffsets(made->table, other);
    QVERIFY(updated);
    QCOMPARE(updated->table.window, made->table.window);
    QVERIFY(updated->table.gains == made->table.gains);
    QVERIFY(updated->table.flags == made->table.flags);
    QVERIFY(updated->table.offsets != made->table.offsets);
    QCOMPARE(updated->counts.total, made->counts.total);
    QCOMPARE(updated->counts.factory, made->counts.factory);
    QCOMPARE(updated->counts.newlyBad, made->counts.newlyBad);
    QCOMPARE(updated->counts.twinkling, made->counts.twinkling);
    // The picture keeps its brightness, whatever the old correction made of it.
    const auto meanOf = [&](const CorrectionTable &table) {
        Statistics statistics(m_cold.pixels(), faultsOf(m_exposure));
        statistics.add(outputOf(corrected(areaOf(m_exposure, 30), table)));
        return statistics.mean();
    };
    for (const float added : {0.0f, 700.0f}) {
        CorrectionTable old = made->table;
        std::vector<float> offsets = old.offsets.values();
        for (float &offset : offsets)
            offset += added;
        old.offsets = std::move(offsets);
        QVERIFY(std::abs(meanOf(updateOffsets(old, other)->table) - meanOf(old)) < 0.5);
    }

    CorrectionTable damaged = made->table;
    damaged.offsets = std::vector<float>(made->table.offsets.begin(), made->table.offsets.end() - 1);
    QVERIFY(!updateOffsets(damaged, other));
    damaged = made->table;
    std::ranges::fill(damaged.flags, CorrectionTable::Bad);
    QVERIFY(!updateOffsets(damaged, other));
}

void tst_imageCorrections::offsetUpdateOfAPart()
{
    const auto made = makeTwoPoint(m_cold, m_warm, nullptr, {});
    Exposure part = areaOf(m_exposure, 27);
    part.window = {96, 40, 320, 256};
    part.readout.caseCelsius = 30;
    const auto updated = updateOffsets(made->table, collect(part, 16));
    QVERIFY(updated);
    QCOMPARE(updated->table.window, made->table.window);
    QVERIFY(updated->table.gains == made->table.gains && updated->table.flags == made->table.flags);
    QCOMPARE(updated->counts.total, made->counts.total);
    QVERIFY(residualOf(corrected(part, updated->table)) < 2.5);
    // The other offsets stay.
    qsizetype changed = 0;
    for (int y = 0; y < 512; ++y)
        for (int x = 0; x < 640; ++x) {
            const auto i = static_cast<size_t>(y * 640 + x);
            const bool differs = updated->table.offsets[i] != made->table.offsets[i];
            QVERIFY(!differs || part.window.contains({x, y, 1, 1}));
            changed += differs ? 1 : 0;
        }
    QVERIFY(changed > part.window.pixels() * 9 / 10);
    // A mirrored window is at another place of the table.
    Exposure mirrored = part;
    mirrored.optics.mirrored = true;
    const auto other = updateOffsets(made->table, collect(mirrored, 1));
    QVERIFY(other && other->table.offsets[40 * 640 + 639 - 96] != made->table.offsets[40 * 640 + 639 - 96]);
    QCOMPARE(other->table.offsets[40 * 640 + 96], made->table.offsets[40 * 640 + 96]);
    // A table that does not contain the whole window.
    QVERIFY(!updateOffsets(made->table.partFor(part.window, part.optics), m_cold));
}

void tst_imageCorrections::factoryCorrectionIsFlat()
{
    Exposure camera = m_exposure;
    camera.scene.pattern = Scene::Live;
    camera.optics.blocked = true;
    camera.optics.flagCover = 0.5;
    camera.optics.transmission = 0.1;
    camera.readout.warmth = 30;
    camera.readout.caseCelsius = 40;
    camera.readout.voltages.bias = 300;
    const auto made = makeTwoPoint(collect(flatField(camera, 20), 1), collect(flatField(camera, 35), 1), nullptr,
                                   {.factoryList = factoryList(camera), .useFactoryList = true});
    QVERIFY(made);
    const double residual = residualOf(corrected(areaOf(m_exposure, 27), made->table));
    QVERIFY2(residual < 2, text(residual));
    // There is no noise, so all frames are equal.
    Exposure next = flatField(camera, 20);
    const Counts first = frameOf(next);
    next.frameNumber = 5;
    QCOMPARE(frameOf(next), first);
}

void tst_imageCorrections::collectorKeepsMeanAndExtremes()
{
    const Exposure exposure = exposureOf(Scene::Live, {}, {64, 4});
    const FrameCollector collector = collect(exposure, 3);
    QCOMPARE(collector.frames(), 3);
    QCOMPARE(collector.pixels(), size_t(256));
    QCOMPARE(collector.exposure().frameNumber, uint64_t(2));
    std::vector<Counts> frames;
    for (Exposure next = exposure; next.frameNumber < 3; ++next.frameNumber)
        frames.push_back(frameOf(next));
    for (size_t i = 0; i < collector.pixels(); ++i) {
        const auto [least, most] = std::minmax({frames[0][i], frames[1][i], frames[2][i]});
        QCOMPARE(collector.minima()[i], least);
        QCOMPARE(collector.maxima()[i], most);
        QCOMPARE(collector.mean(i), (frames[0][i] + frames[1][i] + frames[2][i]) / 3.0);
    }
}

void tst_imageCorrections::aMovedTableKeepsItsSharedValues()
{
    CorrectionTable table{{0, 0, 2, 1}, std::vector{1.F, 2.F}, std::vector{3.F, 4.F}, {0, 1}};
    const CorrectionTable taken(static_cast<CorrectionTable &&>(table));
    QCOMPARE(taken.gains.size(), 2U);
    QVERIFY(table.gains == taken.gains && table.offsets == taken.offsets);
    QCOMPARE(table.gains.data(), taken.gains.data());
}

ZVT_TEST(tst_imageCorrections)
#include "tst_imageCorrections.moc"
