#pragma once

#include <QObject>
#include <QString>

#include <cstdint>

/// The name of a board set; "Error" for an unknown one.
QString BoardTypeText(uint8_t boardSet);

/// One row of the SDK's table of camera models. It holds only its number: every value is read anew from the table, and
/// the names of the enums from the SDK, on each get. A name that the SDK does not have reads "Error". GUI thread only.
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

    /// A row that must exist. It has no parent: it belongs to the list that it is put into.
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

    /// Not 0: the model has a filter wheel.
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
