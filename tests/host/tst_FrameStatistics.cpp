#include "standalone/desk/FrameStatistics.h"
#include "standalone/desk/StatisticsLog.h"
#include "tests/support/Test.h"

#include <cmath>
#include <numeric>

using Counts = std::vector<uint16_t>;

/// The measures of a frame, and their log.
class tst_FrameStatistics : public Test
{
    Q_OBJECT

private slots:
    void meanAndSpatialNoise();
    void theHistogramHasEachPixelOnce();
    void aFrameWithoutPixelsHasNoValues();
    void temporalNoiseComesFromTheDifference();
    void aChangeOfTheMeanIsNoNoise();
    void theLargestDifferencesFit();
    void theFirstFrameHasNoTemporalNoise_data();
    void theFirstFrameHasNoTemporalNoise();
    void percentilesCutOffTheirShare();
    void theLogKeepsTheLastMinute();
    void rowsAfterTheNewestAreDropped();
    void csvHasALineForEachFrame();

private:
    static StatisticsRow rowAt(int64_t microseconds, uint64_t number = 0)
    {
        StatisticsRow row;
        row.microseconds = microseconds;
        row.frame = number;
        return row;
    }
};

void tst_FrameStatistics::meanAndSpatialNoise()
{
    const auto statistics = FrameStatistics::of(Counts{2, 4, 4, 4, 5, 5, 7, 9}, {});
    QCOMPARE(statistics.mean, 5.0);
    QCOMPARE(statistics.spatialNoise, 2.0);
    QCOMPARE(statistics.lowest, uint16_t{2});
    QCOMPARE(statistics.highest, uint16_t{9});
}

void tst_FrameStatistics::theHistogramHasEachPixelOnce()
{
    const auto statistics = FrameStatistics::of(Counts{0, 3, 3, 16'383}, {});
    QCOMPARE(statistics.histogram.size(), size_t{16'384});
    QCOMPARE(statistics.histogram[0], 1u);
    QCOMPARE(statistics.histogram[3], 2u);
    QCOMPARE(statistics.histogram[16'383], 1u);
    QCOMPARE(statistics.pixels(), size_t{4});
}

void tst_FrameStatistics::aFrameWithoutPixelsHasNoValues()
{
    const auto statistics = FrameStatistics::of({}, {});
    QCOMPARE(statistics.mean, 0.0);
    QCOMPARE(statistics.spatialNoise, 0.0);
    QVERIFY(!statistics.temporalNoise);
    QCOMPARE(statistics.pixels(), size_t{0});
}

void tst_FrameStatistics::temporalNoiseComesFromTheDifference()
{
    // Differences of 2 and -2 have the deviation 2.
    const auto statistics = FrameStatistics::of(Counts{102, 998}, Counts{100, 1000});
    QVERIFY(statistics.temporalNoise);
    QCOMPARE(*statistics.temporalNoise, std::sqrt(2.0));
}

void tst_FrameStatistics::aChangeOfTheMeanIsNoNoise()
{
    const auto statistics = FrameStatistics::of(Counts{50, 60, 70}, Counts{10, 20, 30});
    QVERIFY(statistics.temporalNoise);
    QCOMPARE(*statistics.temporalNoise, 0.0);
}

void tst_FrameStatistics::theLargestDifferencesFit()
{
    Counts frame(400'000, 0);
    Counts before(400'000, 16'383);
    std::fill_n(frame.begin(), 200'000, uint16_t{16'383});
    std::fill_n(before.begin(), 200'000, uint16_t{0});
    const auto statistics = FrameStatistics::of(frame, before);
    QVERIFY(qAbs(*statistics.temporalNoise - 16'383 / std::sqrt(2.0)) < 1e-6);
    QVERIFY(qAbs(statistics.spatialNoise - 16'383 / 2.0) < 1e-6);
}

void tst_FrameStatistics::theFirstFrameHasNoTemporalNoise_data()
{
    QTest::addColumn<int>("pixelsBefore");
    QTest::newRow("no frame before") << 0;
    QTest::newRow("a smaller one") << 2;
    QTest::newRow("a larger one") << 4;
}

void tst_FrameStatistics::theFirstFrameHasNoTemporalNoise()
{
    QFETCH(int, pixelsBefore);
    const Counts before(static_cast<size_t>(pixelsBefore), 7);
    QVERIFY(!FrameStatistics::of(Counts{1, 2, 3}, before).temporalNoise);
}

void tst_FrameStatistics::percentilesCutOffTheirShare()
{
    Counts counts(1000);
    std::iota(counts.begin(), counts.end(), uint16_t{100});
    const auto statistics = FrameStatistics::of(counts, {});
    QCOMPARE(statistics.countAt(5), uint16_t{105});
    QCOMPARE(statistics.countAt(995), uint16_t{1095});
    QCOMPARE(FrameStatistics::of(Counts(100, 42), {}).countAt(5), uint16_t{42});
    // A few bad pixels stretch nothing.
    Counts bad(1000, 500);
    bad[0] = 0;
    bad[1] = 16'383;
    QCOMPARE(FrameStatistics::of(bad, {}).countAt(5), uint16_t{500});
    QCOMPARE(FrameStatistics::of(bad, {}).countAt(995), uint16_t{500});
}

void tst_FrameStatistics::theLogKeepsTheLastMinute()
{
    StatisticsLog log;
    for (int second = 0; second <= 100; ++second)
        log.add(rowAt(second * 1'000'000, static_cast<uint64_t>(second)));
    QCOMPARE(log.rows().size(), size_t{61});
    QCOMPARE(log.rows().front().frame, uint64_t{40});
    QCOMPARE(log.rows().back().frame, uint64_t{100});
}

void tst_FrameStatistics::rowsAfterTheNewestAreDropped()
{
    StatisticsLog log;
    for (int second = 10; second <= 20; ++second)
        log.add(rowAt(second * 1'000'000));
    log.add(rowAt(15'500'000));
    QCOMPARE(log.rows().size(), size_t{7});
    QVERIFY(std::ranges::is_sorted(log.rows(), {}, &StatisticsRow::microseconds));
}

void tst_FrameStatistics::csvHasALineForEachFrame()
{
    StatisticsLog log;
    log.add({1'709'208'000'040'999, 4, 1, "raw", 1000.25, 20.5, std::nullopt, 900, 1200});
    log.add({1'709'208'000'080'999, 8, 1, "raw", 1000.5, 20.25, 3.125, 901, 1201});
    QCOMPARE(log.toCsv(),
             QByteArray("time,frame,preset,view,mean,spatial noise,temporal noise,lowest,highest\n"
                        "2024-02-29T12:00:00.040Z,4,1,raw,1000.250,20.500,,900,1200\n"
                        "2024-02-29T12:00:00.080Z,8,1,raw,1000.500,20.250,3.125,901,1201\n"));
}

ZVT_TEST(tst_FrameStatistics)
#include "tst_FrameStatistics.moc"
