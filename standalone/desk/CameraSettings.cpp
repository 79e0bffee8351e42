#include "standalone/desk/CameraSettings.h"

#include "platform/emulator/control.h"
#include "standalone/StandaloneModel.h"

#include <QtConcurrent>

#include <utility>

using namespace Qt::StringLiterals;
using emulator::SettingInfo;

namespace
{

constexpr int pollMilliseconds = 500;
constexpr emulator::Between capabilityRange{0, 255};
const QString capabilities = u"capabilities."_s;

/// The reason in a message like "other client: cooler.setpoint: must be a number".
QString reasonOf(const QString &message, const QString &name)
{
    const QString before = name + u": "_s;
    return message.mid(message.indexOf(before) + before.size());
}

} // namespace

CameraSettings::Settings CameraSettings::settingsOf(const emulator::Camera &camera)
{
    Settings settings = camera.settings();
    const QJsonObject present = camera.capabilities();
    for (auto capability = present.begin(); capability != present.end(); ++capability)
        settings.push_back(SettingInfo{capabilities + capability.key(),
                                       capability->isBool() ? SettingInfo::Flag : SettingInfo::WholeNumber,
                                       capabilityRange,
                                       {},
                                       *capability,
                                       true});
    return settings;
}

CameraSettings::CameraSettings(StandaloneModel &model, QObject *parent) : QObject(parent), m_model(model)
{
    m_timer.setInterval(pollMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &CameraSettings::read);
    connect(&m_task, &QFutureWatcherBase::finished, this, &CameraSettings::finished);
    connect(&m_model, &StandaloneModel::cameraChanged, this, &CameraSettings::followCamera);
}

void CameraSettings::setPolling(bool on)
{
    if (on == polling())
        return;
    if (on) {
        m_timer.start();
        read();
    } else {
        m_timer.stop();
    }
}

void CameraSettings::read()
{
    m_needsRead = true;
    start();
}

void CameraSettings::change(const QString &name, const QVariant &value)
{
    m_waiting.append({name, value, {}});
    emit updated();
    start();
}

CameraSettings::Settings CameraSettings::settings() const
{
    QHash<QString, QVariant> wanted;
    for (const Change &change : m_sent + m_waiting)
        wanted.insert(change.name, change.value);
    Settings settings = m_settings;
    for (SettingInfo &setting : settings)
        if (const auto change = wanted.constFind(setting.name); change != wanted.constEnd())
            setting.value = emulator::fromVariant(*change);
    return settings;
}

void CameraSettings::start()
{
    if (m_running || (!m_needsRead && m_waiting.isEmpty()))
        return;
    m_running = true;
    m_needsRead = false;
    m_sent = std::exchange(m_waiting, {});
    m_task.setFuture(QtConcurrent::run(&CameraSettings::run, m_model.camera().shared_from_this(), m_sent));
}

// Pool task.
CameraSettings::Result CameraSettings::run(const std::shared_ptr<emulator::Camera> &camera, QList<Change> changes)
{
    for (Change &change : changes) {
        QString message;
        if (change.name.startsWith(capabilities))
            camera->changeMakeUp(change.name.mid(capabilities.size()), change.value, &message);
        else
            camera->otherClient().set(change.name, change.value, &message);
        if (!message.isEmpty())
            change.why = reasonOf(message, change.name);
    }
    return {std::move(changes), settingsOf(*camera)};
}

void CameraSettings::finished()
{
    m_running = false;
    m_sent.clear();
    if (!std::exchange(m_ofFormerCamera, false)) {
        const Result result = m_task.result();
        m_settings = result.settings;
        for (const Change &change : result.changes)
            emit changed(change.name, change.why);
        emit updated();
    }
    start();
}

void CameraSettings::followCamera()
{
    m_settings.clear();
    m_sent.clear();
    m_waiting.clear();
    m_ofFormerCamera = m_running;
    emit cameraChanged();
    emit updated();
    if (polling())
        read();
}
