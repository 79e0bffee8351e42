#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include "hlxui/ObjectListModel.h"

/// A camera in the list of the finder.
class FoundCamera : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString key MEMBER m_key CONSTANT)
    Q_PROPERTY(QString name MEMBER m_key CONSTANT)
    Q_PROPERTY(QString profile MEMBER m_key CONSTANT)

public:
    explicit FoundCamera(const QString &key) : m_key(key) { }

private:
    QString m_key;
};

class FinderFake : public QObject
{
    Q_OBJECT
    Q_PROPERTY(ObjectListModel *cameras READ cameras CONSTANT)

public:
    FinderFake() { m_cameras.append(new FoundCamera(QStringLiteral("camera-7"))); }
    ObjectListModel *cameras() { return &m_cameras; }

private:
    ObjectListModel m_cameras{true};
};

/// The standalone model as the page sees it. Tests set its properties directly.
class StandaloneFake : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QObject *cameraFinder READ cameraFinder CONSTANT)
    Q_PROPERTY(QString configDir MEMBER configDir CONSTANT)
    Q_PROPERTY(bool connected MEMBER connected NOTIFY connectedChanged)
    Q_PROPERTY(bool connecting MEMBER connecting NOTIFY connectingChanged)
    Q_PROPERTY(bool disconnecting MEMBER disconnecting NOTIFY disconnectingChanged)
    Q_PROPERTY(bool canSelectController MEMBER canSelectController CONSTANT)
    Q_PROPERTY(QStringList controllerDisplayNames MEMBER controllerDisplayNames CONSTANT)
    Q_PROPERTY(QString connectError MEMBER connectError CONSTANT)
    Q_PROPERTY(int controllerIndex MEMBER controllerIndex NOTIFY controllerIndexChanged)

public:
    Q_INVOKABLE void connect(const QString &camera) { asked += QStringLiteral("connect ") + camera; }
    Q_INVOKABLE void disconnect() { asked += QStringLiteral("disconnect"); }

    QObject *cameraFinder() { return &m_finder; }

    QString configDir;
    bool connected = false;
    bool connecting = false;
    bool disconnecting = false;
    bool canSelectController = true;
    QStringList controllerDisplayNames{QStringLiteral("First"), QStringLiteral("Second")};
    QString connectError;
    int controllerIndex = 0;
    QStringList asked;

signals:
    void connectedChanged();
    void connectingChanged();
    void disconnectingChanged();
    void controllerIndexChanged();

private:
    FinderFake m_finder;
};
