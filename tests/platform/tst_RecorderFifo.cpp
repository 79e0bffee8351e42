#include "platform/emulator/devices/RecorderFifo.h"
#include "tests/support/Test.h"

using emulator::RecorderFifo;

/// The memory before the drive. Times are in microseconds.
class tst_RecorderFifo : public Test
{
    Q_OBJECT

private slots:
    void aFrameThatDoesNotFitIsLost();
    void framesThatTheDriveTakesInTimeNeedNoLoop();
    void onlyAnEmptiedMemoryKeepsUp();
};

void tst_RecorderFifo::aFrameThatDoesNotFitIsLost()
{
    // Three frames of 100 bytes; the drive takes one in 100 us.
    RecorderFifo fifo(300, 1'000'000, 100);
    for (const bool fits : {true, true, true, false})
        QCOMPARE(fifo.put(0), fits);
    QVERIFY(!fifo.put(99));
    QVERIFY(fifo.put(100) && !fifo.put(199) && fifo.put(200));
    QCOMPARE(fifo.microsecondsToEmpty(200), int64_t(300));
    QCOMPARE(fifo.microsecondsToEmpty(450), int64_t(50));
    QCOMPARE(fifo.microsecondsToEmpty(1000), int64_t(0));
}

void tst_RecorderFifo::framesThatTheDriveTakesInTimeNeedNoLoop()
{
    RecorderFifo each(300, 1'000'000, 100);
    RecorderFifo all = each;
    for (int64_t time = 0; time <= 1100; time += 110)
        QVERIFY(each.put(time));
    QVERIFY(all.keepsUpWith(110));
    all.putAll(1100);
    for (const int64_t time : {1100, 1130, 1199, 1200})
        QCOMPARE(all.microsecondsToEmpty(time), each.microsecondsToEmpty(time));
}

void tst_RecorderFifo::onlyAnEmptiedMemoryKeepsUp()
{
    RecorderFifo fifo(300, 1'000'000, 100);
    QVERIFY(fifo.keepsUpWith(100) && !fifo.keepsUpWith(99));
    QVERIFY(fifo.put(0) && fifo.keepsUpWith(100));
    QVERIFY(fifo.put(0) && !fifo.keepsUpWith(1000));
    QVERIFY(fifo.put(250) && fifo.keepsUpWith(100));
    // No frame fits at all.
    QVERIFY(!RecorderFifo(99, 1'000'000, 100).keepsUpWith(1000));
}

ZVT_TEST(tst_RecorderFifo)
#include "tst_RecorderFifo.moc"
