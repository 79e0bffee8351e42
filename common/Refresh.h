#pragma once

#include "common/CameraAccess.h"

#include <QDebug>
#include <QFutureWatcher>
#include <QThread>
#include <QtConcurrent>

#include <exception>
#include <utility>

/// How a model starts its reads and sets its flags. A dropped read starts nothing, signals nothing and is not queued.
enum class RefreshForm {
    Standard, ///< Drops a read while one runs. Sets `refreshing` to true, then `hasRefreshed` to false.
    Swapped, ///< As Standard, with the two flags in the other order.
    RefreshingOnly, ///< As Standard, but `hasRefreshed` stays true after the first read, so a section stays enabled.
    FlagGuard, ///< Drops a read while `refreshing` is true. No `hasRefreshed`.
    NoFlags, ///< Drops a read while one runs. Neither flag.
    Unguarded, ///< Drops nothing; publishes the newest read only. `refreshing` starts true.
    NewestOnly ///< As Unguarded with neither flag, for a poll or a write beside the other reads of a model.
};

/// Runs `task`, a Result(const CameraAccess &), on a thread of the global pool. The caller may be a pool task itself.
/// An exception of the task is logged as a warning, and the result is then a default Result, as if every read had
/// failed: an exception in the future would end the program when its result is fetched. Any thread.
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

/// The refresh contract: reads a Result on a thread of the global pool, then calls the model's finished slot on the GUI
/// thread. Owns the watcher and the flags `refreshing` and `hasRefreshed`. Emits the model's signals
/// `refreshingChanged` and `hasRefreshedChanged` if the model has them.
///
/// It is the last member of its model, so that it is destroyed first. Its destructor neither cancels a task nor waits
/// for it: a task holds a CameraAccess and copies of its inputs, never the model. GUI thread only.
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

    /// Whether a task runs or its result waits for the finished slot.
    bool running() const { return m_inFlight; }

    /// Starts `task`, a Result(const CameraAccess &), on a pool thread. Returns false if the form drops it.
    template <class Task> bool start(Task task)
    {
        if (!begin())
            return false;
        run(std::move(task));
        return true;
    }

    /// The first half of start(): sets and signals the flags. Returns false, without this, if the form drops the read.
    bool begin() { return begin(m_form); }

    /// As begin(), with the flags of another form, for a second kind of task with the same finished slot.
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

    /// In place of run(): calls the finished slot after a read that another task has launched already.
    void watch(const QFuture<Result> &read)
    {
        Q_ASSERT(QThread::currentThread() == m_watcher.thread());
        Q_ASSERT(!m_inFlight || m_form == RefreshForm::Unguarded || m_form == RefreshForm::NewestOnly);
        m_inFlight = true;
        m_watcher.setFuture(read);
    }

    /// The read that was started last, by which a task sees whether it still runs. Not running if there was none.
    QFuture<Result> lastRead() const { return m_watcher.future(); }

    /// The result of the task. The finished slot calls this first; afterwards a new read may start.
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

    // Uses m_inFlight and not the watcher's state: after the end of a task the watcher counts as finished before the
    // finished slot has run, and a new future would then discard the unpublished result.
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
