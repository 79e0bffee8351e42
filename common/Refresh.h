#pragma once

#include "common/CameraAccess.h"

#include <QDebug>
#include <QFutureWatcher>
#include <QThread>
#include <QtConcurrent>

#include <exception>
#include <utility>

/// How a model starts its reads. "Dropped" means: nothing is started, nothing is emitted, nothing is queued.
enum class Form {
    Standard, ///< A second read while one runs is dropped. `refreshing` true, then `hasRefreshed` false.
    Swapped, ///< The same with the flags in the other order.
    RefreshingOnly, ///< The same, but `hasRefreshed` rises once and stays: a section stays enabled in later reads.
    FlagGuard, ///< Dropped by the `refreshing` flag itself. No `hasRefreshed`.
    NoFlags, ///< Dropped while one runs; neither flag.
    Unguarded, ///< Never dropped; the newest read is the one that is published. `refreshing` starts true.
    NewestOnly ///< The same with neither flag, for a poll or a write beside a model's other reads.
};

/// Reads a Result on a thread of the global pool, beside the caller, which may be a task itself. An exception would end
/// the program when somebody asks for the result; it counts as a read in which all failed. Any thread.
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

/// The refresh contract: reads a Result on a thread of the global pool and brings it to the model's finished slot on
/// the GUI thread. Owns the watcher and the flags `refreshing` and `hasRefreshed`, and emits the model's signals
/// `refreshingChanged` and `hasRefreshedChanged`, as far as it has them.
///
/// It is the last member of its model, so that it dies first. Its death neither cancels nor waits: a task holds a
/// CameraAccess and copies of its inputs, and never the model. GUI thread only.
template <class Model, class Result> class Refresh
{
public:
    Refresh(Model *model, void (Model::*finished)(), Form form = Form::Standard)
        : m_model(model), m_form(form), m_refreshing(form == Form::Unguarded)
    {
        QObject::connect(&m_watcher, &QFutureWatcherBase::finished, model, finished);
    }

    bool refreshing() const { return m_refreshing; }
    bool hasRefreshed() const { return m_hasRefreshed; }

    /// A task runs, or its result waits for the finished slot.
    bool running() const { return m_inFlight; }

    /// Starts `task`, called as Result(const CameraAccess &) on a pool thread; false if the form drops it.
    template <class Task> bool start(Task task)
    {
        if (!begin())
            return false;
        run(std::move(task));
        return true;
    }

    /// The first half of start(): false if the form drops the read, else the flags are set and signalled.
    bool begin() { return begin(m_form); }

    /// The same with the flags of another form, for a second kind of task behind the same finished slot.
    bool begin(Form form)
    {
        Q_ASSERT(QThread::currentThread() == m_watcher.thread());
        if (busy())
            return false;
        if (form == Form::Swapped)
            setHasRefreshed(false);
        if (hasFlags(form) && form != Form::Unguarded)
            setRefreshing(true);
        if (form == Form::Standard)
            setHasRefreshed(false);
        return true;
    }

    /// The second half of start(): the task itself.
    template <class Task> void run(Task task)
    {
        follow(launchRead<Result>(std::move(task), CameraAccess::of(m_model)));
    }

    /// In place of run(): the read runs already, since another task has launched it.
    void follow(const QFuture<Result> &read)
    {
        Q_ASSERT(QThread::currentThread() == m_watcher.thread());
        Q_ASSERT(!m_inFlight || m_form == Form::Unguarded || m_form == Form::NewestOnly);
        m_inFlight = true;
        m_watcher.setFuture(read);
    }

    /// The read that was started last, for a task that must know whether it still runs.
    QFuture<Result> last() const { return m_watcher.future(); }

    /// What the task read; the first act of the finished slot. From here on a new read may start.
    Result result()
    {
        m_inFlight = false;
        return m_watcher.result();
    }

    /// Sets and signals the flags; the last act of the finished slot.
    void finish()
    {
        if (!hasFlags(m_form))
            return;
        if (m_form != Form::FlagGuard && !(m_form == Form::RefreshingOnly && m_hasRefreshed))
            setHasRefreshed(true);
        setRefreshing(false);
    }

private:
    static bool hasFlags(Form form) { return form != Form::NoFlags && form != Form::NewestOnly; }

    // Between the end of a task and its finished slot the watcher says that nothing runs; a new future would throw the
    // unpublished result away. So the member keeps a flag of its own.
    bool busy() const
    {
        switch (m_form) {
        case Form::FlagGuard:
            return m_refreshing;
        case Form::Unguarded:
        case Form::NewestOnly:
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
    Form m_form;
    bool m_refreshing;
    bool m_hasRefreshed = false;
    bool m_inFlight = false;
    QFutureWatcher<Result> m_watcher;
};
