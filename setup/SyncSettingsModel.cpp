#include "setup/SyncSettingsModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/rows.h"
#include "common/setters.h"

#include <algorithm>
#include <tuple>

#include "zvt/zvtsdk.h"

namespace
{

using hlx::cam::IZVTController;

constexpr uint32_t presetSequencing = 2; ///< A sequencing mode of the controller.

} // namespace

struct SyncSettingsModel::Rows {
    static constexpr Row syncMode{zvtGetFrameSyncMode, &Result::syncMode, &Self::m_syncMode, &Self::syncModeChanged,
                                  zvtSetFrameSyncMode};
    static constexpr Row syncSource{zvtGetFrameSyncSource, &Result::syncSource, &Self::m_syncSource,
                                    &Self::syncSourceChanged, zvtSetFrameSyncSource};
    static constexpr Row triggerMode{zvtGetTriggerMode, &Result::triggerMode, &Self::m_triggerMode,
                                     &Self::triggerModeChanged, zvtSetTriggerMode};
    static constexpr Row triggerSource{zvtGetTriggerSource, &Result::triggerSource, &Self::m_triggerSource,
                                       &Self::triggerSourceChanged, zvtSetTriggerSource};
    static constexpr Row triggerRate{zvtGetInternalTriggerRate, &Result::triggerRate, &Self::m_triggerRate,
                                     &Self::triggerRateChanged, zvtSetInternalTriggerRate};
    static constexpr Row sequenceCount{zvtGetSequenceCount, &Result::sequenceCount, &Self::m_sequenceCount,
                                       &Self::sequenceCountChanged, zvtSetSequenceCount};
    static constexpr Row syncInDelay{zvtGetFrameSyncDelay, &Result::syncInDelay, &Self::m_syncInDelay,
                                     &Self::syncInDelayChanged, zvtSetFrameSyncDelay};
    static constexpr Row triggerInDelay{zvtGetTriggerDelay, &Result::triggerInDelay, &Self::m_triggerInDelay,
                                        &Self::triggerInDelayChanged, zvtSetTriggerDelay};
    static constexpr Row syncOutPolarity{zvtGetSyncOutPolarity, &Result::syncOutPolarity, &Self::m_syncOutPolarity,
                                         &Self::syncOutPolarityChanged, zvtSetSyncOutPolarity};
    static constexpr Row syncOutSource{zvtGetSyncOutSource, &Result::syncOutSource, &Self::m_syncOutSource,
                                       &Self::syncOutSourceChanged, zvtSetSyncOutSource};
    static constexpr Row syncInPolarity{zvtGetFrameSyncPolarity, &Result::syncInPolarity, &Self::m_syncInPolarity,
                                        &Self::syncInPolarityChanged, zvtSetFrameSyncPolarity};
    static constexpr Row triggerInPolarity{zvtGetTriggerPolarity, &Result::triggerInPolarity,
                                           &Self::m_triggerInPolarity, &Self::triggerInPolarityChanged,
                                           zvtSetTriggerPolarity};

    // The order of the calls differs from that of the signals.
    static constexpr std::tuple inOrderOfCalls{syncMode,          triggerMode,    triggerSource,   sequenceCount,
                                               triggerRate,       syncSource,     syncInDelay,     triggerInDelay,
                                               triggerInPolarity, syncInPolarity, syncOutPolarity, syncOutSource};
    static constexpr std::tuple beforeSyncOutDelays{syncMode,    syncSource,    triggerMode, triggerSource,
                                                    triggerRate, sequenceCount, syncInDelay, triggerInDelay};
    static constexpr std::tuple afterSyncOutDelays{syncOutPolarity, syncOutSource, syncInPolarity, triggerInPolarity};
};

const std::array<SyncSettingsModel::Signal, SyncSettingsModel::delayCount> SyncSettingsModel::s_syncOutDelayChanged{
    &Self::syncOutDelayPS0Changed, &Self::syncOutDelayPS1Changed, &Self::syncOutDelayPS2Changed,
    &Self::syncOutDelayPS3Changed};

const std::array<SyncSettingsModel::Signal, 6> SyncSettingsModel::s_triggerTimeChanged{
    &Self::triggerTimeDayChanged,    &Self::triggerTimeHourChanged,        &Self::triggerTimeMinuteChanged,
    &Self::triggerTimeSecondChanged, &Self::triggerTimeMillisecondChanged, &Self::triggerTimeMicrosecondChanged};

// The read

void SyncSettingsModel::refresh() { m_refresh.start(&Result::read); }

SyncSettingsModel::Result SyncSettingsModel::Result::read(const CameraAccess &camera)
{
    Result result;
    readAll(result, Rows::inOrderOfCalls, camera.handle);
    for (uint8_t preset = 0; preset < delayCount; ++preset)
        fetch(result.syncOutDelays[preset], zvtGetSyncOutDelay, camera.handle, preset);
    uint16_t day = 0;
    uint8_t hour = 0;
    uint8_t minute = 0;
    uint8_t second = 0;
    uint16_t millisecond = 0;
    uint16_t microsecond = 0;
    if (zvtGetIRIGTriggerTime(camera.handle, &day, &hour, &minute, &second, &millisecond, &microsecond) == 0)
        result.triggerTime = TriggerTime{day, hour, minute, second, millisecond, microsecond};
    fetch(result.triLevelAvailable, zvtGetTriLevelSyncSourceAvailable, camera.handle);
    return result;
}

void SyncSettingsModel::finishedWatcher()
{
    const Result result = m_refresh.result();
    publishSequencing();
    publishAllIfChanged(this, result, Rows::beforeSyncOutDelays);
    for (size_t preset = 0; preset < delayCount; ++preset)
        publishIfChanged(this, result.syncOutDelays[preset], m_syncOutDelays[preset], s_syncOutDelayChanged[preset]);
    publishAllIfChanged(this, result, Rows::afterSyncOutDelays);
    if (result.triggerTime.set())
        for (size_t part = 0; part < m_triggerTime.size(); ++part)
            publishIfChanged(this, Nullable<int>(result.triggerTime.get()[part]), m_triggerTime[part],
                             s_triggerTimeChanged[part]);
    if (result.triLevelAvailable.set() && result.triLevelAvailable.get() != m_triLevelAvailable) {
        m_triLevelAvailable = result.triLevelAvailable.get();
        emit syncSourceStringsChanged();
        // A combo box with new rows selects the first one until the index is signalled.
        emit syncSourceChanged();
    }
    m_refresh.finish();
}

// Before the trigger mode is published, so that its row is in the list.
void SyncSettingsModel::publishSequencing()
{
    hlx::TArray<uint32_t> modes;
    if (reading::callController(CameraAccess::of(this).controller, &IZVTController::GetSequencingModes, &modes) == 0) {
        const bool supported = std::find(modes.begin(), modes.end(), presetSequencing) != modes.end();
        publishIfChanged(this, Nullable<bool>(supported), m_sequencingSupported, &Self::sequencingSupportedChanged);
    }
    sequencingModeChanged();
}

void SyncSettingsModel::sequencingModeChanged()
{
    int mode = 0;
    if (reading::callController(CameraAccess::of(this).controller, &IZVTController::GetPresetSequencingMode, &mode)
        != 0)
        return;
    m_triggerModes = {FREE_RUN, TRIGGERED_FREE_RUN, TRIGGERED_SEQUENCE};
    m_triggerModeStrings = {//: A trigger mode: frames need no trigger
                            tr("Free Run"),
                            //: A trigger mode: the first trigger starts the frames
                            tr("Triggered Free Run"),
                            //: A trigger mode: each trigger starts a number of sequences of the presets
                            m_sequencingSupported ? tr("Triggered Sequence")
                                                  //: A trigger mode: each trigger starts a number of superframes
                                                  : tr("Triggered Superframe")};
    if (m_sequencingSupported && mode == static_cast<int>(presetSequencing)) {
        m_triggerModes << TRIGGERED_PRESET_ADVANCE;
        //: A trigger mode: each trigger makes the next preset the active one
        m_triggerModeStrings << tr("Triggered Preset Advance");
    }
    emit triggerModeStringsChanged();
    emit triggerModeChanged();
}

QStringList SyncSettingsModel::syncSourceStrings() const
{
    QStringList sources{//: A source of the frame sync
                        tr("Internal"),
                        //: A source of the frame sync
                        tr("External"),
                        //: A source of the frame sync
                        tr("Video")};
    if (m_triLevelAvailable)
        //: A source of the frame sync
        sources << tr("Tri-level");
    return sources;
}

int SyncSettingsModel::triggerModeIndex() const { return static_cast<int>(m_triggerModes.indexOf(m_triggerMode)); }

// Writes

void SyncSettingsModel::setSyncMode(int mode) { writeAccepted(this, mode, Rows::syncMode); }

void SyncSettingsModel::setSyncSource(int source) { writeAccepted(this, source, Rows::syncSource); }

void SyncSettingsModel::setTriggerMode(int mode) { writeAccepted(this, mode, Rows::triggerMode); }

void SyncSettingsModel::setTriggerModeIndex(int index)
{
    if (index < 0 || index >= m_triggerModes.size() || index == triggerModeIndex())
        return;
    setTriggerMode(m_triggerModes.at(index));
}

void SyncSettingsModel::setTriggerSource(int source) { writeAccepted(this, source, Rows::triggerSource); }

void SyncSettingsModel::setTriggerRate(double hertz)
{
    double snapped = hertz;
    zvtSnapHertz(CameraAccess::of(this).handle, &snapped, hertz);
    writeAccepted(this, snapped, Rows::triggerRate);
}

void SyncSettingsModel::setSequenceCount(uint32_t count) { writeAccepted(this, count, Rows::sequenceCount); }

void SyncSettingsModel::setSyncInDelay(float microseconds) { writeAccepted(this, microseconds, Rows::syncInDelay); }

void SyncSettingsModel::setTriggerInDelay(float microseconds)
{
    writeAccepted(this, microseconds, Rows::triggerInDelay);
}

void SyncSettingsModel::setSyncOutDelay(size_t preset, float microseconds)
{
    writeAccepted(this, microseconds, m_syncOutDelays[preset], s_syncOutDelayChanged[preset], zvtSetSyncOutDelay,
                  static_cast<uint8_t>(preset));
}

void SyncSettingsModel::setSyncOutPolarity(int polarity) { writeAccepted(this, polarity, Rows::syncOutPolarity); }

void SyncSettingsModel::setSyncOutSource(int source) { writeAccepted(this, source, Rows::syncOutSource); }

void SyncSettingsModel::setSyncInPolarity(int polarity) { writeAccepted(this, polarity, Rows::syncInPolarity); }

void SyncSettingsModel::setTriggerInPolarity(int polarity) { writeAccepted(this, polarity, Rows::triggerInPolarity); }

void SyncSettingsModel::setTriggerTime(TimePart part, int value)
{
    if (value == m_triggerTime[part])
        return;
    TriggerTime time = m_triggerTime;
    time[part] = value;
    const auto byte = [&time](TimePart index) { return static_cast<uint8_t>(time[index]); };
    const auto word = [&time](TimePart index) { return static_cast<uint16_t>(time[index]); };
    if (zvtSetIRIGTriggerTime(CameraAccess::of(this).handle, word(Day), byte(Hour), byte(Minute), byte(Second),
                              word(Millisecond), word(Microsecond))
        == 0)
        announce(this, value, m_triggerTime[part], s_triggerTimeChanged[part]);
}

void SyncSettingsModel::trigger() { zvtSoftwareTrigger(CameraAccess::of(this).handle); }

void SyncSettingsModel::rearm() { zvtRearmTrigger(CameraAccess::of(this).handle); }
