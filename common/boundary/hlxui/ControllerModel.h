#pragma once

#include <QObject>

#include <cstdint>

/// The base of every camera family's root model, so that a host can hold any of them. GUI thread only.
class ControllerModel : public QObject
{
    Q_OBJECT
    /// Bit n is 1 if preset n has a non-uniformity correction loaded.
    Q_PROPERTY(uint8_t hasNucMask READ hasNucMask NOTIFY hasNucMaskChanged FINAL)

public:
    explicit ControllerModel(QObject *parent = nullptr);
    ~ControllerModel() override;

    /// 0 unless a family overrides it.
    virtual uint8_t hasNucMask();

signals:
    void hasNucMaskChanged();
};
