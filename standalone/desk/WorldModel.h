#pragma once

#include "standalone/desk/SettingRows.h"

class Faults;

/// The rows of the card "World": what surrounds the camera and what a hand does to it. Settings that the camera lacks
/// have no row. GUI thread only.
///
/// The stuck heater of the flag, a drive of the recorder that is pulled, full or slow, and a link of the recorder that
/// loses more frames than usual count as faults. A filter that is not the one in which the camera believes is none: a
/// scan of the wheel corrects it.
class WorldModel : public SettingRows
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to the desk")

public:
    /// `model` and `faults` must outlive this object.
    WorldModel(StandaloneModel &model, Faults &faults, QObject *parent = nullptr);

    /// Reads the camera once, after a change by another model, so that `faults` has its faults although this model is
    /// not active.
    void readFaults() { settings().read(); }

protected:
    Rows rowsOf(const CameraSettings::Settings &settings) const override;
    QVariant settingWith(const SettingRow &row, const QVariant &value) const override;

private:
    QStringList faultTexts() const;
    void clearFaults();
};
