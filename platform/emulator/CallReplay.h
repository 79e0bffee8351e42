#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace emulator
{

class Camera;
struct CallRecording;

/// Lets an emulated camera answer as a recording of calls (CallRecording) says; docs/call-recordings.md describes which
/// answer a call gets. The camera has the profile of the recorded one and answers what the recording does not contain.
/// Any thread.
class CallReplay
{
public:
    /// Reads the file. Throws a SetupError, which names the wrong line.
    explicit CallReplay(const QString &file);
    ~CallReplay();

    /// A file with the profile of the recorded camera. It exists as long as this object.
    QString profile() const;

    /// A folder for the files of the camera, so that commands of the recording change no files of the user. It exists
    /// as long as this object.
    QString folder() const;

    /// Lets a camera of profile() answer as the recording says, from its beginning, and gives it the settings of the
    /// recorded camera. It lasts as long as the camera.
    void attachTo(const std::shared_ptr<Camera> &camera) const;

private:
    std::unique_ptr<const CallRecording> m_recording;
    QTemporaryDir m_folder;
};

} // namespace emulator
