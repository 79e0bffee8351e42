#pragma once

#include "platform/emulator/Section.h"
#include "platform/emulator/SettingTable.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

namespace emulator::image
{
struct Exposure;
}

namespace emulator
{

class Camera;

/// A piece of equipment inside an emulated camera: its cooler, its sensor, its clock. A device keeps its own values and
/// takes its time from the Clock. Its operations return a Status and leave their outputs alone unless it is Ok. They
/// are called with the camera's lock held, from any thread; a slow one lets the time pass by Camera::letTimePass(), so
/// that the rest of the camera continues to answer.
///
/// The constructor of a device states its settings once, as a table, after its members have their defaults:
///
///     DetectorGain::DetectorGain(Camera &camera, Section &section)
///         : Device(camera), m_levels(section.integer(u"levels"_s, 3, 1, UINT8_MAX))
///     {
///         addSettings(section, {
///             {u"level"_s, m_level, Between{0, m_levels - 1.0}, Everywhere},
///             {u"named"_s, m_named, Profile | OtherClient},
///         });
///     }
///
///     Status DetectorGain::setLevel(uint8_t level) { return assign(m_level, level); }
///
/// Values that no row can describe are saved, restored and changed by overrides, which leave the rest to the table.
class Device
{
public:
    explicit Device(Camera &camera) : m_camera(camera) { }
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;
    virtual ~Device();

    /// The values of this device in the camera's memory. Empty: it has none.
    virtual QJsonObject save() const;

    /// Returns those of the values of save() that snapshots contain.
    QJsonObject forSnapshot(const QJsonObject &values) const { return m_table.forSnapshot(values); }

    /// Takes the values of save() back, as SettingTable::restore() does.
    virtual QStringList restore(const QJsonObject &values);

    /// The camera has been connected or disconnected. It is switched on by its first connection.
    virtual void connectionChanged(bool connected);

    /// Carries out what has become due since the last time. Called with the camera's lock held, before and after each
    /// operation and change, so it should return early: an idle device takes below 0.1 us.
    virtual void catchUp();

    /// All devices of the camera exist and have the values of its profile. Called once, before saved values are
    /// restored. Throws a SetupError if the profile asks for something impossible.
    virtual void devicesExist();

    /// Returns what brings the files of this device up to date, empty if it has none. Called with the camera's lock
    /// held, often; the result is called without the lock, on any thread, and not always in the order of the calls.
    virtual std::function<void()> filesToWrite();

    /// Sets those properties of the exposure of a preset that depend on this device, as they are now. The devices
    /// are asked in the order of DeviceKind::all(); a later one may use and replace what earlier ones have set. All of
    /// them together take at most 50 us.
    virtual void expose(int preset, image::Exposure &exposure) const;

    /// Another client changes the setting `name`. Returns why it is refused, empty if it has been changed.
    virtual Refusal change(const QString &name, const QJsonValue &value);

    /// The settings that other clients may change, in the order of the table.
    virtual std::vector<SettingInfo> settings() const;

protected:
    using enum Setting::Use;

    Camera &camera() const { return m_camera; }

    /// See SettingTable::add(). Only in constructors.
    void addSettings(Section &section, std::vector<Setting> rows) { m_table.add(section, std::move(rows)); }

    /// Adds rows that no profile has.
    void addSettings(std::vector<Setting> rows) { m_table.add(std::move(rows)); }

    /// See SettingTable::assign() and SettingTable::fetch().
    template <class T> Status assign(T &member, const std::type_identity_t<T> &value)
    {
        return m_table.assign(member, value);
    }
    template <class T> Status fetch(const T &member, T &value) const { return m_table.fetch(member, value); }

    /// Something that outlives the process has changed. Does not wait until it is written: see Camera::remember().
    void remember() const;

private:
    Camera &m_camera;
    SettingTable m_table;
};

} // namespace emulator
