#include "hlx/CDateTime.h"
#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/FrameSearch.h"
#include "platform/emulator/devices/Recording.h"
#include "platform/hlxcamzvt/makeController.h"
#include "tests/platform/RecorderRig.h"
#include "tests/support/Test.h"

#include <QDateTime>

#include <random>

using emulator::Clock;
using emulator::findFrames;

namespace
{

using Range = std::optional<std::pair<uint64_t, uint64_t>>;

constexpr int64_t second = 1'000'000;
constexpr int64_t day = 86'400 * second;

/// Frames of equal distances, in microseconds. The IRIG clock was set at some of them, by these shifts.
emulator::Recording recordingOf(int64_t start, int64_t distance, uint64_t frames,
                                const std::vector<std::pair<uint64_t, int64_t>> &shifts)
{
    emulator::SensorTiming sensor;
    sensor.presets[0] = {1, static_cast<uint32_t>(distance / second * 1000), 1000, 100};
    emulator::FrameLog log;
    log.start(1000, start);
    log.begin({emulator::FrameTiming(sensor, std::nullopt), 0}, 0);
    emulator::FrameRanges numbers;
    numbers.add(0, frames / 2);
    // A few frames are missing in the middle.
    numbers.add(frames / 2 + 3, frames - frames / 2);
    std::deque<emulator::Recording::Segment> segments;
    for (const auto &[number, shift] : shifts) {
        emulator::RecordedSettings settings;
        settings.irigShift = shift;
        segments.push_back({number, std::make_shared<const emulator::RecordedSettings>(settings), {}});
    }
    return {{64, 4}, numbers, log, segments};
}

int64_t inYear(const emulator::Recording &recording, uint64_t frame)
{
    const int64_t time = recording.start(frame).microseconds + recording.segment(frame).settings->irigShift;
    const auto moment = QDateTime::fromMSecsSinceEpoch(time / 1000, Qt::UTC);
    return (moment.date().dayOfYear() - 1) * day + moment.time().msecsSinceStartOfDay() * int64_t(1000) + time % 1000;
}

/// Looks at each frame.
Range findOneByOne(const emulator::Recording &recording, int64_t start, int64_t end)
{
    std::optional<uint64_t> first;
    std::optional<uint64_t> last;
    for (uint64_t frame = 0; frame < recording.frames(); ++frame) {
        const int64_t time = inYear(recording, frame);
        if (time >= start && !first)
            first = frame;
        if (time <= end)
            last = frame;
    }
    return first && last && *first <= *last ? Range(std::pair(*first, *last)) : std::nullopt;
}

/// A controller of a camera with 1000 frames in its memory, 10 ms apart. The first one is at 09:00.
struct Rig : RecorderRig {
    Rig()
    {
        openWith(R"({"movies": [{"frames": 1000}]})");
        irig = load(0);
        controller = hlx::cam::makeController(camera().shared_from_this());
        const auto first = recorder().recorded(*recorder().memory(), 0).irigTime;
        dayOfYear = first.day;
        irig = irig && first.hour == 9 && first.minute == 0 && first.millisecond == 0;
    }
    hlx::CDateTime at(int minute, int sec, int millisecond = 0, int microsecond = 0) const
    {
        return hlx::CDateTime::NewYDHMS(dayOfYear, 9, minute, sec, millisecond, microsecond);
    }
    QString find(const hlx::CDateTime &start, const hlx::CDateTime &end)
    {
        unsigned int first = 7;
        unsigned int last = 8;
        const bool found = controller->FindFrameRange(start, end, &first, &last);
        return QStringLiteral("%1: %2 to %3").arg(found).arg(first).arg(last);
    }

    bool irig = false;
    int dayOfYear = 0;
    hlx::TSharedPtr<hlx::cam::CZVTController> controller;
};

} // namespace

/// The search for frames by their IRIG time.
class tst_FrameSearch : public Test
{
    Q_OBJECT

private slots:
    void agreesWithASearchOneByOne();
    void aRangeMayCrossTheYear();
    void theControllerFindsRanges_data();
    void theControllerFindsRanges();
    void takesTimeWithoutTheLock();
    void needsAMemoryAndAConnection();
};

void tst_FrameSearch::agreesWithASearchOneByOne()
{
    std::mt19937_64 random(1);
    const auto below
        = [&random](int64_t limit) { return static_cast<int64_t>(random() % static_cast<uint64_t>(limit)); };
    int found = 0;
    for (int seed = 0; seed < 2000; ++seed) {
        const int64_t distance = (below(2) == 0 ? 1 + below(20) : 1 + below(40'000)) * second;
        const auto frames = static_cast<uint64_t>(1 + below(300));
        std::vector<std::pair<uint64_t, int64_t>> shifts{{0, below(400) * day}};
        while (below(3) > 0)
            shifts.emplace_back(shifts.back().first + 1 + static_cast<uint64_t>(below(60)),
                                below(2) == 0 ? shifts.back().second : below(400) * day - 200 * day);
        const auto recording
            = recordingOf(1'700'000'000 * second + below(400) * day + below(second), distance, frames, shifts);
        for (int n = 0; n < 10; ++n) {
            const auto bound = [&] {
                return inYear(recording, static_cast<uint64_t>(below(static_cast<int64_t>(frames)))) + below(3) - 1;
            };
            const int64_t start = bound();
            const int64_t end = below(4) == 0 ? start : bound();
            const Range range = findFrames(recording, start, end);
            QVERIFY2(range == findOneByOne(recording, start, end), qPrintable(QString::number(seed)));
            found += range ? 1 : 0;
        }
    }
    QVERIFY2(found > 5000 && found < 18'000, qPrintable(QString::number(found)));
}

void tst_FrameSearch::aRangeMayCrossTheYear()
{
    // 2023-12-31 23:59:50, a frame each second.
    const auto recording = recordingOf(1'704'067'190 * second, second, 10, {{0, 0}});
    const int64_t year = 365 * day;
    // The second half begins three frames later: at second 58.
    QVERIFY(findFrames(recording, year - 2 * second, second) == std::pair(uint64_t(5), uint64_t(8)));
    QVERIFY(!findFrames(recording, year, year + day));
    // Those of January are before those of December, also if they come later.
    QVERIFY(findFrames(recording, year - 8 * second, year - 7 * second) == std::pair(uint64_t(2), uint64_t(9)));
    QVERIFY(!findFrames(emulator::Recording({64, 4}, {}, {}, {}), 0, year));
}

void tst_FrameSearch::theControllerFindsRanges_data()
{
    QTest::addColumn<QList<int>>("start");
    QTest::addColumn<QList<int>>("end");
    QTest::addColumn<QString>("result");
    QTest::newRow("all") << QList{0, 0, 0, 0} << QList{0, 10, 0, 0} << "1: 0 to 999";
    QTest::newRow("exact") << QList{0, 1, 0, 0} << QList{0, 2, 0, 0} << "1: 100 to 200";
    QTest::newRow("between") << QList{0, 1, 0, 1} << QList{0, 1, 19, 999} << "1: 101 to 101";
    QTest::newRow("one") << QList{0, 1, 0, 0} << QList{0, 1, 0, 0} << "1: 100 to 100";
    QTest::newRow("no frame between") << QList{0, 1, 0, 1} << QList{0, 1, 9, 999} << "0: 7 to 8";
    QTest::newRow("wrong order") << QList{0, 2, 0, 0} << QList{0, 1, 0, 0} << "0: 7 to 8";
    QTest::newRow("before all") << QList{-5, 0, 0, 0} << QList{-1, 0, 0, 0} << "0: 7 to 8";
    QTest::newRow("after all") << QList{1, 0, 0, 0} << QList{2, 0, 0, 0} << "0: 7 to 8";
}

void tst_FrameSearch::theControllerFindsRanges()
{
    QFETCH(QList<int>, start);
    QFETCH(QList<int>, end);
    QFETCH(QString, result);
    Rig rig;
    QVERIFY(rig.irig);
    QCOMPARE(rig.find(rig.at(start[0], start[1], start[2], start[3]), rig.at(end[0], end[1], end[2], end[3])), result);
    // A year does not matter.
    const auto withYear = [&rig](const QList<int> &time) {
        return hlx::CDateTime::NewYYDHMS(1999, rig.dayOfYear, 9, time[0], time[1], time[2], time[3]);
    };
    QCOMPARE(rig.find(withYear(start), withYear(end)), result);
}

void tst_FrameSearch::takesTimeWithoutTheLock()
{
    Rig rig;
    const int64_t start = Clock::now();
    int asked = 0;
    const auto ask = [&] { asked += rig.state() == RecorderRig::State::MovieLoaded ? 1 : 0; };
    Clock::duringNextWait(ask);
    QCOMPARE(rig.find({}, rig.at(59, 0)), "1: 0 to 999");
    QCOMPARE(asked, 1);
    QCOMPARE(Clock::now() - start, int64_t(501));
}

void tst_FrameSearch::needsAMemoryAndAConnection()
{
    Rig rig;
    Clock::duringNextWait([&rig] { rig.camera().disconnect(); });
    const int64_t start = Clock::now();
    QCOMPARE(rig.find({}, rig.at(59, 0)), "0: 7 to 8");
    QVERIFY(Clock::now() - start <= 50);
    QCOMPARE(rig.find({}, rig.at(59, 0)), "0: 7 to 8");
    rig.camera().connect();
    QCOMPARE(rig.find({}, rig.at(59, 0)), "1: 0 to 999");
    // Another memory is not what was searched.
    Clock::duringNextWait([&rig] { QVERIFY(rig.call(zvtSsdUnload)); });
    QCOMPARE(rig.find({}, rig.at(59, 0)), "0: 7 to 8");
    QCOMPARE(rig.find({}, rig.at(59, 0)), "0: 7 to 8");
}

ZVT_TEST(tst_FrameSearch)
#include "tst_FrameSearch.moc"
