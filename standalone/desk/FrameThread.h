#pragma once

#include "standalone/desk/FrameMaker.h"
#include "standalone/desk/FramePace.h"

#include <QObject>
#include <QThread>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

/// Makes pictures on a thread of its own, while it runs. The threads of the global pool are for reads of the camera.
/// GUI thread only.
///
/// A timer of the GUI thread asks for a frame once in each period of a FramePace. At most one frame is being made;
/// while it is, nothing is asked for, so the next frame is always the newest. While it is stopped, there is neither
/// timer nor thread, and no frame is kept.
class FrameThread : public QObject
{
    Q_OBJECT

public:
    /// Returns a time that never runs backwards. Called on the frame thread.
    using Now = std::function<std::chrono::nanoseconds()>;

    explicit FrameThread(Now now = &steadyNow, QObject *parent = nullptr);
    /// Waits for the end of a frame that is being made.
    ~FrameThread() override;

    /// Shows another camera, view or preset, from the next frame on. A frame of the last order that is being made is
    /// dropped.
    void setOrder(const FrameOrder &order);

    /// Starts and stops. Does not wait for a frame that is being made, which is dropped.
    void setRunning(bool running);
    bool isRunning() const { return m_running; }
    /// Whether the thread exists. It may exist a little longer than isRunning().
    bool hasThread() const { return m_thread.isRunning(); }

    /// The present period of the frames.
    std::chrono::milliseconds period() const { return m_timer.intervalAsDuration(); }

signals:
    /// A frame that differs from the one before it.
    void made(const std::shared_ptr<const ShownFrame> &frame);

private:
    static std::chrono::nanoseconds steadyNow();

    void startThread();
    void finishedThread();
    void forgetFrames();
    void ask();
    void take(const std::shared_ptr<const ShownFrame> &frame, int round, std::chrono::nanoseconds duration);

    Now m_now;
    FrameOrder m_order;
    FramePace m_pace;
    QTimer m_timer;
    bool m_running = false;
    bool m_making = false; ///< A frame is being made.
    int m_round = 0; ///< Counts orders and stops. Frames of earlier rounds are dropped.
    /// Used by the frame thread only, while it runs.
    FrameMaker m_maker;
    /// Lives on the frame thread, to which its events go.
    QObject m_worker;
    QThread m_thread;
};
