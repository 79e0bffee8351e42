#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

namespace emulator
{
class Camera;
}

class StandaloneModel;

/// Plays another client of the camera, so that a page can be seen to learn of its changes: each line that comes through
/// a descriptor changes one setting, as "device.setting value", or one capability, as "capabilities.name value". A
/// value is written as in JSON; what is none is a text. What is refused is told on the standard error. GUI thread only.
class OtherClient : public QObject
{
    Q_OBJECT

public:
    /// `model` outlives it. It reads until the descriptor ends.
    OtherClient(StandaloneModel &model, int descriptor, QObject *parent = nullptr);

    /// Does what a line says; gives what is wrong with it, empty if nothing is.
    static QString apply(emulator::Camera &camera, const QString &line);

private:
    void read();

    StandaloneModel &m_model;
    QSocketNotifier m_notifier;
    QByteArray m_pending; ///< A line that has not come to its end.
};
