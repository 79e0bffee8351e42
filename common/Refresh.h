#pragma once

#include "common/CameraAccess.h"

#include <QDebug>
#include <QFutureWatcher>
#include <QThread>
#include <QtConcurrent>

#include <exception>
#include <utility>

/// When a model drops a new read, and how it sets its flags. A dropped read is not queued, and nothing is signalled.
enum class RefreshForm {
    Standard, ///< Drops a read while one runs. Sets `refreshing` to true, then `hasRefreshed` to false.
    Swapped, ///< As Standard, with the two flags in the other order.
    RefreshingOnly, ///< As Standard, but `hasRefreshed` stays true after the first read, so that sections stay enabled.
    FlagGuard, ///< Drops a read while `refreshing` is true. Never sets `hasRefreshed`.
    NoFlags, ///< Drops a read while one runs. Sets neither flag.
    Unguarded, ///< Drops nothing; publishes only the newest read. `refreshing` is true until the first read ends.
    NewestOnly ///< As Unguarded, but sets neither flag. For a poll or a write beside the other reads of a model.
};

/// Runs `task`, a Result(const CameraAccess &), on a thread of the global pool. Any thread, also a pool task. If the
/// task throws a std::exception, it is logged as a warning and the result is a default Result, as if every read had
/// failed. Without this the exception would end the program when the result is fetched.
template <class Result, class Task> QFuture<Result> launchRead(Task task, const CameraAccess &camera)
{
    return QtConcurrent::run([task = std::move(task), camera]() -> Result {
        try {
            return task(camera);
        } catch (const std::exception &error) {
            qWarning("a read of the camera ended early: %s", error.what());
            return Result{};
        }
    });
}

/// Runs the reads of a model: a task reads a Result on a thread of the global pool, then the model's finished slot is
/// called on the GUI thread to publish it. Owns the watcher and the flags `refreshing` and `hasRefreshed`. Emits the
/// model's signals `refreshingChanged` and `hasRefreshedChanged` if the model has them.
///
/// Declare it after all other members of the model, so that it is destroyed first. Its destructor neither cancels a
/// task nor waits for it: a task holds a CameraAccess and copies of its inputs, never the model. GUI thread only.
template <class Model, class Result> class Refresh
{
public:
    Refresh(Model *model, void (Model::*finished)(), RefreshForm form = RefreshForm::Standard)
        : m_model(model), m_form(form), m_refreshing(form == RefreshForm::Unguarded)
    {
        QObject::connect(&m_watcher, &QFutureWatcherBase::finished, model, finished);
    }

    bool refreshing() const { return m_refreshing; }
    bool hasRefreshed() const { return m_hasRefreshed; }

    /// Whether a task runs, or has ended and the finished slot has not fetched its result yet.
    bool running() const { return m_inFlight; }

    /// Starts `task`, a Result(const CameraAccess &), on a pool thread. Returns false if the form drops it.
    template <class Task> bool start(Task task)
    {
        if (!begin())
            return false;
        run(std::move(task));
        return true;
    }

    /// The first half of start(): sets and signals the flags. If the form drops the read, it only returns false.
    bool begin() { return begin(m_form); }

    /// As begin(), but sets the flags as `form` does: for a second kind of task with the same finished slot. Whether
    /// the read is dropped still depends on the form that the constructor got.
    bool begin(RefreshForm form)
    {
        Q_ASSERT(QThread::currentThread() == m_watcher.thread());
        if (busy())
            return false;
        if (form == RefreshForm::Swapped)
            setHasRefreshed(false);
        if (hasFlags(form) && form != RefreshForm::Unguarded)
            setRefreshing(true);
        if (form == RefreshForm::Standard)
            setHasRefreshed(false);
        return true;
    }

    /// The second half of start(): starts the task.
    template <class Task> void run(Task task) { watch(launchRead<Result>(std::move(task), CameraAccess::of(m_model))); }

    /// Instead of run(): watches `read`, which a task has already launched, and calls the finished slot when it ends.
    void watch(const QFuture<Result> &read)
    {
        Q_ASSERT(QThread::currentThread() == m_watcher.thread());
        Q_ASSERT(!m_inFlight || m_form == RefreshForm::Unguarded || m_form == RefreshForm::NewestOnly);
        m_inFlight = true;
        m_watcher.setFuture(read);
    }

    /// The future of the last read, so that a task can check whether that read still runs. Not running without a read.
    QFuture<Result> lastRead() const { return m_watcher.future(); }

    /// The result of the ended task. The finished slot calls this first. running() is false afterwards.
    Result result()
    {
        m_inFlight = false;
        return m_watcher.result();
    }

    /// Sets and signals the flags. The finished slot calls this last.
    void finish()
    {
        if (!hasFlags(m_form))
            return;
        if (m_form != RefreshForm::FlagGuard && !(m_form == RefreshForm::RefreshingOnly && m_hasRefreshed))
            setHasRefreshed(true);
        setRefreshing(false);
    }

private:
    static bool hasFlags(RefreshForm form) { return form != RefreshForm::NoFlags && form != RefreshForm::NewestOnly; }

    // Uses m_inFlight, not the state of the watcher: between the end of a task and the call of the finished slot the
    // watcher is already finished, and a new future would discard the result before it is published.
    bool busy() const
    {
        switch (m_form) {
        case RefreshForm::FlagGuard:
            return m_refreshing;
        case RefreshForm::Unguarded:
        case RefreshForm::NewestOnly:
            return false;
        default:
            return m_inFlight;
        }
    }

    void setRefreshing(bool refreshing)
    {
        m_refreshing = refreshing;
        if constexpr (requires(Model & model) { model.refreshingChanged(); })
            emit m_model->refreshingChanged();
    }

    void setHasRefreshed(bool hasRefreshed)
    {
        m_hasRefreshed = hasRefreshed;
        if constexpr (requires(Model & model) { model.hasRefreshedChanged(); })
            emit m_model->hasRefreshedChanged();
    }

    Model *m_model;
    RefreshForm m_form;
    bool m_refreshing;
    bool m_hasRefreshed = false;
    bool m_inFlight = false;
    QFutureWatcher<Result> m_watcher;
};
