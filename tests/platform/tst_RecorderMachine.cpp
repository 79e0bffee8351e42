#include "tests/platform/RandomOperator.h"
#include "tests/platform/RecorderRig.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

namespace
{

using Command = std::function<void(RecorderRig &)>;

Command call(RecorderRig::Command function)
{
    return [function](RecorderRig &rig) { function(rig.handle()); };
}

Command choose(RecorderRig::Setter function, uint8_t value)
{
    return [function, value](RecorderRig &rig) { function(rig.handle(), value); };
}

Command set(const char *name, bool on)
{
    return [name, on](RecorderRig &rig) { rig.set(name, on); };
}

const std::vector<Command> commands{
    call(zvtSsdArm),
    call(zvtSsdArm),
    call(zvtSsdArm),
    call(zvtSsdArm),
    call(zvtSsdArm),
    call(zvtSsdTrigger),
    call(zvtSsdTrigger),
    call(zvtSsdTrigger),
    call(zvtSsdRecordPause),
    call(zvtSsdRecordResume),
    call(zvtSsdRecordStop),
    call(zvtSsdSaveBuffer),
    call(zvtSsdPlayBuffer),
    [](RecorderRig &rig) { zvtSsdLoadMovie(rig.handle(), 0); },
    call(zvtSsdUnload),
    call(zvtSsdAutoDownloadDone),
    set("emulator./RecordStart", true),
    set("emulator./RecordStart", true),
    set("emulator./RecordStart", false),
    choose(zvtSetSsdRecordType, 0),
    choose(zvtSetSsdRecordType, 1),
    choose(zvtSetSsdRecordMode, 0),
    choose(zvtSetSsdRecordMode, 1),
    set("recorder.autoRearm", true),
    set("recorder.autoSave", true),
    set("recorder.gated", true),
    call(zvtSsdPauseBuffer),
    set("recorder.autoPlay", true),
};

} // namespace

/// The recorder by itself: its states and frames depend on the clock and the commands only, never on how often it is
/// read.
class tst_RecorderMachine : public Test
{
    Q_OBJECT

private slots:
    void looksDoNotChangeTheMachine();
    void looksChangeNothing_data();
    void looksChangeNothing();

private:
    struct Step {
        int64_t wait; ///< Milliseconds since the last step.
        size_t command; ///< A place in `commands`.
    };
    using Script = std::vector<Step>;

    static Script script(std::mt19937 &random);
    static QString result(RecorderRig &rig);
    static QStringList run(const Script &script, const char *recorder, std::mt19937 *looks);
};

void tst_RecorderMachine::looksDoNotChangeTheMachine()
{
    for (uint32_t seed = 0; seed < 1000; ++seed) {
        const auto expected = runMachine(seed, false);
        const auto results = runMachine(seed, true);
        for (size_t i = 0; i < expected.size(); ++i)
            QVERIFY2(results[i] == expected[i],
                     ("seed " + std::to_string(seed) + ": " + results[i] + ", not " + expected[i]).c_str());
    }
}

tst_RecorderMachine::Script tst_RecorderMachine::script(std::mt19937 &random)
{
    Script script;
    for (int step = 0; step < 25; ++step) {
        const double wait = std::pow(10.0, double(random() % 4000) / 1000);
        script.push_back({int64_t(wait), random() % commands.size()});
    }
    return script;
}

QString tst_RecorderMachine::result(RecorderRig &rig)
{
    QString text = QStringLiteral("%1 %2 %3 %4")
                       .arg(rig.state())
                       .arg(rig.acquired())
                       .arg(rig.playbackFrame())
                       .arg(rig.number<int64_t>(zvtGetSsdDriveSpaceUsed));
    const auto &memory = rig.recorder().memory();
    if (!memory || memory->frames() == 0)
        return text;
    text += QStringLiteral(" %1-%2 in %3 segments")
                .arg(memory->start(0).number)
                .arg(memory->start(memory->frames() - 1).number)
                .arg(memory->segments());
    // The detector cools down.
    for (uint64_t frame = 0; frame < memory->frames(); frame += 1 + memory->frames() / 5)
        text += QStringLiteral(" %1").arg(rig.recorder().recorded(*memory, frame).exposure.readout.warmth, 0, 'g', 17);
    return text;
}

/// Returns the results after each step. With `looks` the time between passes in steps, and each is looked at.
QStringList tst_RecorderMachine::run(const Script &script, const char *recorder, std::mt19937 *looks)
{
    RecorderRig rig;
    rig.openWith(recorder);
    QStringList results;
    for (const Step &step : script) {
        int64_t left = step.wait;
        while (looks && left > 0) {
            const auto wanted = int64_t(std::pow(10.0, double((*looks)() % 4000) / 1000));
            const int64_t passed = std::min(left, wanted);
            rig.wait(passed);
            left -= passed;
            rig.state();
        }
        rig.wait(left);
        results.append(result(rig));
        commands[step.command](rig);
        results.append(result(rig));
    }
    return results;
}

void tst_RecorderMachine::looksChangeNothing_data()
{
    QTest::addColumn<QByteArray>("recorder");
    QTest::addColumn<int>("seeds");
    QTest::newRow("as built") << QByteArray("{}") << 20;
    QTest::newRow("small") << QByteArray(R"({"memoryBytes": 200000, "driveBytes": 900000, "frames": 80})") << 20;
    // 62.5 frames/s, of which 50 fit before the drive.
    QTest::newRow("slow drive") << QByteArray(R"({"mode": 1, "driveBytesPerSecond": 40000, "fifoBytes": 32000,
                                                   "type": 1, "duration": 7000})")
                                << 20;
}

void tst_RecorderMachine::looksChangeNothing()
{
    QFETCH(QByteArray, recorder);
    QFETCH(int, seeds);
    for (int seed = 0; seed < seeds; ++seed) {
        std::mt19937 random(static_cast<uint32_t>(seed));
        const Script steps = script(random);
        const QStringList expected = run(steps, recorder.constData(), nullptr);
        const QStringList results = run(steps, recorder.constData(), &random);
        if (results != expected)
            qInfo("seed %d", seed);
        QCOMPARE(results, expected);
    }
}

ZVT_TEST(tst_RecorderMachine)
#include "tst_RecorderMachine.moc"
