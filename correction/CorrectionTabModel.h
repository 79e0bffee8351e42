#pragma once

#include "common/BaseTabModel.h"
#include "common/Nullable.h"
#include "common/Refresh.h"
#include "common/presets.h"

#include <QString>

#include <array>
#include <cstdint>

class NucInfoModel;
class ZvtCameraModel;

/// The Correction tab: the non-uniformity correction (NUC) that is loaded in each preset, the automatic correction, and
/// where corrections are used. Loads, saves and unloads corrections on a pool thread. These tasks and the read exclude
/// each other: a call while one of them runs is dropped. Presets are counted from 0. GUI thread only. (The header
/// is long because of the number of its settings.)
class CorrectionTabModel : public BaseTabModel
{
    Q_OBJECT
    Q_PROPERTY(ZvtCameraModel *cameraModel READ cameraModel CONSTANT FINAL)
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool autoNucEnabled READ autoNucEnabled WRITE setAutoNucEnabled NOTIFY autoNucEnabledChanged FINAL)
    Q_PROPERTY(bool autoNucUseDeltaTemp READ autoNucUseDeltaTemp WRITE setAutoNucUseDeltaTemp NOTIFY
                   autoNucUseDeltaTempChanged FINAL)
    Q_PROPERTY(bool autoNucUseDeltaTime READ autoNucUseDeltaTime WRITE setAutoNucUseDeltaTime NOTIFY
                   autoNucUseDeltaTimeChanged FINAL)
    Q_PROPERTY(
        float autoNucDeltaTemp READ autoNucDeltaTemp WRITE setAutoNucDeltaTemp NOTIFY autoNucDeltaTempChanged FINAL)
    Q_PROPERTY(
        uint32_t autoNucDeltaTime READ autoNucDeltaTime WRITE setAutoNucDeltaTime NOTIFY autoNucDeltaTimeChanged FINAL)
    Q_PROPERTY(bool nucAnalogOutput READ nucAnalogOutput WRITE setNucAnalogOutput NOTIFY nucAnalogOutputChanged FINAL)
    Q_PROPERTY(
        bool nucDigitalOutput READ nucDigitalOutput WRITE setNucDigitalOutput NOTIFY nucDigitalOutputChanged FINAL)
    Q_PROPERTY(bool showBadPixels READ showBadPixels WRITE setShowBadPixels NOTIFY showBadPixelsChanged FINAL)
    Q_PROPERTY(QString nucNamePS0 READ nucNamePS0 NOTIFY nucNamePS0Changed FINAL)
    Q_PROPERTY(QString nucNamePS1 READ nucNamePS1 NOTIFY nucNamePS1Changed FINAL)
    Q_PROPERTY(QString nucNamePS2 READ nucNamePS2 NOTIFY nucNamePS2Changed FINAL)
    Q_PROPERTY(QString nucNamePS3 READ nucNamePS3 NOTIFY nucNamePS3Changed FINAL)
    Q_PROPERTY(bool calLoadedPS0 READ calLoadedPS0 NOTIFY calLoadedPS0Changed FINAL)
    Q_PROPERTY(bool calLoadedPS1 READ calLoadedPS1 NOTIFY calLoadedPS1Changed FINAL)
    Q_PROPERTY(bool calLoadedPS2 READ calLoadedPS2 NOTIFY calLoadedPS2Changed FINAL)
    Q_PROPERTY(bool calLoadedPS3 READ calLoadedPS3 NOTIFY calLoadedPS3Changed FINAL)
    Q_PROPERTY(int numPresets READ numPresets NOTIFY numPresetsChanged FINAL)
    Q_PROPERTY(int selectedCorrectionMethodIndex READ selectedCorrectionMethodIndex WRITE
                   setSelectedCorrectionMethodIndex NOTIFY selectedCorrectionMethodIndexChanged FINAL)
    Q_MOC_INCLUDE("correction/NucInfoModel.h")
    Q_MOC_INCLUDE("plugin/ZvtCameraModel.h")

public:
    explicit CorrectionTabModel(QObject *parent) : BaseTabModel(parent) { }

    ZvtCameraModel *cameraModel() const;
    bool refreshing() const { return m_refresh.refreshing(); } ///< Also true during a load, a save and an unload.
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }

    // The automatic correction. Each setter writes all five values, and stores its value if the camera accepts them.
    bool autoNucEnabled() const { return m_autoNuc.enabled; }
    void setAutoNucEnabled(bool enabled); ///< Also informs the listeners of the controller.
    bool autoNucUseDeltaTemp() const { return m_autoNuc.useDeltaTemp; }
    void setAutoNucUseDeltaTemp(bool use);
    bool autoNucUseDeltaTime() const { return m_autoNuc.useDeltaTime; }
    void setAutoNucUseDeltaTime(bool use);
    /// The change of the front panel's temperature that starts a correction, in Celsius. Read values that are not
    /// between 0 and 2000 are replaced by 1.
    float autoNucDeltaTemp() const { return m_autoNuc.deltaTemp; }
    void setAutoNucDeltaTemp(float celsius);
    /// Minutes between two corrections. A read value is replaced by 1 if the temperature that was read with it is not
    /// between 0 and 604800.
    uint32_t autoNucDeltaTime() const { return m_autoNuc.deltaTime; }
    void setAutoNucDeltaTime(uint32_t minutes);

    // Where corrections are used. The camera may refuse a value, which is then not stored.
    bool nucAnalogOutput() const { return m_nucAnalogOutput; } ///< On the video outputs.
    void setNucAnalogOutput(bool enabled);
    bool nucDigitalOutput() const { return m_nucDigitalOutput; } ///< On the digital data.
    void setNucDigitalOutput(bool enabled);
    bool showBadPixels() const { return m_showBadPixels; } ///< Whether the image shows bad pixels in white.
    void setShowBadPixels(bool show);

    /// The name of the correction that is loaded in a preset; empty for none.
    QString nucNamePS0() const { return m_nucNames[0]; }
    QString nucNamePS1() const { return m_nucNames[1]; }
    QString nucNamePS2() const { return m_nucNames[2]; }
    QString nucNamePS3() const { return m_nucNames[3]; }
    /// Whether a factory calibration is applied to a preset. A change in any preset emits calLoadedPS0Changed; the
    /// signals of the others are never emitted.
    bool calLoadedPS0() const { return m_calLoaded[0]; }
    bool calLoadedPS1() const { return m_calLoaded[1]; }
    bool calLoadedPS2() const { return m_calLoaded[2]; }
    bool calLoadedPS3() const { return m_calLoaded[3]; }
    int numPresets() const { return m_numPresets; }
    /// How bad pixels are replaced: 0 two point gradient, 1 nearest neighbour, 2 not. The setter ignores the status.
    int selectedCorrectionMethodIndex() const { return m_selectedCorrectionMethodIndex; }
    void setSelectedCorrectionMethodIndex(int index);

    Q_INVOKABLE void refresh() override;
    Q_INVOKABLE void autoNucNow(); ///< Starts an automatic correction; ignores the status.
    Q_INVOKABLE void unloadNuc(int preset);
    /// Loads a stored correction, with the settings that LoadNucOptionsModel has at the time of the call.
    Q_INVOKABLE void loadNuc(int preset, const QString &name);
    /// Stores the correction of a preset in the camera under a name.
    Q_INVOKABLE void saveNuc(int preset, const QString &name);
    /// The description of a stored correction. It has no parent, so the caller owns it.
    Q_INVOKABLE NucInfoModel *infoForNuc(const QString &name);
    Q_INVOKABLE bool isFactoryNuc(const QString &name); ///< False also if the camera does not answer.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void autoNucEnabledChanged();
    void autoNucUseDeltaTempChanged();
    void autoNucUseDeltaTimeChanged();
    void autoNucDeltaTempChanged();
    void autoNucDeltaTimeChanged();
    void nucAnalogOutputChanged();
    void nucDigitalOutputChanged();
    void showBadPixelsChanged();
    void nucNamePS0Changed();
    void nucNamePS1Changed();
    void nucNamePS2Changed();
    void nucNamePS3Changed();
    void calLoadedPS0Changed();
    void calLoadedPS1Changed();
    void calLoadedPS2Changed();
    void calLoadedPS3Changed();
    void numPresetsChanged();
    void selectedCorrectionMethodIndexChanged();

private:
    using Self = CorrectionTabModel;
    using Signal = void (Self::*)();

    struct AutoNuc {
        bool enabled = false;
        bool useDeltaTemp = false;
        float deltaTemp = 0.0F; ///< Celsius.
        bool useDeltaTime = false;
        uint32_t deltaTime = 0; ///< Minutes.
    };

    /// The result of a task. A load, a save and an unload set only the name of their preset.
    struct Settings {
        std::array<Nullable<QString>, presetCount> nucNames;
        Nullable<bool> nucAnalogOutput;
        Nullable<bool> nucDigitalOutput;
        Nullable<bool> showBadPixels;
        Nullable<AutoNuc> autoNuc;
        Nullable<uint8_t> selectedCorrectionMethodIndex;
        std::array<Nullable<bool>, presetCount> calLoaded;
        Nullable<int> numPresets;

        static Settings read(const CameraAccess &camera);
        void readName(uint64_t handle, uint8_t preset);
    };

private slots:
    void finishedWatcher();

private:
    template <class Task> void startTask(int preset, Task task);
    void publishNames(const Settings &settings);
    void publishAutoNuc(const AutoNuc &autoNuc);
    template <class Value> bool writeAutoNuc(Value AutoNuc::*member, Value value, Signal changed);

    static const std::array<Signal, presetCount> s_nucNameChanged;

    AutoNuc m_autoNuc;
    bool m_nucAnalogOutput = false;
    bool m_nucDigitalOutput = false;
    bool m_showBadPixels = false;
    std::array<QString, presetCount> m_nucNames;
    std::array<bool, presetCount> m_calLoaded{};
    int m_numPresets = presetCount;
    int m_selectedCorrectionMethodIndex = 0;
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher};
};
