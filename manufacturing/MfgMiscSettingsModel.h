#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QObject>

/// The threshold of the detail enhancement of the video, and the phase of the detector clock. The operator edits both
/// and applies them together; a refresh discards edits that were not applied. GUI thread only.
class MfgMiscSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(int ddeThreshold READ ddeThreshold WRITE setDdeThreshold NOTIFY ddeThresholdChanged FINAL)
    Q_PROPERTY(int fpaClockPhaseShift READ fpaClockPhaseShift WRITE setFpaClockPhaseShift NOTIFY
                   fpaClockPhaseShiftChanged FINAL)

public:
    explicit MfgMiscSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);
    int ddeThreshold() const { return m_ddeThreshold; } ///< 0 to 16383.
    void setDdeThreshold(int threshold);
    int fpaClockPhaseShift() const { return m_fpaClockPhaseShift; } ///< 0 to 100000000.
    void setFpaClockPhaseShift(int shift);

    Q_INVOKABLE void refresh();
    Q_INVOKABLE void applySettings(); ///< Writes both, changed or not. Ignores both statuses.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void ddeThresholdChanged();
    void fpaClockPhaseShiftChanged();

private:
    using Self = MfgMiscSettingsModel;

    /// The result of a read.
    struct MfgMiscSettingsResult {
        Nullable<int> ddeThreshold;
        Nullable<int> fpaClockPhaseShift;

        static MfgMiscSettingsResult read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    bool m_visible = false;
    int m_ddeThreshold = 0;
    int m_fpaClockPhaseShift = 0;
    Refresh<Self, MfgMiscSettingsResult> m_refresh{this, &Self::finishedWatcher};
};
