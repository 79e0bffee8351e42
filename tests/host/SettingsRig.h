#pragma once

#include "tests/host/CardRig.h"
#include "tests/platform/settingOf.h"

#include <QSemaphore>
#include <QTimer>

/// A card with settings of the camera, which is connected. GUI thread only.
class SettingsRig : public CardRig
{
public:
    /// `model` returns the model of the card.
    template <typename Model>
    SettingsRig(const QString &profile, Model *(Desk::*model)()) : CardRig(profile), m_rows(*(desk().*model)())
    {
        camera().connect();
    }

    CameraSettings &settings() const { return *m_rows.findChild<CameraSettings *>(); }
    /// Lets the model read the camera, without polling.
    bool read() const
    {
        settings().read();
        return QSignalSpy(&settings(), &CameraSettings::updated).wait();
    }
    /// Lets the model read the camera, as its timer does.
    void poll() const { QMetaObject::invokeMethod(m_rows.findChild<QTimer *>(), "timeout"); }

    /// The row with this accessible name, -1 if there is none.
    int rowOf(const QString &name) const
    {
        for (int row = 0; row < m_rows.count(); ++row)
            if (shown(row, "name") == name)
                return row;
        return -1;
    }
    /// What a row shows.
    QVariant shown(int row, const QByteArray &role) const
    {
        return m_rows.data(m_rows.index(row), m_rows.roleNames().key(role));
    }
    QVariant shown(const QString &name, const QByteArray &role) const { return shown(rowOf(name), role); }

    /// The present value of a setting or a capability of the camera.
    QVariant inCamera(const QString &name)
    {
        const QString capabilities = QStringLiteral("capabilities.");
        return name.startsWith(capabilities) ? camera().capabilities().value(name.mid(capabilities.size())).toVariant()
                                             : settingOf(camera(), name);
    }

private:
    SettingRows &m_rows;
};

/// Holds the lock of a camera on another thread, from the constructor until release().
class HeldLock
{
public:
    explicit HeldLock(emulator::Camera &camera)
    {
        m_holder.start([this, &camera] {
            const std::lock_guard guard(camera.mutex());
            m_held.release();
            m_released.acquire();
        });
        m_held.acquire();
    }
    HeldLock(const HeldLock &) = delete;
    HeldLock &operator=(const HeldLock &) = delete;
    ~HeldLock() { release(); }

    void release() { m_released.release(); }

private:
    QSemaphore m_held, m_released;
    QThreadPool m_holder; ///< The last member, since its destructor waits for the thread, which uses the others.
};
