#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QObject>
#include <QSet>
#include <QString>

#include <cstdint>

/// The timing of the readout circuit (ROIC). The widths are in clocks, periods of the detector clock; each has a time
/// in microseconds, which is computed with the frequency of the clock. The setters write at once and signal also after
/// a refusal, so that the field returns to the stored value. GUI thread only.
class MfgRoicConfigModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)

    Q_PROPERTY(
        bool overrideDefaults READ overrideDefaults WRITE setOverrideDefaults NOTIFY overrideDefaultsChanged FINAL)
    Q_PROPERTY(bool hasExtraLSync READ hasExtraLSync WRITE setHasExtraLSync NOTIFY hasExtraLSyncChanged FINAL)
    Q_PROPERTY(uint lineDeadWidth READ lineDeadWidth WRITE setLineDeadWidth NOTIFY lineDeadWidthChanged FINAL)
    Q_PROPERTY(uint preIntWidth READ preIntWidth WRITE setPreIntWidth NOTIFY preIntWidthChanged FINAL)
    Q_PROPERTY(uint postIntWidth READ postIntWidth WRITE setPostIntWidth NOTIFY postIntWidthChanged FINAL)
    Q_PROPERTY(uint preDeadRows READ preDeadRows WRITE setPreDeadRows NOTIFY preDeadRowsChanged FINAL)
    Q_PROPERTY(uint postDeadRows READ postDeadRows WRITE setPostDeadRows NOTIFY postDeadRowsChanged FINAL)

    Q_PROPERTY(double lineDeadTime READ lineDeadTime WRITE setLineDeadTime NOTIFY lineDeadWidthChanged FINAL)
    Q_PROPERTY(double preIntTime READ preIntTime WRITE setPreIntTime NOTIFY preIntWidthChanged FINAL)
    Q_PROPERTY(double postIntTime READ postIntTime WRITE setPostIntTime NOTIFY postIntWidthChanged FINAL)

public:
    explicit MfgRoicConfigModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); } ///< Stays true after the first read.

    /// Whether the values below replace those of the readout circuit. The setter reads it back from the camera.
    bool overrideDefaults() const { return m_overrideDefaults; }
    void setOverrideDefaults(bool overrideDefaults);
    bool hasExtraLSync() const { return m_hasExtraLSync; } ///< Whether there is an extra line sync.
    void setHasExtraLSync(bool hasExtraLSync);
    uint lineDeadWidth() const { return m_lineDeadWidth; } ///< At the end of each line.
    void setLineDeadWidth(uint clocks);
    uint preIntWidth() const { return m_preIntWidth; } ///< Before the integration.
    void setPreIntWidth(uint clocks);
    uint postIntWidth() const { return m_postIntWidth; } ///< After the integration.
    void setPostIntWidth(uint clocks);
    uint preDeadRows() const { return m_preDeadRows; } ///< Before the image.
    void setPreDeadRows(uint rows);
    uint postDeadRows() const { return m_postDeadRows; } ///< After the image.
    void setPostDeadRows(uint rows);

    // A setter rounds up to whole clocks. A time that is negative, or whose width would not fit in 32 bits, sets the
    // width 0. At some frequencies the time of a width, written back, sets the next larger width: at 12.5 MHz the width
    // 7 is 0.56 us, and 0.56 us is the width 8. So write only times that the operator has edited.
    double lineDeadTime() const { return timeOf(m_lineDeadWidth); }
    void setLineDeadTime(double microseconds) { setLineDeadWidth(widthOf(microseconds)); }
    double preIntTime() const { return timeOf(m_preIntWidth); }
    void setPreIntTime(double microseconds) { setPreIntWidth(widthOf(microseconds)); }
    double postIntTime() const { return timeOf(m_postIntWidth); }
    void setPostIntTime(double microseconds) { setPostIntWidth(widthOf(microseconds)); }

    /// Whether the camera has returned this number (the name of its property, `lineDeadWidth` to `postDeadRows`) since
    /// the model exists. A number that has not been read is 0. Changes only at the end of a read.
    Q_INVOKABLE bool wasRead(const QString &number) const { return m_numbersRead.contains(number); }
    Q_INVOKABLE void refresh();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void overrideDefaultsChanged();
    void hasExtraLSyncChanged();
    void lineDeadWidthChanged(); ///< Also emitted if only the time has changed, as are the next two.
    void preIntWidthChanged();
    void postIntWidthChanged();
    void preDeadRowsChanged();
    void postDeadRowsChanged();

private:
    using Self = MfgRoicConfigModel;
    struct Rows;

    /// The result of a read.
    struct RoicConfigResult {
        Nullable<bool> overrideDefaults;
        Nullable<bool> hasExtraLSync;
        Nullable<uint32_t> lineDeadWidth;
        Nullable<uint32_t> preIntWidth;
        Nullable<uint32_t> postIntWidth;
        Nullable<uint32_t> preDeadRows;
        Nullable<uint32_t> postDeadRows;
        Nullable<uint32_t> clockFrequency;

        static RoicConfigResult read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    double clocksPerMicrosecond() const;
    double timeOf(uint32_t clocks) const;
    uint32_t widthOf(double microseconds) const;

    bool m_overrideDefaults = false;
    bool m_hasExtraLSync = false;
    uint32_t m_lineDeadWidth = 0;
    uint32_t m_preIntWidth = 0;
    uint32_t m_postIntWidth = 0;
    uint32_t m_preDeadRows = 0;
    uint32_t m_postDeadRows = 0;
    uint32_t m_clockFrequency = 1000000; ///< Hz.
    QSet<QString> m_numbersRead;
    Refresh<Self, RoicConfigResult> m_refresh{this, &Self::finishedWatcher, RefreshForm::RefreshingOnly};
};
