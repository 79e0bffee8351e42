#include "platform/emulator/crc32.h"
#include "platform/emulator/devices/Recording.h"
#include "platform/emulator/devices/RecordingRecipe.h"
#include "tests/support/Test.h"

#include <QtMath>

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <utility>

using namespace emulator;

namespace
{

/// Makes recordings of all kinds of frames and settings.
class Maker
{
public:
    /// `firstRun` is the kind of the first frames: see addRun().
    explicit Maker(uint32_t seed, std::optional<uint64_t> firstRun = {}) : m_random(seed), m_firstRun(firstRun) { }

    std::shared_ptr<const Recording> make()
    {
        FrameLog log;
        log.start(frequency, int64_t(1'700'000'000'000'000) + below(1'000'000));
        for (uint64_t run = 0, runs = 1 + below(8); run < runs; ++run)
            addRun(log);
        FrameRanges numbers;
        for (uint64_t next = below(5); next < m_number; next += below(40)) {
            const uint64_t count = std::min(1 + below(60), m_number - next);
            numbers.add(next, count);
            next += count + 1;
        }
        numbers.keepLast(std::max<uint64_t>(numbers.size() - below(10), 1));
        std::deque<Recording::Segment> segments{{0, settings(), motion()}};
        while (segments.back().firstNumber + 10 < m_number)
            segments.push_back({segments.back().firstNumber + 1 + below(30),
                                below(2) == 0 ? segments.back().settings : settings(), motion()});
        return std::make_shared<const Recording>(m_size, std::move(numbers), std::move(log), std::move(segments));
    }

private:
    static constexpr uint32_t frequency = 20'000'000;

    uint64_t below(uint64_t limit) { return m_random() % limit; }
    bool chance() { return below(2) == 0; }
    double real() { return std::uniform_real_distribution(-100.0, 100.0)(m_random); }

    FrameTiming timing(uint64_t cycles)
    {
        SensorTiming sensor;
        sensor.superframing = chance();
        sensor.superframeWidth = 2'000'000;
        const uint64_t presets = 1 + below(maximumPresets);
        for (uint64_t preset = 0; preset < presets; ++preset) {
            const auto width = static_cast<uint32_t>(10'000 + below(200'000));
            sensor.presets.at(preset) = {static_cast<uint32_t>(1 + below(3)), width, width - 500, 1000};
        }
        std::optional<FrameSignal> signal;
        if (chance())
            signal = FrameSignal{PulseTrain(50.0 + static_cast<double>(below(50)) / 7, frequency),
                                 static_cast<uint32_t>(below(100)), chance()};
        return {sensor, signal, cycles};
    }

    void addRun(FrameLog &log)
    {
        switch (std::exchange(m_firstRun, std::nullopt).value_or(below(3))) {
        case 0:
            addFrames(log, {timing(FrameTiming::endless), m_tick}, {});
            break;
        case 1:
            addSequences(log);
            break;
        default:
            addTurns(log);
        }
    }

    void addFrames(FrameLog &log, const FrameSegment &segment, const SequenceRun::Trigger &trigger)
    {
        log.begin(segment, m_number, trigger);
        m_tick = segment.start() + int64_t(1'000'000 + below(10'000'000));
        m_number += segment.begun(m_tick);
    }

    void addSequences(FrameLog &log)
    {
        const SequenceRun::Trigger trigger{PulseTrain::every(5'000'000, frequency), int64_t(below(1000))};
        const uint64_t pulse = trigger.pulses.pulseFrom(m_tick);
        SensorTiming sensor;
        sensor.presets[0] = {static_cast<uint32_t>(1 + below(4)), 200'000, 200'000, 1000};
        const FrameSegment segment(FrameTiming(sensor, std::nullopt, 1 + below(3)),
                                   trigger.pulses.tickOf(pulse) + trigger.delay);
        log.begin(segment, m_number, trigger);
        const uint64_t more = 1 + below(20);
        const uint64_t distance = 1 + below(3);
        log.repeat(more, distance);
        m_number += (more + 1) * segment.timing().frames;
        m_tick = trigger.pulses.tickOf(pulse + more * distance + 1) + trigger.delay;
    }

    void addTurns(FrameLog &log)
    {
        auto advance = std::make_shared<PresetAdvance>();
        for (size_t preset = 0; preset < 3; ++preset) {
            SensorTiming sensor;
            sensor.presets.at(preset) = {1, 200'000, 200'000, 1000};
            advance->timings.emplace_back(sensor, std::nullopt);
        }
        advance->pulses = PulseTrain::every(1'000'000 + below(1'000'000), frequency);
        advance->delay = int64_t(below(1000));
        PresetAdvance::Turn turn{m_tick, m_number, 0, advance->pulses.pulseFrom(m_tick)};
        const std::shared_ptr<const PresetAdvance> shared = advance;
        for (uint64_t left = 2 + below(30); left > 0; --left) {
            log.begin(shared->segmentOf(turn), shared, turn);
            if (const auto next = shared->after(turn, turn.start + 100'000'000))
                turn = *next;
        }
        m_tick = turn.start + 1'000'000;
        m_number = turn.firstNumber + shared->segmentOf(turn).begun(m_tick);
    }

    RecordedMotion motion()
    {
        return {real(), real(), real(), real(), real(), real(), real(), real(), real(), chance()};
    }

    std::shared_ptr<const RecordedSettings> settings()
    {
        auto settings = std::make_shared<RecordedSettings>();
        for (auto &[exposure, correction] : settings->presets) {
            fill(exposure);
            if (chance())
                correction = chance() && m_correction ? m_correction : newCorrection();
        }
        settings->irigShift = int64_t(below(UINT32_MAX)) - INT32_MAX;
        settings->realTimeShift = -int64_t(below(UINT32_MAX));
        settings->irigLatch = static_cast<RecordedSettings::IrigLatch>(below(3));
        settings->integrationDelay = std::abs(real());
        return settings;
    }

    std::shared_ptr<RecordedCorrection> newCorrection()
    {
        return m_correction = std::make_shared<RecordedCorrection>([] { return std::optional<Correction>(); });
    }

    void fill(image::Exposure &exposure)
    {
        exposure.window = {int(below(100)), int(below(100)), m_size.width, m_size.height};
        exposure.scene.pattern = static_cast<image::Scene::Pattern>(below(4));
        exposure.scene.blackbody1 = chance() ? real() : std::numeric_limits<double>::quiet_NaN();
        exposure.scene.blackbody2 = chance() ? real() : std::numeric_limits<double>::infinity();
        exposure.scene.hasTargets = chance();
        exposure.scene.secondSource = chance();
        exposure.optics.mirrored = chance();
        exposure.optics.inverted = chance();
        exposure.band = static_cast<image::Light::Band>(below(4));
        image::Readout &readout = exposure.readout;
        readout.integrationTime = std::abs(real());
        readout.saturatingTime = real();
        readout.gainLevel = int(below(5)) - 2;
        readout.highSensitivity = chance();
        readout.reducedNoise = chance();
        readout.cooling = static_cast<image::Readout::Cooling>(below(3));
        readout.voltages = {real(), real(), real(), real(), real()};
        readout.color = int(below(2));
        readout.clockNoise = real();
        readout.noise = chance();
        exposure.repair = static_cast<image::Repair>(below(3));
        exposure.showBadPixels = chance();
        exposure.videoCorrected = chance();
        exposure.digitalCorrected = chance();
        exposure.digitalGain = static_cast<float>(real());
        exposure.digitalOffset = static_cast<float>(real());
    }

    std::mt19937_64 m_random;
    std::optional<uint64_t> m_firstRun;
    image::Size m_size{int(64 + below(600)), int(4 + below(500))};
    int64_t m_tick = 0;
    uint64_t m_number = 0;
    std::shared_ptr<RecordedCorrection> m_correction;
};

bool sameBits(const RecordedMotion &a, const RecordedMotion &b)
{
    return a.magnification == b.magnification && a.defocus == b.defocus && a.lensCelsius == b.lensCelsius
        && a.flagCover == b.flagCover && a.flagCelsius == b.flagCelsius && a.transmission == b.transmission
        && a.filterCelsius == b.filterCelsius && a.warmth == b.warmth && a.caseCelsius == b.caseCelsius
        && a.blocked == b.blocked;
}

bool sameFrame(const Recording &a, const Recording &b, uint64_t frame)
{
    const auto &mine = a.segment(frame);
    const auto &others = b.segment(frame);
    return a.start(frame) == b.start(frame) && a.timing(frame) == b.timing(frame)
        && mine.firstNumber == others.firstNumber && mine.settings->equals(*others.settings)
        && sameBits(mine.motion, others.motion) && a.nextIrigSetting(frame) == b.nextIrigSetting(frame);
}

/// Frames of 64x4 pixels, each in a segment of its own.
Recording framesWith(uint64_t frames, const std::shared_ptr<const RecordedSettings> &settings)
{
    std::deque<Recording::Segment> segments;
    for (uint64_t number = 0; number < frames; ++number)
        segments.push_back({number, settings, {}});
    FrameLog log;
    log.start(20'000'000, 0);
    SensorTiming sensor;
    sensor.presets[0] = {1, 200'000, 200'000, 1000};
    log.begin({FrameTiming(sensor, std::nullopt), 0}, 0);
    FrameRanges numbers;
    numbers.add(0, frames);
    return {{64, 4}, numbers, log, segments};
}

} // namespace

/// Recordings as bytes.
class tst_RecordingRecipe : public Test
{
    Q_OBJECT

private slots:
    void aRecordingComesBack();
    void sharedSettingsStayShared();
    void anEmptyRecordingComesBack();
    void aPartIsNotARecording_data();
    void aPartIsNotARecording();
    void damagedBytesAreHarmless();
    void framesHaveTheSizeOfTheRecording();
    void latchesAreThoseThatExist();
    void timesOfTheLatchAreDurations_data();
    void timesOfTheLatchAreDurations();
    void aLatchIsInItsFrame();
    void theLayoutHasAVersion();
    void otherBytesAreNotARecording_data();
    void otherBytesAreNotARecording();
    void aMissingCorrectionIsNoticed();
};

void tst_RecordingRecipe::aRecordingComesBack()
{
    uint64_t frames = 0;
    for (uint32_t seed = 0; seed < 500; ++seed) {
        const auto recording = Maker(seed).make();
        const RecordingRecipe recipe = toRecipe(*recording);
        const auto read = fromRecipe(recipe);
        QVERIFY2(read, qPrintable(QString::number(seed)));
        QVERIFY(read->size() == recording->size());
        QCOMPARE(read->frames(), recording->frames());
        QCOMPARE(read->segments(), recording->segments());
        QCOMPARE(read->abated(), recording->abated());
        QCOMPARE(read->memoryUse(), recording->memoryUse());
        QCOMPARE(read->ticksPerSecond(), recording->ticksPerSecond());
        for (uint64_t frame = 0; frame < recording->frames(); ++frame)
            QVERIFY2(sameFrame(*read, *recording, frame), qPrintable(QString("%1: %2").arg(seed).arg(frame)));
        QVERIFY(toRecipe(*read).bytes == recipe.bytes && toRecipe(*read).corrections == recipe.corrections);
        frames += recording->frames();
    }
    QVERIFY2(frames > 20'000, qPrintable(QString::number(frames)));
}

/// Two minutes of a moving lens have thousands of segments with the same settings.
void tst_RecordingRecipe::sharedSettingsStayShared()
{
    auto settings = std::make_shared<RecordedSettings>();
    settings->presets[0].exposure.window = {0, 0, 64, 4};
    const Recording recording = framesWith(12'000, settings);
    const RecordingRecipe recipe = toRecipe(recording);
    QVERIFY2(recipe.bytes.size() < 1'200'000, qPrintable(QString::number(recipe.bytes.size())));
    QCOMPARE(fromRecipe(recipe)->memoryUse(), recording.memoryUse());
}

void tst_RecordingRecipe::anEmptyRecordingComesBack()
{
    const Recording empty({320, 256}, {}, {}, {});
    const auto read = fromRecipe(toRecipe(empty));
    QVERIFY(read && read->frames() == 0 && read->size() == empty.size() && !read->abated());
}

void tst_RecordingRecipe::aPartIsNotARecording_data()
{
    QTest::addColumn<uint32_t>("seed");
    QTest::addColumn<uint64_t>("firstRun");
    const std::array<const char *, 3> kinds{"frames", "sequences", "turns"};
    for (const uint32_t seed : {1U, 2U, 3U})
        for (uint64_t kind = 0; kind < kinds.size(); ++kind)
            QTest::addRow("%s %u", kinds.at(kind), seed) << seed << kind;
}

void tst_RecordingRecipe::aPartIsNotARecording()
{
    QFETCH(uint32_t, seed);
    QFETCH(uint64_t, firstRun);
    const RecordingRecipe recipe = toRecipe(*Maker(seed, firstRun).make());
    for (size_t size = 0; size < recipe.bytes.size(); size += size < 2000 ? 1 : 17) {
        RecordingRecipe part = recipe;
        part.bytes.resize(size);
        QVERIFY2(!fromRecipe(part), qPrintable(QString::number(size)));
    }
    RecordingRecipe longer = recipe;
    longer.bytes.push_back(0);
    QVERIFY(!fromRecipe(longer));
}

/// A program that stores other values has written such bytes, with a right checksum.
void tst_RecordingRecipe::damagedBytesAreHarmless()
{
    int read = 0;
    int refused = 0;
    for (uint32_t seed = 0; seed < 12; ++seed) {
        const RecordingRecipe whole = toRecipe(*Maker(seed, seed % 3).make());
        for (size_t place = 0; place < whole.bytes.size(); place += 5 + seed) {
            RecordingRecipe damaged = whole;
            damaged.bytes[place] ^= static_cast<uint8_t>(1U << (place % 8));
            const auto recording = fromRecipe(damaged);
            ++(recording ? read : refused);
            if (recording && recording->frames() > 0)
                QVERIFY(recording->abated() == recording->abated() && recording->memoryUse() > 0);
        }
        RecordingRecipe moved = whole;
        for (size_t place = 0; place < whole.bytes.size(); place += 50) {
            moved.bytes = whole.bytes;
            moved.bytes.insert(moved.bytes.begin() + static_cast<std::ptrdiff_t>(place), 4, 0);
            if (const auto recording = fromRecipe(moved))
                QVERIFY(recording->memoryUse() > 0);
        }
    }
    QVERIFY2(read > 100 && refused > 100, qPrintable(QString("%1 read, %2 refused").arg(read).arg(refused)));
}

void tst_RecordingRecipe::framesHaveTheSizeOfTheRecording()
{
    const auto recordingOf = [](const image::Window &window) {
        auto settings = std::make_shared<RecordedSettings>();
        settings->presets[0].exposure.window = window;
        return framesWith(1, settings);
    };
    QVERIFY(fromRecipe(toRecipe(recordingOf({8, 8, 64, 4}))));
    QVERIFY(!fromRecipe(toRecipe(recordingOf({8, 8, 65, 4}))));
    QVERIFY(!fromRecipe(toRecipe(recordingOf({8, 8, 64, 3}))));
}

void tst_RecordingRecipe::latchesAreThoseThatExist()
{
    for (const int latch : {0, 1, 2, 3, 200}) {
        auto settings = std::make_shared<RecordedSettings>();
        settings->presets[0].exposure.window = {0, 0, 64, 4};
        settings->irigLatch = static_cast<RecordedSettings::IrigLatch>(latch);
        QCOMPARE(fromRecipe(toRecipe(framesWith(1, settings))) != nullptr, latch <= 2);
    }
}

void tst_RecordingRecipe::timesOfTheLatchAreDurations_data()
{
    QTest::addColumn<double>("time");
    QTest::addColumn<bool>("valid");
    QTest::newRow("none") << 0.0 << true;
    QTest::newRow("far too long") << std::numeric_limits<double>::max() << true;
    QTest::newRow("negative") << -0.001 << false;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << false;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << false;
}

void tst_RecordingRecipe::timesOfTheLatchAreDurations()
{
    QFETCH(const double, time);
    QFETCH(const bool, valid);
    RecordedSettings settings;
    settings.presets[0].exposure.window = {0, 0, 64, 4};
    const auto isRead = [](const RecordedSettings &changed) {
        return fromRecipe(toRecipe(framesWith(1, std::make_shared<RecordedSettings>(changed)))) != nullptr;
    };
    RecordedSettings delayed = settings;
    delayed.integrationDelay = time;
    QCOMPARE(isRead(delayed), valid);
    RecordedSettings integrated = settings;
    integrated.presets[3].exposure.readout.integrationTime = time;
    QCOMPARE(isRead(integrated), valid);
}

/// Whatever the settings of a file are.
void tst_RecordingRecipe::aLatchIsInItsFrame()
{
    auto settings = std::make_shared<RecordedSettings>();
    settings->presets[0].exposure.window = {0, 0, 64, 4};
    settings->irigLatch = RecordedSettings::IntegrationEnds;
    settings->integrationDelay = std::numeric_limits<double>::max();
    const auto read = fromRecipe(toRecipe(framesWith(3, settings)));
    QVERIFY(read);
    // A frame takes 10 ms.
    QCOMPARE(read->irigTime(0), 10'000);
    QCOMPARE(read->irigTime(2), 30'000);
}

/// Other bytes need another RecordingRecipe::layout, so that older files are refused and not misread.
void tst_RecordingRecipe::theLayoutHasAVersion()
{
    auto settings = std::make_shared<RecordedSettings>();
    settings->presets[0].exposure.window = {0, 0, 64, 4};
    const RecordingRecipe recipe = toRecipe(framesWith(10, settings));
    const auto description
        = QString("%1: %2 bytes, %3").arg(RecordingRecipe::layout).arg(recipe.bytes.size()).arg(crc32(recipe.bytes));
    QCOMPARE(description, "3: 2026 bytes, 1201604135");
}

void tst_RecordingRecipe::otherBytesAreNotARecording_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("byte");
    // The first bytes are the width, the height, the number of ranges, and of the first range its number and count.
    QTest::newRow("negative width") << 3 << 0xFF;
    QTest::newRow("height above 16 bits") << 6 << 0x01;
    QTest::newRow("too many ranges") << 11 << 0xFF;
    QTest::newRow("first number after the frames") << 18 << 0xFF;
    QTest::newRow("more frames than the size") << 22 << 0x01;
}

void tst_RecordingRecipe::otherBytesAreNotARecording()
{
    QFETCH(int, place);
    QFETCH(int, byte);
    RecordingRecipe recipe = toRecipe(*Maker(1).make());
    recipe.bytes[static_cast<size_t>(place)] = static_cast<uint8_t>(byte);
    QVERIFY(!fromRecipe(recipe));
}

void tst_RecordingRecipe::aMissingCorrectionIsNoticed()
{
    RecordingRecipe recipe = toRecipe(*Maker(1).make());
    QVERIFY(!recipe.corrections.empty());
    recipe.corrections.pop_back();
    QVERIFY(!fromRecipe(recipe));
}

ZVT_TEST(tst_RecordingRecipe)
#include "tst_RecordingRecipe.moc"
