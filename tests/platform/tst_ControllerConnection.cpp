#include "platform/emulator/control.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/hlxcamzvt/makeController.h"
#include "tests/support/Test.h"

#include <QTemporaryDir>

#include <atomic>
#include <future>
#include <thread>

using emulator::Camera;
using hlx::CString;
using hlx::cam::CameraCapabilities;
using hlx::cam::CZVTController;
using ValueChanged = hlx::cam::IController::ValueChanged;

namespace
{

/// Records the arguments of its calls.
struct Listener {
    void valueChanged(CString name)
    {
        names.push_back(name);
        thread = std::this_thread::get_id();
    }
    ValueChanged delegate() { return ValueChanged::FromMember<Listener, &Listener::valueChanged>(this); }

    std::vector<CString> names;
    std::thread::id thread;
};

/// A delegate whose call waits until it is released.
struct Latch {
    ValueChanged delegate()
    {
        return ValueChanged::FromLamda([this](const CString &) {
            entered.set_value();
            let.get_future().wait();
            left = true;
        });
    }

    std::promise<void> entered;
    std::promise<void> let;
    std::atomic<bool> left{false};
};

struct Capability {
    const char *name;
    bool (CameraCapabilities::*value)() const;
};

constexpr Capability all[] = {
    {"hasFrontPanelTemperature", &CameraCapabilities::hasFrontPanelTemperature},
    {"hasAirGapTemperature", &CameraCapabilities::hasAirGapTemperature},
    {"hasInternalTemperature", &CameraCapabilities::hasInternalTemperature},
    {"hasChassisTemperature", &CameraCapabilities::hasChassisTemperature},
    {"hasFPAGain", &CameraCapabilities::hasFPAGain},
    {"hasReplaceableFilters", &CameraCapabilities::hasReplaceableFilters},
    {"hasGigEPreset", &CameraCapabilities::hasGigEPreset},
    {"hasVideoOutputSettings", &CameraCapabilities::hasVideoOutputSettings},
    {"hasLensStatesFunctionality", &CameraCapabilities::hasLensStatesFunctionality},
    {"hasContinuousOpticalZoom", &CameraCapabilities::hasContinuousOpticalZoom},
    {"hasDiscontinuousOpticalZoom", &CameraCapabilities::hasDiscontinuousOpticalZoom},
    {"hasFocus", &CameraCapabilities::hasFocus},
    {"hasFocusToDistance", &CameraCapabilities::hasFocusToDistance},
    {"hasFovMovePercent", &CameraCapabilities::hasFovMovePercent},
    {"hasFocusMovePercent", &CameraCapabilities::hasFocusMovePercent},
    {"hasWindowSettings", &CameraCapabilities::hasWindowSettings},
    {"hasWindowDimensionsThatCanBeArbitrary", &CameraCapabilities::hasWindowDimensionsThatCanBeArbitrary},
    {"hasBilinearZoom", &CameraCapabilities::hasBilinearZoom},
    {"hasFilterWheel", &CameraCapabilities::hasFilterWheel},
    {"hasFlag", &CameraCapabilities::hasFlag},
    {"hasFlagCooler", &CameraCapabilities::hasFlagCooler},
    {"hasLensCover", &CameraCapabilities::hasLensCover},
    {"hasBadPixelCorrection", &CameraCapabilities::hasBadPixelCorrection},
    {"hasUpdateRate", &CameraCapabilities::hasUpdateRate},
    {"hasTemporalFilter", &CameraCapabilities::hasTemporalFilter},
    {"hasOverlayCustomization", &CameraCapabilities::hasOverlayCustomization},
    {"hasVideoAgcRoi", &CameraCapabilities::hasVideoAgcRoi},
    {"hasCameraLinkMode", &CameraCapabilities::hasCameraLinkMode},
    {"hasCoaXPressLinksToUse", &CameraCapabilities::hasCoaXPressLinksToUse},
    {"hasSkimming", &CameraCapabilities::hasSkimming},
    {"hasLockin", &CameraCapabilities::hasLockin},
    {"hasAdvancedMiscSettings", &CameraCapabilities::hasAdvancedMiscSettings},
    {"hasSsd", &CameraCapabilities::hasSsd},
    {"hasTeCooler", &CameraCapabilities::hasTeCooler},
};

QJsonObject valuesOf(const CameraCapabilities &capabilities)
{
    QJsonObject values{{QStringLiteral("numFPAGainLevels"), capabilities.numFPAGainLevels()}};
    for (const Capability &capability : all)
        values[QLatin1String(capability.name)] = (capabilities.*capability.value)();
    return values;
}

} // namespace

class tst_ControllerConnection : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void connectingIsToldOnTheThreadOfTheConnection();
    void aDelegateIsInTheListOnce();
    void delegatesMayChangeTheListAndFire();
    void removalWaitsForACallInFlight();
    void destructionWaitsForANotificationInFlight();
    void aDelegateMayLetGoOfTheController();
    void aDestroyedControllerHearsNothing();
    void connectingTakesTheLineToTheCamera();
    void withoutACameraNothingIsConnected();
    void anotherCameraCanBeAttached();
    void aConnectedCameraStays();
    void attachingAConnectedCameraIsTold();
    void noCameraCanBeAttached();
    void newConnectionStreams();
    void capabilitiesAreThoseOfTheCamera_data();
    void capabilitiesAreThoseOfTheCamera();
    void aChangedMakeUpIsSeenWhenConfigured();
    void capabilitiesStayWithoutACamera();
    void configuringMakesNoCalls();

private:
    std::shared_ptr<Camera> camera(const QString &profile) { return Camera::create(profile, m_folder->path()); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<Camera> m_camera;
    hlx::TSharedPtr<CZVTController> m_controller;
};

void tst_ControllerConnection::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_camera = camera(QStringLiteral("everything"));
    m_controller = hlx::cam::makeController(m_camera);
}

void tst_ControllerConnection::cleanup()
{
    m_controller.reset();
    m_camera.reset();
    m_folder.reset();
}

void tst_ControllerConnection::connectingIsToldOnTheThreadOfTheConnection()
{
    Listener listener;
    m_controller->AddValueChanged(listener.delegate());
    std::thread::id other;
    std::thread([&] {
        other = std::this_thread::get_id();
        m_camera->connect();
    }).join();
    QCOMPARE(listener.names, std::vector<CString>{"Connected"});
    QCOMPARE(listener.thread, other);
    QVERIFY(m_controller->IsConnected());
    QVERIFY(m_controller->capabilities.hasSsd());
    m_camera->disconnect();
    QCOMPARE(listener.names.size(), size_t(2));
    QCOMPARE(listener.thread, std::this_thread::get_id());
    QVERIFY(!m_controller->IsConnected());
}

void tst_ControllerConnection::aDelegateIsInTheListOnce()
{
    Listener listener;
    m_controller->AddValueChanged(listener.delegate());
    m_controller->AddValueChanged(listener.delegate());
    QCOMPARE(m_controller->ValueChangedDelegates().size(), size_t(1));
    m_controller->FireValueChanged("Gain");
    QCOMPARE(listener.names, std::vector<CString>{"Gain"});
    m_controller->RemoveValueChanged(ValueChanged::FromLamda([](const CString &) {}));
    QCOMPARE(m_controller->ValueChangedDelegates().size(), size_t(1));
    m_controller->RemoveValueChanged(listener.delegate());
    m_controller->RemoveValueChanged(listener.delegate());
    QVERIFY(m_controller->ValueChangedDelegates().empty());
    m_controller->FireValueChanged("Gain");
    QCOMPARE(listener.names.size(), size_t(1));
}

void tst_ControllerConnection::delegatesMayChangeTheListAndFire()
{
    Listener removed;
    Listener added;
    ValueChanged meddler;
    meddler = ValueChanged::FromLamda([&](const CString &name) {
        if (name.compare("Inner") == 0)
            return;
        m_controller->RemoveValueChanged(removed.delegate());
        m_controller->AddValueChanged(added.delegate());
        m_controller->FireValueChanged("Inner");
        m_controller->RemoveValueChanged(meddler);
    });
    m_controller->AddValueChanged(meddler);
    m_controller->AddValueChanged(removed.delegate());
    m_controller->FireValueChanged("Outer");
    QVERIFY(removed.names.empty());
    QCOMPARE(added.names, std::vector<CString>{"Inner"});
    QCOMPARE(m_controller->ValueChangedDelegates().size(), size_t(1));
}

void tst_ControllerConnection::removalWaitsForACallInFlight()
{
    Latch latch;
    const ValueChanged delegate = latch.delegate();
    m_controller->AddValueChanged(delegate);
    std::thread firing([&] { m_controller->FireValueChanged("Gain"); });
    latch.entered.get_future().wait();
    std::promise<void> started;
    bool leftAtRemoval = false;
    std::thread removing([&] {
        started.set_value();
        m_controller->RemoveValueChanged(delegate);
        leftAtRemoval = latch.left;
    });
    started.get_future().wait();
    latch.let.set_value();
    removing.join();
    firing.join();
    QVERIFY(leftAtRemoval);
}

void tst_ControllerConnection::destructionWaitsForANotificationInFlight()
{
    Latch latch;
    m_controller->AddValueChanged(latch.delegate());
    std::thread connecting([&] { m_camera->connect(); });
    latch.entered.get_future().wait();
    std::promise<void> started;
    bool leftAtDestruction = false;
    std::thread destroying([&] {
        started.set_value();
        m_controller.reset();
        leftAtDestruction = latch.left;
    });
    started.get_future().wait();
    latch.let.set_value();
    destroying.join();
    connecting.join();
    QVERIFY(leftAtDestruction);
}

void tst_ControllerConnection::aDelegateMayLetGoOfTheController()
{
    int calls = 0;
    m_controller->AddValueChanged(ValueChanged::FromLamda([&](const CString &) {
        ++calls;
        m_controller.reset();
    }));
    m_controller->AddValueChanged(ValueChanged::FromLamda([&](const CString &) { ++calls; }));
    m_camera->connect();
    QVERIFY(!m_controller);
    QCOMPARE(calls, 2);
    m_camera->disconnect();
    QCOMPARE(calls, 2);
}

void tst_ControllerConnection::aDestroyedControllerHearsNothing()
{
    Listener listener;
    m_controller->AddValueChanged(listener.delegate());
    m_controller.reset();
    m_camera->connect();
    QVERIFY(listener.names.empty());
}

void tst_ControllerConnection::connectingTakesTheLineToTheCamera()
{
    auto &gate = m_camera->gate();
    gate.failRandomly(1, 1);
    QCOMPARE(hlx::cam::connect(*m_controller), int(emulator::Injected));
    QVERIFY(!m_camera->connected());
    gate.failNever();
    gate.script("controller.Connect", false);
    QCOMPARE(hlx::cam::connect(*m_controller), int(emulator::Refused));
    QVERIFY(!m_camera->connected());
    gate.script("controller.Connect", {});
    Listener listener;
    m_controller->AddValueChanged(listener.delegate());
    QCOMPARE(hlx::cam::connect(*m_controller), int(emulator::Ok));
    QVERIFY(m_camera->connected());
    QCOMPARE(listener.names, std::vector<CString>{"Connected"});
}

void tst_ControllerConnection::withoutACameraNothingIsConnected()
{
    QCOMPARE(hlx::cam::connect(*hlx::cam::makeController(nullptr)), int(emulator::InvalidHandle));
}

void tst_ControllerConnection::anotherCameraCanBeAttached()
{
    Listener listener;
    m_controller->AddValueChanged(listener.delegate());
    const auto other = camera(QStringLiteral("te-cooler"));
    QVERIFY(hlx::cam::attach(*m_controller, other));
    QCOMPARE(m_controller->GetHandle(), other->handle());
    m_camera->connect();
    QVERIFY(listener.names.empty());
    QVERIFY(!m_controller->IsConnected());
    other->connect();
    QCOMPARE(listener.names.size(), size_t(1));
    QVERIFY(m_controller->IsConnected());
    QCOMPARE(valuesOf(m_controller->capabilities), other->capabilities());
}

void tst_ControllerConnection::aConnectedCameraStays()
{
    m_camera->connect();
    const auto device = m_controller->device();
    QVERIFY(!hlx::cam::attach(*m_controller, camera(QStringLiteral("bare"))));
    QVERIFY(!hlx::cam::attach(*m_controller, nullptr));
    QCOMPARE(m_controller->GetHandle(), m_camera->handle());
    QVERIFY(m_controller->device() == device);
    m_camera->disconnect();
    QVERIFY(hlx::cam::attach(*m_controller, nullptr));
}

void tst_ControllerConnection::attachingAConnectedCameraIsTold()
{
    Listener listener;
    m_controller->AddValueChanged(listener.delegate());
    const auto other = camera(QStringLiteral("bare"));
    other->connect();
    QVERIFY(hlx::cam::attach(*m_controller, other));
    QCOMPARE(listener.names, std::vector<CString>{"Connected"});
    QVERIFY(m_controller->IsConnected());
}

void tst_ControllerConnection::noCameraCanBeAttached()
{
    QVERIFY(hlx::cam::attach(*m_controller, nullptr));
    QCOMPARE(m_controller->GetHandle(), uint64_t(0));
    QVERIFY(!m_controller->device());
    QVERIFY(!m_controller->IsConnected());
    QVERIFY(!m_controller->GetVideoSource());
    QVERIFY(hlx::cam::attach(*m_controller, m_camera));
    QCOMPARE(m_controller->GetHandle(), m_camera->handle());
}

void tst_ControllerConnection::newConnectionStreams()
{
    const auto &sensor = *m_camera->device<emulator::Sensor>();
    m_camera->connect();
    const auto source = m_controller->GetVideoSource();
    source->StopStream();
    QVERIFY(!sensor.streaming());
    m_camera->disconnect();
    source->StartStream(); // Has no effect without a connection.
    QVERIFY(!sensor.streaming());
    m_camera->connect();
    QVERIFY(sensor.streaming());
}

void tst_ControllerConnection::capabilitiesAreThoseOfTheCamera_data()
{
    QTest::addColumn<QString>("profile");
    for (const QString &name : emulator::Profile::names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_ControllerConnection::capabilitiesAreThoseOfTheCamera()
{
    QFETCH(QString, profile);
    const auto subject = camera(profile);
    const auto controller = hlx::cam::makeController(subject);
    QCOMPARE(valuesOf(controller->capabilities), valuesOf(CameraCapabilities()));
    subject->connect();
    QCOMPARE(valuesOf(controller->capabilities), subject->capabilities());
    QCOMPARE(valuesOf(controller->capabilities).size(), 35);
}

void tst_ControllerConnection::aChangedMakeUpIsSeenWhenConfigured()
{
    m_camera->connect();
    QVERIFY(m_camera->changeMakeUp(QStringLiteral("hasSsd"), false));
    QVERIFY(m_camera->changeMakeUp(QStringLiteral("numFPAGainLevels"), 7));
    QVERIFY(m_controller->capabilities.hasSsd());
    std::thread([&] { m_controller->capabilities.configure(m_controller.get()); }).join();
    QVERIFY(!m_controller->capabilities.hasSsd());
    QCOMPARE(m_controller->capabilities.numFPAGainLevels(), 7);
}

void tst_ControllerConnection::capabilitiesStayWithoutACamera()
{
    m_camera->connect();
    const QJsonObject before = valuesOf(m_controller->capabilities);
    m_controller->capabilities.configure(nullptr);
    QCOMPARE(valuesOf(m_controller->capabilities), before);
    m_camera->disconnect();
    QVERIFY(m_camera->changeMakeUp(QStringLiteral("hasSsd"), false));
    m_controller->capabilities.configure(m_controller.get());
    QCOMPARE(valuesOf(m_controller->capabilities), before);
    QVERIFY(hlx::cam::attach(*m_controller, nullptr));
    m_controller->capabilities.configure(m_controller.get());
    QCOMPARE(valuesOf(m_controller->capabilities), before);
}

void tst_ControllerConnection::configuringMakesNoCalls()
{
    m_camera->connect();
    m_controller->capabilities.configure(m_controller.get());
    QVERIFY(m_camera->gate().calls().empty());
}

ZVT_TEST(tst_ControllerConnection)
#include "tst_ControllerConnection.moc"
