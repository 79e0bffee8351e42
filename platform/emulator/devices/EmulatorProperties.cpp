#include "platform/emulator/devices/EmulatorProperties.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/ChamberProgram.h"
#include "platform/emulator/devices/Environment.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/image/Exposure.h"

#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

EmulatorProperties::EmulatorProperties(Camera &camera, Section &section) : Device(camera)
{
    const auto useInput = [&camera](bool level) {
        if (auto *const recorder = camera.device<Recorder>())
            recorder->setInput(level);
    };
    addProperty<bool>(section, u"RecordStart"_s, false, {}, useInput);
    addProperty<bool>(section, u"SSDTransfer"_s, false);
    addProperty<int>(section, u"Pattern"_s, 0);
    addProperty<float>(section, u"BlackbodyTemp1"_s, 20);
    addProperty<float>(section, u"BlackbodyTemp2"_s, 35);

    const auto check = [](const QString &text) {
        ChamberProgram ignored;
        return ChamberProgram::parse(text, ignored);
    };
    const auto run = [environment = camera.device<Environment>()](const QString &text) {
        ChamberProgram program;
        ChamberProgram::parse(text, program);
        environment->run(program);
    };
    addProperty<QString>(section, u"ChamberProfile"_s, {}, check, run);
}

template <class T>
void EmulatorProperties::addProperty(Section &section, const QString &key, const T &value, const Rule<T> &rule,
                                     std::function<void(const T &)> use)
{
    const QString path = u'/' + key;
    QVariant &property = m_values[path];
    property = value;
    const auto get = [&property] { return property.value<T>(); };
    const auto set = [&property, use = std::move(use)](const T &changed) {
        property = changed;
        if (use)
            use(changed);
        return Ok;
    };
    addSettings(section, {{key, get, set, rule, Setting::Profile}, {path, get, set, rule, Setting::OtherClient}});
}

bool EmulatorProperties::get(const QString &path, QVariant &value) const
{
    const auto found = m_values.find(path);
    if (found == m_values.end())
        return false;
    value = found->second;
    return true;
}

bool EmulatorProperties::set(const QString &path, const QVariant &value)
{
    const auto found = m_values.find(path);
    const bool isFloat = found != m_values.end() && found->second.typeId() == QMetaType::Float;
    if (!isFloat || value.typeId() != QMetaType::Float)
        return change(path, fromVariant(value)).isEmpty();
    // JSON has neither infinity nor NaN.
    found->second = value;
    return true;
}

void EmulatorProperties::expose(int, image::Exposure &exposure) const
{
    image::Scene &scene = exposure.scene;
    scene.pattern = image::Scene::patternOf(m_values.at(u"/Pattern"_s).toInt());
    scene.blackbody1 = m_values.at(u"/BlackbodyTemp1"_s).toDouble();
    scene.blackbody2 = m_values.at(u"/BlackbodyTemp2"_s).toDouble();
}

} // namespace emulator
