#include "platform/emulator/devices/FrameClock.h"
#include "platform/hlxcamzvt/makeController.h"
#include "tests/platform/FrameRig.h"
#include "tests/support/Test.h"

#include <mutex>

using emulator::Clock;

/// The stream of a camera's frames.
class tst_videoStream : public Test
{
    Q_OBJECT

private slots:
    void aFrameComesWithinAPeriodOfAStart();

private:
    /// The number of the newest frame, and the milliseconds since its beginning.
    static std::pair<uint64_t, double> newest(FrameRig &rig)
    {
        const std::lock_guard lock(rig.camera().mutex());
        const auto start = rig.camera().device<emulator::FrameClock>()->newest(0);
        if (!start)
            return {};
        return {start->number, double(Clock::now()) - double(start->microseconds) / 1000};
    }
};

// The sensor makes frames also while nothing is streamed.
void tst_videoStream::aFrameComesWithinAPeriodOfAStart()
{
    for (const int period : {10, 40}) {
        FrameRig rig;
        QVERIFY(rig.set("sensor.frameRate", 1000.0 / period));
        const auto controller = hlx::cam::makeController(rig.camera().shared_from_this());
        const auto source = controller->GetVideoSource();
        for (const int stopped : {0, 3, 1000, 12'345}) {
            source->StopStream();
            QVERIFY(!rig.sensor().streaming());
            Clock::advance(stopped);
            const uint64_t before = newest(rig).first;
            source->StartStream();
            QVERIFY(rig.sensor().streaming());
            Clock::advance(period);
            const auto [number, age] = newest(rig);
            QCOMPARE(number, before + 1);
            QVERIFY2(age < period, QByteArray::number(age));
            QVERIFY(!rig.newest().empty());
        }
    }
}

ZVT_TEST(tst_videoStream)
#include "tst_videoStream.moc"
