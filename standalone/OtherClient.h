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

/// Acts as another client of the camera, to show how a page follows changes by others. Each line from a descriptor
/// changes one setting, as "device.setting value", or one capability, as "capabilities.name value". The value is JSON;
/// any other text is taken as a string. A refused line is printed to the standard error. GUI thread only.
class OtherClient : public QObject
{
    Q_OBJECT

public:
    /// `model` must outlive this object, which reads until the end of `descriptor`.
    OtherClient(StandaloneModel &model, int descriptor, QObject *parent = nullptr);

    /// Applies a line to the camera. Returns the reason if it is refused, else an empty text.
    static QString apply(emulator::Camera &camera, const QString &line);

signals:
    /// A line has changed the camera.
    void changed();

private:
    void read();
    void applyLine(const QString &line);

    StandaloneModel &m_model;
    QSocketNotifier m_notifier;
    QByteArray m_pending; ///< The start of a line whose end has not arrived yet.
};
