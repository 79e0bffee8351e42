#include "platform/emulator/CallRecorder.h"

#include "platform/emulator/CallRecording.h"
#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/SetupError.h"
#include "zvt/zvttypes.h"

#include <QJsonArray>

#include <utility>

namespace emulator
{

namespace
{

// About 100 MB, which a usable disk never lets accumulate.
constexpr size_t maximumItems = 100'000;

/// Whether this call has reported that the capabilities have changed.
bool reportsMakeUp(const CallEvent &event)
{
    return event.call.name == "zvtReadEventQueue" && event.results.toArray().at(0) == int{ZVT_EVENT_MAKE_UP_CHANGED};
}

} // namespace

CallRecorder::CallRecorder(std::shared_ptr<Camera> camera, const QString &file,
                           std::function<void(const QString &)> onFailure)
    : m_camera(std::move(camera)), m_onFailure(std::move(onFailure)), m_start(Clock::now()), m_file(file)
{
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !write(headerLine(*m_camera, m_start)))
        throw SetupError(failure(m_file.errorString()).toStdString());
    m_callListener = m_camera->gate().onCall([this](const CallEvent &event) { addCall(event); }, true);
    m_connectionListener = m_camera->onConnectionChanged([this] {
        add(Connection{m_camera->connected(), Clock::now(), m_camera->gate().mark()});
    });
    m_thread = std::thread([this] { run(); });
}

CallRecorder::~CallRecorder()
{
    m_camera->removeListener(m_connectionListener);
    m_camera->gate().removeListener(m_callListener);
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
        m_changed.notify_all();
    }
    m_thread.join();
}

QString CallRecorder::failure(const QString &why) const
{
    return QStringLiteral("recording %1: cannot be written: %2").arg(m_file.fileName(), why);
}

/// Adds a call. The capabilities are read here, since they may have changed again when the call is written.
void CallRecorder::addCall(const CallEvent &event)
{
    add(EndedCall{event, reportsMakeUp(event) ? std::optional(m_camera->capabilities()) : std::nullopt});
}

void CallRecorder::add(Item item)
{
    const std::lock_guard lock(m_mutex);
    if (m_ended)
        return;
    if (m_items.size() < maximumItems)
        m_items.push_back(std::move(item));
    else
        m_ended = m_tooSlow = true;
    m_changed.notify_all();
}

void CallRecorder::run()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ended || !m_items.empty(); });
        if (m_items.empty())
            break;
        const std::vector<Item> items = std::exchange(m_items, {});
        lock.unlock();
        const bool written = write(linesOf(items));
        lock.lock();
        if (!written) {
            m_ended = true;
            m_items.clear();
            lock.unlock();
            fail(m_file.errorString());
            return;
        }
    }
    const bool tooSlow = m_tooSlow;
    lock.unlock();
    if (tooSlow)
        fail(QStringLiteral("the disk is too slow"));
}

void CallRecorder::fail(const QString &why)
{
    m_camera->gate().removeListener(m_callListener);
    m_onFailure(failure(why));
}

QByteArray CallRecorder::linesOf(const std::vector<Item> &items)
{
    QByteArray lines;
    for (const Item &item : items)
        if (const auto *call = std::get_if<EndedCall>(&item))
            lines += linesOf(*call);
        else if (const auto *connection = std::get_if<Connection>(&item))
            lines += connectionLine(connection->connected, connection->time - m_start, connection->number);
    return lines;
}

/// The line of a call, after that of changed capabilities if the call has reported them.
QByteArray CallRecorder::linesOf(const EndedCall &call)
{
    const CallEvent &event = call.event;
    QByteArray lines;
    if (call.capabilities)
        lines += capabilitiesLine(*call.capabilities, event.time - m_start, event.number);
    const int next = static_cast<int>(m_threads.size()) + 1;
    return lines + callLine(event, m_start, m_threads.try_emplace(event.call.thread, next).first->second);
}

/// Writes whole lines. After a failure the file has its former size again, so that its last line is whole.
bool CallRecorder::write(const QByteArray &lines)
{
    for (qint64 written = 0; written < lines.size();) {
        // A disk that becomes full takes a part first. Only the next attempt has a reason.
        const qint64 count = m_file.write(lines.constData() + written, lines.size() - written);
        if (count <= 0) {
            // resize() would replace the reason.
            QFile(m_file.fileName()).resize(m_size);
            return false;
        }
        written += count;
    }
    m_size += lines.size();
    return true;
}

} // namespace emulator
