#pragma once

#include "platform/emulator/control.h"
#include "platform/emulator/image/Exposure.h"
#include "tests/platform/writeProfile.h"
#include "tests/support/CameraRig.h"
#include "zvt/zvtsdk.h"

#include <QTemporaryDir>

#include <limits>
#include <memory>

/// A connected emulated camera with a stopped clock, and the values of its lens. A value that the camera refuses to
/// return is the largest of its type.
class LensRig
{
public:
    static constexpr uint32_t none = std::numeric_limits<uint32_t>::max();

    /// The profile of a lens whose moves take longer than any test, for tests with a running clock.
    static constexpr auto slow = "slow";

    explicit LensRig(const char *profile = "everything")
    {
        emulator::Clock::manual();
        open(profile);
    }
    LensRig(const LensRig &) = delete;
    LensRig &operator=(const LensRig &) = delete;
    ~LensRig()
    {
        // It would see the clock jump.
        m_camera.reset();
        emulator::Clock::automatic();
    }

    /// Opens another camera, or switches the same one off and on.
    void open(const char *profile)
    {
        m_camera.reset();
        const QString name = QString::fromLatin1(profile);
        m_camera = emulator::Camera::create(name == QLatin1String(slow) ? slowProfile() : name, m_folder.path());
        m_camera->connect();
    }

    emulator::Camera &camera() { return *m_camera; }
    uint64_t handle() const { return m_camera->handle(); }
    bool set(const char *name, const QVariant &value)
    {
        return m_camera->otherClient().set(QString::fromLatin1(name), value);
    }

    uint32_t focus() const { return read(zvtGetFocusCurrentPos); }
    uint32_t zoom() const { return read(zvtGetFOVCurrentPos); }
    uint32_t commandedZoom() const { return read(zvtGetFOVPos); }
    uint32_t nearLimit(uint8_t fov) const { return readField(zvtGetFocusNearPos, fov); }
    uint32_t farLimit(uint8_t fov) const { return readField(zvtGetFocusFarPos, fov); }
    uint8_t field() const { return readByte(zvtGetFOV); }
    uint8_t cover() const { return readByte(zvtGetLensCoverState); }

    /// Lets so much time pass that the lens is at rest.
    static void finishMoves() { emulator::Clock::advance(60'000); }
    /// Lets so much time pass that the detector of a new camera is cold. Its picture is white before.
    static void coolDetector() { CameraRig::coolDetector(); }
    /// How blurred the present picture is, in pixels.
    double defocus() const { return m_camera->exposure({}).optics.defocus; }

private:
    uint32_t read(int (*get)(uint64_t, uint32_t *)) const
    {
        uint32_t value = none;
        get(handle(), &value);
        return value;
    }
    uint32_t readField(int (*get)(uint64_t, uint8_t, uint32_t *), uint8_t field) const
    {
        uint32_t value = none;
        get(handle(), field, &value);
        return value;
    }
    uint8_t readByte(int (*get)(uint64_t, uint8_t *)) const
    {
        uint8_t value = std::numeric_limits<uint8_t>::max();
        get(handle(), &value);
        return value;
    }

    /// The same file each time, so that it is the same camera.
    const QString &slowProfile()
    {
        if (m_slowProfile.isEmpty())
            m_slowProfile = writeProfile(m_folder.path(), "everything",
                                         R"({"zoom": {"countsPerSecond": 100}, "focus": {"countsPerSecond": 100},
                                             "cover": {"moveSeconds": 60}})");
        return m_slowProfile;
    }

    QTemporaryDir m_folder;
    QString m_slowProfile;
    std::shared_ptr<emulator::Camera> m_camera;
};
