#pragma once

#include "common/Refresh.h"
#include "common/presets.h"
#include "setup/ZvtCameraPresetModel.h"

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QStringList>

#include <array>

/// The settings that all presets share: the sequence of the presets, the window on the detector, the lists of window
/// sizes and factory calibrations, and the rate of the superframe. One read gets them together with the presets, and
/// other tabs use its values. A failed call is published as well: lists get shorter, and numbers get the defaults of
/// SetupGeneralResult. GUI thread only. (The header is long because of the number of its settings and their record.)
class SetupGeneralModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)

    Q_PROPERTY(
        ESEQUENCING_MODE sequencingMode READ sequencingMode WRITE setSequencingMode NOTIFY sequencingModeChanged FINAL)
    Q_PROPERTY(int sequencingModeIndex READ sequencingModeIndex WRITE setSequencingModeIndex NOTIFY
                   sequencingModeChanged FINAL)
    Q_PROPERTY(QStringList sequencingModeStrings READ sequencingModeStrings NOTIFY sequencingModeStringsChanged FINAL)
    Q_PROPERTY(int activePreset READ activePreset WRITE setActivePreset NOTIFY activePresetChanged FINAL)
    Q_PROPERTY(int numPresets READ numPresets NOTIFY numPresetsChanged FINAL)
    Q_PROPERTY(int gigEPreset READ gigEPreset WRITE setGigEPreset NOTIFY gigEPresetChanged FINAL)
    Q_PROPERTY(int videoPreset READ videoPreset WRITE setVideoPreset NOTIFY videoPresetChanged FINAL)

    Q_PROPERTY(QStringList windowSizeStrings READ windowSizeStrings NOTIFY windowSizeStringsChanged FINAL)
    Q_PROPERTY(int windowSizeIndex READ windowSizeIndex WRITE setWindowSizeIndex NOTIFY windowSizeIndexChanged FINAL)
    Q_PROPERTY(bool isFactoryCalibrated READ isFactoryCalibrated NOTIFY isFactoryCalibratedChanged FINAL)
    Q_PROPERTY(QStringList factoryCalibrationStrings READ factoryCalibrationStrings NOTIFY
                   factoryCalibrationStringsChanged FINAL)
    Q_PROPERTY(QRect window READ window WRITE setWindow NOTIFY windowChanged FINAL)
    Q_PROPERTY(QSize windowMaxSize READ windowMaxSize NOTIFY windowMaxSizeChanged FINAL)
    Q_PROPERTY(QSize windowMinSize READ windowMinSize NOTIFY windowMinSizeChanged FINAL)
    Q_PROPERTY(QPoint windowIncrement READ windowIncrement NOTIFY windowIncrementChanged FINAL)
    Q_PROPERTY(bool canWindowCustom READ canWindowCustom NOTIFY canWindowCustomChanged FINAL)
    Q_PROPERTY(bool canWindowCustomOffset READ canWindowCustomOffset NOTIFY canWindowCustomOffsetChanged FINAL)
    Q_PROPERTY(
        bool selectedWindowSizeIsCustom READ selectedWindowSizeIsCustom NOTIFY selectedWindowSizeIsCustomChanged FINAL)

    Q_PROPERTY(bool isLowCost READ isLowCost NOTIFY isLowCostChanged FINAL)
    Q_PROPERTY(double superframeRate READ superframeRate WRITE setSuperframeRate NOTIFY superframeRateChanged FINAL)
    Q_PROPERTY(QList<qreal> superframeRates READ superframeRates NOTIFY superframeRatesChanged FINAL)
    Q_PROPERTY(int superframeRateIndex READ superframeRateIndex WRITE setSuperframeRateIndex NOTIFY
                   superframeRateIndexChanged FINAL)

public:
    /// The use of the presets. The numbers are those of the camera.
    enum ESEQUENCING_MODE : int { SINGLE_PRESET = 0, SUPERFRAMING = 1, PRESET_SEQUENCING = 2 };
    Q_ENUM(ESEQUENCING_MODE)

    /// `parent` must not be null. It also becomes the parent of the presets.
    explicit SetupGeneralModel(QObject *parent);

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); } ///< Stays true after the first read.
    bool visible() const { return m_visible; } ///< Read by refreshAllVisible(). Starts true.
    void setVisible(bool visible);

    ESEQUENCING_MODE sequencingMode() const { return m_sequencingMode; }
    void setSequencingMode(ESEQUENCING_MODE mode); ///< Updates the list of trigger modes, but not the index.
    int sequencingModeIndex() const { return m_sequencingModeIndex; } ///< -1 for a mode that is not in the list.
    void setSequencingModeIndex(int index); ///< Signals twice, the first time with the old index.
    QStringList sequencingModeStrings() const { return m_sequencingModeStrings; }
    int activePreset() const { return m_activePreset; } ///< Counted from 0, as is videoPreset().
    void setActivePreset(int preset);
    int numPresets() const { return m_numPresets; } ///< 1 to 4.
    int gigEPreset() const { return m_gigEPreset; } ///< Counted from 0; 4 for all presets.
    void setGigEPreset(int preset);
    int videoPreset() const { return m_videoPreset; }
    void setVideoPreset(int preset);

    QStringList windowSizeStrings() const { return m_windowSizeStrings; } ///< In pixels; the last may be "Custom".
    int windowSizeIndex() const { return m_windowSizeIndex; } ///< The row of windowSizeStrings(), or -1.
    void setWindowSizeIndex(int index); ///< Blocks while it reads the window; then reads all presets in part.
    bool isFactoryCalibrated() const { return m_isFactoryCalibrated; }
    QStringList factoryCalibrationStrings() const { return m_factoryCalibrationStrings; } ///< Last is "none".
    QRect window() const { return m_window; } ///< Pixels of the detector.
    void setWindow(QRect window); ///< Stores a refused window too, until the next read. Reads all presets in part.
    QSize windowMaxSize() const { return m_windowMaxSize; } ///< Pixels; 0 by 0 if not read.
    QSize windowMinSize() const { return m_windowMinSize; } ///< Pixels; 0 by 0 if not read.
    QPoint windowIncrement() const { return m_windowIncrement; } ///< Pixels: width and X offset, height and Y offset.
    bool canWindowCustom() const { return m_canWindowCustom; } ///< Free sizes are allowed.
    bool canWindowCustomOffset() const { return m_canWindowCustomOffset; } ///< Free offsets are allowed.
    bool selectedWindowSizeIsCustom() const { return m_selectedWindowSizeIsCustom; } ///< The operator's last choice.

    bool isLowCost() const { return m_isLowCost; }
    double superframeRate() const { return m_superframeRate; } ///< Hertz.
    void setSuperframeRate(double hertz); ///< Selects the row of a listed rate; else writes the rate.
    QList<qreal> superframeRates() const { return m_superframeRates; } ///< Hertz, the highest first.
    int superframeRateIndex() const { return m_superframeRateIndex; } ///< -1 for a rate that is not listed.
    void setSuperframeRateIndex(int index);

    Q_INVOKABLE void refresh();
    /// The preset of this number; null outside 0 to 3. All four exist even if the camera has fewer.
    Q_INVOKABLE ZvtCameraPresetModel *ps(int index);
    /// Reads exposure and frame rates of all presets. Called after a change of a setting on which they depend.
    void partialRefreshAllPresets();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void sequencingModeChanged();
    void sequencingModeStringsChanged();
    void activePresetChanged();
    void numPresetsChanged();
    void gigEPresetChanged();
    void videoPresetChanged();
    void windowSizeStringsChanged();
    void windowSizeIndexChanged();
    void isFactoryCalibratedChanged();
    void factoryCalibrationStringsChanged();
    void windowChanged();
    void windowMaxSizeChanged();
    void windowMinSizeChanged();
    void windowIncrementChanged();
    void canWindowCustomChanged();
    void canWindowCustomOffsetChanged();
    void selectedWindowSizeIsCustomChanged();
    void isLowCostChanged();
    void superframeRateChanged();
    void superframeRatesChanged();
    void superframeRateIndexChanged();

private:
    using Self = SetupGeneralModel;

    static constexpr int allPresets = 4; ///< The value of gigEPreset() for all presets.

    /// The result of a read. A value whose call fails keeps its default.
    struct SetupGeneralResult {
        QStringList windowSizeStrings;
        QStringList factoryCalibrationStrings;
        QStringList sequencingModeStrings;
        int windowSizeIndex = -1;
        int sequencingModeIndex = -1;
        int superframeRateIndex = -1;
        bool canWindowCustom = false;
        bool canWindowCustomOffset = false;
        bool isLowCost = false;
        bool isFactoryCalibrated = false;
        QRect window;
        int numPresets = presetCount;
        int activePreset = 0;
        int gigEPreset = allPresets;
        int videoPreset = 0;
        QSize windowMinSize{0, 0};
        QSize windowMaxSize{0, 0};
        QPoint windowIncrement;
        ESEQUENCING_MODE sequencingMode = SINGLE_PRESET;
        QList<ESEQUENCING_MODE> sequencingModes;
        double superframeRate = 0.0;
        QList<qreal> superframeRates;
        std::array<ZvtCameraPresetModel::PresetFullRefreshResult, presetCount> presets;

        static SetupGeneralResult read(const CameraAccess &camera);
        void readWindowSizes(const CameraAccess &camera);
        void readCalibrations(const CameraAccess &camera);
        void readWindow(const CameraAccess &camera);
        void readSequencing(const CameraAccess &camera);
        void readSuperframe(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    void publishWindow(const SetupGeneralResult &result);
    void publishSequence(const SetupGeneralResult &result);

    bool m_visible = true;
    std::array<ZvtCameraPresetModel *, presetCount> m_presets{}; ///< Owned by the parent.
    QStringList m_windowSizeStrings;
    QStringList m_factoryCalibrationStrings;
    QStringList m_sequencingModeStrings;
    QList<ESEQUENCING_MODE> m_sequencingModes; ///< Row for row the modes of m_sequencingModeStrings.
    int m_windowSizeIndex = -1;
    ESEQUENCING_MODE m_sequencingMode = SINGLE_PRESET;
    int m_sequencingModeIndex = -1;
    int m_superframeRateIndex = -1;
    bool m_canWindowCustom = false;
    bool m_canWindowCustomOffset = false;
    bool m_isLowCost = false;
    bool m_isFactoryCalibrated = false;
    QRect m_window;
    QSize m_windowMinSize{0, 0};
    QSize m_windowMaxSize{0, 0};
    QPoint m_windowIncrement;
    int m_numPresets = presetCount;
    int m_activePreset = 0;
    int m_gigEPreset = allPresets;
    int m_videoPreset = 0;
    double m_superframeRate = 0.0;
    QList<qreal> m_superframeRates;
    bool m_selectedWindowSizeIsCustom = false;
    Refresh<Self, SetupGeneralResult> m_refresh{this, &Self::finishedWatcher, RefreshForm::RefreshingOnly};
};
