#include "platform/emulator/MemoryWriter.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QSemaphore>
#include <QSet>
#include <QThread>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

using emulator::MemoryWriter;
using namespace std::chrono_literals;

namespace
{

// Milliseconds. A correct writer passes at once where something must happen.
constexpr int longWait = 20'000;
constexpr int shortWait = 50; // For a thing that must not happen.

/// The threads of this process.
QSet<QString> threads()
{
    const QStringList names = QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return {names.begin(), names.end()};
}

/// A write that succeeds.
bool release(QSemaphore &writes)
{
    writes.release();
    return true;
}

} // namespace

class tst_MemoryWriter : public Test
{
    Q_OBJECT

private slots:
    void startsItsThreadWithTheFirstMark();
    void writesOnAThreadOfItsOwn();
    void aMarkDoesNotWaitForAWrite();
    void writesOnceInAnInterval();
    void writesAgainAfterTheInterval();
    void aFlushWaitsForARunningWrite();
    void aFlushWithoutAMarkWritesNothing();
    void aStoppedWriterWritesOnlyWhenFlushed();
    void eachFlushTriesAFailedWriteAgain();
    void theThreadTriesAFailedWriteAgainWithTheNextMark();
    void writesOneAtATimeFromManyThreads();
};

void tst_MemoryWriter::startsItsThreadWithTheFirstMark()
{
    const QSet<QString> before = threads();
    MemoryWriter writer([] { return true; });
    writer.flush();
    QCOMPARE((threads() - before).size(), 0);
    writer.mark();
    QCOMPARE((threads() - before).size(), 1);
    writer.mark();
    QCOMPARE((threads() - before).size(), 1);
    writer.stop();
    QCOMPARE((threads() - before).size(), 0);
}

void tst_MemoryWriter::writesOnAThreadOfItsOwn()
{
    QSemaphore writes;
    std::atomic<QThread *> thread = nullptr;
    MemoryWriter writer([&] {
        thread = QThread::currentThread();
        return release(writes);
    });
    writer.mark();
    QVERIFY(writes.tryAcquire(1, longWait));
    QVERIFY(thread && thread != QThread::currentThread());
}

void tst_MemoryWriter::aMarkDoesNotWaitForAWrite()
{
    QSemaphore started;
    QSemaphore mayEnd;
    std::atomic<int> writes = 0;
    MemoryWriter writer([&] {
        ++writes;
        started.release();
        mayEnd.acquire();
        return true;
    });
    writer.mark();
    QVERIFY(started.tryAcquire(1, longWait));
    for (int change = 0; change < 64; ++change)
        writer.mark();
    mayEnd.release(2);
    // The changes during the first write need a second one.
    writer.flush();
    QCOMPARE(writes.load(), 2);
}

void tst_MemoryWriter::writesOnceInAnInterval()
{
    QSemaphore writes;
    MemoryWriter writer([&] { return release(writes); }, 1h);
    writer.mark();
    QVERIFY(writes.tryAcquire(1, longWait));
    for (int change = 0; change < 64; ++change)
        writer.mark();
    QVERIFY(!writes.tryAcquire(1, shortWait));
    writer.flush();
    QVERIFY(writes.tryAcquire());
    writer.flush();
    QVERIFY(!writes.tryAcquire());
}

void tst_MemoryWriter::writesAgainAfterTheInterval()
{
    QSemaphore writes;
    MemoryWriter writer([&] { return release(writes); }, 1ms);
    for (int change = 0; change < 5; ++change) {
        writer.mark();
        QVERIFY(writes.tryAcquire(1, longWait));
    }
}

void tst_MemoryWriter::aFlushWaitsForARunningWrite()
{
    QSemaphore started;
    QSemaphore mayEnd;
    QSemaphore flushed;
    MemoryWriter writer([&] {
        started.release();
        mayEnd.acquire();
        return true;
    });
    writer.mark();
    QVERIFY(started.tryAcquire(1, longWait));
    std::thread flush([&] {
        writer.flush();
        flushed.release();
    });
    const bool tooEarly = flushed.tryAcquire(1, shortWait);
    mayEnd.release();
    flush.join();
    QVERIFY(!tooEarly);
}

void tst_MemoryWriter::aFlushWithoutAMarkWritesNothing()
{
    int writes = 0;
    MemoryWriter writer([&] { return ++writes > 0; });
    writer.flush();
    QCOMPARE(writes, 0);
}

void tst_MemoryWriter::aStoppedWriterWritesOnlyWhenFlushed()
{
    int writes = 0;
    MemoryWriter writer([&] { return ++writes > 0; });
    writer.stop();
    const QSet<QString> before = threads();
    writer.mark();
    QCOMPARE((threads() - before).size(), 0);
    QCOMPARE(writes, 0);
    writer.flush();
    QCOMPARE(writes, 1);
    writer.stop();
}

void tst_MemoryWriter::eachFlushTriesAFailedWriteAgain()
{
    int writes = 0;
    bool possible = false;
    MemoryWriter writer([&] {
        ++writes;
        return possible;
    });
    // At the end of a process, the thread has ended before the flush.
    writer.stop();
    writer.mark();
    writer.flush();
    writer.flush();
    QCOMPARE(writes, 2);
    possible = true;
    writer.flush();
    QCOMPARE(writes, 3);
    writer.flush();
    QCOMPARE(writes, 3);
}

// A disk that stays full is not written to all the time.
void tst_MemoryWriter::theThreadTriesAFailedWriteAgainWithTheNextMark()
{
    QSemaphore writes;
    MemoryWriter writer(
        [&] {
            writes.release();
            return false;
        },
        1ms);
    writer.mark();
    QVERIFY(writes.tryAcquire(1, longWait));
    QVERIFY(!writes.tryAcquire(1, shortWait));
    writer.mark();
    QVERIFY(writes.tryAcquire(1, longWait));
}

void tst_MemoryWriter::writesOneAtATimeFromManyThreads()
{
    std::atomic<int> value = 0;
    std::atomic<int> running = 0;
    std::atomic<int> overlaps = 0;
    int written = -1;
    {
        MemoryWriter writer(
            [&] {
                overlaps += running++;
                written = value;
                --running;
                return true;
            },
            0ms);
        std::vector<std::thread> callers;
        for (int caller = 0; caller < 4; ++caller)
            callers.emplace_back([&] {
                for (int change = 0; change < 500; ++change) {
                    ++value;
                    writer.mark();
                    if (change % 50 == 0)
                        writer.flush();
                }
            });
        for (std::thread &caller : callers)
            caller.join();
        writer.flush();
        QCOMPARE(written, 2000);
    }
    QCOMPARE(overlaps.load(), 0);
}

ZVT_TEST(tst_MemoryWriter)
#include "tst_MemoryWriter.moc"
