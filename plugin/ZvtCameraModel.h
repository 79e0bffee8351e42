#pragma once

#include "advanced/AdvancedAnalogSettingsModel.h"
#include "advanced/AdvancedLockinSettingsModel.h"
#include "advanced/AdvancedMiscSettingsModel.h"
#include "advanced/AdvancedSaturationSettingsModel.h"
#include "common/CameraCapabilitiesModel.h"
#include "common/CameraRoot.h"
#include "correction/LoadNucOptionsModel.h"
#include "correction/NucListModel.h"
#include "correction/NucProcessModel.h"
#include "manufacturing/MfgCoolerSettingsModel.h"
#include "manufacturing/MfgCorvinFilterSettingsModel.h"
#include "manufacturing/MfgMiscSettingsModel.h"
#include "manufacturing/MfgNucSettingsModel.h"
#include "manufacturing/MfgToolsModel.h"
#include "manufacturing/MfgVoltageSettingsModel.h"
#include "setup/EditFilterNamesModel.h"
#include "setup/FlagSettingsModel.h"
#include "setup/SetupCoolerSettingsModel.h"
#include "setup/SetupFilterWheelSettingsModel.h"
#include "setup/SetupGeneralModel.h"
#include "setup/SyncSettingsModel.h"
#include "state/CameraStateModel.h"
#include "status/AboutModel.h"
#include "status/AdjustTimeModel.h"
#include "video/AgcRoiSettingsModel.h"
#include "video/OverlaySettingsModel.h"
#include "video/VideoOutputSettingsModel.h"

#include <QString>

#include <cstdint>

#include "hlx/CVariant.h"
#include "hlxui/ControllerModel.h"

class AdvancedTabModel;
class CorrectionTabModel;
class MfgTabModel;
class SetupTabModel;
class SsdTabModel;
class StatusTabModel;
class VideoTabModel;

/// The root view model of one camera, which the host receives and the page uses as `cameraModel`. It owns all
/// sub-models, shares the controller, signals changes of the connection, and has the properties that belong to no tab:
/// identity, the mask of presets with a correction, the manufacturing mode, and test properties of an emulator. All
/// values stay after a disconnect. GUI thread only, except for OnValueChangedController(), which the controller calls
/// on any thread.
class ZvtCameraModel : public ControllerModel, public CameraRoot
{
    Q_OBJECT
    Q_PROPERTY(bool connected READ connected NOTIFY connectedChanged FINAL)
    Q_PROPERTY(QString model READ model NOTIFY modelChanged FINAL)
    Q_PROPERTY(QString serial READ serial NOTIFY serialChanged FINAL)
    Q_PROPERTY(QString cameraTypeName READ cameraTypeName NOTIFY connectedChanged FINAL)
    Q_PROPERTY(QString cameraSubtypeName READ cameraSubtypeName NOTIFY connectedChanged FINAL)
    Q_PROPERTY(QString readoutName READ readoutName NOTIFY connectedChanged FINAL)
    Q_PROPERTY(QString detectorTypeName READ detectorTypeName NOTIFY connectedChanged FINAL)

    Q_PROPERTY(SetupGeneralModel *setupGeneralModel READ setupGeneralModel CONSTANT FINAL)
    Q_PROPERTY(
        SetupFilterWheelSettingsModel *setupFilterWheelSettingsModel READ setupFilterWheelSettingsModel CONSTANT FINAL)
    Q_PROPERTY(SetupCoolerSettingsModel *setupCoolerSettingsModel READ setupCoolerSettingsModel CONSTANT FINAL)
    Q_PROPERTY(SyncSettingsModel *syncSettings READ syncSettings CONSTANT FINAL)
    Q_PROPERTY(CameraStateModel *cameraState READ cameraState CONSTANT FINAL)
    Q_PROPERTY(NucListModel *nucList READ nucList CONSTANT FINAL)
    Q_PROPERTY(NucProcessModel *nucProcess READ nucProcess CONSTANT FINAL)
    Q_PROPERTY(LoadNucOptionsModel *loadNucOptions READ loadNucOptions CONSTANT FINAL)
    Q_PROPERTY(AdjustTimeModel *adjustTime READ adjustTime CONSTANT FINAL)
    Q_PROPERTY(VideoOutputSettingsModel *videoOutputSettings READ videoOutputSettings CONSTANT FINAL)
    Q_PROPERTY(FlagSettingsModel *flagSettings READ flagSettings CONSTANT FINAL)
    Q_PROPERTY(AgcRoiSettingsModel *agcRoiSettings READ agcRoiSettings CONSTANT FINAL)
    Q_PROPERTY(OverlaySettingsModel *overlaySettings READ overlaySettings CONSTANT FINAL)
    Q_PROPERTY(AdvancedAnalogSettingsModel *advancedAnalogSettingsModel READ advancedAnalogSettingsModel CONSTANT FINAL)
    Q_PROPERTY(AdvancedSaturationSettingsModel *advancedSaturationSettingsModel READ advancedSaturationSettingsModel
                   CONSTANT FINAL)
    Q_PROPERTY(AdvancedLockinSettingsModel *advancedLockinSettingsModel READ advancedLockinSettingsModel CONSTANT FINAL)
    Q_PROPERTY(AdvancedMiscSettingsModel *advancedMiscSettingsModel READ advancedMiscSettingsModel CONSTANT FINAL)
    Q_PROPERTY(MfgNucSettingsModel *mfgNucSettingsModel READ mfgNucSettingsModel CONSTANT FINAL)
    Q_PROPERTY(MfgVoltageSettingsModel *mfgVoltageSettingsModel READ mfgVoltageSettingsModel CONSTANT FINAL)
    Q_PROPERTY(MfgToolsModel *mfgToolsModel READ mfgToolsModel CONSTANT FINAL)
    Q_PROPERTY(MfgCoolerSettingsModel *mfgCoolerSettingsModel READ mfgCoolerSettingsModel CONSTANT FINAL)
    Q_PROPERTY(
        MfgCorvinFilterSettingsModel *mfgCorvinFilterSettingsModel READ mfgCorvinFilterSettingsModel CONSTANT FINAL)
    Q_PROPERTY(MfgMiscSettingsModel *mfgMiscSettingsModel READ mfgMiscSettingsModel CONSTANT FINAL)
    Q_PROPERTY(CameraCapabilitiesModel *cameraCapabilitiesModel READ cameraCapabilitiesModel CONSTANT FINAL)
    Q_PROPERTY(EditFilterNamesModel *editFilterNamesModel READ editFilterNamesModel CONSTANT FINAL)
    Q_PROPERTY(AboutModel *aboutModel READ aboutModel CONSTANT FINAL)

    Q_PROPERTY(bool allowedToCloseController READ allowedToCloseController WRITE setAllowedToCloseController NOTIFY
                   allowedToCloseControllerChanged FINAL)
    Q_PROPERTY(
        bool manufacturingMode READ manufacturingMode WRITE setManufacturingMode NOTIFY manufacturingModeChanged FINAL)
    Q_PROPERTY(bool isEmulator READ isEmulator NOTIFY connectedChanged FINAL)
    Q_PROPERTY(bool recordStart READ recordStart WRITE setRecordStart NOTIFY recordStartChanged FINAL)
    Q_PROPERTY(bool ssdTransfer READ ssdTransfer WRITE setSsdTransfer NOTIFY ssdTransferChanged FINAL)
    Q_PROPERTY(int testPattern READ testPattern WRITE setTestPattern NOTIFY testPatternChanged FINAL)
    Q_PROPERTY(float bb1Temp READ bb1Temp WRITE setBb1Temp NOTIFY bb1TempChanged FINAL)
    Q_PROPERTY(float bb2Temp READ bb2Temp WRITE setBb2Temp NOTIFY bb2TempChanged FINAL)
    Q_PROPERTY(QString chamberProfile READ chamberProfile WRITE setChamberProfile NOTIFY chamberProfileChanged FINAL)

    Q_PROPERTY(StatusTabModel *statusTabModel READ statusTabModel CONSTANT FINAL)
    Q_PROPERTY(SetupTabModel *setupTabModel READ setupTabModel CONSTANT FINAL)
    Q_PROPERTY(CorrectionTabModel *correctionTabModel READ correctionTabModel CONSTANT FINAL)
    Q_PROPERTY(VideoTabModel *videoTabModel READ videoTabModel CONSTANT FINAL)
    Q_PROPERTY(AdvancedTabModel *advancedTabModel READ advancedTabModel CONSTANT FINAL)
    Q_PROPERTY(SsdTabModel *ssdTabModel READ ssdTabModel CONSTANT FINAL)
    Q_PROPERTY(MfgTabModel *mfgTabModel READ mfgTabModel CONSTANT FINAL)
    Q_MOC_INCLUDE("advanced/AdvancedTabModel.h")
    Q_MOC_INCLUDE("correction/CorrectionTabModel.h")
    Q_MOC_INCLUDE("manufacturing/MfgTabModel.h")
    Q_MOC_INCLUDE("recording/SsdTabModel.h")
    Q_MOC_INCLUDE("status/StatusTabModel.h")
    Q_MOC_INCLUDE("setup/SetupTabModel.h")
    Q_MOC_INCLUDE("video/VideoTabModel.h")

public:
    /// The values of the only settings key of the plug-in.
    enum QSettingMfgTabVisibility { HIDE_MFG_TAB = 0, SHOW_MFG_TAB = 1 };
    Q_ENUM(QSettingMfgTabVisibility)

    /// `controller` may be null: then nothing is read, and the camera is never connected.
    ZvtCameraModel(hlx::TSharedPtr<hlx::cam::IZVTController> controller, QObject *parent);
    ~ZvtCameraModel() override;

    bool connected() const override; ///< Asks the controller on each call.
    /// The texts of the identity: each call asks the SDK; empty if it fails.
    QString model() const;
    QString serial() const;
    QString cameraTypeName() const;
    QString cameraSubtypeName() const;
    QString readoutName() const;
    QString detectorTypeName() const;

    SetupGeneralModel *setupGeneralModel() override { return &m_setupGeneralModel; }
    SetupFilterWheelSettingsModel *setupFilterWheelSettingsModel() override { return &m_setupFilterWheelSettingsModel; }
    SetupCoolerSettingsModel *setupCoolerSettingsModel() override { return &m_setupCoolerSettingsModel; }
    SyncSettingsModel *syncSettings() override { return &m_syncSettings; }
    CameraStateModel *cameraState() { return &m_cameraState; }
    NucListModel *nucList() { return &m_nucList; }
    NucProcessModel *nucProcess() { return &m_nucProcess; }
    LoadNucOptionsModel *loadNucOptions() override { return &m_loadNucOptions; }
    AdjustTimeModel *adjustTime() { return &m_adjustTime; }
    VideoOutputSettingsModel *videoOutputSettings() { return &m_videoOutputSettings; }
    FlagSettingsModel *flagSettings() override { return &m_flagSettings; }
    AgcRoiSettingsModel *agcRoiSettings() { return &m_agcRoiSettings; }
    OverlaySettingsModel *overlaySettings() { return &m_overlaySettings; }
    AdvancedAnalogSettingsModel *advancedAnalogSettingsModel() { return &m_advancedAnalogSettingsModel; }
    AdvancedSaturationSettingsModel *advancedSaturationSettingsModel() { return &m_advancedSaturationSettingsModel; }
    AdvancedLockinSettingsModel *advancedLockinSettingsModel() { return &m_advancedLockinSettingsModel; }
    AdvancedMiscSettingsModel *advancedMiscSettingsModel() { return &m_advancedMiscSettingsModel; }
    MfgNucSettingsModel *mfgNucSettingsModel() { return &m_mfgNucSettingsModel; }
    MfgVoltageSettingsModel *mfgVoltageSettingsModel() { return &m_mfgVoltageSettingsModel; }
    MfgToolsModel *mfgToolsModel() { return &m_mfgToolsModel; }
    MfgCoolerSettingsModel *mfgCoolerSettingsModel() { return &m_mfgCoolerSettingsModel; }
    MfgCorvinFilterSettingsModel *mfgCorvinFilterSettingsModel() { return &m_mfgCorvinFilterSettingsModel; }
    MfgMiscSettingsModel *mfgMiscSettingsModel() { return &m_mfgMiscSettingsModel; }
    CameraCapabilitiesModel *cameraCapabilitiesModel() override { return &m_cameraCapabilitiesModel; }
    EditFilterNamesModel *editFilterNamesModel() { return &m_editFilterNamesModel; }
    AboutModel *aboutModel() { return &m_aboutModel; }

    /// Whether the host may close the controller. Starts true.
    bool allowedToCloseController() const { return m_allowedToCloseController; }
    void setAllowedToCloseController(bool allowed);
    bool manufacturingMode() const override { return m_manufacturingMode; }
    void setManufacturingMode(bool manufacturingMode); ///< Stored in the settings for the next start.
    bool isEmulator() const;
    /// Test properties of an emulator, asked of its device on each call. On a real camera each getter returns false, 0
    /// or an empty text, and each setter does nothing.
    bool recordStart() const;
    void setRecordStart(bool recordStart);
    bool ssdTransfer() const;
    void setSsdTransfer(bool ssdTransfer);
    int testPattern() const; ///< No unit; the emulator defines the numbers.
    void setTestPattern(int testPattern);
    float bb1Temp() const; ///< Temperature of black body 1 in degrees Celsius.
    void setBb1Temp(float temperature);
    float bb2Temp() const; ///< Temperature of black body 2 in degrees Celsius.
    void setBb2Temp(float temperature);
    QString chamberProfile() const; ///< Text; the emulator defines its meaning.
    void setChamberProfile(const QString &profile);

    StatusTabModel *statusTabModel() const { return m_statusTabModel; }
    SetupTabModel *setupTabModel() const { return m_setupTabModel; }
    CorrectionTabModel *correctionTabModel() const { return m_correctionTabModel; }
    VideoTabModel *videoTabModel() const { return m_videoTabModel; }
    AdvancedTabModel *advancedTabModel() const { return m_advancedTabModel; }
    SsdTabModel *ssdTabModel() const { return m_ssdTabModel; }
    MfgTabModel *mfgTabModel() const { return m_mfgTabModel; }

    /// Reads the tabs Status, Setup, Correction, Video and Advanced, the SSD tab if the camera has a recorder, the
    /// Manufacturing tab if the stored settings show it, and the models of all visible sections again. The
    /// synchronisation settings are read together with the general setup. Only the page reads the lock-in settings.
    Q_INVOKABLE void refreshAllVisible();
    /// Combines a key and its modifiers in the integer by which the host identifies hot keys. Shift, Control and Alt
    /// alone count as no key; the Meta key counts as a key, but its modifier is ignored.
    Q_INVOKABLE uint integrateModifiersIntoKey(uint modifiers, uint keycode) const;
    /// A number in the user's decimal notation with `precision` decimals, without a thousands separator.
    Q_INVOKABLE QString safeConvertFloatToLocaleString(double num, uint precision) const;

    hlx::TSharedPtr<hlx::cam::IZVTController> controller() const override { return m_controller; }
    hlx::TSharedPtr<hlx::cam::IDevice> device() const override;
    std::shared_ptr<CapabilityBlock> capabilities() const override { return m_capabilities; }
    QMetaObject::Connection onConnectedChanged(const QObject *context, std::function<void()> listener) override;
    QMetaObject::Connection onCapabilitiesChanged(const QObject *context, std::function<void()> listener) override;
    QMetaObject::Connection onManufacturingModeChanged(const QObject *context, std::function<void()> listener) override;
    uint8_t hasNucMask() override { return m_hasNucMask; }
    void modifyHasNucMask(uint8_t mask, uint8_t values) override;
    void setPresetHasNuc(uint8_t preset, bool hasNuc) override;
    void updateHasNucMask() override;
    ZvtCameraModel *cameraModel() override { return this; }

    bool event(QEvent *event) override;

signals:
    void connectedChanged();
    void modelChanged();
    void serialChanged();

    void allowedToCloseControllerChanged();
    void manufacturingModeChanged();
    void recordStartChanged();
    void ssdTransferChanged();
    void testPatternChanged();
    void bb1TempChanged();
    void bb2TempChanged();
    void chamberProfileChanged();

private slots:
    void refreshUponCameraStateNoLongerLoading();

private:
    using Self = ZvtCameraModel;
    using ValueChanged = hlx::cam::IController::ValueChanged;

    void OnValueChangedController(hlx::CString name); ///< Any thread.
    ValueChanged valueChangedDelegate();
    void handleValueChanged(const hlx::CString &name);

    uint64_t handle() const;
    template <class Value> Value emulatorProperty(const char *key, Value (*convert)(const hlx::CVariant &)) const;
    template <class Value>
    void setEmulatorProperty(const char *key, const Value &value, const Value &present, void (Self::*changed)());

    // These two are built first: sub-models may start reads from their constructors.
    hlx::TSharedPtr<hlx::cam::IZVTController> m_controller;
    const std::shared_ptr<CapabilityBlock> m_capabilities = std::make_shared<CapabilityBlock>();
    SyncSettingsModel m_syncSettings{this};
    CameraStateModel m_cameraState{this};
    NucListModel m_nucList{this};
    NucProcessModel m_nucProcess{this};
    LoadNucOptionsModel m_loadNucOptions{this};
    AdjustTimeModel m_adjustTime{this};
    VideoOutputSettingsModel m_videoOutputSettings{this};
    SetupGeneralModel m_setupGeneralModel{this};
    SetupFilterWheelSettingsModel m_setupFilterWheelSettingsModel{this};
    SetupCoolerSettingsModel m_setupCoolerSettingsModel{this};
    FlagSettingsModel m_flagSettings{this};
    AgcRoiSettingsModel m_agcRoiSettings{this};
    OverlaySettingsModel m_overlaySettings{this};
    AdvancedAnalogSettingsModel m_advancedAnalogSettingsModel{this};
    AdvancedSaturationSettingsModel m_advancedSaturationSettingsModel{this};
    AdvancedLockinSettingsModel m_advancedLockinSettingsModel{this};
    AdvancedMiscSettingsModel m_advancedMiscSettingsModel{this};
    MfgNucSettingsModel m_mfgNucSettingsModel{this};
    MfgVoltageSettingsModel m_mfgVoltageSettingsModel{this};
    MfgToolsModel m_mfgToolsModel{this};
    MfgCoolerSettingsModel m_mfgCoolerSettingsModel{this};
    MfgCorvinFilterSettingsModel m_mfgCorvinFilterSettingsModel{this};
    MfgMiscSettingsModel m_mfgMiscSettingsModel{this};
    bool m_allowedToCloseController = true;
    bool m_manufacturingMode = false;
    CameraCapabilitiesModel m_cameraCapabilitiesModel{this};
    EditFilterNamesModel m_editFilterNamesModel{this};
    AboutModel m_aboutModel{this};
    uint8_t m_hasNucMask = 0;
    const QString m_mfgTabVisibilityKey = QStringLiteral("zvtCamCtrlMfgTabVisibility");
    StatusTabModel *m_statusTabModel = nullptr;
    SetupTabModel *m_setupTabModel = nullptr;
    CorrectionTabModel *m_correctionTabModel = nullptr;
    VideoTabModel *m_videoTabModel = nullptr;
    AdvancedTabModel *m_advancedTabModel = nullptr;
    SsdTabModel *m_ssdTabModel = nullptr;
    MfgTabModel *m_mfgTabModel = nullptr;
};
