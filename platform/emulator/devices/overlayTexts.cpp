#include "platform/emulator/devices/overlayTexts.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/FieldOfView.h"
#include "platform/emulator/devices/Flag.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/HourMeter.h"
#include "platform/emulator/devices/Identity.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/StateStore.h"
#include "platform/emulator/devices/Temperatures.h"
#include "platform/emulator/devices/Trigger.h"
#include "platform/emulator/devices/VideoOutput.h"
#include "platform/emulator/devices/VideoPalette.h"
#include "platform/emulator/devices/Zoom.h"
#include "platform/emulator/image/Optics.h"

#include <array>
#include <cmath>
#include <optional>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

const QString unreadable = u"---"_s;

QString digits(int number, int count) { return u"%1"_s.arg(number, count, 10, QChar(u'0')); }
QString decimals(double number, int count) { return QString::number(number, 'f', count); }

QString timeOfDay(int hour, int minute, int second)
{
    return digits(hour, 2) + u':' + digits(minute, 2) + u':' + digits(second, 2);
}

/// Nothing: the camera lacks the sensor.
QString temperature(const QString &label, std::optional<float> celsius, bool readable)
{
    if (!celsius)
        return {};
    return label + u' ' + (readable ? decimals(*celsius, 1) : unreadable) + u" C"_s;
}

/// The temperatures of the board SC.
struct ScTemperatures {
    float frontPanel = 0;
    float airGap = 0;
    float internal = 0;
};

/// A temperature of the board SC.
QString scText(const Camera &camera, bool (Temperatures::*exists)() const, float ScTemperatures::*sensor,
               const QString &label)
{
    const auto *const temperatures = camera.device<Temperatures>();
    if (!temperatures || !(temperatures->*exists)())
        return {};
    ScTemperatures celsius;
    const Status status = temperatures->scTemperatures(celsius.frontPanel, celsius.airGap, celsius.internal);
    return temperature(label, celsius.*sensor, status == Ok);
}

/// A temperature of another board or of the lens.
QString sensorText(const Camera &camera, Status (Temperatures::*read)(float &) const, const QString &label)
{
    const auto *const temperatures = camera.device<Temperatures>();
    float celsius = 0;
    const Status status = temperatures ? (temperatures->*read)(celsius) : Absent;
    return temperature(label, status == Absent ? std::nullopt : std::optional(celsius), status == Ok);
}

QString focusText(const Camera &camera)
{
    const auto *const focus = camera.device<Focus>();
    return focus ? u"FOC %1"_s.arg(focus->position()) : QString();
}

/// The frame that a playback of the recorder shows.
std::optional<RecordedFrame> playedFrame(const Camera &camera)
{
    const auto *const recorder = camera.device<Recorder>();
    return recorder ? recorder->shown() : std::nullopt;
}

/// The time of the played frame, or the present time.
CameraClock::RealTime realTime(const Camera &camera)
{
    const auto played = playedFrame(camera);
    return played ? played->realTime : camera.device<CameraClock>()->realTime();
}

QString dateText(const Camera &camera)
{
    constexpr int firstYear = 2000;
    const CameraClock::RealTime time = realTime(camera);
    return digits(firstYear + time.year, 4) + u'-' + digits(time.month, 2) + u'-' + digits(time.day, 2);
}

QString timeText(const Camera &camera)
{
    const CameraClock::RealTime time = realTime(camera);
    return timeOfDay(time.hour, time.minute, time.second);
}

QString irigText(const Camera &camera)
{
    const auto played = playedFrame(camera);
    const CameraClock::IrigTime time = played ? played->irigTime : camera.device<CameraClock>()->irigTime();
    return digits(time.day, 3) + u':' + timeOfDay(time.hour, time.minute, time.second) + u'.'
        + digits(time.millisecond, 3) + digits(time.microsecond, 3);
}

QString cameraText(const Camera &camera)
{
    const Identity &identity = *camera.device<Identity>();
    return QString::fromStdString(identity.model() + ' ' + identity.serial());
}

QString hoursText(const Camera &camera) { return u"%1 H"_s.arg(camera.device<HourMeter>()->minutes() / 60); }

QString flagText(const Camera &camera)
{
    const auto *const flag = camera.device<Flag>();
    if (!flag)
        return {};
    const QString label = flag->state() == Flag::InView ? u"FLAG IN"_s : u"FLAG OUT"_s;
    return temperature(label, flag->temperature(), true);
}

/// A camera with a zoom and a turret has the magnification of its zoom.
QString fieldOfViewText(const Camera &camera)
{
    constexpr double widestMillimetres = 25;
    if (const auto *const zoom = camera.device<Zoom>())
        return u"%1 MM"_s.arg(std::lround(widestMillimetres * image::Optics::magnificationOf(zoom->narrowness())));
    const auto *const turret = camera.device<FieldOfView>();
    if (!turret)
        return {};
    return turret->selected() == FieldOfView::Narrow ? u"NFOV"_s : u"WFOV"_s;
}

QString zoomText(const Camera &camera)
{
    return u"ZOOM "_s
        + QString::fromLatin1(VideoOutput::zoomFactorText(camera.device<VideoOutput>()->zoomFactor())).toUpper();
}

QString presetText(const Camera &camera)
{
    static const std::array modes{u"FREE RUN"_s, u"TRIGGERED"_s, u"SEQUENCE"_s, u"ADVANCE"_s}; // By Trigger::Mode.
    const int preset = camera.device<VideoOutput>()->preset();
    double milliseconds = 0;
    camera.device<Sensor>()->integrationTime(preset, milliseconds);
    return u"%1/PS%2: %3 MS"_s.arg(modes.at(camera.device<Trigger>()->mode()))
        .arg(preset)
        .arg(decimals(milliseconds, 3));
}

QString frameRateText(const Camera &camera)
{
    return decimals(camera.device<FrameClock>()->averageRate(), 2) + u" HZ"_s;
}

} // namespace

QString overlayText(const Camera &camera, OverlayField field)
{
    using enum OverlayField;
    switch (field) {
    case Logo:
        return u"ZVT"_s;
    case Focus:
        return focusText(camera);
    case Date:
        return dateText(camera);
    case CameraInfo:
        return cameraText(camera);
    case Time:
        return timeText(camera);
    case Irig:
        return irigText(camera);
    case HourMeter:
        return hoursText(camera);
    case FrontPanelTemperature:
        return scText(camera, &Temperatures::hasFrontPanelSensor, &ScTemperatures::frontPanel, u"FP"_s);
    case Flag:
        return flagText(camera);
    case AirGapTemperature:
        return scText(camera, &Temperatures::hasAirGapSensor, &ScTemperatures::airGap, u"AG"_s);
    case Palette:
        return QString::fromStdString(camera.device<VideoPalette>()->name());
    case InternalTemperature:
        return scText(camera, &Temperatures::hasInternalSensor, &ScTemperatures::internal, u"INT"_s);
    case FieldOfView:
        return fieldOfViewText(camera);
    case StateName:
        return QString::fromStdString(camera.device<StateStore>()->current());
    case Zoom:
        return zoomText(camera);
    case Preset:
        return presetText(camera);
    case FrameRate:
        return frameRateText(camera);
    case LensTemperature:
        return sensorText(camera, &Temperatures::lensTemperature, u"LENS"_s);
    case ChassisTemperature:
        return sensorText(camera, &Temperatures::rsTemperature, u"CH"_s);
    }
    return {};
}

} // namespace emulator
