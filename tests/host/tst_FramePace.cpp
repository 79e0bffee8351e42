#include "standalone/desk/FramePace.h"
#include "tests/support/Test.h"

using namespace std::chrono_literals;

/// How often the desk makes pictures.
class tst_FramePace : public Test
{
    Q_OBJECT

private slots:
    void atMost25PicturesASecond();
    void aFrameOfMoreThanHalfThePeriodDoublesIt();
    void thePeriodHasALongestValue();
    void quickFramesShortenThePeriodAgain();
    void oneSlowerFrameStartsTheCountAgain();
    void aConstantLoadNeverAlternates_data();
    void aConstantLoadNeverAlternates();

private:
    static void add(FramePace &pace, int frames, std::chrono::nanoseconds duration)
    {
        for (int i = 0; i < frames; ++i)
            pace.add(duration);
    }
};

void tst_FramePace::atMost25PicturesASecond()
{
    FramePace pace;
    QCOMPARE(pace.period(), 40ms);
    add(pace, 1000, 0ms);
    QCOMPARE(pace.period(), 40ms);
}

void tst_FramePace::aFrameOfMoreThanHalfThePeriodDoublesIt()
{
    FramePace pace;
    pace.add(20ms);
    QCOMPARE(pace.period(), 40ms);
    pace.add(20ms + 1ns);
    QCOMPARE(pace.period(), 80ms);
    pace.add(40ms);
    QCOMPARE(pace.period(), 80ms);
    pace.add(41ms);
    QCOMPARE(pace.period(), 160ms);
}

void tst_FramePace::thePeriodHasALongestValue()
{
    FramePace pace;
    add(pace, 100, 10s);
    QCOMPARE(pace.period(), 640ms);
}

void tst_FramePace::quickFramesShortenThePeriodAgain()
{
    FramePace pace;
    pace.add(1s);
    pace.add(1s);
    QCOMPARE(pace.period(), 160ms);
    add(pace, FramePace::quickFrames - 1, 40ms);
    QCOMPARE(pace.period(), 160ms);
    pace.add(40ms);
    QCOMPARE(pace.period(), 80ms);
    add(pace, FramePace::quickFrames, 20ms);
    QCOMPARE(pace.period(), 40ms);
}

void tst_FramePace::oneSlowerFrameStartsTheCountAgain()
{
    FramePace pace;
    pace.add(1s);
    add(pace, FramePace::quickFrames - 1, 1ms);
    pace.add(21ms);
    add(pace, FramePace::quickFrames - 1, 1ms);
    QCOMPARE(pace.period(), 80ms);
    pace.add(1ms);
    QCOMPARE(pace.period(), 40ms);
}

void tst_FramePace::aConstantLoadNeverAlternates_data()
{
    QTest::addColumn<int>("milliseconds");
    for (const int milliseconds : {1, 10, 19, 20, 21, 39, 40, 41, 79, 80, 81, 160, 320, 321, 1000})
        QTest::addRow("%d ms", milliseconds) << milliseconds;
}

void tst_FramePace::aConstantLoadNeverAlternates()
{
    QFETCH(int, milliseconds);
    FramePace pace;
    add(pace, 1000, std::chrono::milliseconds(milliseconds));
    const auto period = pace.period();
    for (int i = 0; i < 1000; ++i) {
        pace.add(std::chrono::milliseconds(milliseconds));
        QCOMPARE(pace.period(), period);
    }
    QVERIFY(period == FramePace::longest || 2 * std::chrono::milliseconds(milliseconds) <= period);
}

ZVT_TEST(tst_FramePace)
#include "tst_FramePace.moc"
