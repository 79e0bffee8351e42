#pragma once

#include "platform/emulator/Gate.h"

#include <QByteArray>
#include <QFile>
#include <QJsonObject>
#include <QString>

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <variant>
#include <vector>

namespace emulator
{

class Camera;

/// Records the calls to a camera in a file (CallRecording). A thread of its own writes, so that no call waits for the
/// disk. Any thread.
///
/// The lines are written to the final file as the session goes on, not to a temporary file, since the recording of a
/// session that crashes is the one that is needed most.
class CallRecorder
{
public:
    /// Writes the first line. Throws a SetupError if the file cannot be written. When it can no longer be written later
    /// (a full or a very slow disk), the recording ends with the last whole line, and `onFailure` is called once with
    /// one line for the operator, on the thread of the recorder. It must not destroy the recorder.
    CallRecorder(std::shared_ptr<Camera> camera, const QString &file,
                 std::function<void(const QString &message)> onFailure);
    CallRecorder(const CallRecorder &) = delete;
    CallRecorder &operator=(const CallRecorder &) = delete;
    /// Ends the recording after the lines of all calls that have ended.
    ~CallRecorder();

private:
    struct Connection {
        bool connected;
        int64_t time;
        size_t number;
    };
    struct EndedCall {
        CallEvent event;
        std::optional<QJsonObject> capabilities; ///< Those that the camera had when the call reported their change.
    };
    using Item = std::variant<EndedCall, Connection>;

    void add(Item item);
    void run();
    void addCall(const CallEvent &event);
    QByteArray linesOf(const std::vector<Item> &items);
    QByteArray linesOf(const EndedCall &call);
    bool write(const QByteArray &lines);
    void fail(const QString &why);
    QString failure(const QString &why) const;

    const std::shared_ptr<Camera> m_camera;
    const std::function<void(const QString &)> m_onFailure;
    const int64_t m_start;
    QFile m_file;
    qint64 m_size = 0; ///< The size of the whole lines in the file.
    std::map<std::thread::id, int> m_threads; ///< The numbers of the threads, from 1 in the order of their first call.

    std::mutex m_mutex; ///< For the following four.
    std::condition_variable m_changed;
    std::vector<Item> m_items;
    bool m_ended = false; ///< Nothing is added any more.
    bool m_tooSlow = false; ///< The recording has ended since too many items waited.

    int m_callListener = 0;
    int m_connectionListener = 0;
    std::thread m_thread;
};

} // namespace emulator
