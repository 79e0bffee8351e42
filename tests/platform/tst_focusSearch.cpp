#include "platform/emulator/devices/FocusMeter.h"
#include "platform/emulator/devices/FocusSearch.h"
#include "platform/emulator/image/Exposure.h"
#include "tests/support/Test.h"

#include <cmath>

using namespace emulator;

namespace
{

/// The sharpness of a picture that hardly changes far from a place.
double peak(double place, double sharp) { return 40 + 20'000 / (1 + std::pow((place - sharp) / 100, 4)); }

} // namespace

/// The search of the automatic focus, and its region.
class tst_focusSearch : public Test
{
    Q_OBJECT

private slots:
    void climbsFromEverywhere();
    void scansTheWholeRange();
    void noPlaceIsMeasuredTwice();
    void movesAsLittleAsPossible();
    void aWeakChangeDoesNotEndAClimb();
    void contrastIsOneAndAHalf();
    void whitePicturesHaveNoContrast();
    void staysInItsRange_data();
    void staysInItsRange();
    void aFailedMeasureEndsIt();
    void theRegionIsInTheMiddleOfQuarters_data();
    void theRegionIsInTheMiddleOfQuarters();
};

void tst_focusSearch::climbsFromEverywhere()
{
    for (uint32_t sharp = 100; sharp <= 12'000; sharp += 700)
        for (uint32_t start = 100; start <= 12'000; start += 170) {
            FocusSearch search(100, 12'000, [sharp](uint32_t place, double &sharpness) {
                sharpness = peak(place, sharp);
                return Ok;
            });
            QCOMPARE(search.climb(start), Ok);
            QCOMPARE(search.refine(), Ok);
            QVERIFY(search.hasContrast());
            QVERIFY2(std::abs(double(search.sharpest()) - sharp) <= 8, qPrintable(QString::number(start)));
        }
}

void tst_focusSearch::scansTheWholeRange()
{
    for (const auto direction : {FocusSearch::Up, FocusSearch::Down}) {
        QList<uint32_t> places;
        FocusSearch search(5, 1010, [&places](uint32_t place, double &sharpness) {
            places.append(place);
            sharpness = peak(place, 730);
            return Ok;
        });
        QCOMPARE(search.scan(direction), Ok);
        QList<uint32_t> expected{5, 105, 205, 305, 405, 505, 605, 705, 805, 905, 1005, 1010};
        if (direction == FocusSearch::Down)
            expected = {1010, 910, 810, 710, 610, 510, 410, 310, 210, 110, 10, 5};
        QCOMPARE(places, expected);
        QCOMPARE(search.refine(), Ok);
        QVERIFY(search.sharpest() >= 722 && search.sharpest() <= 738);
    }
}

void tst_focusSearch::noPlaceIsMeasuredTwice()
{
    QList<uint32_t> places;
    FocusSearch search(0, 10'000, [&places](uint32_t place, double &sharpness) {
        sharpness = peak(place, 5005);
        if (places.contains(place))
            return Refused;
        places.append(place);
        return Ok;
    });
    QCOMPARE(search.climb(6000), Ok);
    QCOMPARE(search.scan(FocusSearch::Up), Ok);
    QCOMPARE(search.refine(), Ok);
}

void tst_focusSearch::movesAsLittleAsPossible()
{
    QList<uint32_t> places;
    FocusSearch search(0, 10'000, [&places](uint32_t place, double &sharpness) {
        places.append(place);
        sharpness = peak(place, 5000);
        return Ok;
    });
    QCOMPARE(search.climb(5500), Ok);
    // The climb begins upwards. It ends when the picture is clearly less sharp.
    QCOMPARE(places, (QList<uint32_t>{5500, 6500, 4500, 3500}));
    QCOMPARE(search.refine(), Ok);
    // Of two equal gaps, the nearer one is halved first.
    QCOMPARE(places.mid(4, 4), (QList<uint32_t>{5000, 5250, 4750, 4875}));
}

void tst_focusSearch::aWeakChangeDoesNotEndAClimb()
{
    // Bumps below the contrast, from all of which the climb reaches the sharp place.
    for (uint32_t start = 0; start <= 10'000; start += 250) {
        FocusSearch search(0, 10'000, [](uint32_t place, double &sharpness) {
            sharpness = peak(place, 8000) + 5 * std::sin(place / 500.0);
            return Ok;
        });
        QCOMPARE(search.climb(start), Ok);
        QCOMPARE(search.refine(), Ok);
        QVERIFY(std::abs(double(search.sharpest()) - 8000) <= 8);
    }
}

void tst_focusSearch::contrastIsOneAndAHalf()
{
    for (const double highest : {40.0, 59.9, 60.0}) {
        FocusSearch search(0, 1000, [highest](uint32_t place, double &sharpness) {
            sharpness = place == 500 ? highest : 40;
            return Ok;
        });
        QCOMPARE(search.scan(FocusSearch::Up), Ok);
        QCOMPARE(search.hasContrast(), highest >= 60);
    }
}

void tst_focusSearch::whitePicturesHaveNoContrast()
{
    FocusSearch search(0, 1000, [](uint32_t, double &sharpness) {
        sharpness = 0;
        return Ok;
    });
    QCOMPARE(search.climb(300), Ok);
    QCOMPARE(search.refine(), Ok);
    QVERIFY(!search.hasContrast());
}

void tst_focusSearch::staysInItsRange_data()
{
    QTest::addColumn<uint32_t>("minimum");
    QTest::addColumn<uint32_t>("maximum");
    QTest::newRow("one place") << 7U << 7U;
    QTest::newRow("two places") << 7U << 8U;
    QTest::newRow("a few") << 0U << 9U;
    QTest::newRow("as many as there are") << 0U << UINT32_MAX;
}

void tst_focusSearch::staysInItsRange()
{
    QFETCH(uint32_t, minimum);
    QFETCH(uint32_t, maximum);
    for (const uint32_t start : {minimum, minimum + (maximum - minimum) / 2, maximum})
        for (const uint32_t sharp : {minimum, maximum}) {
            int measures = 0;
            FocusSearch search(minimum, maximum, [&](uint32_t place, double &sharpness) {
                sharpness = 1 / (1 + std::abs(double(place) - sharp));
                return place >= minimum && place <= maximum && ++measures < 100 ? Ok : Refused;
            });
            QCOMPARE(search.climb(start), Ok);
            QCOMPARE(search.scan(FocusSearch::Down), Ok);
            QCOMPARE(search.refine(), Ok);
            QCOMPARE(search.sharpest(), sharp);
            QCOMPARE(search.hasContrast(), minimum != maximum);
        }
}

void tst_focusSearch::aFailedMeasureEndsIt()
{
    for (int good = 0; good < 12; ++good) {
        int measures = 0;
        const auto measure = [&](uint32_t place, double &sharpness) {
            sharpness = peak(place, 3000);
            return measures++ < good ? Ok : NotConnected;
        };
        FocusSearch climbing(0, 10'000, measure);
        Status status = climbing.climb(5000);
        if (status == Ok)
            status = climbing.refine();
        QCOMPARE(status, NotConnected);
        QCOMPARE(measures, good + 1);
        measures = 0;
        FocusSearch scanning(0, 10'000, measure);
        status = scanning.scan(FocusSearch::Up);
        if (status == Ok)
            status = scanning.refine();
        QCOMPARE(status, NotConnected);
        QCOMPARE(measures, good + 1);
    }
}

void tst_focusSearch::theRegionIsInTheMiddleOfQuarters_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("size");
    QTest::addColumn<QList<int>>("window");
    QTest::addColumn<QList<int>>("region");
    QTest::addColumn<QList<int>>("flipped");
    const QList<int> whole{0, 0, 640, 512};
    QTest::newRow("centre") << 0 << 128 << whole << QList<int>{256, 192, 128, 128} << QList<int>{256, 192, 128, 128};
    QTest::newRow("top left") << 1 << 64 << whole << QList<int>{128, 96, 64, 64} << QList<int>{448, 352, 64, 64};
    QTest::newRow("top right") << 2 << 64 << whole << QList<int>{448, 96, 64, 64} << QList<int>{128, 352, 64, 64};
    QTest::newRow("bottom left") << 3 << 64 << whole << QList<int>{128, 352, 64, 64} << QList<int>{448, 96, 64, 64};
    QTest::newRow("bottom right") << 4 << 64 << whole << QList<int>{448, 352, 64, 64} << QList<int>{128, 96, 64, 64};
    QTest::newRow("clipped") << 1 << 512 << whole << QList<int>{0, 0, 416, 384} << QList<int>{224, 128, 416, 384};
    QTest::newRow("larger than the window")
        << 0 << 512 << QList<int>{16, 8, 64, 4} << QList<int>{16, 8, 64, 4} << QList<int>{16, 8, 64, 4};
    QTest::newRow("odd, in an offset window")
        << 4 << 17 << QList<int>{7, 9, 643, 515} << QList<int>{479, 385, 17, 17} << QList<int>{161, 131, 17, 17};
    QTest::newRow("one pixel") << 2 << 1 << QList<int>{3, 4, 1, 1} << QList<int>{3, 4, 1, 1} << QList<int>{3, 4, 1, 1};
}

void tst_focusSearch::theRegionIsInTheMiddleOfQuarters()
{
    QFETCH(int, position);
    QFETCH(int, size);
    QFETCH(QList<int>, window);
    QFETCH(QList<int>, region);
    QFETCH(QList<int>, flipped);
    const auto regionOf = [&](bool mirrored, bool inverted) {
        image::Optics optics;
        optics.mirrored = mirrored;
        optics.inverted = inverted;
        const image::Window w = FocusRegion{static_cast<uint16_t>(size), static_cast<uint8_t>(position)}.of(
            {window[0], window[1], window[2], window[3]}, optics);
        return QList<int>{w.x, w.y, w.width, w.height};
    };
    QCOMPARE(regionOf(false, false), region);
    QCOMPARE(regionOf(true, false), (QList<int>{flipped[0], region[1], region[2], region[3]}));
    QCOMPARE(regionOf(false, true), (QList<int>{region[0], flipped[1], region[2], region[3]}));
    QCOMPARE(regionOf(true, true), flipped);
}

ZVT_TEST(tst_focusSearch)
#include "tst_focusSearch.moc"
