#pragma once

#include "common/BaseTabModel.h"
#include "common/Nullable.h"
#include "common/Refresh.h"
#include "manufacturing/MfgRoicConfigModel.h"

#include <QString>

#include <cstdint>

/// The Manufacturing tab, with its first section: what the camera is. The numbers are the camera's own (see
/// ZvtModelModel), -1 before the first read. The setters only store; a refresh discards values that were not applied.
/// GUI thread only.
class MfgTabModel : public BaseTabModel
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)

    Q_PROPERTY(int boardType READ boardType NOTIFY boardTypeChanged FINAL)
    Q_PROPERTY(int cameraType READ cameraType WRITE setCameraType NOTIFY cameraTypeChanged FINAL)
    Q_PROPERTY(int cameraSubType READ cameraSubType WRITE setCameraSubType NOTIFY cameraSubTypeChanged FINAL)
    Q_PROPERTY(int detector READ detector WRITE setDetector NOTIFY detectorChanged FINAL)
    Q_PROPERTY(int readout READ readout WRITE setReadout NOTIFY readoutChanged FINAL)
    Q_PROPERTY(int pleoraBoardType READ pleoraBoardType WRITE setPleoraBoardType NOTIFY pleoraBoardTypeChanged FINAL)
    Q_PROPERTY(int variant READ variant WRITE setVariant NOTIFY variantChanged FINAL)
    Q_PROPERTY(int selectedFilteredIndex READ selectedFilteredIndex WRITE setSelectedFilteredIndex NOTIFY
                   selectedFilteredIndexChanged FINAL)
    Q_PROPERTY(bool filterWheel READ filterWheel WRITE setFilterWheel NOTIFY filterWheelChanged FINAL)
    Q_PROPERTY(QString serial READ serial WRITE setSerial NOTIFY serialChanged FINAL)
    Q_PROPERTY(QString model READ model WRITE setModel NOTIFY modelChanged FINAL)

    Q_PROPERTY(MfgRoicConfigModel *roicConfig READ roicConfig CONSTANT FINAL)

public:
    explicit MfgTabModel(QObject *parent) : BaseTabModel(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }

    int boardType() const { return m_boardType; }
    int cameraType() const { return m_cameraType; }
    void setCameraType(int type);
    int cameraSubType() const { return m_cameraSubType; }
    void setCameraSubType(int subtype);
    int detector() const { return m_detector; }
    void setDetector(int detector);
    int readout() const { return m_readout; }
    void setReadout(int readout);
    int pleoraBoardType() const { return m_pleoraBoardType; }
    void setPleoraBoardType(int board);
    int variant() const { return m_variant; }
    void setVariant(int variant);
    /// The row that is chosen in the filtered table of models. It belongs to the page; a read does not change it.
    int selectedFilteredIndex() const { return m_selectedFilteredIndex; }
    void setSelectedFilteredIndex(int row);
    bool filterWheel() const { return m_filterWheel; } ///< Whether the camera has a filter wheel.
    void setFilterWheel(bool present);
    QString serial() const { return m_serial; }
    void setSerial(const QString &serial);
    /// The name of the model. Published only with a serial that was read; empty if its own read failed.
    QString model() const { return m_model; }
    void setModel(const QString &model);

    MfgRoicConfigModel *roicConfig() const { return m_roicConfig; } ///< A child of this model, never null.

    Q_INVOKABLE void refresh() override;
    /// Writes model, type, subtype, Pleora board and serial, changed or not, and also if they were never read: empty
    /// texts and the numbers 255 then. The other values only select rows of the table. Ignores all statuses; does
    /// nothing without a controller.
    Q_INVOKABLE void applyCameraSettings();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void boardTypeChanged();
    void cameraTypeChanged();
    void cameraSubTypeChanged();
    void detectorChanged();
    void readoutChanged();
    void pleoraBoardTypeChanged();
    void variantChanged();
    void selectedFilteredIndexChanged();
    void filterWheelChanged();
    void serialChanged();
    void modelChanged();

private:
    using Self = MfgTabModel;
    struct Rows;

    /// The result of a read.
    struct CameraSettings {
        Nullable<uint8_t> boardType;
        Nullable<uint8_t> cameraType;
        Nullable<uint8_t> cameraSubType;
        Nullable<uint8_t> detector;
        Nullable<uint8_t> readout;
        Nullable<uint8_t> pleoraBoardType;
        Nullable<bool> filterWheel;
        Nullable<uint8_t> variant;
        Nullable<QString> serial;
        QString model; ///< Empty if it could not be read.

        static CameraSettings read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    int m_boardType = -1;
    int m_cameraType = -1;
    int m_cameraSubType = -1;
    int m_detector = -1;
    int m_readout = -1;
    int m_pleoraBoardType = -1;
    int m_variant = -1;
    int m_selectedFilteredIndex = -1;
    bool m_filterWheel = false;
    QString m_serial;
    QString m_model;
    MfgRoicConfigModel *const m_roicConfig = new MfgRoicConfigModel(this);
    Refresh<Self, CameraSettings> m_refresh{this, &Self::finishedWatcher};
};
