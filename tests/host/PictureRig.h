#pragma once

#include "platform/emulator/control.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/VideoOutput.h"
#include "standalone/StandaloneModel.h"
#include "standalone/desk/FrameMaker.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// A standalone controller with a camera, and a stopped clock.
class PictureRig
{
public:
    using Shown = std::shared_ptr<const ShownFrame>;

    explicit PictureRig(const char *profile = "everything")
    {
        emulator::Clock::manual();
        m_standalone
            = std::make_unique<StandaloneModel>(QString::fromLatin1(profile), m_folder.path(), StandaloneModel::Line{});
    }
    PictureRig(const PictureRig &) = delete;
    PictureRig &operator=(const PictureRig &) = delete;
    ~PictureRig()
    {
        m_standalone.reset();
        emulator::Clock::automatic();
    }

    StandaloneModel &standalone() { return *m_standalone; }
    emulator::Camera &camera() { return m_standalone->camera(); }
    /// A folder for files of the test.
    QString file(const QString &name) const { return m_folder.filePath(name); }

    /// Connects the camera as the page does, and lets its detector become cold.
    bool connect()
    {
        m_standalone->connect(camera().profile().name());
        const bool connected = QTest::qWaitFor([this] { return m_standalone->connected(); });
        coolDetector();
        return connected;
    }
    /// Lets two minutes pass. The frames of a new camera are white before.
    static void coolDetector() { emulator::Clock::advance(120'000); }

    bool set(const char *name, const QVariant &value)
    {
        return camera().otherClient().set(QString::fromLatin1(name), value);
    }

    FrameOrder order(FrameOrder::View view = FrameOrder::Raw)
    {
        return {camera().shared_from_this(), view, std::nullopt};
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<StandaloneModel> m_standalone;
};
