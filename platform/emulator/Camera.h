#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Profile.h"

#include <QString>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace emulator
{

/// An emulated camera. It answers while it is connected, knows that it is an emulator, and keeps its files in a folder.
/// Any thread.
class Camera : public std::enable_shared_from_this<Camera>
{
public:
    /// A camera of a profile (a built-in name, or a file), not connected yet, that keeps its files below
    /// `folder`/cameras/PROFILE; an empty folder means the user's application data. Throws SetupError.
    static std::shared_ptr<Camera> create(const QString &profile, const QString &folder);

    /// The folder in which a camera of a profile of this name then keeps its files.
    static QString folderOf(const QString &profileName, const QString &folder);

    Camera(const Camera &) = delete;
    Camera &operator=(const Camera &) = delete;
    ~Camera();

    void connect();
    void disconnect();
    bool connected() const;

    /// The number under which the SDK knows this camera, for as long as it lives; never used twice.
    uint64_t handle() const;

    /// The camera of a handle; null for 0 and for one that is gone.
    static std::shared_ptr<Camera> find(uint64_t handle);

    const Profile &profile() const { return m_profile; }
    Gate &gate() { return m_gate; }

    /// Where this camera keeps its files.
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

    /// Gives the camera's lock back for as long as it lives: around what takes long inside an operation, and around
    /// calls of its caller's delegates. Only where the lock is held once, as it is when the gate asks a device.
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

    /// Lets the time of a slow operation pass: advances the Clock by so many milliseconds, with the lock released.
    /// Other operations may run meanwhile, so read again afterwards what was read before. Returns NotConnected if the
    /// camera is no longer connected; the operation then ends with that status.
    Status letTimePass(int64_t milliseconds);

    /// Another client of the camera, which changes settings and so raises the event for changed settings.
    class OtherClient
    {
    public:
        /// Changes a setting, named as "device.setting". False if it is refused; `why` is then one line for the user,
        /// as "other client: cooler.setpoint: must lie between 60 and 120".
        bool set(const QString &name, const QVariant &value, QString *why = nullptr);

    private:
        friend class Camera;
        explicit OtherClient(Camera &camera) : m_camera(camera) { }
        Camera &m_camera;
    };
    OtherClient otherClient() { return OtherClient(*this); }

    /// Changes one capability by the name of its property and raises the event for a changed make-up. False if it is
    /// refused, with `why` as for OtherClient::set().
    bool changeMakeUp(const QString &capability, const QVariant &value, QString *why = nullptr);

    /// The capabilities by the names of their properties, as they are now.
    QJsonObject capabilities() const;

    /// Called on the thread of connect() or disconnect(), after the change. The number ends it; removeListener() waits
    /// for a call in progress on another thread.
    int onConnectionChanged(std::function<void()> listener);
    void removeListener(int number);

    /// The camera's settings, as a named snapshot holds them: the devices by their keys, and what each of them saves.
    QJsonObject snapshot() const;
    /// Takes a snapshot() back. Devices that it does not contain stay as they are, and so do values that a device
    /// refuses: each of those is reported as "source: path of the key: why".
    void restore(const QJsonObject &snapshot, const QString &source = QStringLiteral("snapshot"));

    /// The settings of a new camera of this profile.
    const QJsonObject &newSettings() const { return m_newSettings; }

    /// Writes to the camera's folder what outlives the process. A folder that has become unwritable is warned of.
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
