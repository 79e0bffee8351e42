#pragma once

#include "platform/emulator/Device.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <map>

namespace emulator
{

/// The properties that only emulated cameras have, by their paths: "/RecordStart" and "/SSDTransfer" (bool),
/// "/Pattern" (an int, an image::Scene::Pattern; others count as Live), "/BlackbodyTemp1" and "/BlackbodyTemp2" (float,
/// Celsius) and "/ChamberProfile" (text), the program of the climate chamber as ChamberProgram::parse() reads it. A
/// change of the program starts it; Environment runs it. "/RecordStart" is the input of the Recorder.
class EmulatorProperties : public Device
{
public:
    /// Profile keys: the paths without the slash. Settings: the paths. The environment must exist before. A program in
    /// the profile starts when the camera is created.
    EmulatorProperties(Camera &camera, Section &section);

    /// Reads a property. Returns false, and does not change `value`, if the property does not exist.
    bool get(const QString &path, QVariant &value) const;

    /// Sets a property. Returns false if the property does not exist, if its type cannot hold the value, or if a text
    /// is not a program of the chamber; the property then keeps its value.
    bool set(const QString &path, const QVariant &value);

    void expose(int preset, image::Exposure &exposure) const override;

private:
    /// `use` is called with each new value, also with that of the profile.
    template <class T>
    void addProperty(Section &section, const QString &key, const T &value, const Rule<T> &rule = {},
                     std::function<void(const T &)> use = {});

    std::map<QString, QVariant> m_values; ///< By path.
};

} // namespace emulator
