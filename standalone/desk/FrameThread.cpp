#include "standalone/desk/FrameThread.h"

#include <QCoreApplication>

#include <utility>

FrameThread::FrameThread(Now now, QObject *parent) : QObject(parent), m_now(std::move(now))
{
    m_thread.setObjectName(QStringLiteral("desk frames"));
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(m_pace.period());
    connect(&m_timer, &QTimer::timeout, this, &FrameThread::ask);
    connect(&m_thread, &QThread::finished, this, &FrameThread::finishedThread);
    m_worker.moveToThread(&m_thread);
}

FrameThread::~FrameThread()
{
    m_thread.quit();
    m_thread.wait();
}

std::chrono::nanoseconds FrameThread::steadyNow() { return std::chrono::steady_clock::now().time_since_epoch(); }

void FrameThread::setOrder(const FrameOrder &order)
{
    if (order == m_order)
        return;
    m_order = order;
    ++m_round;
}

void FrameThread::setRunning(bool running)
{
    if (running == m_running)
        return;
    m_running = running;
    ++m_round;
    if (!running) {
        m_timer.stop();
        m_thread.quit();
        return;
    }
    // A thread that is still ending is started again when it has ended.
    if (!m_thread.isRunning())
        startThread();
}

void FrameThread::startThread()
{
    forgetFrames();
    m_pace = {};
    m_thread.start();
    m_timer.start(m_pace.period());
    ask();
}

void FrameThread::finishedThread()
{
    // The signal comes through the event loop, so the thread may have been started again meanwhile.
    if (m_thread.isRunning())
        return;
    forgetFrames();
    if (m_running)
        startThread();
}

/// Removes what a thread that has ended, or is about to end, leaves.
void FrameThread::forgetFrames()
{
    m_thread.wait();
    // A frame that was asked for at the end has not been made.
    QCoreApplication::removePostedEvents(&m_worker);
    m_making = false;
    m_maker = {};
}

void FrameThread::ask()
{
    if (m_making || !m_order.camera)
        return;
    m_making = true;
    QMetaObject::invokeMethod(
        &m_worker,
        [this, order = m_order, round = m_round] {
            const auto start = m_now();
            const auto frame = m_maker.make(order);
            const auto duration = m_now() - start;
            QMetaObject::invokeMethod(
                this, [this, frame, round, duration] { take(frame, round, duration); }, Qt::QueuedConnection);
        },
        Qt::QueuedConnection);
}

void FrameThread::take(const std::shared_ptr<const ShownFrame> &frame, int round, std::chrono::nanoseconds duration)
{
    m_making = false;
    if (round != m_round)
        return;
    m_pace.add(duration);
    if (m_timer.intervalAsDuration() != m_pace.period())
        m_timer.start(m_pace.period());
    if (frame)
        emit made(frame);
}
