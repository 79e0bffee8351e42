#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Frame.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Profile.h"

#include <QJsonObject>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace emulator::image
{
enum class Output;
}

namespace emulator
{

/// An emulated camera, made of devices. It answers calls while it is connected, and keeps its files in a folder. Any
/// thread.
class Camera : public std::enable_shared_from_this<Camera>
{
public:
    /// Makes a camera that is not connected. `profile` is the name of a built-in profile or the path of a profile file.
    /// The files of the camera are in `folder`/cameras/NAME, where NAME is the name of the profile. An empty `folder`
    /// means the user's folder for application data. Throws a SetupError if the profile or a saved file is bad.
    static std::shared_ptr<Camera> create(const QString &profile, const QString &folder);

    /// The folder that create() uses for a camera whose profile has this name.
    static QString folderOf(const QString &profileName, const QString &folder);

    Camera(const Camera &) = delete;
    Camera &operator=(const Camera &) = delete;
    ~Camera();

    void connect();
    void disconnect();
    bool connected() const;

    /// The handle of this camera in the SDK. It is valid while the camera exists and is never used for another camera.
    uint64_t handle() const;

    /// The camera with this handle. Null for 0, for an unknown handle and for a camera that no longer exists.
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

    /// The camera's lock, which is held while a device answers a call.
    std::recursive_mutex &mutex() { return m_mutex; }

    class Unlocked;

    /// Waits for the duration of a slow operation by Clock::wait(), with the lock released. Calls catchUp() before and
    /// after the wait, since the changes of the operation so far have their effect during it. Other operations may
    /// change the camera meanwhile, so the caller must read values again afterwards. Returns Ok, or NotConnected if the
    /// camera is no longer connected; the operation must then end with that status.
    Status letTimePass(int64_t milliseconds);

    /// The newest frame of a preset, and the frame with a number: as an output shows it, or raw. Empty if the preset
    /// has not had this frame, if the number is too old for FrameClock::frame(), or if the window is too large for
    /// frames. A frame shows the camera as it is now, also if it began earlier. Its pixels are computed on the calling
    /// thread, which must not hold the camera's lock.
    std::optional<Frame> newestFrame(int preset, std::optional<image::Output> output = {});
    std::optional<Frame> frame(int preset, uint64_t number, std::optional<image::Output> output = {});

    /// The exposure of a frame, with the present values of all devices. It has no detector until the maps of the
    /// detector have been made.
    image::Exposure exposure(const FrameStart &start) const;

    /// Renders the exposure of a preset as an output shows it, or raw. Returns false, and leaves `counts` unchanged, if
    /// the window is too large for frames. The calling thread must not hold the camera's lock.
    bool render(image::Exposure exposure, int preset, std::optional<image::Output> output,
                std::vector<uint16_t> &counts) const;

    /// Carries out what has become due: the triggers so far, and Device::catchUp() of all devices. Frames that begin
    /// from now on have the present timing. Called with the camera's lock, before and after each operation and change.
    void catchUp();

    class OtherClient;
    OtherClient otherClient();

    /// The settings that other clients may change, ordered by device. Their names have the form "device.setting".
    std::vector<SettingInfo> settings() const;

    /// Changes the capability with this property name to a bool or a number from 0 to 255, and raises
    /// ZVT_EVENT_MAKE_UP_CHANGED. Returns false and sets `why` as OtherClient::set() does if the change is refused.
    bool changeMakeUp(const QString &capability, const QVariant &value, QString *why = nullptr);

    /// The identity has changed, and these capabilities, which exist, follow it. Raises ZVT_EVENT_MAKE_UP_CHANGED, but
    /// not while a new camera takes its values from its memory. Called with the camera's lock.
    void identityChanged(const QJsonObject &capabilities);

    /// The present capabilities by the names of their properties.
    QJsonObject capabilities() const;

    /// Calls the listener after each change of connected(), on the thread that calls connect() or disconnect(). Returns
    /// a number for removeListener(), which waits while listeners run on another thread.
    int onConnectionChanged(std::function<void()> listener);
    void removeListener(int number);

    /// The camera's settings, as a state contains them: the result of Device::save() for each device whose values are
    /// in snapshots, under the key of the device.
    QJsonObject snapshot() const;
    /// Restores the settings of a snapshot(). Devices that are not in it do not change, and neither do values that a
    /// device refuses. Logs each refused value as "SOURCE: DEVICE.SETTING: WHY".
    void restore(const QJsonObject &snapshot, const QString &source = QStringLiteral("snapshot"));

    /// The settings of a new camera of this profile, in the form of snapshot().
    const QJsonObject &newSettings() const { return m_newSettings; }

    /// Values or files that outlive the process have changed. A thread of the camera writes them to its folder, at most
    /// once a second; so does the end of the camera or the process. A disconnection writes the values. A failed write
    /// logs a warning.
    void remember();
    /// Returns when the changes that remember() has reported are written. The caller must not hold the camera's lock.
    void flushMemory();

private:
    Camera(Profile profile, QString folder);
    QString memorySource() const;
    QJsonObject readMemory() const;
    void writeMemory();
    void writeFiles();
    void setConnected(bool connected);
    std::optional<Frame> render(const FrameStart &start, std::optional<image::Output> output,
                                std::unique_lock<std::recursive_mutex> lock);
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
