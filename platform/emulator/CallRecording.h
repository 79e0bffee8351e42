#pragma once

#include "platform/emulator/Gate.h"

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace emulator
{

class Camera;

/// A recording of the calls to a camera: a file of lines that each contain one JSON object. docs/call-recordings.md
/// describes the format. Any thread.
struct CallRecording {
    /// A recorded call.
    struct RecordedCall {
        std::string name;
        std::string arguments;
        int status = Ok;
        QJsonValue results; ///< As in CallEvent.
    };
    /// The capabilities of the camera have changed to these.
    struct Capabilities {
        QJsonObject values;
    };
    /// The camera has been disconnected.
    struct Disconnection {
    };

    struct Entry {
        uint64_t number; ///< The position in the log of the gate.
        int line; ///< The line of the file, counted from 1.
        std::variant<RecordedCall, Capabilities, Disconnection> what;
    };

    /// Reads a file. Throws a SetupError with the number of the wrong line.
    static CallRecording read(const QString &file);

    QString source; ///< The name of the file.
    QString profileName;
    QJsonObject profile; ///< The content of a profile file that extends no other, with the capabilities at the start.
    QJsonObject settings; ///< Camera::snapshot() at the start.
    /// In the order in which the calls started. Without calls to a disconnected camera.
    std::vector<Entry> entries;
};

// The lines of a recording, each with its "\n". Times are in milliseconds since the start of the recording.

/// The first line. Takes the camera's lock.
QByteArray headerLine(const Camera &camera, int64_t start);
QByteArray callLine(const CallEvent &event, int64_t start, int thread);
QByteArray capabilitiesLine(const QJsonObject &capabilities, int64_t time, size_t number);
QByteArray connectionLine(bool connected, int64_t time, size_t number);

} // namespace emulator
