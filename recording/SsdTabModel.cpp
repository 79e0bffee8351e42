#include "recording/SsdTabModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/rows.h"
#include "common/setters.h"

#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <chrono>
#include <tuple>
#include <type_traits>

#include "zvt/zvtsdk.h"

// Part of SsdTabModel: the refresh and the options of a recording.

using hlx::cam::IZVTController;

namespace
{

constexpr uint32_t saveNameSize = 200;

/// The time of day that is `milliseconds` after midnight; invalid outside a day.
QTime timeOfDay(double milliseconds)
{
    constexpr double day = 24.0 * 60 * 60 * 1000;
    return milliseconds >= 0 && milliseconds < day ? QTime::fromMSecsSinceStartOfDay(static_cast<int>(milliseconds))
                                                   : QTime();
}

} // namespace

struct SsdTabModel::Rows {
    static constexpr Row drivePresent{zvtGetSsdDrivePresent, &Settings::drivePresent, &Self::m_drivePresent,
                                      &Self::drivePresentChanged};
    static constexpr Row driveRecognized{zvtGetSsdDriveRecognized, &Settings::driveRecognized, &Self::m_driveRecognized,
                                         &Self::driveRecognizedChanged};
    static constexpr Row loopPlayback{zvtGetSsdLoopPlayback, &Settings::loopPlayback, &Self::m_loopPlayback,
                                      &Self::loopPlaybackChanged};
    static constexpr Row autoPlay{zvtGetSsdAutoPlay, &Settings::autoPlay, &Self::m_autoPlay, &Self::autoPlayChanged,
                                  zvtSetSsdAutoPlay};
    static constexpr Row autoSave{zvtGetSsdAutoSave, &Settings::autoSave, &Self::m_autoSave, &Self::autoSaveChanged,
                                  zvtSetSsdAutoSave};
    static constexpr Row framesToRecord{zvtGetSsdNumFrames, &Settings::framesToRecord, &Self::m_framesToRecord,
                                        &Self::framesToRecordChanged, zvtSetSsdNumFrames};
    static constexpr Row maxFramesToRecordToMemory{zvtGetSsdMaxNumFrames, &Settings::maxFramesToRecordToMemory,
                                                   &Self::m_maxFramesToRecordToMemory, &Self::announceMemoryLimit};
    static constexpr Row pretriggerFramesToRecord{zvtGetSsdPretriggerFrames, &Settings::pretriggerFramesToRecord,
                                                  &Self::m_pretriggerFramesToRecord,
                                                  &Self::pretriggerFramesToRecordChanged, zvtSetSsdPretriggerFrames};
    static constexpr Row startFrame{zvtGetSsdStartFrame, &Settings::startFrame, &Self::m_startFrame,
                                    &Self::startFrameChanged};
    static constexpr Row endFrame{zvtGetSsdEndFrame, &Settings::endFrame, &Self::m_endFrame, &Self::endFrameChanged};
    static constexpr Row recordMode{zvtGetSsdRecordMode, &Settings::recordMode, &Self::m_recordMode,
                                    &Self::announceRecordMode};
    static constexpr Row recordType{zvtGetSsdRecordType, &Settings::recordType, &Self::m_recordType,
                                    &Self::announceRecordType};
    static constexpr Row maxFramesToRecordToDisk{zvtGetSsdMaxNumFramesDisk, &Settings::maxFramesToRecordToDisk,
                                                 &Self::m_maxFramesToRecordToDisk, &Self::announceDiskLimit};
    static constexpr Row recordDuration{zvtGetSsdRecordDuration, &Settings::recordDuration, &Self::m_recordDuration,
                                        &Self::recordDurationChanged, zvtSetSsdRecordDuration};
    static constexpr Row recordGated{zvtGetSsdRecordGated, &Settings::recordGated, &Self::m_recordGated,
                                     &Self::recordGatedChanged, zvtSetSsdRecordGated};
    static constexpr Row totalFramesInFile{zvtGetSsdNumFramesAcquired, &Settings::totalFramesInFile,
                                           &Self::m_totalFramesInFile, &Self::totalFramesInFileChanged};
    static constexpr Row movieLoaded{zvtGetSsdMovieLoaded, &Settings::movieLoaded, &Self::m_movieLoaded,
                                     &Self::movieLoadedChanged};
    static constexpr Row autoRearm{zvtGetSsdAutoRearm, &Settings::autoRearm, &Self::m_autoRearm,
                                   &Self::autoRearmChanged, zvtSetSsdAutoRearm};
    static constexpr Row autoDownload{zvtGetSsdAutoDownload, &Settings::autoDownload, &Self::m_autoDownload,
                                      &Self::autoDownloadChanged, zvtSetSsdAutoDownload};

    static constexpr std::tuple flags{drivePresent, driveRecognized, loopPlayback, autoPlay, autoSave};
    static constexpr std::tuple lengths{framesToRecord, maxFramesToRecordToMemory, pretriggerFramesToRecord};
    static constexpr std::tuple range{startFrame, endFrame};
    // Of a camera with record modes, in the order in which they are read.
    static constexpr std::tuple readWithRecordModes{recordMode,     recordType,  maxFramesToRecordToDisk,
                                                    recordDuration, recordGated, totalFramesInFile,
                                                    movieLoaded,    autoRearm,   autoDownload};
    // The same in the order in which they are published, with totalFramesInFile between the two. Without record modes
    // the values of both are 0.
    static constexpr std::tuple modes{recordMode, recordType, recordGated, recordDuration, maxFramesToRecordToDisk};
    static constexpr std::tuple ends{movieLoaded, autoRearm, autoDownload};
};

SsdTabModel::SsdTabModel(QObject *parent)
    : BaseTabModel(parent),
      m_autoDownloadDirectoryUrl(
          QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).toString())
{
    m_updateTimer.setObjectName(QStringLiteral("updateTimer"));
    m_updateTimer.setInterval(std::chrono::seconds(1));
    QObject::connect(&m_updateTimer, &QTimer::timeout, this, &Self::updateTimerHandler);
    m_updateTimer.start();
}

void SsdTabModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

// Reading

void SsdTabModel::refresh() { m_refresh.start(&Settings::read); }

SsdTabModel::Settings SsdTabModel::Settings::read(const CameraAccess &camera)
{
    const uint64_t handle = camera.handle;
    Settings settings;
    readAll(settings, Rows::flags, handle);
    fetch(settings.state, zvtGetSsdState, handle);
    readAll(settings, Rows::lengths, handle);
    fetch(settings.playbackRateInHertz, zvtGetSsdPlaybackRate, handle);
    readAll(settings, Rows::range, handle);
    fetch(settings.recordModeAvailable, zvtGetSsdRecordModeAvailable, handle);
    fetch(settings.averageFrameRate, &IZVTController::GetAverageFrameRate, camera.controller);
    if (camera.controller)
        settings.canDownload = camera.controller->CanDownload();
    fetch(settings.externalSync, zvtGetFrameSyncSource, handle);
    if (settings.recordModeAvailable.set() && settings.recordModeAvailable.get())
        readAll(settings, Rows::readWithRecordModes, handle);
    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    if (reading::callController(camera.controller, &IZVTController::GetWindow, &x, &y, &width, &height) == 0) {
        settings.windowWidth = width;
        settings.windowHeight = height;
    }
    readText<saveNameSize>(settings.filename, zvtGetSsdSaveName, handle);
    settings.readPlaybackRates(handle, width, height);
    return settings;
}

void SsdTabModel::finishedWatcher()
{
    const Settings settings = m_refresh.result();
    publishAll(this, settings, Rows::flags);
    publishState(settings);
    publishFrames(settings);
    publish(this, settings.playbackRateInHertz, m_playbackRateInHertz, &Self::playbackRateInHertzChanged);
    publish(this, settings.maxLivePlaybackRate, m_maxLivePlaybackRate, &Self::maxPlaybackRateInHertzChanged);
    publish(this, settings.maxMoviePlaybackRate, m_maxMoviePlaybackRate, &Self::maxPlaybackRateInHertzChanged);
    publishFilename(settings);
    publishAll(this, settings, Rows::range);
    publishPairIfChanged(this, settings.windowWidth, m_windowWidth, settings.windowHeight, m_windowHeight,
                         &Self::windowSizeChanged);
    publishRecordModes(settings);
    publishTiming(settings);
    // In the model only: the next arm() writes the number.
    storeOnly(this, std::min(m_framesToRecord, maxFramesToRecord()), m_framesToRecord, &Self::framesToRecordChanged);
    m_refresh.finish();
}

// Required: a read may end the pending state of a command. The page is disabled while it refreshes.
void SsdTabModel::publishState(const Settings &settings)
{
    if (!settings.state.set())
        return;
    setCameraState(static_cast<SsdState>(settings.state.get()));
    emit stateChanged();
    if (m_cameraState == MOVIE_LOADED)
        setFromDisk(true);
}

void SsdTabModel::publishFrames(const Settings &settings)
{
    // Too many pretrigger frames are reduced to this number, or to the frames to record.
    constexpr uint32_t mostPretriggerFrames = 128;
    publishAll(this, settings, Rows::lengths);
    if (m_pretriggerFramesToRecord > m_framesToRecord)
        announce(this, std::min(m_framesToRecord, mostPretriggerFrames), m_pretriggerFramesToRecord,
                 &Self::pretriggerFramesToRecordChanged);
}

void SsdTabModel::publishFilename(const Settings &settings)
{
    const bool named = settings.filename.set() && !settings.filename.get().isEmpty();
    //: The name of a recording that has none
    announce(this, named ? settings.filename.get() : tr("Untitled"), m_filename, &Self::filenameChanged);
}

void SsdTabModel::publishRecordModes(const Settings &settings)
{
    publishIfChanged(this, settings.recordModeAvailable, m_recordModeAvailable, &Self::recordModeAvailableChanged);
    if (m_recordModeAvailable) {
        publishAllIfChanged(this, settings, Rows::modes);
        publishIfChanged(this, settings.totalFramesInFile, m_totalFramesInFile, &Self::totalFramesInFileChanged);
        publishAllIfChanged(this, settings, Rows::ends);
        return;
    }
    const auto reset = [this](const auto &...row) {
        (storeOnly(this, std::decay_t<decltype(this->*row.member)>{}, this->*row.member, row.changed), ...);
    };
    std::apply(reset, Rows::modes);
    std::apply(reset, Rows::ends);
    if (m_cameraState == COMPLETE || m_cameraState == PLAYING || m_cameraState == PAUSED)
        storeOnly(this, m_framesToRecord, m_totalFramesInFile, &Self::totalFramesInFileChanged);
}

void SsdTabModel::publishTiming(const Settings &settings)
{
    publishIfChanged(this, settings.externalSync, m_externalSync, &Self::announceExternalSync);
    publishIfChanged(this, settings.averageFrameRate, m_averageFrameRate, &Self::announceAverageFrameRate);
    publishIfChanged(this, settings.canDownload, m_canDownload, &Self::canDownloadChanged);
}

// Signals of changes on which computed values depend

void SsdTabModel::announceMemoryLimit()
{
    emit maxFramesToRecordToMemoryChanged();
    announceLimits();
}

void SsdTabModel::announceDiskLimit()
{
    emit maxFramesToRecordToDiskChanged();
    announceLimits();
}

void SsdTabModel::announceRecordMode()
{
    emit recordModeChanged();
    announceLimits();
}

void SsdTabModel::announceRecordType()
{
    emit recordTypeChanged();
    emit pretriggerMaxFramesToRecordChanged();
}

void SsdTabModel::announceExternalSync()
{
    emit externalSyncChanged();
    emit maxRecordDurationChanged();
}

void SsdTabModel::announceAverageFrameRate()
{
    emit averageFrameRateChanged();
    emit maxRecordDurationChanged();
}

void SsdTabModel::announceLimits()
{
    emit maxFramesToRecordChanged();
    emit pretriggerMaxFramesToRecordChanged();
    emit maxRecordDurationChanged();
}

// The options of a recording

void SsdTabModel::setAutoPlay(bool play) { writeStandard(this, play, Rows::autoPlay); }

void SsdTabModel::setAutoSave(bool save) { writeStandard(this, save, Rows::autoSave); }

void SsdTabModel::setAutoRearm(bool rearm) { writeConfirmed(this, rearm, Rows::autoRearm); }

void SsdTabModel::setAutoDownload(bool download) { writeConfirmed(this, download, Rows::autoDownload); }

void SsdTabModel::setRecordMode(ERECORD_MODE mode)
{
    if (writeConfirmed(this, mode, m_recordMode, &Self::recordModeChanged, zvtSetSsdRecordMode) && m_recordMode == mode)
        announceLimits();
}

void SsdTabModel::setRecordType(ERECORD_TYPE type)
{
    if (writeConfirmed(this, type, m_recordType, &Self::recordTypeChanged, zvtSetSsdRecordType) && m_recordType == type)
        emit pretriggerMaxFramesToRecordChanged();
}

void SsdTabModel::setRecordGated(bool gated) { writeConfirmed(this, gated, Rows::recordGated); }

QTime SsdTabModel::recordDuration() const { return timeOfDay(m_recordDuration); }

void SsdTabModel::setRecordDuration(QTime duration)
{
    const int milliseconds = duration.isValid() ? duration.msecsSinceStartOfDay() : 0;
    writeConfirmed(this, static_cast<uint32_t>(milliseconds), Rows::recordDuration);
}

QTime SsdTabModel::maxRecordDuration() const
{
    constexpr double millisecondsPerSecond = 1000.0;
    return timeOfDay(m_averageFrameRate > 0 ? maxFramesToRecord() / m_averageFrameRate * millisecondsPerSecond : 0.0);
}

void SsdTabModel::setFramesToRecord(uint frames)
{
    if (writeStandard(this, frames, Rows::framesToRecord))
        emit pretriggerMaxFramesToRecordChanged();
}

uint SsdTabModel::maxFramesToRecord() const
{
    return m_recordMode == MODE_TO_DISK ? m_maxFramesToRecordToDisk : m_maxFramesToRecordToMemory;
}

void SsdTabModel::setPretriggerFramesToRecord(uint frames)
{
    writeStandard(this, frames, Rows::pretriggerFramesToRecord);
}

uint SsdTabModel::pretriggerMaxFramesToRecord() const
{
    return m_recordMode == MODE_TO_DISK || m_recordType == TYPE_START_STOP ? m_maxFramesToRecordToMemory
                                                                           : m_framesToRecord;
}

void SsdTabModel::setFilename(const QString &name)
{
    writeStandard(this, name, m_filename, &Self::filenameChanged, zvtSetSsdSaveName);
}

void SsdTabModel::setAutoDownloadDirectoryUrl(const QString &url)
{
    storeOnly(this, url, m_autoDownloadDirectoryUrl, &Self::autoDownloadDirectoryUrlChanged);
}

QString SsdTabModel::autoDownloadDirectory() const { return QUrl(m_autoDownloadDirectoryUrl).toLocalFile(); }

void SsdTabModel::setAutoDownloadDirectory(const QString &path)
{
    setAutoDownloadDirectoryUrl(QUrl::fromLocalFile(path).toString());
}

void SsdTabModel::setAutoDownloadCount(uint count)
{
    storeOnly(this, count, m_autoDownloadCount, &Self::autoDownloadCountChanged);
}

QTime SsdTabModel::timeFromString(const QString &value) const { return QTime::fromString(value); }
