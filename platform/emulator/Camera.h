#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Profile.h"

#include <QJsonObject>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace emulator
{

/// An emulated camera. It answers calls while it is connected, and keeps its files in a folder. Any thread.
class Camera : public std::enable_shared_from_this<Camera>
{
public:
    /// Makes a camera of a profile (a built-in name, or the path of a file), which is not connected. It keeps its files
    /// in `folder`/cameras/PROFILE; an empty `folder` is the user's folder for application data. Throws a SetupError.
    static std::shared_ptr<Camera> create(const QString &profile, const QString &folder);

    /// The folder in which create() would put the files of a camera whose profile has this name.
    static QString folderOf(const QString &profileName, const QString &folder);

    Camera(const Camera &) = delete;
    Camera &operator=(const Camera &) = delete;
    ~Camera();

    void connect();
    void disconnect();
    bool connected() const;

    /// The handle of this camera in the SDK, while the camera exists. A handle is never used again.
    uint64_t handle() const;

    /// The camera of a handle, null for 0 and for a camera that no longer exists.
    static std::shared_ptr<Camera> find(uint64_t handle);

    const Profile &profile() const { return m_profile; }
    Gate &gate() { return m_gate; }

    /// The folder of the files of this camera.
    const QString &folder() const { return m_folder; }

    /// The device of this kind, null if the camera has none.
    template <class D> D *device() const
    {
        for (const auto &candidate : m_devices)
            if (auto *match = dynamic_cast<D *>(candidate.get()))
                return match;
        return nullptr;
    }

    /// Held by the gate while a device answers.
    std::recursive_mutex &mutex() { return m_mutex; }

    /// Releases the camera's lock while this object exists: during a slow part of an operation, and during calls of the
    /// caller's delegates. Use it only where the lock is held once, as in functions of devices that the gate calls.
    class Unlocked
    {
    public:
        explicit Unlocked(Camera &camera) : m_mutex(camera.m_mutex) { m_mutex.unlock(); }
        Unlocked(const Unlocked &) = delete;
        Unlocked &operator=(const Unlocked &) = delete;
        ~Unlocked() { m_mutex.lock(); }

    private:
        std::recursive_mutex &m_mutex;
    };

    /// Lets the time of a slow operation pass by Clock::wait(), with the lock released. Other operations may change the
    /// camera meanwhile, so the operation has to read values again afterwards. Returns NotConnected if the camera is no
    /// longer connected; the operation then ends with that status.
    Status letTimePass(int64_t milliseconds);

    /// Another client of the camera. Its changes of settings raise the event for changed settings.
    class OtherClient
    {
    public:
        /// Changes the setting `name`, which is "device.setting". Returns false if it is refused; `why` is then one
        /// line for the user, as "other client: cooler.setpoint: must lie between 60 and 120".
        bool set(const QString &name, const QVariant &value, QString *why = nullptr);

    private:
        friend class Camera;
        explicit OtherClient(Camera &camera) : m_camera(camera) { }
        Camera &m_camera;
    };
    OtherClient otherClient() { return OtherClient(*this); }

    /// The settings that other clients may change, by device.
    std::vector<SettingInfo> settings() const;

    /// Changes a capability by the name of its property and raises the event for changed equipment. Returns false if it
    /// is refused, with `why` as for OtherClient::set().
    bool changeMakeUp(const QString &capability, const QVariant &value, QString *why = nullptr);

    /// The present capabilities by the names of their properties.
    QJsonObject capabilities() const;

    /// Calls the listener after each change, on the thread of connect() or disconnect(). Returns a number for
    /// removeListener(), which waits while the listener runs on another thread.
    int onConnectionChanged(std::function<void()> listener);
    void removeListener(int number);

    /// The camera's settings, as states contain them: the saved values of the devices, by the keys of the devices.
    QJsonObject snapshot() const;
    /// Restores the settings of a snapshot(). Devices that it does not contain do not change, and neither do values
    /// that a device refuses. Each refused value is reported in the log as "source: path of the key: why".
    void restore(const QJsonObject &snapshot, const QString &source = QStringLiteral("snapshot"));

    /// The settings of a new camera of this profile.
    const QJsonObject &newSettings() const { return m_newSettings; }

    /// Writes the values that outlive the process to the camera's folder. Logs a warning if they cannot be written.
    void remember();

private:
    Camera(Profile profile, QString folder);
    QString memorySource() const;
    QJsonObject readMemory() const;
    void setConnected(bool connected);
    Device *deviceOf(const QString &key) const;

    Profile m_profile;
    QString m_folder;
    Gate m_gate;
    mutable std::recursive_mutex m_mutex;
    std::vector<std::unique_ptr<Device>> m_devices;
    QJsonObject m_newSettings;
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace emulator
