#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QObject>

/// The voltages of the detector: the global offset, the bias and, on a camera that can skim, the skimming voltage and
/// its switch. Each voltage has limits of the camera; they are 0 until they have been read. A refused value stays until
/// the next read. GUI thread only.
class AdvancedAnalogSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)

    Q_PROPERTY(
        float globalOffsetValue READ globalOffsetValue WRITE setGlobalOffsetValue NOTIFY globalOffsetValueChanged FINAL)
    Q_PROPERTY(float globalOffsetLimitMin READ globalOffsetLimitMin NOTIFY globalOffsetLimitsChanged FINAL)
    Q_PROPERTY(float globalOffsetLimitMax READ globalOffsetLimitMax NOTIFY globalOffsetLimitsChanged FINAL)
    Q_PROPERTY(
        float detectorBiasValue READ detectorBiasValue WRITE setDetectorBiasValue NOTIFY detectorBiasValueChanged FINAL)
    Q_PROPERTY(float detectorBiasLimitMin READ detectorBiasLimitMin NOTIFY detectorBiasLimitsChanged FINAL)
    Q_PROPERTY(float detectorBiasLimitMax READ detectorBiasLimitMax NOTIFY detectorBiasLimitsChanged FINAL)
    Q_PROPERTY(float skimmingValue READ skimmingValue WRITE setSkimmingValue NOTIFY skimmingValueChanged FINAL)
    Q_PROPERTY(float skimmingLimitMin READ skimmingLimitMin NOTIFY skimmingLimitsChanged FINAL)
    Q_PROPERTY(float skimmingLimitMax READ skimmingLimitMax NOTIFY skimmingLimitsChanged FINAL)
    Q_PROPERTY(bool skimmingEnabled READ skimmingEnabled WRITE setSkimmingEnabled NOTIFY skimmingEnabledChanged FINAL)

public:
    explicit AdvancedAnalogSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);

    float globalOffsetValue() const { return m_globalOffset; } ///< In volts, as its limits.
    void setGlobalOffsetValue(float volts);
    float globalOffsetLimitMin() const { return m_globalOffsetMin; }
    float globalOffsetLimitMax() const { return m_globalOffsetMax; }
    float detectorBiasValue() const { return m_detectorBias; } ///< In millivolts, as its limits.
    void setDetectorBiasValue(float millivolts);
    float detectorBiasLimitMin() const { return m_detectorBiasMin; }
    float detectorBiasLimitMax() const { return m_detectorBiasMax; }
    float skimmingValue() const { return m_skimming; } ///< In volts, as its limits.
    void setSkimmingValue(float volts);
    float skimmingLimitMin() const { return m_skimmingMin; }
    float skimmingLimitMax() const { return m_skimmingMax; }
    bool skimmingEnabled() const { return m_skimmingEnabled; } ///< Stays false on a camera that cannot skim.
    void setSkimmingEnabled(bool enabled);

    Q_INVOKABLE void refresh();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void globalOffsetValueChanged();
    void globalOffsetLimitsChanged();
    void detectorBiasValueChanged();
    void detectorBiasLimitsChanged();
    void skimmingValueChanged();
    void skimmingLimitsChanged();
    void skimmingEnabledChanged();

private:
    using Self = AdvancedAnalogSettingsModel;

    /// The result of a read.
    struct Settings {
        Nullable<float> globalOffset;
        Nullable<float> globalOffsetMin;
        Nullable<float> globalOffsetMax;
        Nullable<float> detectorBias;
        Nullable<float> detectorBiasMin;
        Nullable<float> detectorBiasMax;
        Nullable<float> skimming;
        Nullable<float> skimmingMin;
        Nullable<float> skimmingMax;
        Nullable<bool> skimmingEnabled;

        static Settings read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    bool m_visible = false;
    float m_globalOffset = 0;
    float m_globalOffsetMin = 0;
    float m_globalOffsetMax = 0;
    float m_detectorBias = 0;
    float m_detectorBiasMin = 0;
    float m_detectorBiasMax = 0;
    float m_skimming = 0;
    float m_skimmingMin = 0;
    float m_skimmingMax = 0;
    bool m_skimmingEnabled = false;
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher};
};
