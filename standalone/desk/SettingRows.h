#pragma once

#include "standalone/desk/CameraSettings.h"
#include "standalone/desk/SettingRow.h"

#include <QAbstractListModel>
#include <QHash>
#include <QtQml/qqmlregistration.h>

/// The base of the models of cards that show settings of the camera in rows. A changed row shows the new value at once,
/// and the camera's value as soon as the change has been carried out or refused. GUI thread only.
class SettingRows : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("is the base of models")
    /// Whether the rows follow the camera. The card is open and visible then.
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged FINAL)
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    explicit SettingRows(StandaloneModel &model, QObject *parent = nullptr);

    bool active() const { return m_settings.polling(); }
    void setActive(bool active);
    int count() const { return static_cast<int>(m_rows.size()); }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    // Each function changes the setting of a row with one kind of control. It does nothing if the row does not exist or
    // shows this value already.
    Q_INVOKABLE void turn(int row, bool on); ///< Switch.
    Q_INVOKABLE void choose(int row, int choice); ///< Choice. The same choice again is sent again.
    Q_INVOKABLE void enter(int row, const QString &text); ///< Field. The text of the row removes its refusal.
    Q_INVOKABLE void pulse(int row); ///< Pulse.

    /// Removes the refusal from a row.
    Q_INVOKABLE void dismiss(int row);

signals:
    void activeChanged();
    void countChanged();

protected:
    using Rows = std::vector<SettingRow>;

    /// The rows for these settings.
    virtual Rows rowsOf(const CameraSettings::Settings &settings) const = 0;
    /// The value of the setting of a row after the row has got this value.
    virtual QVariant settingWith(const SettingRow &row, const QVariant &value) const;

    CameraSettings &settings() { return m_settings; }
    const CameraSettings &settings() const { return m_settings; }
    const Rows &rows() const { return m_rows; }
    void update();

private:
    enum Role {
        Label = Qt::UserRole,
        Heading,
        Name,
        Control,
        On,
        Text,
        Unit,
        Hint,
        Note,
        Choices,
        ChosenIndex,
        Usable,
        Refusal
    };

    const SettingRow *at(int row) const;
    void change(const SettingRow &row, const QVariant &value);
    void noteChange(const QString &name, const QString &why);

    CameraSettings m_settings;
    QHash<QString, QString> m_refusals; ///< Why the last change of a setting was refused.
    Rows m_rows;
};
