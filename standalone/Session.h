#pragma once

#include "standalone/Options.h"
#include "standalone/PluginLoader.h"
#include "standalone/StandaloneModel.h"

#include <QString>

#include <memory>

namespace emulator
{
class CallRecorder;
class CallReplay;
} // namespace emulator

/// A loaded plug-in with its root model for one controller. GUI thread only.
class Session
{
public:
    /// With the option `asHost` the camera starts to connect before the model is made, as in a host application. Throws
    /// BadInput and emulator::SetupError.
    explicit Session(const Options &options);
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;
    ~Session();

    StandaloneModel &standaloneModel() { return m_standaloneModel; }
    QObject &cameraModel() { return *m_cameraModel; }

    /// The path of the page below the root of the resources.
    const QString &page() const { return m_page; }

    /// The key of the camera of the options' profile or recording.
    const QString &firstCamera() const { return m_firstCamera; }

private:
    void connectFirst();

    // The order matters: the library is unloaded last.
    PluginLoader m_plugin;
    std::unique_ptr<emulator::CallReplay> m_replay;
    QString m_firstCamera;
    StandaloneModel m_standaloneModel;
    std::unique_ptr<emulator::CallRecorder> m_recorder;
    std::unique_ptr<QObject> m_cameraModel;
    QString m_page;
};
