#pragma once

#include "common/BaseTabModel.h"
#include "common/Refresh.h"
#include "setup/SetupTabResults.h"

#include <QString>
#include <QStringList>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>

#include "hlx/TArray.h"
#include "hlx/delegate.h"
#include "zvt/zvttypes.h"

class CapabilityBlock;
class ZvtCameraModel;

/// The Setup tab: the lens with its named states, and settings of detector and image. Every 5 s, while the page is
/// visible, no one-shot move runs and no position is edited, it reads one event of the camera and handles it.
///
/// A lens is slow. A one-shot move (to a position, to an end stop, lens cover, auto focus, to a distance) runs on a
/// pool thread and locks the lens controls of the page until it ends. A continuous move starts when the operator
/// presses a button and stops when the button is released. Both calls are made on the GUI thread; a timer reads the
/// position in between. A slider sends a target position each time the operator moves it. All positions and limits of
/// focus and zoom are encoder counts of the lens, distances are metres.
///
/// GUI thread only. (The header is long because the page has many settings.)
class SetupTabModel : public BaseTabModel
{
    Q_OBJECT
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(ZvtCameraModel *cameraModel READ cameraModel CONSTANT FINAL)
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)

    Q_PROPERTY(bool hsmAvailable READ hsmAvailable NOTIFY hsmAvailableChanged FINAL)
    Q_PROPERTY(bool hsmEnabled READ hsmEnabled WRITE setHsmEnabled NOTIFY hsmEnabledChanged FINAL)
    Q_PROPERTY(bool hflipImage READ hflipImage WRITE setHflipImage NOTIFY hflipImageChanged FINAL)
    Q_PROPERTY(bool vflipImage READ vflipImage WRITE setVflipImage NOTIFY vflipImageChanged FINAL)
    Q_PROPERTY(int syncSource READ syncSource WRITE setSyncSource NOTIFY syncSourceChanged FINAL)
    Q_PROPERTY(QStringList fpaGainLevels READ fpaGainLevels NOTIFY fpaGainLevelsChanged FINAL)
    Q_PROPERTY(int selectedFPAGainLevel READ selectedFPAGainLevel WRITE setSelectedFPAGainLevel NOTIFY
                   selectedFPAGainLevelChanged FINAL)
    Q_PROPERTY(bool reduceNoise READ reduceNoise WRITE setReduceNoise NOTIFY reduceNoiseChanged FINAL)
    Q_PROPERTY(bool fpaWindowSizeHasUnsavedValues READ fpaWindowSizeHasUnsavedValues WRITE
                   setFpaWindowSizeHasUnsavedValues NOTIFY fpaWindowSizeHasUnsavedValuesChanged FINAL)

    Q_PROPERTY(bool lensBasedControlsEnabled READ lensBasedControlsEnabled WRITE setLensBasedControlsEnabled NOTIFY
                   lensBasedControlsEnabledChanged FINAL)
    Q_PROPERTY(int selectedLensCoverStateIndex READ selectedLensCoverStateIndex WRITE setSelectedLensCoverStateIndex
                   NOTIFY selectedLensCoverStateIndexChanged FINAL)
    Q_PROPERTY(int selectedDiscontinuousFieldOfViewIndex READ selectedDiscontinuousFieldOfViewIndex WRITE
                   setSelectedDiscontinuousFieldOfViewIndex NOTIFY selectedDiscontinuousFieldOfViewIndexChanged FINAL)
    Q_PROPERTY(uint minimumFocusPosition READ minimumFocusPosition NOTIFY minimumFocusPositionChanged FINAL)
    Q_PROPERTY(uint maximumFocusPosition READ maximumFocusPosition NOTIFY maximumFocusPositionChanged FINAL)
    Q_PROPERTY(
        uint nearFocusPosition READ nearFocusPosition WRITE setNearFocusPosition NOTIFY nearFocusPositionChanged FINAL)
    Q_PROPERTY(
        uint farFocusPosition READ farFocusPosition WRITE setFarFocusPosition NOTIFY farFocusPositionChanged FINAL)
    Q_PROPERTY(int selectedFocusPosition READ selectedFocusPosition WRITE setSelectedFocusPosition NOTIFY
                   selectedFocusPositionChanged FINAL)
    Q_PROPERTY(int slowSpeedStep READ slowSpeedStep NOTIFY speedStepValuesChanged FINAL)
    Q_PROPERTY(int mediumSpeedStep READ mediumSpeedStep NOTIFY speedStepValuesChanged FINAL)
    Q_PROPERTY(int fastSpeedStep READ fastSpeedStep NOTIFY speedStepValuesChanged FINAL)
    Q_PROPERTY(bool focusEncoderHasAscendingValuesNearToFar READ focusEncoderHasAscendingValuesNearToFar NOTIFY
                   focusEncoderHasAscendingValuesNearToFarChanged FINAL)
    Q_PROPERTY(uint fullRangeFocusMinimum READ fullRangeFocusMinimum NOTIFY fullRangeFocusValuesChanged FINAL)
    Q_PROPERTY(uint fullRangeFocusMaximum READ fullRangeFocusMaximum NOTIFY fullRangeFocusValuesChanged FINAL)
    Q_PROPERTY(uint selectedZoomPosition READ selectedZoomPosition WRITE setSelectedZoomPosition NOTIFY
                   selectedZoomPositionChanged FINAL)
    Q_PROPERTY(uint fullRangeZoomMinimum READ fullRangeZoomMinimum NOTIFY fullRangeZoomValuesChanged FINAL)
    Q_PROPERTY(uint fullRangeZoomMaximum READ fullRangeZoomMaximum NOTIFY fullRangeZoomValuesChanged FINAL)
    Q_PROPERTY(int narrowNearFocusPosition READ narrowNearFocusPosition NOTIFY narrowNearFocusPositionChanged FINAL)
    Q_PROPERTY(int narrowFarFocusPosition READ narrowFarFocusPosition NOTIFY narrowFarFocusPositionChanged FINAL)
    Q_PROPERTY(int wideNearFocusPosition READ wideNearFocusPosition NOTIFY wideNearFocusPositionChanged FINAL)
    Q_PROPERTY(int wideFarFocusPosition READ wideFarFocusPosition NOTIFY wideFarFocusPositionChanged FINAL)
    Q_PROPERTY(float distanceToFocus READ distanceToFocus WRITE setDistanceToFocus NOTIFY distanceToFocusChanged FINAL)
    Q_PROPERTY(float distanceMinimum READ distanceMinimum NOTIFY distanceRangeValuesChanged FINAL)
    Q_PROPERTY(float distanceMaximum READ distanceMaximum NOTIFY distanceRangeValuesChanged FINAL)
    Q_PROPERTY(int selectedAFRoiSizeIndex READ selectedAFRoiSizeIndex WRITE setSelectedAFRoiSizeIndex NOTIFY
                   selectedAFRoiSizeIndexChanged FINAL)
    Q_PROPERTY(int selectedAFRoiPositionIndex READ selectedAFRoiPositionIndex WRITE setSelectedAFRoiPositionIndex NOTIFY
                   selectedAFRoiPositionIndexChanged FINAL)
    Q_PROPERTY(int selectedAFRoiShowWhenIndex READ selectedAFRoiShowWhenIndex WRITE setSelectedAFRoiShowWhenIndex NOTIFY
                   selectedAFRoiShowWhenIndexChanged FINAL)
    Q_PROPERTY(bool athermalizationEnabledAvailable READ athermalizationEnabledAvailable NOTIFY
                   athermalizationEnabledAvailableChanged FINAL)
    Q_PROPERTY(bool athermalizationEnabled READ athermalizationEnabled WRITE setAthermalizationEnabled NOTIFY
                   athermalizationEnabledChanged FINAL)

    Q_PROPERTY(bool hasAtLeastOneLensState READ hasAtLeastOneLensState NOTIFY hasAtLeastOneLensStateChanged FINAL)
    Q_PROPERTY(QStringList lensStateNames READ lensStateNames NOTIFY lensStateNamesChanged FINAL)
    Q_PROPERTY(int selectedLensStateIndex READ selectedLensStateIndex WRITE setSelectedLensStateIndex NOTIFY
                   selectedLensStateIndexChanged FINAL)
    Q_PROPERTY(bool selectedLensStateComponentsModifiedNotSaved READ selectedLensStateComponentsModifiedNotSaved NOTIFY
                   selectedLensStateComponentsModifiedNotSavedChanged FINAL)
    Q_MOC_INCLUDE("plugin/ZvtCameraModel.h")

public:
    explicit SetupTabModel(QObject *parent);

    bool visible() const { return m_visible; }
    void setVisible(bool visible);
    ZvtCameraModel *cameraModel() const;
    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }

    bool hsmAvailable() const { return m_hsmAvailable; } ///< High sensitivity mode.
    bool hsmEnabled() const { return m_hsmEnabled; }
    void setHsmEnabled(bool enabled);
    bool hflipImage() const { return m_hflipImage; } ///< Mirrored left to right.
    void setHflipImage(bool flip);
    bool vflipImage() const { return m_vflipImage; } ///< Mirrored top to bottom.
    void setVflipImage(bool flip);
    int syncSource() const { return m_syncSource; } ///< 0 internal, 1 external, 2 video.
    void setSyncSource(int source);
    QStringList fpaGainLevels() const { return m_fpaGainLevels; } ///< A level without a name is its number.
    int selectedFPAGainLevel() const { return m_selectedFPAGainLevel; } ///< Index into fpaGainLevels().
    void setSelectedFPAGainLevel(int level);
    bool reduceNoise() const; ///< Each call asks the controller.
    void setReduceNoise(bool reduce); ///< Then reads the presets again: their frame rates depend on it.
    bool fpaWindowSizeHasUnsavedValues() const { return m_fpaWindowSizeHasUnsavedValues; }
    void setFpaWindowSizeHasUnsavedValues(bool unsaved); ///< Only stored, for the page.

    /// Whether the lens can be moved: no one-shot move runs, the operator edits no position, and the focus is not in
    /// manual mode.
    bool lensBasedControlsEnabled() const { return m_lensControlsUnlocked && !m_focusManualMode; }
    void setLensBasedControlsEnabled(bool unlocked);
    int selectedLensCoverStateIndex() const { return m_selectedLensCoverStateIndex; } ///< 0 open, 1 closed, 2 unknown.
    void setSelectedLensCoverStateIndex(int index); ///< Starts a one-shot move.
    /// 0 narrow, 1 wide. Each call asks the camera and starts a read of the focus limits of this field of view. So
    /// the change signal, after which the page calls this getter, also starts a read of the limits.
    int selectedDiscontinuousFieldOfViewIndex();
    void setSelectedDiscontinuousFieldOfViewIndex(int index);
    /// The lowest and the highest focus position on the page, in encoder counts: the focus limits of the present field
    /// of view if the lens has discrete ones, else the range of the whole lens.
    uint minimumFocusPosition() const;
    uint maximumFocusPosition() const;
    /// The focus limits of the field of view, in encoder counts; the near one may be the larger number.
    uint nearFocusPosition() const { return m_nearFocusPosition; }
    void setNearFocusPosition(uint position); ///< Both limits are only stored, not written to the camera.
    uint farFocusPosition() const { return m_farFocusPosition; }
    void setFarFocusPosition(uint position);
    int selectedFocusPosition() const { return static_cast<int>(m_selectedFocusPosition); }
    void setSelectedFocusPosition(int position); ///< Starts a one-shot move.
    /// The speeds for attemptMoveFocus() and attemptMoveZoom().
    int slowSpeedStep() const { return m_slowSpeedStep; }
    int mediumSpeedStep() const { return m_mediumSpeedStep; }
    int fastSpeedStep() const { return m_fastSpeedStep; }
    bool focusEncoderHasAscendingValuesNearToFar() const { return m_focusEncoderHasAscendingValuesNearToFar; }
    /// The range of the whole lens, in encoder counts.
    uint fullRangeFocusMinimum() const { return m_fullRangeFocusMinimum; }
    uint fullRangeFocusMaximum() const { return m_fullRangeFocusMaximum; }
    uint selectedZoomPosition() const { return m_selectedZoomPosition; }
    void setSelectedZoomPosition(uint position); ///< Starts a one-shot move.
    uint fullRangeZoomMinimum() const { return m_fullRangeZoomMinimum; }
    uint fullRangeZoomMaximum() const { return m_fullRangeZoomMaximum; }
    /// The focus limits of the two discrete fields of view, in encoder counts.
    int narrowNearFocusPosition() const { return static_cast<int>(m_narrowNearFocusPosition); }
    int narrowFarFocusPosition() const { return static_cast<int>(m_narrowFarFocusPosition); }
    int wideNearFocusPosition() const { return static_cast<int>(m_wideNearFocusPosition); }
    int wideFarFocusPosition() const { return static_cast<int>(m_wideFarFocusPosition); }
    float distanceToFocus() const { return *m_distanceToFocus; }
    void setDistanceToFocus(float metres); ///< The target of the next focusToDistance().
    float distanceMinimum() const { return m_distanceMinimum; } ///< Metres.
    float distanceMaximum() const { return m_distanceMaximum; } ///< Metres.
    int selectedAFRoiSizeIndex() const { return m_selectedAFRoiSizeIndex; } ///< 0 to 5: 16, 32, ... 512 pixels.
    void setSelectedAFRoiSizeIndex(int index);
    int selectedAFRoiPositionIndex() const { return m_selectedAFRoiPositionIndex; } ///< 0 centre, 1 to 4 quadrants.
    void setSelectedAFRoiPositionIndex(int index);
    int selectedAFRoiShowWhenIndex() const { return m_selectedAFRoiShowWhenIndex; } ///< 0 always, 1 focusing, 2 never.
    void setSelectedAFRoiShowWhenIndex(int index);
    bool athermalizationEnabledAvailable() const { return m_athermalizationEnabledAvailable; }
    bool athermalizationEnabled() const { return m_athermalizationEnabled; } ///< Focus corrected for temperature.
    void setAthermalizationEnabled(bool enabled);

    bool hasAtLeastOneLensState() const { return !m_lensStateNames.isEmpty(); }
    QStringList lensStateNames() const { return m_lensStateNames; } ///< In the camera's order.
    /// Index into lensStateNames(), -1 for none. It may be past the end of the list after a failed read of the list.
    int selectedLensStateIndex() const { return m_selectedLensStateIndex; }
    void setSelectedLensStateIndex(int index); ///< Does not load the state.
    /// Whether the field of view was changed after a lens state was last loaded or saved. Each read of focus limits
    /// sets this to false without a signal.
    bool selectedLensStateComponentsModifiedNotSaved() const { return m_selectedLensStateComponentsModifiedNotSaved; }

    Q_INVOKABLE void refresh() override;

    /// These six start one-shot moves. focusMaximum() and focusMinimum() move to the focus limit with the larger and
    /// the smaller encoder count.
    Q_INVOKABLE void focusMaximum();
    Q_INVOKABLE void focusMinimum();
    Q_INVOKABLE void zoomWidest();
    Q_INVOKABLE void zoomNarrowest();
    Q_INVOKABLE void autoFocus();
    Q_INVOKABLE void focusToDistance();
    /// Continuous moves at a signed speed step, or a signed percentage of the full speed, until a call with 0. Positive
    /// is towards far or narrow. Return whether the camera accepted the call; attemptMoveZoom() also returns false,
    /// without a call, if the zoom is already at that end of its range.
    Q_INVOKABLE bool attemptMoveFocus(int speed);
    Q_INVOKABLE bool attemptMoveZoom(int speed);
    Q_INVOKABLE bool attemptMoveFocusPercent(float speed);
    Q_INVOKABLE bool attemptMoveZoomPercent(float speed);
    /// Send a target position, in encoder counts, while the operator drags a slider. Do not wait for the lens.
    Q_INVOKABLE void focusMoveTo(uint value);
    Q_INVOKABLE void zoomMoveTo(uint value);
    /// Writes the focus limits of both discrete fields of view, in encoder counts. Ignores the statuses.
    Q_INVOKABLE void setNarrowWideNearFarPositions(uint narrowNear, uint narrowFar, uint wideNear, uint wideFar);

    /// Lens states. Each call blocks until the camera has finished. A failure shows no message.
    Q_INVOKABLE void addLensState(const QString &name); ///< Of the present position. Replaces a state of that name.
    Q_INVOKABLE void renameLensState(const QString &oldName, const QString &newName);
    Q_INVOKABLE void saveLensState(const QString &name);
    Q_INVOKABLE void loadLensState(const QString &name); ///< Moves the lens.
    Q_INVOKABLE void deleteLensState(const QString &name); ///< Then loads the first remaining state.

signals:
    void visibleChanged();
    void refreshingChanged();
    void hasRefreshedChanged();

    void hsmAvailableChanged();
    void hsmEnabledChanged();
    void hflipImageChanged();
    void vflipImageChanged();
    void syncSourceChanged();
    void fpaGainLevelsChanged();
    void selectedFPAGainLevelChanged();
    void reduceNoiseChanged();
    void fpaWindowSizeHasUnsavedValuesChanged();

    void lensBasedControlsEnabledChanged();
    void selectedLensCoverStateIndexChanged();
    void selectedDiscontinuousFieldOfViewIndexChanged();
    void minimumFocusPositionChanged();
    void maximumFocusPositionChanged();
    void nearFocusPositionChanged();
    void farFocusPositionChanged();
    void selectedFocusPositionChanged();
    void speedStepValuesChanged();
    void focusEncoderHasAscendingValuesNearToFarChanged();
    void fullRangeFocusValuesChanged();
    void selectedZoomPositionChanged();
    void fullRangeZoomValuesChanged();
    void narrowNearFocusPositionChanged();
    void narrowFarFocusPositionChanged();
    void wideNearFocusPositionChanged();
    void wideFarFocusPositionChanged();
    void distanceToFocusChanged();
    void distanceRangeValuesChanged();
    void selectedAFRoiSizeIndexChanged();
    void selectedAFRoiPositionIndexChanged();
    void selectedAFRoiShowWhenIndexChanged();
    void athermalizationEnabledAvailableChanged();
    void athermalizationEnabledChanged();

    void hasAtLeastOneLensStateChanged();
    void lensStateNamesChanged();
    void selectedLensStateIndexChanged();
    void selectedLensStateComponentsModifiedNotSavedChanged();

private:
    using Self = SetupTabModel;
    using LensStates = hlx::TArray<zvtSDirEntry>;
    /// The end of a one-shot move: a function that is called on the GUI thread. The model is its argument, since the
    /// task that creates the function must not capture a model.
    using Completion = hlx::delegate<void(SetupTabModel &)>;

private slots:
    void finishedWatcher();
    void connectedChangedCameraModel();
    void timeoutEventQueueTimer();
    void finishedDiscontinuousFovPositionMetaWatcher();
    void finishedContinuousFovPositionMetaWatcher();
    void finishedLoadingLensStatesWatcher();
    void slowPositionalIncrementer();
    void finishedDelegateWatcher();
    void updateFocusPosition();
    void updateZoomPosition();
    void updateFocusToDistanceRange();
    void checkZooming();

private:
    void checkTimer();
    void connectLensTimers();
    uint64_t handle() const;
    std::shared_ptr<const CapabilityBlock> capabilities() const;
    void publishGain(const SetupSettingsResult &result);
    void publishLens(const SetupSettingsResult &result);
    void publishImage(const SetupSettingsResult &result);
    void handleEvent(zvtEEventType type);

    template <class Move, class OnSuccess, class OnEnd> void moveOnce(Move move, OnSuccess onSuccess, OnEnd onEnd);
    template <class Move, class OnSuccess> void moveOnce(Move move, OnSuccess onSuccess);
    void updateAfterZoom();
    bool followMove(bool moves, int status, QTimer &timer, void (Self::*update)());
    void setFocusManualMode(bool manual);
    void changeLock(bool &flag, bool value);
    void loadPositionMetaForDiscontinuousFov(unsigned char fov, bool loadLensStates);
    bool watchIfNewest(const DiscontinuousFovPositionMetaRead &read);
    void publishSpeedSteps();
    void finishPositionMeta(bool loadLensStates);

    void loadLensStateNames();
    void loadLensStateNamesAsync();
    void storeLensStates(const LensStates &states);
    void signalLensStates();
    void refreshLensStateDependentItems();
    void setComponentsModified(bool modified);

    bool m_visible = false;
    bool m_hsmAvailable = false;
    bool m_hsmEnabled = false;
    bool m_hflipImage = false;
    bool m_vflipImage = false;
    int m_syncSource = 0;
    QStringList m_fpaGainLevels;
    int m_selectedFPAGainLevel = 0;
    bool m_fpaWindowSizeHasUnsavedValues = false;
    QTimer m_eventQueueTimer{this};

    bool m_lensControlsUnlocked = true; ///< No one-shot move runs, and no position is being edited.
    bool m_focusManualMode = false; ///< The focus is turned by hand at the lens.
    int m_selectedLensCoverStateIndex = 2;
    int m_selectedDiscontinuousFieldOfViewIndex = 0;
    uint m_nearFocusPosition = 0;
    uint m_farFocusPosition = 0;
    uint m_selectedFocusPosition = 0;
    int m_slowSpeedStep = 0;
    int m_mediumSpeedStep = 0;
    int m_fastSpeedStep = 0;
    bool m_focusEncoderHasAscendingValuesNearToFar = true;
    uint m_fullRangeFocusMinimum = 0;
    uint m_fullRangeFocusMaximum = 0;
    uint m_selectedZoomPosition = 0;
    uint m_fullRangeZoomMinimum = 0;
    uint m_fullRangeZoomMaximum = 0;
    uint m_narrowNearFocusPosition = 0;
    uint m_narrowFarFocusPosition = 0;
    uint m_wideNearFocusPosition = 0;
    uint m_wideFarFocusPosition = 0;
    /// Metres. Shared with the task of focusToDistance(), which reads it when it starts.
    const std::shared_ptr<std::atomic<float>> m_distanceToFocus = std::make_shared<std::atomic<float>>(0.0F);
    float m_distanceMinimum = 0.0F;
    float m_distanceMaximum = 0.0F;
    bool m_slowPositionalFocus = false; ///< The lens moves by steps of position at slow speed.
    uint m_focusPositionIncrement = 90; ///< One such step, in encoder counts.
    int m_focusMoveDirection = 1; ///< Of these steps: 1 towards far, -1 towards near, 0 after a stop.
    QTimer m_focusPositionTimer{this};
    QTimer m_slowFocusTimer{this};
    QTimer m_zoomPositionTimer{this};
    QTimer m_zoomSettleTimer{this};
    uint m_lastZoomPosition = 0; ///< The position that checkZooming() read last; 0 after a new target.
    int m_selectedAFRoiSizeIndex = 0;
    int m_selectedAFRoiPositionIndex = 0;
    int m_selectedAFRoiShowWhenIndex = 0;
    bool m_athermalizationEnabledAvailable = false;
    bool m_athermalizationEnabled = false;
    std::chrono::steady_clock::time_point m_metaReadStart; ///< Start of the newest read of focus limits.

    QStringList m_lensStateNames;
    int m_selectedLensStateIndex = 0;
    bool m_selectedLensStateComponentsModifiedNotSaved = false;

    Refresh<Self, DiscontinuousFovPositionMetaResult> m_discontinuousMeta{
        this, &Self::finishedDiscontinuousFovPositionMetaWatcher, RefreshForm::NewestOnly};
    Refresh<Self, ContinuousFovPositionMetaResult> m_continuousMeta{
        this, &Self::finishedContinuousFovPositionMetaWatcher, RefreshForm::NewestOnly};
    Refresh<Self, LensStates> m_lensStates{this, &Self::finishedLoadingLensStatesWatcher, RefreshForm::NewestOnly};
    Refresh<Self, Completion> m_oneShot{this, &Self::finishedDelegateWatcher, RefreshForm::NewestOnly};
    Refresh<Self, SetupSettingsResult> m_refresh{this, &Self::finishedWatcher};
};
