#pragma once

#include "common/BaseTabModel.h"
#include "common/Nullable.h"
#include "common/Refresh.h"
#include "recording/BatchDownloadModel.h"
#include "recording/KeptWindow.h"
#include "recording/SsdMovies.h"
#include "recording/SsdPoll.h"

#include <QString>
#include <QTime>
#include <QTimer>

#include <cstdint>

#include "hlx/delegate.h"
#include "hlxui/ObjectListModel.h"

class DownloadWorker;
class SsdMovieFileInfoModel;

/// The SSD tab: the recorder of the camera, its playback, the movies on its drive and their download. The recorder is a
/// state machine in the camera; the model never decides its state. A command sets a pending state, which the page shows
/// at once. A poll reads the camera's state each second, for the whole life of the model: the main page shows a
/// playback also while this page is hidden. Its result replaces the pending state, unless a command has changed the
/// state or another poll has started since.
///
/// A recording goes to the camera's memory or to its drive. Frames are counted from 0. A download has a thread of its
/// own, a batch of downloads a pool task; the camera is not polled during either. Commands report no failure: the next
/// poll shows what the camera does. downloadOk() tells the result of a download. GUI thread only. (The header is long
/// because of the number of its settings.)
class SsdTabModel : public BaseTabModel
{
    Q_OBJECT
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)

    Q_PROPERTY(bool drivePresent READ drivePresent NOTIFY drivePresentChanged FINAL)
    Q_PROPERTY(bool driveRecognized READ driveRecognized NOTIFY driveRecognizedChanged FINAL)
    Q_PROPERTY(bool autoPlay READ autoPlay WRITE setAutoPlay NOTIFY autoPlayChanged FINAL)
    Q_PROPERTY(bool autoSave READ autoSave WRITE setAutoSave NOTIFY autoSaveChanged FINAL)
    Q_PROPERTY(bool autoRearm READ autoRearm WRITE setAutoRearm NOTIFY autoRearmChanged FINAL)
    Q_PROPERTY(SsdState state READ state NOTIFY stateChanged FINAL)
    Q_PROPERTY(bool canInteract READ canInteract NOTIFY canInteractChanged FINAL)
    Q_PROPERTY(bool recordModeAvailable READ recordModeAvailable NOTIFY recordModeAvailableChanged FINAL)
    Q_PROPERTY(ERECORD_MODE recordMode READ recordMode WRITE setRecordMode NOTIFY recordModeChanged FINAL)
    Q_PROPERTY(ERECORD_TYPE recordType READ recordType WRITE setRecordType NOTIFY recordTypeChanged FINAL)
    Q_PROPERTY(bool recordGated READ recordGated WRITE setRecordGated NOTIFY recordGatedChanged FINAL)
    Q_PROPERTY(QTime recordDuration READ recordDuration WRITE setRecordDuration NOTIFY recordDurationChanged FINAL)
    Q_PROPERTY(QTime maxRecordDuration READ maxRecordDuration NOTIFY maxRecordDurationChanged FINAL)
    Q_PROPERTY(uint framesToRecord READ framesToRecord WRITE setFramesToRecord NOTIFY framesToRecordChanged FINAL)
    Q_PROPERTY(uint maxFramesToRecord READ maxFramesToRecord NOTIFY maxFramesToRecordChanged FINAL)
    Q_PROPERTY(uint maxFramesToRecordToMemory READ maxFramesToRecordToMemory NOTIFY maxFramesToRecordChanged FINAL)
    Q_PROPERTY(uint maxFramesToRecordToDisk READ maxFramesToRecordToDisk NOTIFY maxFramesToRecordChanged FINAL)
    Q_PROPERTY(uint pretriggerFramesToRecord READ pretriggerFramesToRecord WRITE setPretriggerFramesToRecord NOTIFY
                   pretriggerFramesToRecordChanged FINAL)
    Q_PROPERTY(uint pretriggerMaxFramesToRecord READ pretriggerMaxFramesToRecord NOTIFY
                   pretriggerMaxFramesToRecordChanged FINAL)
    Q_PROPERTY(QString filename READ filename WRITE setFilename NOTIFY filenameChanged FINAL)
    Q_PROPERTY(int windowWidth READ windowWidth NOTIFY windowSizeChanged FINAL)
    Q_PROPERTY(int windowHeight READ windowHeight NOTIFY windowSizeChanged FINAL)
    Q_PROPERTY(double averageFrameRate READ averageFrameRate NOTIFY averageFrameRateChanged FINAL)
    Q_PROPERTY(bool externalSync READ externalSync NOTIFY externalSyncChanged FINAL)
    Q_PROPERTY(bool autoDownload READ autoDownload WRITE setAutoDownload NOTIFY autoDownloadChanged FINAL)
    Q_PROPERTY(QString autoDownloadDirectoryUrl READ autoDownloadDirectoryUrl WRITE setAutoDownloadDirectoryUrl NOTIFY
                   autoDownloadDirectoryUrlChanged FINAL)
    Q_PROPERTY(QString autoDownloadDirectory READ autoDownloadDirectory WRITE setAutoDownloadDirectory NOTIFY
                   autoDownloadDirectoryUrlChanged FINAL)
    Q_PROPERTY(
        uint autoDownloadCount READ autoDownloadCount WRITE setAutoDownloadCount NOTIFY autoDownloadCountChanged FINAL)
    Q_PROPERTY(BatchDownloadModel *batchDownload READ batchDownload CONSTANT FINAL)
    Q_PROPERTY(bool canDownload READ canDownload NOTIFY canDownloadChanged FINAL)

    Q_PROPERTY(bool movieLoaded READ movieLoaded NOTIFY movieLoadedChanged FINAL)
    Q_PROPERTY(bool loopPlayback READ loopPlayback WRITE setLoopPlayback NOTIFY loopPlaybackChanged FINAL)
    Q_PROPERTY(float playbackRateInHertz READ playbackRateInHertz WRITE setPlaybackRateInHertz NOTIFY
                   playbackRateInHertzChanged FINAL)
    Q_PROPERTY(float maxPlaybackRateInHertz READ maxPlaybackRateInHertz NOTIFY maxPlaybackRateInHertzChanged FINAL)
    Q_PROPERTY(bool ramContainsVideo READ ramContainsVideo NOTIFY stateChanged FINAL)
    Q_PROPERTY(uint currentFrame READ currentFrame WRITE setCurrentFrame NOTIFY currentFrameChanged FINAL)
    Q_PROPERTY(uint startFrame READ startFrame WRITE setStartFrame NOTIFY startFrameChanged FINAL)
    Q_PROPERTY(uint endFrame READ endFrame WRITE setEndFrame NOTIFY endFrameChanged FINAL)
    Q_PROPERTY(uint totalFramesInFile READ totalFramesInFile NOTIFY totalFramesInFileChanged FINAL)
    Q_PROPERTY(bool fromDisk READ fromDisk NOTIFY fromDiskChanged FINAL)

    Q_PROPERTY(bool fileListLoading READ fileListLoading NOTIFY fileListLoadingChanged FINAL)
    Q_PROPERTY(ObjectListModel *fileListModel READ fileListModel NOTIFY fileListModelChanged FINAL)
    Q_PROPERTY(QString totalSpace READ totalSpace NOTIFY totalSpaceChanged FINAL)
    Q_PROPERTY(QString freeSpace READ freeSpace NOTIFY freeSpaceChanged FINAL)
    Q_PROPERTY(QString usedSpace READ usedSpace NOTIFY usedSpaceChanged FINAL)
    Q_PROPERTY(QString loadedMovieName READ loadedMovieName NOTIFY didLoadMovie FINAL)
    Q_PROPERTY(uint loadedMovieNumber READ loadedMovieNumber NOTIFY didLoadMovie FINAL)

    Q_PROPERTY(int progress READ progress NOTIFY progressChanged FINAL)
    Q_PROPERTY(bool downloading READ downloading NOTIFY downloadingChanged FINAL)
    Q_PROPERTY(bool downloadOk READ downloadOk NOTIFY downloadingChanged FINAL)
    Q_PROPERTY(bool findingFrameLimits READ findingFrameLimits NOTIFY findingFrameLimitsChanged FINAL)
    Q_PROPERTY(bool grabbingDroppedFrames READ grabbingDroppedFrames NOTIFY grabbingDroppedFramesChanged FINAL)
    Q_MOC_INCLUDE("recording/SsdMovieFileInfoModel.h")

public:
    /// The states of the recorder, in the numbers of zvtGetSsdState().
    enum SsdState : int {
        DISARMED = 0,
        ARMED = 1, ///< Waits for a trigger.
        TRIGGERED = 2, ///< Records.
        COMPLETE = 3, ///< A recording is in the memory.
        PLAYING = 4,
        SAVING = 5, ///< The memory is being written to the drive.
        PAUSED = 6, ///< The playback is paused.
        FORMATTING = 7,
        LOADING = 8, ///< A movie is being loaded from the drive.
        RECORD_PAUSED = 9,
        MOVIE_LOADED = 10,
        ARMING = 11,
        REQUEST_AUTO_DOWNLOAD = 12, ///< The camera asks the computer to download the recording.
        UNKNOWN_STATE_QML_ONLY_NOT_SDK = 13 ///< No state of the camera: no command is pending.
    };
    Q_ENUM(SsdState)
    /// Where frames are recorded.
    enum ERECORD_MODE : int { MODE_TO_MEMORY = 0, MODE_TO_DISK = 1 };
    Q_ENUM(ERECORD_MODE)
    /// What ends a recording: the number of frames, the duration, or only a command.
    enum ERECORD_TYPE : int { TYPE_NUM_FRAMES = 0, TYPE_DURATION = 1, TYPE_START_STOP = 2 };
    Q_ENUM(ERECORD_TYPE)

    explicit SsdTabModel(QObject *parent);
    ~SsdTabModel() override; ///< Aborts a running download and waits for its end.

    bool visible() const { return m_visible; }
    void setVisible(bool visible); ///< Does not start or stop the poll.
    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }

    bool drivePresent() const { return m_drivePresent; } ///< Whether the camera has a drive.
    bool driveRecognized() const { return m_driveRecognized; } ///< Whether the camera can read its file system.
    // The camera may refuse autoPlay and autoSave; they are stored all the same.
    bool autoPlay() const { return m_autoPlay; } ///< Whether the camera plays each recording when it ends.
    void setAutoPlay(bool play);
    bool autoSave() const { return m_autoSave; } ///< Whether the camera saves each recording in memory to the drive.
    void setAutoSave(bool save);
    bool autoRearm() const { return m_autoRearm; } ///< Whether the camera arms again after each recording.
    void setAutoRearm(bool rearm); ///< Signals also after a refusal.
    /// The pending state of a command, or the camera's state as last read if no command is pending.
    SsdState state() const { return m_pendingState != UNKNOWN_STATE_QML_ONLY_NOT_SDK ? m_pendingState : m_cameraState; }
    bool canInteract() const { return m_canInteract; } ///< Whether the operator can act in this state.
    /// Whether the camera has record modes and types, movies, automatic rearm and download.
    bool recordModeAvailable() const { return m_recordModeAvailable; }
    // The setters of these four signal also after a refusal.
    ERECORD_MODE recordMode() const { return m_recordMode; } ///< MODE_TO_MEMORY without record modes.
    void setRecordMode(ERECORD_MODE mode);
    ERECORD_TYPE recordType() const { return m_recordType; } ///< TYPE_NUM_FRAMES without record modes.
    void setRecordType(ERECORD_TYPE type);
    bool recordGated() const { return m_recordGated; } ///< Whether an input signal gates the recording.
    void setRecordGated(bool gated);
    /// The length of a recording of TYPE_DURATION; invalid from 24 h on. The setter takes an invalid time as 0.
    QTime recordDuration() const;
    void setRecordDuration(QTime duration);
    /// The time in which maxFramesToRecord() are recorded; invalid from 24 h on, 0 if the frame rate is not above 0.
    QTime maxRecordDuration() const;
    /// The length of a recording of TYPE_NUM_FRAMES. A read reduces it to maxFramesToRecord() in the model only. The
    /// camera may refuse this and the pretrigger frames; they are stored all the same.
    uint framesToRecord() const { return m_framesToRecord; }
    void setFramesToRecord(uint frames);
    /// The most frames that the memory or the drive can take, by the record mode.
    uint maxFramesToRecord() const;
    uint maxFramesToRecordToMemory() const { return m_maxFramesToRecordToMemory; }
    uint maxFramesToRecordToDisk() const { return m_maxFramesToRecordToDisk; }
    /// Frames kept from before the trigger. If a read finds more than framesToRecord(), it shows the smaller one of
    /// framesToRecord() and 128; the next arm() writes it to the camera.
    uint pretriggerFramesToRecord() const { return m_pretriggerFramesToRecord; }
    void setPretriggerFramesToRecord(uint frames);
    /// The most pretrigger frames: framesToRecord(), or what the memory can take if the recording goes to the drive or
    /// is of TYPE_START_STOP.
    uint pretriggerMaxFramesToRecord() const;
    /// The name under which recordings are saved. A read shows "Untitled" in place of an empty name.
    QString filename() const { return m_filename; }
    void setFilename(const QString &name); ///< Ignores the status.
    int windowWidth() const { return m_windowWidth; } ///< Of the image, in pixels.
    int windowHeight() const { return m_windowHeight; }
    double averageFrameRate() const { return m_averageFrameRate; } ///< Hertz.
    bool externalSync() const { return m_externalSync; } ///< Whether the frames follow another source than the camera.
    bool autoDownload() const { return m_autoDownload; } ///< Whether the camera asks to download each recording.
    void setAutoDownload(bool download); ///< Signals also after a refusal.
    /// The folder of automatic downloads as a URL and as a path, and the number in the name of the next file. Used by
    /// downloads on this computer. Not written to the camera and not saved. An existing file is kept: the next one gets
    /// a further number. But a "#" or "?" in filename() or in the URL ends the URL, and the number with it: the file
    /// with the name before this character is replaced by each automatic download.
    QString autoDownloadDirectoryUrl() const { return m_autoDownloadDirectoryUrl; }
    void setAutoDownloadDirectoryUrl(const QString &url);
    QString autoDownloadDirectory() const;
    void setAutoDownloadDirectory(const QString &path);
    uint autoDownloadCount() const { return m_autoDownloadCount; }
    void setAutoDownloadCount(uint count);
    BatchDownloadModel *batchDownload() { return &m_batchDownload; } ///< Downloads several movies of the drive.
    bool canDownload() const { return m_canDownload; } ///< Whether the connection can download movies.

    bool movieLoaded() const { return m_movieLoaded; } ///< Whether a movie of the drive is in the memory.
    // The camera may refuse these settings of the playback; they are stored all the same.
    bool loopPlayback() const { return m_loopPlayback; } ///< Whether the playback starts again at its end.
    void setLoopPlayback(bool loop);
    float playbackRateInHertz() const { return m_playbackRateInHertz; } ///< Frames per second of the playback.
    void setPlaybackRateInHertz(float rate);
    /// The highest rate for the present window, in hertz. A movie has another limit than a recording.
    float maxPlaybackRateInHertz() const { return m_movieLoaded ? m_maxMoviePlaybackRate : m_maxLivePlaybackRate; }
    bool ramContainsVideo() const; ///< True in COMPLETE, PLAYING, PAUSED and MOVIE_LOADED.
    uint currentFrame() const { return m_currentFrame; } ///< The frame that is shown.
    /// Shows a frame and pauses. A frame beyond the recording is replaced by endFrame(). Signals twice.
    void setCurrentFrame(uint frame);
    uint startFrame() const { return m_startFrame; } ///< The first frame of the playback.
    void setStartFrame(uint frame); ///< Compares it with no other frame.
    uint endFrame() const { return m_endFrame; } ///< The last frame of the playback, included.
    void setEndFrame(uint frame); ///< Compares it with no other frame.
    uint totalFramesInFile() const { return m_totalFramesInFile; } ///< Frames of the recording or of the loaded movie.
    /// Whether the recording was made on the drive or loaded from it. Stays true until a recording to the memory is
    /// armed.
    bool fromDisk() const { return m_fromDisk; }

    bool fileListLoading() const { return m_fileListLoading; }
    /// The movies on the drive in the camera's order, as SsdMovieFileInfoModel objects.
    ObjectListModel *fileListModel() { return &m_fileListModel; }
    // The space of the drive with a unit; empty until it is read, "Unknown" if it could not be read.
    QString totalSpace() const { return m_totalSpace; }
    QString freeSpace() const { return m_freeSpace; }
    QString usedSpace() const { return m_usedSpace; }
    // Of the last movie whose load was started.
    QString loadedMovieName() const { return m_loadedMovieName; }
    uint loadedMovieNumber() const { return m_loadedMovieNumber; }

    int progress() const { return m_progress; } ///< Of the transfer, in percent, as DownloadWorker reports it.
    bool downloading() const { return m_downloading; }
    bool downloadOk() const { return m_downloadOk; } ///< Whether the last download that has ended succeeded.
    /// Whether the frames between two times are being searched. Stays true if they were not found.
    bool findingFrameLimits() const { return m_findingFrameLimits; }
    bool grabbingDroppedFrames() const { return m_grabbingDroppedFrames; } ///< Whether lost frames are fetched again.

    /// Returns the time of a text such as "01:30:00", or an invalid time.
    Q_INVOKABLE QTime timeFromString(const QString &value) const;
    Q_INVOKABLE void refresh() override;

    // The commands of the recorder. Each ignores the statuses of its calls.
    /// Ends a playback that the camera has reported, writes the number of frames, the pretrigger frames, the name and
    /// the range of the playback, and arms.
    Q_INVOKABLE void arm();
    Q_INVOKABLE void disarm(); ///< Ends the wait for a trigger.
    Q_INVOKABLE void save(); ///< Saves the recording in memory to the drive. Sets no pending state.
    Q_INVOKABLE void triggerRecording(); ///< Starts the recording that is armed.
    Q_INVOKABLE void format(); ///< Deletes all movies of the drive.
    Q_INVOKABLE void pauseRecording(); ///< Keeps no frames until resumeRecording().
    Q_INVOKABLE void resumeRecording(); ///< Continues the same recording.
    Q_INVOKABLE void stopRecording(); ///< Sets no pending state: the options decide what follows.

    // The commands of the playback. Each ignores the statuses of its calls.
    /// Resumes if the camera is paused, else plays from the start. A pause that no poll has seen yet does not count.
    Q_INVOKABLE void play();
    Q_INVOKABLE void pause(); ///< Shows one frame until play().
    Q_INVOKABLE void stop(); ///< Ends the playback and unloads a movie. The only way back to the live picture.
    // These three pause.
    Q_INVOKABLE void skipForwardToNextFrame();
    Q_INVOKABLE void skipBackwardToPreviousFrame();
    Q_INVOKABLE void skipToFrame(uint frameNumber);

    Q_INVOKABLE void loadAndViewFiles(); ///< Reads the movies of the drive. Ignored while they are read.
    /// Loads a movie into the camera's memory. The camera's window becomes that of the movie; stop() sets it back.
    /// Ignored while another load runs.
    Q_INVOKABLE void loadMovie(SsdMovieFileInfoModel *info);

    // The downloads of the recording in memory or of the loaded movie to the file of a URL. Each is ignored while
    // another one runs.
    Q_INVOKABLE void download(const QString &fname); ///< The range of the playback.
    Q_INVOKABLE void downloadFrameRange(const QString &fname, uint startFrame, uint endFrame);
    /// The times are IRIG times, such as "001:00:00:00.000000".
    Q_INVOKABLE void downloadTimeRange(const QString &fname, const QString &startTime, const QString &endTime);
    Q_INVOKABLE void downloadEntireMovie(const QString &fname);
    /// Stops the download at its next progress: the search for frames cannot be stopped. It ends as a failed one.
    Q_INVOKABLE void abortDownload();

    using SsdUIState = ::SsdUIState;
    using SsdUpdateState = ::SsdUpdateState;

    // The three steps of a poll, public for tests.
    void GetUIState(SsdUIState &input); ///< Every earlier poll becomes void.
    /// Reads what has changed since `input`. After a recording to the memory it also writes the range of the playback.
    /// Any thread.
    static void UpdateSsdState(const SsdUIState &input, SsdUpdateState &output);
    void UpdateUI(const SsdUpdateState &update); ///< Ignores a void poll and one without a state.

signals:
    void visibleChanged();
    void refreshingChanged();
    void hasRefreshedChanged();

    void drivePresentChanged();
    void driveRecognizedChanged();
    void autoPlayChanged();
    void autoSaveChanged();
    void autoRearmChanged();
    void stateChanged();
    void canInteractChanged();
    void recordModeAvailableChanged();
    void recordModeChanged();
    void recordTypeChanged();
    void recordGatedChanged();
    void recordDurationChanged();
    void maxRecordDurationChanged();
    void framesToRecordChanged();
    void maxFramesToRecordChanged();
    void maxFramesToRecordToMemoryChanged();
    void maxFramesToRecordToDiskChanged();
    void pretriggerFramesToRecordChanged();
    void pretriggerMaxFramesToRecordChanged();
    void filenameChanged();
    void windowSizeChanged();
    void averageFrameRateChanged();
    void externalSyncChanged();
    void autoDownloadChanged();
    void autoDownloadDirectoryUrlChanged();
    void autoDownloadCountChanged();
    void canDownloadChanged();

    void movieLoadedChanged();
    void loopPlaybackChanged();
    void playbackRateInHertzChanged();
    void maxPlaybackRateInHertzChanged();
    void currentFrameChanged();
    void startFrameChanged();
    void endFrameChanged();
    void totalFramesInFileChanged();
    void fromDiskChanged();

    void fileListLoadingChanged();
    void fileListModelChanged();
    void totalSpaceChanged();
    void freeSpaceChanged();
    void usedSpaceChanged();
    void didLoadMovie();

    void progressChanged();
    void downloadingChanged();
    void findingFrameLimitsChanged();
    void grabbingDroppedFramesChanged();

private:
    using Self = SsdTabModel;
    /// The end of a poll: a function that is called on the GUI thread. The model is its argument, since the task that
    /// creates the function must not capture a model.
    using Completion = hlx::delegate<void(SsdTabModel &)>;

    /// The result of a read.
    struct Settings {
        Nullable<bool> drivePresent;
        Nullable<bool> driveRecognized;
        Nullable<bool> loopPlayback;
        Nullable<bool> autoPlay;
        Nullable<bool> autoSave;
        Nullable<uint8_t> state;
        Nullable<uint32_t> framesToRecord;
        Nullable<uint32_t> maxFramesToRecordToMemory;
        Nullable<uint32_t> pretriggerFramesToRecord;
        Nullable<float> playbackRateInHertz;
        Nullable<uint32_t> startFrame;
        Nullable<uint32_t> endFrame;
        Nullable<bool> recordModeAvailable;
        Nullable<double> averageFrameRate;
        Nullable<bool> canDownload;
        Nullable<bool> externalSync;
        Nullable<uint8_t> recordMode;
        Nullable<uint8_t> recordType;
        Nullable<uint32_t> maxFramesToRecordToDisk;
        Nullable<uint32_t> recordDuration; ///< Milliseconds.
        Nullable<bool> recordGated;
        Nullable<uint32_t> totalFramesInFile;
        Nullable<bool> movieLoaded;
        Nullable<bool> autoRearm;
        Nullable<bool> autoDownload;
        Nullable<uint16_t> windowWidth;
        Nullable<uint16_t> windowHeight;
        Nullable<QString> filename;
        Nullable<float> maxLivePlaybackRate; ///< Hertz.
        Nullable<float> maxMoviePlaybackRate; ///< Hertz.

        static Settings read(const CameraAccess &camera);
        void readPlaybackRates(uint64_t handle, uint16_t width, uint16_t height);
    };
    struct Rows;

private slots:
    void finishedWatcher();
    void updateTimerHandler();
    void finishedDelegateWatcher();
    void finishedFileListingWatcher();
    void finishedFileLoadWatcher();
    void progressChangedDownloadWorker(int value);
    void findingFrameLimitsChangedDownloadWorker(bool value);
    void grabbingDroppedFramesChangedDownloadWorker(bool value);
    void finishedDownloadWorker();

private:
    void publishState(const Settings &settings);
    void publishFrames(const Settings &settings);
    void publishFilename(const Settings &settings);
    void publishRecordModes(const Settings &settings);
    void publishTiming(const Settings &settings);
    void announceMemoryLimit();
    void announceDiskLimit();
    void announceRecordMode();
    void announceRecordType();
    void announceExternalSync();
    void announceAverageFrameRate();
    void announceLimits();

    void command(int (*call)(uint64_t handle)) const;
    void setState(SsdState state);
    void setCameraState(SsdState state);
    void updateCanInteractBasedOnState();
    void updateTimerHandlerDirect();
    bool mayPoll() const;

    void pauseBy(int (*call)(uint64_t handle));
    void finishPause();
    void updatePlaybackInfo();
    void setFromDisk(bool fromDisk);
    void setMovieLoaded(bool loaded);
    bool fitWindow(uint16_t width, uint16_t height);
    void publishSpace(const Nullable<int64_t> &bytes, QString &text, void (Self::*changed)());

    template <class... Range> void startDownload(const QString &fname, Range... range);
    void DoDownload(DownloadWorker *worker);
    void startAutoDownload();
    QString autoDownloadFile() const;

    bool m_visible = false;
    bool m_drivePresent = false;
    bool m_driveRecognized = false;
    bool m_autoPlay = false;
    bool m_autoSave = false;
    bool m_autoRearm = false;
    SsdState m_cameraState = DISARMED; ///< As last read.
    SsdState m_pendingState = UNKNOWN_STATE_QML_ONLY_NOT_SDK;
    bool m_canInteract = false;
    bool m_recordModeAvailable = false;
    ERECORD_MODE m_recordMode = MODE_TO_MEMORY;
    ERECORD_TYPE m_recordType = TYPE_NUM_FRAMES;
    bool m_recordGated = false;
    uint32_t m_recordDuration = 0; ///< Milliseconds.
    uint32_t m_framesToRecord = 1000;
    uint32_t m_maxFramesToRecordToMemory = 1000;
    uint32_t m_maxFramesToRecordToDisk = 0;
    uint32_t m_pretriggerFramesToRecord = 100;
    QString m_filename;
    int m_windowWidth = 0;
    int m_windowHeight = 0;
    double m_averageFrameRate = 1.0;
    bool m_externalSync = false;
    bool m_autoDownload = false;
    QString m_autoDownloadDirectoryUrl;
    uint32_t m_autoDownloadCount = 1;
    bool m_canDownload = false;
    bool m_movieLoaded = false;
    bool m_loopPlayback = false;
    float m_playbackRateInHertz = 30.0F;
    float m_maxLivePlaybackRate = 1000.0F;
    float m_maxMoviePlaybackRate = 100.0F;
    uint32_t m_currentFrame = 0;
    uint32_t m_startFrame = 0;
    uint32_t m_endFrame = 0;
    uint32_t m_totalFramesInFile = 0;
    bool m_fromDisk = false;
    bool m_fileListLoading = false;
    ObjectListModel m_fileListModel{true};
    QString m_totalSpace;
    QString m_freeSpace;
    QString m_usedSpace;
    QString m_loadedMovieName;
    uint32_t m_loadedMovieNumber = 0;
    KeptWindow m_keptWindow; ///< Keeps the window from before the first load of a movie until stop().
    int m_progress = 0;
    bool m_downloading = false;
    bool m_downloadOk = false;
    bool m_findingFrameLimits = false;
    bool m_grabbingDroppedFrames = false;
    DownloadWorker *m_downloadWorker = nullptr; ///< Null unless a download runs.
    bool m_autoDownloadRunning = false;
    BatchDownloadModel m_batchDownload{this};

    int m_tick = 0; ///< Polls since the drive was last read.
    uint64_t m_sequence = 0; ///< Of the newest poll or command; a poll with another number is void.
    /// A poll of the timer runs, or its result is being published. m_update.running() ends before the publication.
    bool m_updateInFlight = false;
    QTimer m_updateTimer{this};
    Refresh<Self, Completion> m_update{this, &Self::finishedDelegateWatcher, RefreshForm::NewestOnly};
    Refresh<Self, SsdFileListing> m_fileListing{this, &Self::finishedFileListingWatcher, RefreshForm::NoFlags};
    Refresh<Self, SsdFileLoad> m_fileLoad{this, &Self::finishedFileLoadWatcher, RefreshForm::NoFlags};
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher};
};
