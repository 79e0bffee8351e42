#pragma once

#include <QObject>
#include <QString>

/// The name of one filter while the operator edits it. GUI thread only.
class FilterNameEditorItemModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int filterID READ filterID CONSTANT FINAL)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged FINAL)
    Q_PROPERTY(bool hasBeenModified READ hasBeenModified NOTIFY hasBeenModifiedChanged FINAL)
    Q_PROPERTY(bool isDefault READ isDefault NOTIFY isDefaultChanged FINAL)

public:
    FilterNameEditorItemModel(int filterID, QString defaultName, QString name, QObject *parent);

    int filterID() const { return m_filterID; } ///< 0 to 63.
    QString name() const { return m_name; }
    void setName(const QString &name); ///< Writes nothing to the camera.
    bool hasBeenModified() const { return m_hasBeenModified; } ///< Stays true, also if the old name is typed again.
    bool isDefault() const { return m_name == m_defaultName; } ///< Upper and lower case differ.

    Q_INVOKABLE void useDefault(); ///< Sets the default name, which counts as a modification.

signals:
    void nameChanged();
    void hasBeenModifiedChanged();
    void isDefaultChanged();

private:
    using Self = FilterNameEditorItemModel;

    const int m_filterID;
    const QString m_defaultName;
    QString m_name;
    bool m_hasBeenModified = false;
};
