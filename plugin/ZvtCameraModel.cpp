#include "plugin/ZvtCameraModel.h"

#include "advanced/AdvancedTabModel.h"
#include "common/TInvokeEvent.h"
#include "common/conversions.h"
#include "common/formatting.h"
#include "common/identity.h"
#include "common/presets.h"
#include "common/reading.h"
#include "common/setters.h"
#include "correction/CorrectionTabModel.h"
#include "manufacturing/MfgTabModel.h"
#include "recording/SsdTabModel.h"
#include "setup/SetupTabModel.h"
#include "status/StatusTabModel.h"
#include "video/VideoTabModel.h"

#include <QSettings>
#include <QThreadPool>

#include <memory>

#include "hlx/CZVTController.h"
#include "hlx/IInterface.h"
#include "zvt/zvtsdk.h"

namespace
{

constexpr uint32_t shortNameSize = 64;

/// Stores a setting: at once for this process, and on disk from a thread of the pool, so that the GUI thread does not
/// wait for a slow disk.
void saveSetting(const QString &key, const QVariant &value)
{
    auto settings = std::make_shared<QSettings>();
    settings->setValue(key, value);
    // The destructor writes the file. Without a thread affinity the object gets no event that would write it earlier
    // here.
    settings->moveToThread(nullptr);
    QThreadPool::globalInstance()->start([settings = std::move(settings)] { Q_UNUSED(settings) });
}

} // namespace

ZvtCameraModel::ZvtCameraModel(hlx::TSharedPtr<hlx::cam::IZVTController> controller, QObject *parent)
    : ControllerModel(parent), m_controller(std::move(controller))
{
    if (m_controller) {
        m_controller->AddValueChanged(valueChangedDelegate());
        m_cameraCapabilitiesModel.configure();
        m_setupGeneralModel.refresh();
        if (Self::connected())
            Self::updateHasNucMask();
    }
    // The tab models need the sub-models and the capabilities.
    m_statusTabModel = new StatusTabModel(this);
    m_setupTabModel = new SetupTabModel(this);
    m_correctionTabModel = new CorrectionTabModel(this);
    m_videoTabModel = new VideoTabModel(this);
    m_advancedTabModel = new AdvancedTabModel(this);
    m_ssdTabModel = new SsdTabModel(this);
    m_mfgTabModel = new MfgTabModel(this);
    if (QSettings().value(m_mfgTabVisibilityKey, SHOW_MFG_TAB).toBool())
        setManufacturingMode(true);
    QObject::connect(&m_cameraState, &CameraStateModel::loadingChanged, this,
                     &Self::refreshUponCameraStateNoLongerLoading);
}

ZvtCameraModel::~ZvtCameraModel()
{
    // No run may go on in the camera without being shown.
    if (m_nucProcess.inProgress())
        m_nucProcess.abort();
    if (m_controller)
        m_controller->RemoveValueChanged(valueChangedDelegate());
}

// The connection

ZvtCameraModel::ValueChanged ZvtCameraModel::valueChangedDelegate()
{
    return ValueChanged::FromMember<Self, &Self::OnValueChangedController>(this);
}

void ZvtCameraModel::OnValueChangedController(hlx::CString name)
{
    postInvoke(this, [this, name = std::move(name)] { handleValueChanged(name); });
}

void ZvtCameraModel::handleValueChanged(const hlx::CString &name)
{
    if (name.compare("Connected") != 0)
        return;
    if (connected()) {
        emit modelChanged();
        emit serialChanged();
        m_cameraCapabilitiesModel.configure();
        updateHasNucMask();
    }
    emit connectedChanged();
}

bool ZvtCameraModel::event(QEvent *event) { return handleInvokeEvent(event) || ControllerModel::event(event); }

bool ZvtCameraModel::connected() const { return m_controller && m_controller->IsConnected(); }

QMetaObject::Connection ZvtCameraModel::onConnectedChanged(const QObject *context, std::function<void()> listener)
{
    return QObject::connect(this, &Self::connectedChanged, context, std::move(listener));
}

QMetaObject::Connection ZvtCameraModel::onCapabilitiesChanged(const QObject *context, std::function<void()> listener)
{
    return QObject::connect(&m_cameraCapabilitiesModel, &CameraCapabilitiesModel::cameraCapabilitiesChanged, context,
                            std::move(listener));
}

QMetaObject::Connection ZvtCameraModel::onManufacturingModeChanged(const QObject *context,
                                                                   std::function<void()> listener)
{
    return QObject::connect(this, &Self::manufacturingModeChanged, context, std::move(listener));
}

uint64_t ZvtCameraModel::handle() const { return m_controller ? m_controller->GetHandle() : 0; }

hlx::TSharedPtr<hlx::cam::IDevice> ZvtCameraModel::device() const
{
    const auto concrete = m_controller.dynamicCast<hlx::cam::CZVTController>();
    return concrete ? concrete->device() : hlx::TSharedPtr<hlx::cam::IDevice>();
}

// Identity

QString ZvtCameraModel::model() const { return readCameraModel(handle()); }

QString ZvtCameraModel::serial() const { return readCameraSerial(handle()); }

QString ZvtCameraModel::cameraTypeName() const
{
    Nullable<uint8_t> type;
    return fetch(type, zvtGetCameraType, handle()) ? textOr<shortNameSize>({}, zvtGetCameraTypeName, type.get())
                                                   : QString();
}

QString ZvtCameraModel::cameraSubtypeName() const
{
    Nullable<uint8_t> type;
    Nullable<uint8_t> subtype;
    if (!fetch(type, zvtGetCameraType, handle()) || !fetch(subtype, zvtGetCameraSubtype, handle()))
        return {};
    return textOr<shortNameSize>({}, zvtGetCameraSubtypeName, type.get(), subtype.get());
}

QString ZvtCameraModel::readoutName() const
{
    Nullable<uint8_t> readout;
    return fetch(readout, zvtGetReadout, handle()) ? textOr<shortNameSize>({}, zvtGetReadoutName, readout.get())
                                                   : QString();
}

QString ZvtCameraModel::detectorTypeName() const
{
    Nullable<uint8_t> detector;
    return fetch(detector, zvtGetDetectorType, handle())
        ? textOr<shortNameSize>({}, zvtGetDetectorTypeName, detector.get())
        : QString();
}

// Which presets hold a correction

void ZvtCameraModel::modifyHasNucMask(uint8_t mask, uint8_t values)
{
    m_hasNucMask = static_cast<uint8_t>((m_hasNucMask & ~mask) | values);
    emit hasNucMaskChanged();
}

void ZvtCameraModel::setPresetHasNuc(uint8_t preset, bool hasNuc)
{
    constexpr unsigned bitsOfWord = 32;
    const auto bit = static_cast<uint8_t>(1U << (preset % bitsOfWord));
    modifyHasNucMask(bit, hasNuc ? bit : 0);
}

void ZvtCameraModel::updateHasNucMask()
{
    m_hasNucMask = 0;
    for (uint8_t preset = 0; preset < presetCount; ++preset)
        if (!textOr<nucNameSize>({}, zvtGetNUCName, handle(), preset).isEmpty())
            m_hasNucMask |= static_cast<uint8_t>(1U << preset);
    emit hasNucMaskChanged();
}

// Modes of the page

void ZvtCameraModel::setAllowedToCloseController(bool allowed)
{
    storeOnly(this, allowed, m_allowedToCloseController, &Self::allowedToCloseControllerChanged);
}

void ZvtCameraModel::setManufacturingMode(bool manufacturingMode)
{
    if (manufacturingMode == m_manufacturingMode)
        return;
    // The setting is stored before the signal, so that a listener reads the new one.
    saveSetting(m_mfgTabVisibilityKey, static_cast<int>(manufacturingMode ? SHOW_MFG_TAB : HIDE_MFG_TAB));
    announce(this, manufacturingMode, m_manufacturingMode, &Self::manufacturingModeChanged);
}

void ZvtCameraModel::refreshAllVisible()
{
    m_statusTabModel->refresh();
    m_setupTabModel->refresh();
    m_correctionTabModel->refresh();
    m_videoTabModel->refresh();
    m_advancedTabModel->refresh();
    if (m_cameraCapabilitiesModel.hasSsd())
        m_ssdTabModel->refresh();
    if (QSettings().value(m_mfgTabVisibilityKey, SHOW_MFG_TAB).toBool())
        m_mfgTabModel->refresh();
    if (m_setupGeneralModel.visible()) {
        m_setupGeneralModel.refresh();
        m_syncSettings.refresh();
    }
    if (m_videoOutputSettings.visible())
        m_videoOutputSettings.refresh();
    if (m_setupFilterWheelSettingsModel.visible())
        m_setupFilterWheelSettingsModel.refresh();
    if (m_setupCoolerSettingsModel.visible())
        m_setupCoolerSettingsModel.refresh();
    if (m_flagSettings.visible())
        m_flagSettings.refresh();
    if (m_agcRoiSettings.visible())
        m_agcRoiSettings.refresh();
    if (m_overlaySettings.visible())
        m_overlaySettings.refresh();
    if (m_advancedAnalogSettingsModel.visible())
        m_advancedAnalogSettingsModel.refresh();
    if (m_advancedSaturationSettingsModel.visible())
        m_advancedSaturationSettingsModel.refresh();
    if (m_advancedMiscSettingsModel.visible())
        m_advancedMiscSettingsModel.refresh();
    if (m_mfgNucSettingsModel.visible())
        m_mfgNucSettingsModel.refresh();
    if (m_mfgVoltageSettingsModel.visible())
        m_mfgVoltageSettingsModel.refresh();
    if (m_mfgToolsModel.visible())
        m_mfgToolsModel.refresh();
    if (m_mfgCoolerSettingsModel.visible())
        m_mfgCoolerSettingsModel.refresh();
    if (m_mfgCorvinFilterSettingsModel.visible())
        m_mfgCorvinFilterSettingsModel.refresh();
    if (m_mfgMiscSettingsModel.visible())
        m_mfgMiscSettingsModel.refresh();
}

// A load changes nearly every setting.
void ZvtCameraModel::refreshUponCameraStateNoLongerLoading()
{
    if (!m_cameraState.loading())
        refreshAllVisible();
}

uint ZvtCameraModel::integrateModifiersIntoKey(uint modifiers, uint keycode) const
{
    uint key = keycode;
    if (key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt)
        key = 0;
    return key | (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier));
}

QString ZvtCameraModel::safeConvertFloatToLocaleString(double num, uint precision) const
{
    return plainLocale().toString(num, 'f', static_cast<int>(precision));
}

// Test properties of an emulator

bool ZvtCameraModel::isEmulator() const
{
    const auto present = device();
    if (!present)
        return false;
    const auto interface = hlx::cam::interfaces().GetInterfaceOfDevice(present->key());
    return interface && interface->isEmulator;
}

template <class Value>
Value ZvtCameraModel::emulatorProperty(const char *key, Value (*convert)(const hlx::CVariant &)) const
{
    hlx::CVariant value;
    if (!isEmulator() || !device()->properties().get(key, value))
        return Value{};
    return convert(value);
}

template <class Value>
void ZvtCameraModel::setEmulatorProperty(const char *key, const Value &value, const Value &present,
                                         void (Self::*changed)())
{
    if (!isEmulator() || value == present)
        return;
    if constexpr (std::is_same_v<Value, QString>)
        device()->properties().set(key, hlx::CVariant(toCString(value)));
    else
        device()->properties().set(key, hlx::CVariant(value));
    emit(this->*changed)();
}

bool ZvtCameraModel::recordStart() const
{
    return emulatorProperty<bool>("/RecordStart", [](const hlx::CVariant &value) { return value.ToBool(); });
}

void ZvtCameraModel::setRecordStart(bool recordStart)
{
    setEmulatorProperty("/RecordStart", recordStart, this->recordStart(), &Self::recordStartChanged);
}

bool ZvtCameraModel::ssdTransfer() const
{
    return emulatorProperty<bool>("/SSDTransfer", [](const hlx::CVariant &value) { return value.ToBool(); });
}

void ZvtCameraModel::setSsdTransfer(bool ssdTransfer)
{
    setEmulatorProperty("/SSDTransfer", ssdTransfer, this->ssdTransfer(), &Self::ssdTransferChanged);
}

int ZvtCameraModel::testPattern() const
{
    return emulatorProperty<int>("/Pattern", [](const hlx::CVariant &value) { return value.ToInt32(); });
}

void ZvtCameraModel::setTestPattern(int testPattern)
{
    setEmulatorProperty("/Pattern", testPattern, this->testPattern(), &Self::testPatternChanged);
}

float ZvtCameraModel::bb1Temp() const
{
    return emulatorProperty<float>("/BlackbodyTemp1", [](const hlx::CVariant &value) { return value.ToFlt32(); });
}

void ZvtCameraModel::setBb1Temp(float temperature)
{
    setEmulatorProperty("/BlackbodyTemp1", temperature, bb1Temp(), &Self::bb1TempChanged);
}

float ZvtCameraModel::bb2Temp() const
{
    return emulatorProperty<float>("/BlackbodyTemp2", [](const hlx::CVariant &value) { return value.ToFlt32(); });
}

void ZvtCameraModel::setBb2Temp(float temperature)
{
    setEmulatorProperty("/BlackbodyTemp2", temperature, bb2Temp(), &Self::bb2TempChanged);
}

QString ZvtCameraModel::chamberProfile() const
{
    return emulatorProperty<QString>(
        "/ChamberProfile", [](const hlx::CVariant &value) { return QString::fromUtf8(value.ToString().c_str()); });
}

void ZvtCameraModel::setChamberProfile(const QString &profile)
{
    setEmulatorProperty("/ChamberProfile", profile, chamberProfile(), &Self::chamberProfileChanged);
}
