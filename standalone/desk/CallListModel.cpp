#include "standalone/desk/CallListModel.h"

#include "platform/emulator/CallRecording.h"
#include "platform/emulator/Camera.h"
#include "platform/emulator/Status.h"
#include "standalone/StandaloneModel.h"
#include "standalone/desk/CallBuffer.h"
#include "standalone/desk/pictureFiles.h"

#include <QDateTime>

#include <algorithm>
#include <iterator>
#include <utility>

using emulator::CallEvent;

namespace
{

QString statusText(int status)
{
    switch (status) {
    case emulator::Ok:
        return CallListModel::tr("OK");
    case emulator::InvalidHandle:
        return CallListModel::tr("invalid handle");
    case emulator::NotConnected:
        return CallListModel::tr("not connected");
    case emulator::Absent:
        return CallListModel::tr("absent");
    case emulator::Refused:
        return CallListModel::tr("refused");
    case emulator::Injected:
        return CallListModel::tr("failed");
    case emulator::Stopped:
        return CallListModel::tr("stopped");
    default:
        return QString::number(status);
    }
}

/// Three digits at least, in the unit that suits.
QString durationText(std::chrono::nanoseconds duration)
{
    const double microseconds = std::chrono::duration<double, std::micro>(duration).count();
    if (microseconds < 1e3)
        return CallListModel::tr("%1 us").arg(microseconds, 0, 'f', 0);
    if (microseconds < 1e6)
        return CallListModel::tr("%1 ms").arg(microseconds / 1e3, 0, 'f', 1);
    return CallListModel::tr("%1 s").arg(microseconds / 1e6, 0, 'f', 2);
}

} // namespace

CallListModel::CallListModel(StandaloneModel &standalone, QObject *parent)
    : QAbstractListModel(parent), m_standalone(standalone), m_threads{{std::this_thread::get_id(), 0}}
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(updateInterval);
    // Never early.
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &CallListModel::update);
    connect(&standalone, &StandaloneModel::cameraChanged, this, &CallListModel::restart);
}

CallListModel::~CallListModel() { detach(); }

void CallListModel::setActive(bool active)
{
    if (active == m_active)
        return;
    m_active = active;
    if (active)
        restart();
    else
        detach();
    emit activeChanged();
}

void CallListModel::setPaused(bool paused)
{
    if (paused == m_paused)
        return;
    m_paused = paused;
    emit pausedChanged();
    if (!paused)
        update();
}

void CallListModel::setFilter(const QString &filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    restart();
    emit filterChanged();
}

void CallListModel::setOnlyFailed(bool onlyFailed)
{
    if (onlyFailed == m_onlyFailed)
        return;
    m_onlyFailed = onlyFailed;
    restart();
    emit onlyFailedChanged();
}

int CallListModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : count(); }

QVariant CallListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto &[event, thread] = m_rows[static_cast<size_t>(index.row())];
    switch (role) {
    case TimeRole:
        return event.time < 0 ? QString()
                              : QDateTime::fromMSecsSinceEpoch(event.time).toString(QStringLiteral("HH:mm:ss.zzz"));
    case NameRole:
        return QString::fromStdString(event.call.name);
    case InputsRole:
        return QString::fromStdString(event.call.arguments);
    case ThreadRole:
        return thread == 0 ? tr("GUI") : QString::number(thread);
    case StatusRole:
        return statusText(event.call.status);
    case DurationRole:
        return durationText(event.call.duration);
    case FailedRole:
        return event.call.status != emulator::Ok;
    default:
        return {};
    }
}

QHash<int, QByteArray> CallListModel::roleNames() const
{
    return {{TimeRole, "time"},     {NameRole, "name"},         {InputsRole, "inputs"}, {ThreadRole, "thread"},
            {StatusRole, "status"}, {DurationRole, "duration"}, {FailedRole, "failed"}};
}

void CallListModel::clear()
{
    if (m_buffer)
        m_buffer->take();
    setWaiting(0);
    beginResetModel();
    m_rows.clear();
    endResetModel();
    emit countChanged();
}

void CallListModel::attach()
{
    m_camera = m_standalone.camera().shared_from_this();
    m_buffer = std::make_shared<CallBuffer>(CallFilter{m_filter.toStdString(), m_onlyFailed}, maximumRows);
    // Any thread. removeListener() waits for a running call, so this object still exists.
    m_listener = m_camera->gate().onCall([this, buffer = m_buffer](const CallEvent &event) {
        if (buffer->add(event))
            QMetaObject::invokeMethod(&m_timer, qOverload<>(&QTimer::start), Qt::QueuedConnection);
    });
}

void CallListModel::detach()
{
    if (!m_camera)
        return;
    m_camera->gate().removeListener(m_listener);
    m_camera.reset();
    m_buffer.reset();
    m_timer.stop();
    setWaiting(0);
}

/// Reads the list from the log and follows the present camera by the present filter.
void CallListModel::restart()
{
    if (!m_active)
        return;
    detach();
    attach();
    // After attach(), so that no call is missed; prepend() drops those that are in both.
    emulator::Gate &gate = m_camera->gate();
    const size_t end = gate.mark();
    const size_t begin = end - std::min(end, searchedCalls);
    const CallFilter filter{m_filter.toStdString(), m_onlyFailed};
    beginResetModel();
    m_rows.clear();
    size_t number = begin;
    for (emulator::Call &call : gate.callsSince(begin)) {
        if (call.status != emulator::Pending && filter.matches(call))
            m_rows.push_front(rowOf({std::move(call), -1, number, QJsonValue::Undefined}));
        ++number;
    }
    if (m_rows.size() > maximumRows)
        m_rows.resize(maximumRows);
    endResetModel();
    emit countChanged();
}

void CallListModel::update()
{
    if (!m_buffer)
        return;
    if (m_paused)
        setWaiting(static_cast<int>(m_buffer->look()));
    else
        prepend(m_buffer->take());
}

void CallListModel::prepend(std::vector<CallEvent> events)
{
    setWaiting(0);
    std::erase_if(events, [this](const CallEvent &event) {
        return std::ranges::any_of(m_rows, [&](const Row &row) { return row.event.number == event.number; });
    });
    if (events.empty())
        return;
    const int before = count();
    const int after = std::min(before + static_cast<int>(events.size()), maximumRows);
    if (after > before)
        beginInsertRows({}, before, after - 1);
    for (CallEvent &event : events)
        m_rows.push_front(rowOf(std::move(event)));
    m_rows.resize(static_cast<size_t>(after));
    if (after > before)
        endInsertRows();
    emit dataChanged(index(0), index(after - 1));
    if (after > before)
        emit countChanged();
}

CallListModel::Row CallListModel::rowOf(CallEvent event)
{
    const int next = static_cast<int>(m_threads.size());
    const int thread = m_threads.try_emplace(event.call.thread, next).first->second;
    return {std::move(event), thread};
}

void CallListModel::setWaiting(int waiting)
{
    if (waiting == m_waiting)
        return;
    m_waiting = waiting;
    emit waitingChanged();
}

void CallListModel::exportCalls()
{
    QByteArray lines;
    for (auto row = m_rows.crbegin(); row != m_rows.crend(); ++row)
        lines += emulator::callLine(row->event, 0, row->thread);
    m_saver.ask(tr("Export Calls"), {tr("JSON lines (*.jsonl)")}, QStringLiteral("calls.jsonl"),
                [lines](const QString &file) { return saveText(lines, file); });
}
