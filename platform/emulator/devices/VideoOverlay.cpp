#include "platform/emulator/devices/VideoOverlay.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/AutoFocus.h"
#include "platform/emulator/devices/Cooler.h"
#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/Flag.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/FrameSync.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/devices/Trigger.h"
#include "platform/emulator/devices/VideoGain.h"

#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

/// The keys of the fields, in their order.
const std::array<QString, overlayFields> fieldKeys{
    u"showLogo"_s,      u"showFocus"_s,      u"showDate"_s,       u"showCameraInfo"_s,
    u"showTime"_s,      u"showIrig"_s,       u"showHourMeter"_s,  u"showFrontPanelTemp"_s,
    u"showFlag"_s,      u"showAirGapTemp"_s, u"showPalette"_s,    u"showInternalTemp"_s,
    u"showFov"_s,       u"showStateName"_s,  u"showZoom"_s,       u"showPreset"_s,
    u"showFrameRate"_s, u"showLensTemp"_s,   u"showChassisTemp"_s};

Refusal checkUserText(const std::string &text)
{
    return text.size() <= VideoOverlay::maximumUserText ? Refusal() : u"must have at most 64 bytes"_s;
}

/// As the overlay shows it. Characters that Latin-1 lacks become question marks.
std::string toLatin1(const QString &text) { return text.toLatin1().toStdString(); }

/// Whether no frames come because a signal from outside is missing.
bool lacksSignal(const FrameSync &sync, const Trigger &trigger, FrameClock &frames)
{
    if (sync.source() != FrameSync::Internal && sync.externalRate() == 0)
        return true;
    const bool startsFrames
        = trigger.mode() == Trigger::TriggeredFreeRun || trigger.mode() == Trigger::TriggeredSequence;
    return startsFrames && trigger.source() == Trigger::External && sync.triggerRate() == 0
        && frames.averageRate() == 0;
}

} // namespace

VideoOverlay::VideoOverlay(Camera &camera, Section &section)
    : Device(camera), m_textColorsAvailable(section.flag(u"textColors"_s, true)),
      m_userFieldAvailable(section.flag(u"userField"_s, true))
{
    std::vector<Setting> rows{
        {u"enabled"_s, m_values.enabled, Everywhere},
        {u"showMessages"_s, m_values.showMessages, Everywhere},
        {u"showAgcRoi"_s, m_values.showAgcRegion, Everywhere},
    };
    for (size_t field = 0; field < fieldKeys.size(); ++field)
        rows.emplace_back(fieldKeys[field], m_values.fields[field], Everywhere);
    rows.emplace_back(u"agcRoiColor"_s, m_values.agcRegionColor, Everywhere);
    rows.emplace_back(u"focusRoiColor"_s, m_values.focusRegionColor, Everywhere);
    rows.push_back(Setting(u"textColor"_s, m_values.textColor, Everywhere).onlyIf(m_textColorsAvailable));
    rows.push_back(Setting(u"textBackground"_s, m_values.textBackground, Everywhere).onlyIf(m_textColorsAvailable));
    rows.push_back(Setting(u"showUserField"_s, m_values.showUserField, Everywhere).onlyIf(m_userFieldAvailable));
    rows.push_back(Setting(u"userText"_s, m_values.userText, checkUserText, Everywhere).onlyIf(m_userFieldAvailable));
    addSettings(section, std::move(rows));
    addCauses();
}

std::array<bool, overlayFields> VideoOverlay::defaultFields()
{
    std::array<bool, overlayFields> fields{};
    for (const auto field :
         {OverlayField::CameraInfo, OverlayField::Time, OverlayField::Preset, OverlayField::FrameRate})
        fields[static_cast<size_t>(field)] = true;
    return fields;
}

void VideoOverlay::useDefaults()
{
    m_values = {};
    if (auto *const focus = camera().device<AutoFocus>())
        focus->setShowAlways(false);
}

image::OverlayContent VideoOverlay::content() const
{
    image::OverlayContent content{
        .lines = {},
        .message = {},
        .boxes = {},
        .textColor = m_values.textColor,
        .textBackground = m_values.textBackground,
    };
    if (!m_values.enabled)
        return content;
    for (uint8_t field = 0; field < overlayFields; ++field)
        if (m_values.fields[field])
            if (const QString text = overlayText(camera(), static_cast<OverlayField>(field)); !text.isEmpty())
                content.lines.push_back(toLatin1(text));
    if (m_userFieldAvailable && m_values.showUserField && !m_values.userText.empty())
        content.lines.push_back(toLatin1(QString::fromStdString(m_values.userText)));
    if (m_values.showMessages)
        content.message = m_message;
    addBoxes(content.boxes);
    return content;
}

void VideoOverlay::addBoxes(std::vector<image::OverlayBox> &boxes) const
{
    const auto add = [&](const image::Window &region, uint8_t color) {
        boxes.push_back({double(region.x), double(region.y), double(region.width), double(region.height), color});
    };
    const VideoGain &gain = *camera().device<VideoGain>();
    if (m_values.showAgcRegion && gain.regionEnabled())
        add(gain.region(), m_values.agcRegionColor);
    const auto *const focus = camera().device<AutoFocus>();
    if (focus && (focus->showAlways() || (focus->showWhenFocusing() && focus->focusing())))
        add(focus->regionIn(gain.shownPicture()), m_values.focusRegionColor);
}

void VideoOverlay::addCauses()
{
    if (const auto *const cooler = camera().device<Cooler>())
        m_causes.push_back({"COOLING", [cooler, seen = 0U]() mutable {
                                return std::exchange(seen, cooler->coolDowns()) != cooler->coolDowns();
                            }});
    if (const auto *const recorder = camera().device<Recorder>()) {
        m_causes.push_back({"LOADING", [recorder] { return recorder->state() == RecorderMachine::Loading; }});
        m_causes.push_back({"SSD FULL", [recorder, seen = 0U]() mutable {
                                return std::exchange(seen, recorder->timesFull()) != recorder->timesFull();
                            }});
    }
    if (const auto *const run = camera().device<CorrectionRun>())
        m_causes.push_back({"CORRECTION", [run] { return run->running(); }});
    const auto &sync = *camera().device<FrameSync>();
    const auto &trigger = *camera().device<Trigger>();
    auto &frames = *camera().device<FrameClock>();
    m_causes.push_back({"NO SYNC", [&sync, &trigger, &frames] { return lacksSignal(sync, trigger, frames); }});
    const auto *const flag = camera().device<Flag>();
    if (const auto *const cooler = flag ? flag->cooler() : nullptr)
        m_causes.push_back({"FLAG FAULT", [cooler] { return cooler->stuck() && cooler->power(); }});
}

void VideoOverlay::catchUp()
{
    for (Cause &cause : m_causes) {
        const bool exists = cause.exists();
        if (exists && !cause.existed)
            m_message = cause.message;
        cause.existed = exists;
    }
}

} // namespace emulator
