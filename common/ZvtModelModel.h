#pragma once

#include <QObject>
#include <QString>

#include <cstdint>

/// The name of a board set; "Error" for an unknown one. Any thread.
QString BoardTypeText(uint8_t boardSet);

/// One row of the SDK's table of camera models. It stores only its row number: each getter reads its value from the
/// table, or an enumeration's name from the SDK. A value without a name in the SDK has the name "Error". GUI thread
/// only.
class ZvtModelModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int index READ index CONSTANT FINAL)
    Q_PROPERTY(QString name READ name CONSTANT FINAL)
    Q_PROPERTY(QString subTypeName READ subTypeName CONSTANT FINAL)

    Q_PROPERTY(uint8_t boardSet READ boardSet CONSTANT FINAL)
    Q_PROPERTY(uint8_t type READ type CONSTANT FINAL)
    Q_PROPERTY(uint8_t detectorType READ detectorType CONSTANT FINAL)
    Q_PROPERTY(uint8_t roicType READ roicType CONSTANT FINAL)
    Q_PROPERTY(uint8_t subType READ subType CONSTANT FINAL)
    Q_PROPERTY(uint8_t pleoraBoard READ pleoraBoard CONSTANT FINAL)
    Q_PROPERTY(uint8_t variant READ variant CONSTANT FINAL)
    Q_PROPERTY(uint8_t filterWheel READ filterWheel CONSTANT FINAL)

    Q_PROPERTY(QString boardSetName READ boardSetName CONSTANT FINAL)
    Q_PROPERTY(QString typeName READ typeName CONSTANT FINAL)
    Q_PROPERTY(QString roicTypeName READ roicTypeName CONSTANT FINAL)
    Q_PROPERTY(QString detectorTypeName READ detectorTypeName CONSTANT FINAL)
    Q_PROPERTY(QString pleoraBoardName READ pleoraBoardName CONSTANT FINAL)
    Q_PROPERTY(QString variantName READ variantName CONSTANT FINAL)
    Q_PROPERTY(QString filterWheelText READ filterWheelText CONSTANT FINAL)

public:
    /// The number of rows in the table.
    static int count();

    /// `index` must be a row of the table, from 0 to count() - 1. The object has no parent: the list to which it is
    /// appended owns it.
    explicit ZvtModelModel(int index);

    int index() const { return m_index; }
    QString name() const;
    QString subTypeName() const;

    uint8_t boardSet() const;
    uint8_t type() const;
    uint8_t detectorType() const;
    uint8_t roicType() const;
    uint8_t subType() const;
    uint8_t pleoraBoard() const;
    uint8_t variant() const;

    /// 0 if the model has no filter wheel, else another number.
    uint8_t filterWheel() const;

    QString boardSetName() const;
    QString typeName() const;
    QString roicTypeName() const;
    QString detectorTypeName() const;
    QString pleoraBoardName() const;
    QString variantName() const;

    /// "Yes" or "No", for the manufacturing page, which is not translated.
    QString filterWheelText() const;

private:
    const int m_index;
};
