#include "tests/support/CameraRig.h"

#include "platform/hlxcamzvt/makeController.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThreadPool>

CameraRig::CameraRig(const QString &profile, bool connected)
{
    emulator::Clock::manual();
    m_camera = emulator::Camera::create(profile, m_storage.path());
    m_controller = hlx::cam::makeController(m_camera);
    if (connected)
        m_camera->connect();
}

CameraRig::~CameraRig()
{
    m_camera->gate().release("*");
    settle();
    // The camera may outlive the rig. Its thread must not write into the folder while that is removed.
    m_camera->flushMemory();
    // A camera that is armed would record, in its destructor, what it has seen since the clock was stopped.
    m_controller = {};
    m_camera.reset();
    emulator::Clock::automatic();
}

QStringList CameraRig::callsSince(size_t mark) const
{
    QStringList names;
    for (const auto &call : m_camera->gate().callsSince(mark))
        if (call.name != "controller.IsConnected" && call.name != "controller.GetHandle"
            && call.name != "controller.capabilities")
            names << QString::fromStdString(call.name);
    return names;
}

void CameraRig::coolDetector() { emulator::Clock::advance(120'000); }

void CameraRig::settle()
{
    // An event that a task posts may start another task. No model chains more than three tasks.
    constexpr int rounds = 3;
    for (int round = 0; round < rounds; ++round) {
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}
