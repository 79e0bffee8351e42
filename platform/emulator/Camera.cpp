#include "platform/emulator/Camera.h"

#include "platform/emulator/Clock.h"
#include "platform/emulator/DeviceKind.h"
#include "platform/emulator/Storage.h"
#include "platform/emulator/devices/EventQueue.h"
#include "platform/emulator/devices/Identity.h"
#include "platform/emulator/devices/StateStore.h"

#include <QDir>
#include <QStandardPaths>

#include <atomic>
#include <map>

namespace emulator
{

namespace
{

const auto memoryFile = QStringLiteral("camera.json");
const auto identityKey = QStringLiteral("identity");

/// The cameras of this process by their handles. Never destroyed, since a late call may come while the process ends.
struct Registry {
    std::mutex mutex;
    std::map<uint64_t, std::weak_ptr<Camera>> cameras;
    uint64_t last = 0;
};

Registry &registry()
{
    static auto *const instance = new Registry;
    return *instance;
}

} // namespace

struct Camera::State {
    explicit State(const QString &folder) : storage(folder) { }

    Storage storage;
    std::atomic<bool> connected{false};
    uint64_t handle = 0;
    QJsonObject capabilities;
    struct Fitted {
        Device *device;
        bool remembers;
        bool inSnapshots;
    };
    std::map<QString, Fitted> byKey;
    QJsonObject written; ///< The values in the memory file.
    bool complete = false; ///< All devices are there and have their values.
    std::recursive_mutex listenerMutex;
    std::map<int, std::function<void()>> listeners;
    int lastListener = 0;

    /// What the devices save for which `wanted` is set.
    QJsonObject save(bool Fitted::*wanted) const
    {
        QJsonObject values;
        for (const auto &[key, fitted] : byKey)
            if (fitted.*wanted)
                values[key] = fitted.device->save();
        return values;
    }

    /// Gives it back to them. A device that the values do not tell of is left alone.
    void restore(bool Fitted::*wanted, const QJsonObject &values)
    {
        for (const auto &[key, fitted] : byKey)
            if (fitted.*wanted && values.contains(key))
                fitted.device->restore(values.value(key).toObject());
    }
};

std::shared_ptr<Camera> Camera::create(const QString &profile, const QString &folder)
{
    auto loaded = Profile::load(profile);
    const QString place = folderOf(loaded.name(), folder);
    std::shared_ptr<Camera> camera(new Camera(std::move(loaded), place));
    const std::lock_guard lock(registry().mutex);
    camera->m_state->handle = ++registry().last;
    registry().cameras.emplace(camera->handle(), camera);
    return camera;
}

QString Camera::folderOf(const QString &profileName, const QString &folder)
{
    const QString base = folder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) : folder;
    return QDir::cleanPath(QStringLiteral("%1/cameras/%2").arg(base, profileName));
}

Camera::Camera(Profile profile, QString folder)
    : m_profile(std::move(profile)), m_folder(std::move(folder)), m_state(std::make_unique<State>(m_folder))
{
    m_state->capabilities = m_profile.capabilities();
    const auto add = [this](const QString &key, std::unique_ptr<Device> device, bool remembers, bool inSnapshots) {
        m_state->byKey[key] = {device.get(), remembers, inSnapshots};
        m_devices.push_back(std::move(device));
    };
    add(identityKey, std::make_unique<Identity>(*this), true, false);
    add(QStringLiteral("events"), std::make_unique<EventQueue>(*this), false, false);
    for (const auto &kind : DeviceKind::all()) {
        const QJsonValue values = m_profile.devices().value(kind.key);
        if (values.isUndefined() && kind.presence == DeviceKind::WhereListed)
            continue;
        Section section(values.toObject(), QStringLiteral("profile ") + m_profile.source(),
                        QStringLiteral("devices.") + kind.key);
        auto device = kind.make(*this, section);
        section.finish();
        add(kind.key, std::move(device), kind.memory == DeviceKind::Remembers, kind.snapshot == DeviceKind::Included);
    }
    m_newSettings = snapshot();
    const QJsonObject values = readMemory();
    // It wakes up in the state that it was in. What devices remember by themselves is newer than that.
    const QJsonObject states = values.value(QStringLiteral("states")).toObject();
    m_state->restore(&State::Fitted::inSnapshots, device<StateStore>()->settingsAtStart(states));
    m_state->restore(&State::Fitted::remembers, values);
    // A camera that is as its profile made it needs no file.
    m_state->written = values.isEmpty() ? m_state->save(&State::Fitted::remembers) : values;
    m_state->complete = true;
}

Camera::~Camera()
{
    {
        const std::lock_guard lock(registry().mutex);
        registry().cameras.erase(m_state->handle);
    }
    remember();
}

/// Reads what is saved in the camera's folder. Throws a SetupError about a value of a kind that no device writes.
QJsonObject Camera::readMemory() const
{
    QJsonObject model = m_state->save(&State::Fitted::remembers);
    // Its device saves only what differs from the profile.
    model[identityKey] = m_profile.identity();
    const QJsonObject values = m_state->storage.read(memoryFile);
    Section(values, QStringLiteral("storage %1/%2").arg(m_folder, memoryFile)).requireKindsOf(model);
    return values;
}

void Camera::connect() { setConnected(true); }

void Camera::disconnect() { setConnected(false); }

void Camera::setConnected(bool connected)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_state->connected == connected)
            return;
        m_state->connected = connected;
        for (const auto &device : m_devices)
            device->connectionChanged(connected);
        if (!connected)
            remember();
    }
    const std::lock_guard lock(m_state->listenerMutex);
    // A listener may end itself or others.
    const auto listeners = m_state->listeners;
    for (const auto &[number, listener] : listeners)
        if (m_state->listeners.contains(number))
            listener();
}

bool Camera::connected() const { return m_state->connected; }

uint64_t Camera::handle() const { return m_state->handle; }

std::shared_ptr<Camera> Camera::find(uint64_t handle)
{
    const std::lock_guard lock(registry().mutex);
    const auto found = registry().cameras.find(handle);
    return found == registry().cameras.end() ? nullptr : found->second.lock();
}

Device *Camera::deviceOf(const QString &key) const
{
    const auto found = m_state->byKey.find(key);
    return found == m_state->byKey.end() ? nullptr : found->second.device;
}

bool Camera::OtherClient::set(const QString &name, const QVariant &value)
{
    const std::lock_guard lock(m_camera.m_mutex);
    const auto dot = name.indexOf(QLatin1Char('.'));
    auto *const addressed = m_camera.deviceOf(name.left(dot));
    if (dot < 0 || !addressed || !addressed->set(name.mid(dot + 1), value))
        return false;
    m_camera.device<EventQueue>()->push(ZVT_EVENT_SETTINGS_CHANGED);
    return true;
}

bool Camera::changeMakeUp(const QString &capability, const QVariant &value)
{
    const std::lock_guard lock(m_mutex);
    const QJsonValue old = m_state->capabilities.value(capability);
    const auto wanted = QJsonValue::fromVariant(value);
    const bool isCount = wanted.isDouble() && wanted.toInt(-1) >= 0;
    if (old.type() != wanted.type() || !(wanted.isBool() || isCount))
        return false;
    m_state->capabilities[capability] = wanted;
    device<EventQueue>()->push(ZVT_EVENT_MAKE_UP_CHANGED);
    return true;
}

QJsonObject Camera::capabilities() const
{
    const std::lock_guard lock(m_mutex);
    return m_state->capabilities;
}

int Camera::onConnectionChanged(std::function<void()> listener)
{
    const std::lock_guard lock(m_state->listenerMutex);
    m_state->listeners.emplace(++m_state->lastListener, std::move(listener));
    return m_state->lastListener;
}

void Camera::removeListener(int number)
{
    const std::lock_guard lock(m_state->listenerMutex);
    m_state->listeners.erase(number);
}

Status Camera::takeTime(int64_t milliseconds)
{
    {
        const Unlocked unlocked(*this);
        Clock::wait(milliseconds);
    }
    return connected() ? Ok : NotConnected;
}

QJsonObject Camera::snapshot() const
{
    const std::lock_guard lock(m_mutex);
    return m_state->save(&State::Fitted::inSnapshots);
}

void Camera::restore(const QJsonObject &snapshot)
{
    const std::lock_guard lock(m_mutex);
    m_state->restore(&State::Fitted::inSnapshots, snapshot);
    remember();
}

void Camera::remember()
{
    const std::lock_guard lock(m_mutex);
    if (!m_state->complete)
        return;
    const QJsonObject values = m_state->save(&State::Fitted::remembers);
    // A folder that somebody has removed is not made again behind their back.
    if (values == m_state->written || !QDir(m_folder).exists())
        return;
    try {
        m_state->storage.write(memoryFile, values);
        m_state->written = values;
    } catch (const SetupError &error) {
        qWarning("%s", error.what());
    }
}

} // namespace emulator
