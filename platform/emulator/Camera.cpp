#include "platform/emulator/Camera.h"

#include "platform/emulator/Clock.h"
#include "platform/emulator/DeviceKind.h"
#include "platform/emulator/MemoryWriter.h"
#include "platform/emulator/OtherClient.h"
#include "platform/emulator/Section.h"
#include "platform/emulator/SetupError.h"
#include "platform/emulator/Storage.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/EventQueue.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Identity.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/StateStore.h"
#include "platform/emulator/image/frame.h"
#include "platform/emulator/image/output.h"
#include "zvt/zvttypes.h"

#include <QDir>
#include <QStandardPaths>

#include <algorithm>
#include <atomic>
#include <map>
#include <string>
#include <utility>

namespace emulator
{

namespace
{

const auto memoryFile = QStringLiteral("camera.json");
const auto identityKey = QStringLiteral("identity");
const auto roicKey = QStringLiteral("roic");

/// The cameras of this process by their handles. Never destroyed, since calls are possible while the process ends.
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

std::vector<std::shared_ptr<Camera>> existingCameras()
{
    const std::lock_guard lock(registry().mutex);
    std::vector<std::shared_ptr<Camera>> cameras;
    for (const auto &[handle, entry] : registry().cameras)
        if (auto camera = entry.lock())
            cameras.push_back(std::move(camera));
    return cameras;
}

} // namespace

struct Camera::State {
    State(const QString &folder, std::function<bool()> writeMemory)
        : storage(folder), memoryWriter(std::move(writeMemory))
    {
    }

    Storage storage;
    std::atomic<bool> connected{false};
    uint64_t handle = 0;
    QJsonObject capabilities;
    struct DeviceEntry {
        Device *device;
        bool remembers;
        bool inSnapshots;
        bool remembersOnly = remembers && !inSnapshots;
        bool isInBoth = remembers && inSnapshots;
    };
    std::map<QString, DeviceEntry> byKey;
    FrameClock *frameClock = nullptr;
    bool complete = false; ///< All devices exist and have their values.
    std::recursive_mutex listenerMutex;
    std::map<int, std::function<void()>> listeners;
    int lastListener = 0;

    MemoryWriter memoryWriter;
    uint64_t timesCollected = 0; ///< How often the values for the memory file have been collected.
    std::mutex fileMutex; ///< For the following two, and for the memory file.
    uint64_t newestWritten = 0; ///< timesCollected of the last values that a write has dealt with.
    QJsonObject savedValues; ///< The values in the memory file.

    /// Writes the memory of the cameras that still exist when the process ends, and ends their threads.
    struct EndOfProcess {
        ~EndOfProcess()
        {
            for (const auto &camera : existingCameras()) {
                camera->m_state->memoryWriter.stop();
                camera->flushMemory();
            }
        }
    };

    Refusal changeCapability(const QString &name, const QJsonValue &value)
    {
        const QJsonValue old = capabilities.value(name);
        if (old.isUndefined())
            return noSuchSetting();
        bool flag = false;
        int count = 0;
        Refusal refusal = old.isBool() ? parse(value, flag) : parse(value, count, {0, 255});
        if (refusal.isEmpty())
            capabilities[name] = value;
        return refusal;
    }

    /// Returns those of a device's saved values that belong to the memory or to snapshots.
    static QJsonObject valuesFor(bool DeviceEntry::*included, const DeviceEntry &entry, const QJsonObject &values)
    {
        return included == &DeviceEntry::inSnapshots ? entry.device->forSnapshot(values) : values;
    }

    /// Returns the saved values of the devices for which `included` is true.
    QJsonObject save(bool DeviceEntry::*included) const
    {
        QJsonObject values;
        for (const auto &[key, entry] : byKey)
            if (entry.*included)
                values[key] = valuesFor(included, entry, entry.device->save());
        return values;
    }

    /// Restores the devices for which `included` is true from values of save(). Logs refused values.
    void restore(bool DeviceEntry::*included, const QJsonObject &values, const QString &source)
    {
        for (const auto &[key, entry] : byKey)
            if (entry.*included && values.contains(key))
                for (const QString &refusal :
                     entry.device->restore(valuesFor(included, entry, values.value(key).toObject())))
                    qInfo("%s: %s.%s", qUtf8Printable(source), qUtf8Printable(key), qUtf8Printable(refusal));
    }
};

std::shared_ptr<Camera> Camera::create(const QString &profile, const QString &folder)
{
    auto loaded = Profile::load(profile);
    const QString cameraFolder = folderOf(loaded.name(), folder);
    std::shared_ptr<Camera> camera(new Camera(std::move(loaded), cameraFolder));
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
    : m_profile(std::move(profile)), m_folder(std::move(folder)), m_state(std::make_unique<State>(m_folder, [this] {
          writeMemory();
          writeFiles();
          // A file that could not be written is still to be written.
          const std::lock_guard lock(m_mutex);
          return std::ranges::none_of(m_devices, [](const auto &device) { return bool(device->filesToWrite()); });
      }))
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
        if (kind.presence == DeviceKind::WithCorrections && !device<Corrections>())
            continue;
        if (kind.presence == DeviceKind::WithRecorder && !deviceOf(QStringLiteral("recorder")))
            continue;
        Section section(values.toObject(), QStringLiteral("profile ") + m_profile.source(),
                        QStringLiteral("devices.") + kind.key);
        auto device = kind.make(*this, section);
        section.finish();
        add(kind.key, std::move(device), kind.memory == DeviceKind::Remembers, kind.snapshot == DeviceKind::Included);
    }
    m_state->frameClock = device<FrameClock>();
    for (const auto &device : m_devices)
        device->devicesExist();
    m_newSettings = snapshot();
    const QJsonObject values = readMemory();
    // The camera starts in its last state. Values that devices remember are newer than that state. The values of
    // devices that have no settings in states are restored before the state, since the readout circuit limits its frame
    // rates.
    m_state->restore(&State::DeviceEntry::remembersOnly, values, memorySource());
    const auto *const states = device<StateStore>();
    const std::string state = states->stateAtStart(values.value(QStringLiteral("states")).toObject());
    m_state->restore(&State::DeviceEntry::inSnapshots, states->settingsOf(state).value_or(QJsonObject()),
                     QStringLiteral("state ") + QString::fromStdString(state));
    m_state->restore(&State::DeviceEntry::isInBoth, values, memorySource());
    // A camera with the values of its profile needs no file.
    m_state->savedValues = values.isEmpty() ? m_state->save(&State::DeviceEntry::remembers) : values;
    m_state->complete = true;
}

Camera::~Camera()
{
    {
        const std::lock_guard lock(registry().mutex);
        registry().cameras.erase(m_state->handle);
    }
    m_state->memoryWriter.stop();
    writeMemory();
    writeFiles();
}

QString Camera::memorySource() const { return QStringLiteral("storage %1/%2").arg(m_folder, memoryFile); }

/// Reads the values in the camera's folder. Throws a SetupError if a value has another type than devices write.
QJsonObject Camera::readMemory() const
{
    QJsonObject reference = m_state->save(&State::DeviceEntry::remembers);
    // These devices save only the values that differ from the profile.
    for (const QString &key : {identityKey, roicKey})
        reference[key] = m_state->byKey.at(key).device->Device::save();
    const QJsonObject values = m_state->storage.read(memoryFile);
    Section(values, memorySource()).requireTypesOf(reference);
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
        // The change has effects on devices, for example a disconnection stops the lens.
        catchUp();
        m_state->connected = connected;
        for (const auto &device : m_devices)
            device->connectionChanged(connected);
        catchUp();
    }
    if (!connected)
        writeMemory();
    const std::lock_guard lock(m_state->listenerMutex);
    // A listener may remove itself or other listeners.
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

Camera::OtherClient Camera::otherClient() { return OtherClient(*this); }

bool Camera::OtherClient::set(const QString &name, const QVariant &value, QString *why)
{
    const std::lock_guard lock(m_camera.m_mutex);
    m_camera.catchUp();
    const auto dot = name.indexOf(QLatin1Char('.'));
    auto *const target = dot < 0 ? nullptr : m_camera.deviceOf(name.left(dot));
    const Refusal refusal = target ? target->change(name.mid(dot + 1), fromVariant(value)) : noSuchSetting();
    if (!refusal.isEmpty()) {
        if (why)
            *why = QStringLiteral("other client: %1: %2").arg(name, refusal);
        return false;
    }
    m_camera.catchUp();
    m_camera.device<EventQueue>()->push(ZVT_EVENT_SETTINGS_CHANGED);
    return true;
}

bool Camera::changeMakeUp(const QString &capability, const QVariant &value, QString *why)
{
    const std::lock_guard lock(m_mutex);
    const Refusal refusal = m_state->changeCapability(capability, fromVariant(value));
    if (!refusal.isEmpty()) {
        if (why)
            *why = QStringLiteral("other client: capabilities.%1: %2").arg(capability, refusal);
        return false;
    }
    device<EventQueue>()->push(ZVT_EVENT_MAKE_UP_CHANGED);
    return true;
}

void Camera::identityChanged(const QJsonObject &capabilities)
{
    for (auto value = capabilities.begin(); value != capabilities.end(); ++value)
        m_state->capabilities[value.key()] = value.value();
    if (m_state->complete)
        device<EventQueue>()->push(ZVT_EVENT_MAKE_UP_CHANGED);
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

Status Camera::letTimePass(int64_t milliseconds)
{
    catchUp();
    {
        const Unlocked unlocked(*this);
        Clock::wait(milliseconds);
    }
    catchUp();
    return connected() ? Ok : NotConnected;
}

void Camera::catchUp()
{
    m_state->frameClock->updateFrameTiming();
    for (const auto &device : m_devices)
        device->catchUp();
}

image::Exposure Camera::exposure(const FrameStart &start) const
{
    const std::lock_guard lock(m_mutex);
    image::Exposure exposure;
    exposure.frameNumber = start.number;
    exposure.scene.microseconds = start.microseconds;
    for (const auto &device : m_devices)
        device->expose(start.preset, exposure);
    return exposure;
}

std::optional<Frame> Camera::newestFrame(int preset, std::optional<image::Output> output)
{
    std::unique_lock lock(m_mutex);
    catchUp();
    const auto start = m_state->frameClock->newest(preset);
    return start ? render(*start, output, std::move(lock)) : std::nullopt;
}

std::optional<Frame> Camera::frame(int preset, uint64_t number, std::optional<image::Output> output)
{
    std::unique_lock lock(m_mutex);
    catchUp();
    const auto start = m_state->frameClock->frame(number);
    return start && start->preset == preset ? render(*start, output, std::move(lock)) : std::nullopt;
}

/// Renders a frame, raw without an output, after it has released the lock.
std::optional<Frame> Camera::render(const FrameStart &start, std::optional<image::Output> output,
                                    std::unique_lock<std::recursive_mutex> lock)
{
    const image::Exposure exposure = this->exposure(start);
    lock.unlock();
    Frame frame{start, {exposure.window.width, exposure.window.height}, {}};
    return render(exposure, start.preset, output, frame.counts) ? std::optional(std::move(frame)) : std::nullopt;
}

bool Camera::render(image::Exposure exposure, int preset, std::optional<image::Output> output,
                    std::vector<uint16_t> &counts) const
{
    exposure.detector = device<Sensor>()->array().mapsFor(exposure.window);
    if (auto *const corrections = device<Corrections>(); corrections && output)
        exposure.correction = corrections->table(preset);
    return output ? image::renderOutput(exposure, *output, counts) : image::renderFrame(exposure, counts);
}

std::vector<SettingInfo> Camera::settings() const
{
    const std::lock_guard lock(m_mutex);
    m_state->frameClock->updateFrameTiming();
    std::vector<SettingInfo> list;
    for (const auto &[key, entry] : m_state->byKey)
        for (SettingInfo &setting : entry.device->settings()) {
            setting.name = key + QLatin1Char('.') + setting.name;
            list.push_back(std::move(setting));
        }
    return list;
}

QJsonObject Camera::snapshot() const
{
    const std::lock_guard lock(m_mutex);
    m_state->frameClock->updateFrameTiming();
    return m_state->save(&State::DeviceEntry::inSnapshots);
}

void Camera::restore(const QJsonObject &snapshot, const QString &source)
{
    const std::lock_guard lock(m_mutex);
    catchUp();
    m_state->restore(&State::DeviceEntry::inSnapshots, snapshot, source);
    catchUp();
    remember();
}

void Camera::remember()
{
    static const State::EndOfProcess endOfProcess;
    // Devices report changes also while they take their first values.
    if (m_state->complete)
        m_state->memoryWriter.mark();
}

void Camera::flushMemory() { m_state->memoryWriter.flush(); }

/// Writes the files of the devices. This may take long.
void Camera::writeFiles()
{
    std::vector<std::function<void()>> writes;
    {
        const std::lock_guard lock(m_mutex);
        for (const auto &device : m_devices)
            if (auto write = device->filesToWrite())
                writes.push_back(std::move(write));
    }
    for (const auto &write : writes)
        write();
}

/// Writes the values that outlive the process if they have changed. Calls to the camera wait only while the values are
/// collected.
void Camera::writeMemory()
{
    std::unique_lock lock(m_mutex);
    const QJsonObject values = m_state->save(&State::DeviceEntry::remembers);
    const uint64_t number = ++m_state->timesCollected;
    lock.unlock();
    const std::lock_guard fileLock(m_state->fileMutex);
    // Another thread may have written newer values meanwhile.
    if (number < m_state->newestWritten)
        return;
    m_state->newestWritten = number;
    // A folder that has been removed while the camera exists is not made again.
    const auto folderExists = [this] { return QDir(m_folder).exists(); };
    if (values == m_state->savedValues || !folderExists())
        return;
    try {
        m_state->storage.write(memoryFile, values);
        m_state->savedValues = values;
    } catch (const SetupError &error) {
        if (folderExists())
            qWarning("%s", error.what());
    }
}

} // namespace emulator
