#include "platform/emulator/CallReplay.h"

#include "platform/emulator/CallRecording.h"
#include "platform/emulator/Camera.h"
#include "platform/emulator/SetupError.h"
#include "platform/emulator/devices/EventQueue.h"

#include <QFile>
#include <QJsonDocument>

#include <algorithm>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace emulator
{

namespace
{

using Entry = CallRecording::Entry;
using RecordedCall = CallRecording::RecordedCall;
using Capabilities = CallRecording::Capabilities;
using Disconnection = CallRecording::Disconnection;

/// Each recorded event is returned once: a repeated one would let the page read everything again and again.
bool isTakenOnce(const std::string &name) { return name == "zvtReadEventQueue"; }

/// Whether a function without outputs only asks the camera for something.
bool asks(const std::string &name)
{
    return name.ends_with("Exists") || name.starts_with("controller.Get") || name.starts_with("controller.Can");
}

/// The answers of a recording. The recording is divided by its commands and disconnections: a call that reads gets an
/// answer that was recorded between the last of them that has been repeated and the next one. Any thread.
class Tape
{
public:
    explicit Tape(const CallRecording &recording);

    /// What has become due with an answer, to be done without a lock.
    struct Due {
        std::vector<QJsonObject> capabilities; ///< The camera gets these, one after another.
        bool disconnection = false;
    };

    std::optional<Answer> answer(const Call &call, Due &due);

    /// The camera has been disconnected.
    void goToDisconnection();

private:
    /// The answers to the calls with the same name and arguments.
    struct Series {
        std::vector<size_t> entries; ///< Their indexes.
        size_t next = 0; ///< The index in `entries` of the first one that has not been returned.
    };

    static std::string keyOf(const std::string &name, const std::string &arguments)
    {
        return name + '(' + arguments + ')';
    }

    size_t nextBoundary() const;
    bool isDisconnectionNext(size_t boundary) const;
    Answer answerOf(size_t entry) const;
    Answer reach(size_t entry, Due &due);
    std::optional<Answer> nextCommand(Series &series, Due &due);
    std::optional<Answer> nextRead(Series &series, bool takenOnce, Due &due);

    std::mutex m_mutex;
    QString m_source;
    std::vector<Entry> m_entries;
    std::map<std::string, Series> m_series;
    std::vector<size_t> m_boundaries; ///< The indexes of the commands and disconnections.
    size_t m_begin = 0; ///< After the last boundary that has been repeated.
    size_t m_reached = 0; ///< After the latest entry that has been repeated in its place.
    size_t m_disconnection = 0; ///< After the latest disconnection that has become due.
};

bool isBoundary(const Entry &entry)
{
    if (const auto *call = std::get_if<RecordedCall>(&entry.what))
        return call->results.isUndefined() && !asks(call->name);
    return std::holds_alternative<Disconnection>(entry.what);
}

Tape::Tape(const CallRecording &recording) : m_source(recording.source), m_entries(recording.entries)
{
    for (size_t index = 0; index < m_entries.size(); ++index) {
        if (const auto *call = std::get_if<RecordedCall>(&m_entries[index].what))
            m_series[keyOf(call->name, call->arguments)].entries.push_back(index);
        if (isBoundary(m_entries[index]))
            m_boundaries.push_back(index);
    }
}

std::optional<Answer> Tape::answer(const Call &call, Due &due)
{
    const std::lock_guard lock(m_mutex);
    const auto series = m_series.find(keyOf(call.name, call.arguments));
    if (series == m_series.end())
        return {};
    if (isBoundary(m_entries[series->second.entries.front()]))
        return nextCommand(series->second, due);
    return nextRead(series->second, isTakenOnce(call.name), due);
}

void Tape::goToDisconnection()
{
    const std::lock_guard lock(m_mutex);
    const auto found = std::find_if(m_boundaries.begin(), m_boundaries.end(), [this](size_t boundary) {
        return boundary >= m_begin && std::holds_alternative<Disconnection>(m_entries[boundary].what);
    });
    if (found != m_boundaries.end())
        m_begin = *found + 1;
}

/// The first boundary that has not been repeated.
size_t Tape::nextBoundary() const
{
    const auto found = std::ranges::lower_bound(m_boundaries, m_begin);
    return found != m_boundaries.end() ? *found : m_entries.size();
}

/// Whether this boundary is a disconnection, and no call was recorded between the latest one that has been repeated in
/// its place and the disconnection.
bool Tape::isDisconnectionNext(size_t boundary) const
{
    const auto isCall = [](const Entry &entry) { return std::holds_alternative<RecordedCall>(entry.what); };
    const size_t first = std::min(std::max(m_begin, m_reached), boundary);
    return boundary < m_entries.size() && std::holds_alternative<Disconnection>(m_entries[boundary].what)
        && std::none_of(m_entries.begin() + static_cast<std::ptrdiff_t>(first),
                        m_entries.begin() + static_cast<std::ptrdiff_t>(boundary), isCall);
}

Answer Tape::answerOf(size_t index) const
{
    const Entry &entry = m_entries[index];
    const auto &call = std::get<RecordedCall>(entry.what);
    return {call.status, call.results.toArray(), QStringLiteral("%1:%2").arg(m_source).arg(entry.line)};
}

/// The answer to a call that is repeated in its place.
Answer Tape::reach(size_t index, Due &due)
{
    for (; m_reached <= index; ++m_reached)
        if (const auto *capabilities = std::get_if<Capabilities>(&m_entries[m_reached].what))
            due.capabilities.push_back(capabilities->values);
    return answerOf(index);
}

/// A command gets its answers in their order, whenever it is repeated.
std::optional<Answer> Tape::nextCommand(Series &series, Due &due)
{
    if (series.next == series.entries.size())
        return answerOf(series.entries.back());
    const size_t index = series.entries[series.next++];
    m_begin = std::max(m_begin, index + 1);
    return reach(index, due);
}

std::optional<Answer> Tape::nextRead(Series &series, bool takenOnce, Due &due)
{
    const size_t end = nextBoundary();
    const auto &entries = series.entries;
    const auto firstLeft = std::lower_bound(entries.begin(), entries.end(), m_begin);
    series.next = std::max(series.next, static_cast<size_t>(firstLeft - entries.begin()));
    if (series.next < entries.size() && entries[series.next] < end)
        return reach(entries[series.next++], due);
    // All answers before the boundary have been returned.
    if (isDisconnectionNext(end)) {
        // Of several calls that find it at the same time, one carries it out.
        due.disconnection = m_disconnection <= end;
        m_disconnection = end + 1;
        return Answer{NotConnected, {}, m_source};
    }
    if (takenOnce)
        return {};
    // Too early or too often: the other answers keep their places.
    return answerOf(entries[series.next > 0 ? series.next - 1 : 0]);
}

std::vector<zvtEEventType> takeAll(EventQueue &queue)
{
    std::vector<zvtEEventType> events;
    for (auto event = queue.take(); event != ZVT_EVENT_NONE; event = queue.take())
        events.push_back(event);
    return events;
}

/// Changes the capabilities of a camera. Returns the reason if a value is refused.
QString change(Camera &camera, const QJsonObject &capabilities)
{
    const QJsonObject present = camera.capabilities();
    QString why;
    for (auto value = capabilities.begin(); value != capabilities.end(); ++value)
        if (present.value(value.key()) != value.value()
            && !camera.changeMakeUp(value.key(), value.value().toVariant(), &why))
            return why.remove(QStringLiteral("other client: "));
    return {};
}

/// Makes the changes that have become due with an answer.
void carryOut(const Tape::Due &due, Camera &camera)
{
    if (!due.capabilities.empty()) {
        // The recording has the events that report the changes: the camera must not raise them again.
        const std::lock_guard lock(camera.mutex());
        auto &queue = *camera.device<EventQueue>();
        const std::vector<zvtEEventType> events = takeAll(queue);
        for (const QJsonObject &capabilities : due.capabilities)
            change(camera, capabilities);
        takeAll(queue);
        for (const zvtEEventType event : events)
            queue.push(event);
    }
    if (due.disconnection)
        camera.disconnect();
}

} // namespace

CallReplay::CallReplay(const QString &file) : m_recording(std::make_unique<CallRecording>(CallRecording::read(file)))
{
    QFile profileFile(profile());
    const QByteArray content = QJsonDocument(m_recording->profile).toJson();
    if (!m_folder.isValid() || !profileFile.open(QIODevice::WriteOnly) || profileFile.write(content) != content.size()
        || !profileFile.flush())
        throw SetupError("recording " + file.toStdString() + ": no temporary folder can be written");
    const auto refuse = [&file](int line, const QString &why) {
        throw SetupError(QStringLiteral("recording %1: line %2: %3").arg(file).arg(line).arg(why).toStdString());
    };
    std::shared_ptr<Camera> trial;
    try {
        trial = Camera::create(profile(), folder());
    } catch (const SetupError &error) {
        refuse(1, QString::fromUtf8(error.what()).remove(profile()).simplified());
    }
    for (const Entry &entry : m_recording->entries)
        if (const auto *capabilities = std::get_if<Capabilities>(&entry.what))
            if (const QString why = change(*trial, capabilities->values); !why.isEmpty())
                refuse(entry.line, why);
}

CallReplay::~CallReplay() = default;

QString CallReplay::profile() const { return m_folder.filePath(m_recording->profileName + QStringLiteral(".json")); }

QString CallReplay::folder() const { return m_folder.path(); }

void CallReplay::attachTo(const std::shared_ptr<Camera> &camera) const
{
    camera->restore(m_recording->settings, QStringLiteral("recording ") + m_recording->source);
    const auto tape = std::make_shared<Tape>(*m_recording);
    camera->onConnectionChanged([tape, subject = camera.get()] {
        if (!subject->connected())
            tape->goToDisconnection();
    });
    camera->gate().answerFrom([tape, weak = std::weak_ptr(camera)](const Call &call) -> std::optional<Answer> {
        Tape::Due due;
        const auto answer = tape->answer(call, due);
        if (const auto subject = weak.lock())
            carryOut(due, *subject);
        return answer;
    });
}

} // namespace emulator
