#include "manufacturing/MfgTabModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/rows.h"
#include "common/setters.h"

#include <tuple>

#include "zvt/zvtsdk.h"

struct MfgTabModel::Rows {
    static constexpr std::tuple numbers{
        Row{zvtGetBoardType, &CameraSettings::boardType, &Self::m_boardType, &Self::boardTypeChanged},
        Row{zvtGetCameraType, &CameraSettings::cameraType, &Self::m_cameraType, &Self::cameraTypeChanged},
        Row{zvtGetCameraSubtype, &CameraSettings::cameraSubType, &Self::m_cameraSubType, &Self::cameraSubTypeChanged},
        Row{zvtGetDetectorType, &CameraSettings::detector, &Self::m_detector, &Self::detectorChanged},
        Row{zvtGetReadout, &CameraSettings::readout, &Self::m_readout, &Self::readoutChanged},
        Row{zvtGetPleoraBoardType, &CameraSettings::pleoraBoardType, &Self::m_pleoraBoardType,
            &Self::pleoraBoardTypeChanged},
        Row{zvtGetFilterWheelPresent, &CameraSettings::filterWheel, &Self::m_filterWheel, &Self::filterWheelChanged},
        Row{zvtGetVariant, &CameraSettings::variant, &Self::m_variant, &Self::variantChanged}};
};

// The read

void MfgTabModel::refresh() { m_refresh.start(&CameraSettings::read); }

MfgTabModel::CameraSettings MfgTabModel::CameraSettings::read(const CameraAccess &camera)
{
    constexpr uint32_t serialSize = 255;
    constexpr uint32_t modelSize = 256;
    CameraSettings settings;
    readAll(settings, Rows::numbers, camera.handle);
    readText<serialSize>(settings.serial, zvtGetCameraSN, camera.handle);
    settings.model = textOr<modelSize>({}, zvtGetCameraModel, camera.handle);
    return settings;
}

void MfgTabModel::finishedWatcher()
{
    const CameraSettings settings = m_refresh.result();
    publishAll(this, settings, Rows::numbers);
    publish(this, settings.serial, m_serial, &Self::serialChanged);
    // Required: whether the model is published depends on the read of the serial alone.
    if (settings.serial.set())
        announce(this, settings.model, m_model, &Self::modelChanged);
    m_refresh.finish();
}

// The edited values

void MfgTabModel::setCameraType(int type) { storeOnly(this, type, m_cameraType, &Self::cameraTypeChanged); }

void MfgTabModel::setCameraSubType(int subtype)
{
    storeOnly(this, subtype, m_cameraSubType, &Self::cameraSubTypeChanged);
}

void MfgTabModel::setDetector(int detector) { storeOnly(this, detector, m_detector, &Self::detectorChanged); }

void MfgTabModel::setReadout(int readout) { storeOnly(this, readout, m_readout, &Self::readoutChanged); }

void MfgTabModel::setPleoraBoardType(int board)
{
    storeOnly(this, board, m_pleoraBoardType, &Self::pleoraBoardTypeChanged);
}

void MfgTabModel::setVariant(int variant) { storeOnly(this, variant, m_variant, &Self::variantChanged); }

void MfgTabModel::setSelectedFilteredIndex(int row)
{
    storeOnly(this, row, m_selectedFilteredIndex, &Self::selectedFilteredIndexChanged);
}

void MfgTabModel::setFilterWheel(bool present) { storeOnly(this, present, m_filterWheel, &Self::filterWheelChanged); }

void MfgTabModel::setSerial(const QString &serial) { storeOnly(this, serial, m_serial, &Self::serialChanged); }

void MfgTabModel::setModel(const QString &model) { storeOnly(this, model, m_model, &Self::modelChanged); }

void MfgTabModel::applyCameraSettings()
{
    const CameraAccess camera = CameraAccess::of(this);
    if (!camera.controller)
        return;
    zvtSetCameraModel(camera.handle, m_model.toUtf8().constData());
    zvtSetCameraType(camera.handle, static_cast<uint8_t>(m_cameraType));
    zvtSetCameraSubtype(camera.handle, static_cast<uint8_t>(m_cameraSubType));
    zvtSetPleoraBoardType(camera.handle, static_cast<uint8_t>(m_pleoraBoardType));
    zvtSetCameraSN(camera.handle, m_serial.toUtf8().constData());
}
