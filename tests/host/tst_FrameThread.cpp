#include "standalone/desk/FrameThread.h"
#include "tests/host/PictureRig.h"
#include "tests/support/Test.h"

#include <atomic>

using namespace std::chrono_literals;

/// The thread on which the desk makes pictures.
class tst_FrameThread : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void makesFramesWhileItRuns();
    void isIdleUntilItRuns();
    void endsItsThreadWhenItStops();
    void mayBeStoppedAndStartedAtOnce();
    void startsAgainBeforeItsEndIsNoticed();
    void framesAreMadeOnItsThread();
    void neverMoreThanOneFrameIsBeingMade();
    void slowFramesAreMadeLessOften();
    void quickFramesAreMadeMoreOftenAgain();
    void framesOfTheLastOrderAreDropped();
    void mayDieWhileItMakesAFrame();

private:
    using Shown = std::shared_ptr<const ShownFrame>;

    std::unique_ptr<PictureRig> m_rig;
    std::atomic<int64_t> m_duration{0}; ///< Of each frame, in milliseconds.
    std::atomic<int64_t> m_time{0};
    std::atomic<int> m_looks{0};

    /// A clock with which each frame takes m_duration, and the moment between two frames nothing.
    FrameThread::Now clock()
    {
        return [this] {
            // The second look of each pair is the end of a frame.
            if (m_looks++ % 2 == 1)
                m_time += m_duration;
            return std::chrono::milliseconds(m_time);
        };
    }
};

void tst_FrameThread::init()
{
    Test::init();
    m_rig = std::make_unique<PictureRig>();
    QVERIFY(m_rig->connect());
    m_duration = 0;
    m_looks = 0;
}

void tst_FrameThread::cleanup() { m_rig.reset(); }

void tst_FrameThread::makesFramesWhileItRuns()
{
    FrameThread thread;
    std::vector<Shown> frames;
    connect(&thread, &FrameThread::made, this, [&](const Shown &frame) { frames.push_back(frame); });
    thread.setOrder(m_rig->order());
    thread.setRunning(true);
    QTRY_COMPARE(frames.size(), size_t{1});
    emulator::Clock::advance(100);
    QTRY_COMPARE(frames.size(), size_t{2});
    QCOMPARE(frames[1]->measured->frame.start.number, frames[0]->measured->frame.start.number + 10);
}

void tst_FrameThread::isIdleUntilItRuns()
{
    FrameThread thread(clock());
    thread.setOrder(m_rig->order());
    QCoreApplication::processEvents();
    QVERIFY(!thread.isRunning());
    QVERIFY(!thread.hasThread());
    QCOMPARE(m_looks, 0);
}

void tst_FrameThread::endsItsThreadWhenItStops()
{
    FrameThread thread(clock());
    int frames = 0;
    connect(&thread, &FrameThread::made, this, [&] { ++frames; });
    thread.setOrder(m_rig->order());
    thread.setRunning(true);
    QTRY_COMPARE(frames, 1);
    thread.setRunning(false);
    QVERIFY(!thread.isRunning());
    QTRY_VERIFY(!thread.hasThread());
    const int looks = m_looks;
    emulator::Clock::advance(1000);
    // Three periods of a timer that would ask for frames.
    int periods = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] { ++periods; });
    timer.start(FramePace::shortest);
    QTRY_VERIFY(periods >= 3);
    QCOMPARE(m_looks, looks);
    QCOMPARE(frames, 1);
    thread.setRunning(true);
    QTRY_COMPARE(frames, 2);
}

void tst_FrameThread::mayBeStoppedAndStartedAtOnce()
{
    FrameThread thread;
    int frames = 0;
    connect(&thread, &FrameThread::made, this, [&] { ++frames; });
    thread.setOrder(m_rig->order(FrameOrder::Video));
    for (int i = 0; i < 50; ++i) {
        thread.setRunning(true);
        thread.setRunning(false);
        if (i % 5 == 0)
            QCoreApplication::processEvents();
    }
    QCOMPARE(frames, 0);
    thread.setRunning(true);
    QTRY_VERIFY(frames > 1);
}

void tst_FrameThread::startsAgainBeforeItsEndIsNoticed()
{
    FrameThread thread;
    int frames = 0;
    connect(&thread, &FrameThread::made, this, [&] { ++frames; });
    thread.setOrder(m_rig->order());
    for (int i = 1; i <= 5; ++i) {
        thread.setRunning(true);
        QTRY_COMPARE(frames, i);
        thread.setRunning(false);
        // No event is delivered meanwhile.
        while (thread.hasThread())
            QThread::yieldCurrentThread();
    }
    QTRY_VERIFY(!thread.hasThread());
}

void tst_FrameThread::framesAreMadeOnItsThread()
{
    std::atomic<Qt::HANDLE> place{nullptr};
    FrameThread thread([&place] {
        place = QThread::currentThreadId();
        return 0ns;
    });
    thread.setOrder(m_rig->order());
    thread.setRunning(true);
    QTRY_VERIFY(place != nullptr);
    QVERIFY(place != QThread::currentThreadId());
}

void tst_FrameThread::neverMoreThanOneFrameIsBeingMade()
{
    // The frame waits for the camera's lock. Many periods pass meanwhile.
    FrameThread thread(clock());
    int looksAtFirst = 0;
    connect(&thread, &FrameThread::made, this, [&] {
        if (looksAtFirst == 0)
            looksAtFirst = m_looks;
    });
    thread.setOrder(m_rig->order(FrameOrder::Video));
    {
        const std::lock_guard lock(m_rig->camera().mutex());
        thread.setRunning(true);
        QTRY_COMPARE(m_looks, 1);
        int periods = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++periods; });
        timer.start(FramePace::shortest);
        QTRY_VERIFY(periods >= 4);
        QCOMPARE(m_looks, 1);
        QCOMPARE(looksAtFirst, 0);
    }
    // The missed frames are not made up for.
    QTRY_COMPARE(looksAtFirst, 2);
}

void tst_FrameThread::slowFramesAreMadeLessOften()
{
    m_duration = 21;
    FrameThread thread(clock());
    thread.setOrder(m_rig->order());
    QCOMPARE(thread.period(), 40ms);
    thread.setRunning(true);
    QTRY_COMPARE(thread.period(), 80ms);
    m_duration = 41;
    QTRY_COMPARE(thread.period(), 160ms);
}

void tst_FrameThread::quickFramesAreMadeMoreOftenAgain()
{
    m_duration = 21;
    FrameThread thread(clock());
    thread.setOrder(m_rig->order());
    thread.setRunning(true);
    QTRY_COMPARE(thread.period(), 80ms);
    m_duration = 1;
    QTRY_COMPARE(thread.period(), 40ms);
}

void tst_FrameThread::framesOfTheLastOrderAreDropped()
{
    FrameThread thread(clock());
    std::vector<Shown> frames;
    connect(&thread, &FrameThread::made, this, [&](const Shown &frame) { frames.push_back(frame); });
    thread.setOrder(m_rig->order());
    std::unique_lock lock(m_rig->camera().mutex());
    thread.setRunning(true);
    QTRY_COMPARE(m_looks, 1);
    thread.setOrder(m_rig->order(FrameOrder::Video));
    lock.unlock();
    QTRY_VERIFY(!frames.empty());
    for (const Shown &frame : frames)
        QVERIFY(frame->picture.size() != QSize(640, 512));
}

void tst_FrameThread::mayDieWhileItMakesAFrame()
{
    for (int i = 0; i < 5; ++i) {
        FrameThread thread(clock());
        thread.setOrder(m_rig->order(FrameOrder::Video));
        const int before = m_looks;
        thread.setRunning(true);
        QTRY_VERIFY(m_looks > before);
    }
}

ZVT_TEST(tst_FrameThread)
#include "tst_FrameThread.moc"
