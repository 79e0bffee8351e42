#include "platform/emulator/devices/FramePattern.h"
#include "platform/emulator/devices/PulseTrain.h"
#include "tests/support/Test.h"

#include <array>
#include <cmath>
#include <optional>
#include <random>
#include <vector>

using emulator::FramePattern;
using emulator::PulseTrain;

using Turns = FramePattern::Turns;

namespace
{

constexpr uint32_t longestDwell = 0x7FFFFFFF;

/// The frames of a pattern up to an offset, one by one.
std::vector<FramePattern::Place> simulate(const FramePattern::Turns &turns, uint64_t cycleWidth, uint64_t end)
{
    std::vector<FramePattern::Place> frames;
    for (uint64_t cycle = 0; cycle <= end; cycle += cycleWidth) {
        uint64_t offset = cycle;
        for (int preset = 0; preset < emulator::maximumPresets; ++preset) {
            const FramePattern::Turn &turn = turns[static_cast<size_t>(preset)];
            for (uint32_t repeat = 0; repeat < turn.repeats; ++repeat, offset += turn.width)
                frames.push_back({preset, offset});
        }
    }
    return frames;
}

} // namespace

class tst_framePattern : public Test
{
    Q_OBJECT

private slots:
    void randomPatternsAreThoseOfASimulation();
    void aPatternWithoutFramesNeverBegins();
    void turnsWithoutFramesDoNotMatter();
    void framesFarAwayAreExact();
    void hugePatternsSaturate();
    void pulsesAreAtTheNearestTicks();
    void pulsesOfCenturiesAreExact();
    void pulsePeriodsCoverTheirTicks();
    void aSignalOfZeroDoesNotExist();
};

void tst_framePattern::randomPatternsAreThoseOfASimulation()
{
    std::mt19937 random(1);
    const auto upTo = [&random](uint32_t maximum) { return static_cast<uint32_t>(random() % (maximum + 1)); };
    for (int round = 0; round < 300; ++round) {
        FramePattern::Turns turns;
        uint64_t sum = 0;
        for (auto &turn : turns) {
            turn = {upTo(1) * upTo(4), upTo(8) + 1};
            sum += turn.repeats * turn.width;
        }
        if (sum == 0)
            continue;
        const uint64_t cycleWidth = sum + upTo(1) * upTo(20);
        const FramePattern pattern(turns, cycleWidth);
        QCOMPARE(pattern.cycleWidth(), cycleWidth);
        const uint64_t end = cycleWidth * 4;
        const auto frames = simulate(turns, cycleWidth, end);
        size_t count = 0;
        std::array<std::optional<uint64_t>, emulator::maximumPresets> newest;
        for (uint64_t units = 0; units < end; ++units) {
            for (; count < frames.size() && frames[count].offset <= units; ++count)
                newest[static_cast<size_t>(frames[count].preset)] = count;
            QCOMPARE(pattern.begun(units), count);
            for (int preset = 0; preset < emulator::maximumPresets; ++preset)
                QVERIFY(pattern.newest(preset, count) == newest[static_cast<size_t>(preset)]);
        }
        for (size_t frame = 0; frame < count; ++frame) {
            QCOMPARE(pattern.place(frame).preset, frames[frame].preset);
            QCOMPARE(pattern.place(frame).offset, frames[frame].offset);
        }
    }
}

void tst_framePattern::aPatternWithoutFramesNeverBegins()
{
    for (const FramePattern &pattern : {FramePattern(), FramePattern({}, 100)}) {
        QCOMPARE(pattern.framesInCycle(), 0ULL);
        for (const uint64_t units : {uint64_t(0), uint64_t(1), FramePattern::farthest})
            QCOMPARE(pattern.begun(units), 0ULL);
        for (const int preset : {-1, 0, 3, 4})
            QVERIFY(!pattern.newest(preset, 0));
    }
    QVERIFY(FramePattern() == FramePattern({}, 100));
}

void tst_framePattern::turnsWithoutFramesDoNotMatter()
{
    const FramePattern pattern(Turns{{{2, 10}, {0, 5}}});
    QVERIFY(pattern == FramePattern(Turns{{{2, 10}, {0, 7}, {0, 9}}}));
    QVERIFY(pattern == FramePattern(Turns{{{2, 10}}}, 20));
    QVERIFY(!(pattern == FramePattern(Turns{{{2, 10}}}, 21)));
    QVERIFY(!(pattern == FramePattern(Turns{{{2, 11}}})));
    for (const int preset : {-1, 1, 4})
        QVERIFY(!pattern.newest(preset, 2));
    // A frame takes time.
    QCOMPARE(FramePattern(Turns{{{3, 0}}}).begun(1), 2ULL);
}

void tst_framePattern::framesFarAwayAreExact()
{
    const FramePattern pattern(Turns{{{3, 200'001}, {0, 0}, {1, 300'007}}});
    const uint64_t cycle = 3 * 200'001 + 300'007;
    const uint64_t cycles = 1'000'000'000'000;
    QCOMPARE(pattern.begun(cycles * cycle - 1), cycles * 4);
    QCOMPARE(pattern.begun(cycles * cycle), cycles * 4 + 1);
    QCOMPARE(pattern.place(cycles * 4 + 3).offset, cycles * cycle + 600'003);
    QCOMPARE(pattern.place(cycles * 4 + 3).preset, 2);
    QCOMPARE(*pattern.newest(2, cycles * 4 + 3), cycles * 4 - 1);
    // Every tick has a frame.
    QCOMPARE(FramePattern(Turns{{{1, 1}}}).begun(FramePattern::farthest), FramePattern::farthest + 1);
}

void tst_framePattern::hugePatternsSaturate()
{
    const FramePattern::Turn longest{longestDwell, UINT32_MAX};
    const FramePattern pattern(Turns{longest, longest, longest, longest});
    QCOMPARE(pattern.framesInCycle(), 4ULL * longestDwell);
    QCOMPARE(pattern.cycleWidth(), FramePattern::farthest);
    QCOMPARE(pattern.begun(UINT32_MAX - 1ULL), 1ULL);
    QCOMPARE(pattern.begun(UINT32_MAX), 2ULL);
    const uint64_t turn = uint64_t(longestDwell) * UINT32_MAX;
    QCOMPARE(pattern.begun(turn - 1), uint64_t(longestDwell));
    QCOMPARE(pattern.begun(turn), longestDwell + 1ULL);
    QCOMPARE(pattern.place(longestDwell).offset, turn);
    QCOMPARE(pattern.place(longestDwell).preset, 1);
    for (const uint64_t frame : {2ULL * longestDwell, 4ULL * longestDwell, 1ULL << 62, ~0ULL})
        QCOMPARE(pattern.place(frame).offset, FramePattern::farthest);
    QCOMPARE(FramePattern(Turns{{{1, 5}}}, UINT64_MAX).cycleWidth(), FramePattern::farthest);
}

void tst_framePattern::pulsesAreAtTheNearestTicks()
{
    const PulseTrain thirds(3'000'000.0 / 9, 1'000'000);
    const PulseTrain halves(400'000, 1'000'000);
    for (const int64_t tick : {0, 3, 5, 8, 10})
        QCOMPARE(halves.tickOf(halves.pulseAt(tick)), tick);
    // The second pulse is half way between two ticks.
    QCOMPARE(halves.pulseAt(2), 0ULL);
    QCOMPARE(halves.pulseFrom(1), 1ULL);
    std::mt19937 random(2);
    for (int round = 0; round < 200; ++round) {
        const auto frequency = static_cast<uint32_t>(1'000'000 + random() % 99'000'001);
        const PulseTrain train(1 + random() % 1'000'000, frequency);
        const uint64_t pulse = random() % 1000;
        const int64_t tick = train.tickOf(pulse);
        QCOMPARE(static_cast<double>(tick), std::round(static_cast<double>(pulse) * frequency / train.hertz()));
        QCOMPARE(train.pulseAt(tick), pulse);
        QCOMPARE(train.pulseFrom(tick), pulse);
        QCOMPARE(train.pulseFrom(tick + 1), pulse + 1);
        if (tick > 0)
            QCOMPARE(train.pulseAt(tick - 1), pulse - 1);
    }
    QCOMPARE(thirds.tickOf(1), 3);
}

void tst_framePattern::pulsesOfCenturiesAreExact()
{
    const int64_t seconds = 300LL * 366 * 86'400;
    const PulseTrain fast(1e6, 100'000'000);
    QCOMPARE(fast.tickOf(static_cast<uint64_t>(seconds) * 1'000'000), seconds * 100'000'000);
    QCOMPARE(fast.pulseAt(seconds * 100'000'000 + 50), static_cast<uint64_t>(seconds) * 1'000'000);
    const PulseTrain video(59.94, 20'000'000);
    QCOMPARE(video.tickOf(5994ULL * 10'000'000), 1'000'000'000LL * 20'000'000);
    const PulseTrain slow(1e-6, 100'000'000);
    QCOMPARE(slow.tickOf(1), 100'000'000'000'000);
    QCOMPARE(slow.tickOf(~0ULL >> 1), PulseTrain::farthest);
}

void tst_framePattern::pulsePeriodsCoverTheirTicks()
{
    const PulseTrain train(50, 20'000'000);
    QCOMPARE(train.pulsesIn(1), 1ULL);
    QCOMPARE(train.pulsesIn(400'000), 1ULL);
    QCOMPARE(train.pulsesIn(400'001), 2ULL);
    QCOMPARE(PulseTrain(1e6, 1'000'000).pulsesIn(4ULL * UINT32_MAX), 4ULL * UINT32_MAX);
}

void tst_framePattern::aSignalOfZeroDoesNotExist()
{
    QVERIFY(!PulseTrain().exists());
    QVERIFY(!PulseTrain(0, 20'000'000).exists());
    QVERIFY(!PulseTrain(1e-7, 20'000'000).exists());
    QVERIFY(PulseTrain(1e-6, 20'000'000).exists());
}

ZVT_TEST(tst_framePattern)
#include "tst_framePattern.moc"
