#include "tests/support/Test.h"
#include "tests/unit/HeaderModesRig.h"

#include "platform/emulator/devices/Interfaces.h"

#include <array>
#include <memory>

#include "zvt/zvtsdk.h"

namespace
{

/// The header modes of a camera, in the order of HeaderModes::properties.
QList<int> modesOf(CameraRig &rig)
{
    const auto &interfaces = *rig.camera().device<emulator::Interfaces>();
    std::array<uint8_t, 3> numbers{};
    interfaces.gigEHeaderMode(numbers[0]);
    interfaces.cameraLinkHeaderMode(numbers[1]);
    interfaces.coaXPressHeaderMode(numbers[2]);
    return {numbers[0], numbers[1], numbers[2]};
}

} // namespace

/// The setters of the header modes, which stop and start the stream of the camera. tst_AdvancedMiscSettingsModelStream
/// tests failures while the stream is stopped.
class tst_AdvancedMiscSettingsModelHeaderModes : public Test
{
    Q_OBJECT

private slots:
    void streamIsStoppedForTheWrite_data() { HeaderModes::addRows(); }
    void streamIsStoppedForTheWrite();
    void refusedModeRestartsTheStream_data() { HeaderModes::addRows(); }
    void refusedModeRestartsTheStream();
    void otherTransportKeepsTheStream_data();
    void otherTransportKeepsTheStream();
    void refusedModeWithoutAStopIsNotSignalled_data() { HeaderModes::addRows(); }
    void refusedModeWithoutAStopIsNotSignalled();
    void failedReadOfTheTransportWritesNothing_data();
    void failedReadOfTheTransportWritesNothing();
    void modeThatIsNoChangeDoesNothing_data() { HeaderModes::addRows(); }
    void modeThatIsNoChangeDoesNothing();
    void modeIsCutToAByte();
    void cameraWithoutAControllerRefusesEveryMode();

    void signalAndListenersComeBeforeTheStart();
    void listenersMayChangeTheList();
    void listenerMayChangeAnotherMode();

    void streamingCameraTakesEachMode();
    void cameraThatDoesNotTellItsTransportIsNotChanged();
    void cameraWithAnotherTransportKeepsStreaming();

    void modelMayBeDeletedMeanwhile_data();
    void modelMayBeDeletedMeanwhile();
    void rootMayBeDeletedMeanwhile();
    void cameraMayDisconnectMeanwhile_data();
    void cameraMayDisconnectMeanwhile();
};

void tst_AdvancedMiscSettingsModelHeaderModes::streamIsStoppedForTheWrite()
{
    QFETCH(const QString, setter);
    const char *property = QTest::currentDataTag();
    HeaderModes modes;
    QCOMPARE(modes.write(property, 1),
             QStringList({HeaderModes::getSource, HeaderModes::getAvailable, HeaderModes::getType,
                          HeaderModes::stopStream, setter + " 1", HeaderModes::startStream}));
    QCOMPARE(modes.value(property), 1);
    QCOMPARE(modes.log.take(), QStringList(changedSignal(property)));
    QVERIFY(modes.streaming());
}

void tst_AdvancedMiscSettingsModelHeaderModes::refusedModeRestartsTheStream()
{
    QFETCH(const QString, setter);
    const char *property = QTest::currentDataTag();
    HeaderModes modes;
    modes.listen("listener");
    modes.gate().failNext(setter.toStdString());
    QCOMPARE(modes.write(property, 1),
             QStringList({HeaderModes::getSource, HeaderModes::getAvailable, HeaderModes::getType,
                          HeaderModes::stopStream, setter + " 1", HeaderModes::startStream}));
    QCOMPARE(modes.value(property), 0);
    // Without a signal the box keeps the operator's choice.
    QCOMPARE(modes.log.take(), QStringList());
    QCOMPARE(modes.events, QStringList({HeaderModes::stopStream, setter, HeaderModes::startStream}));
    QVERIFY(modes.streaming());
}

void tst_AdvancedMiscSettingsModelHeaderModes::otherTransportKeepsTheStream_data()
{
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("setter");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QVariant>("answer");
    QTest::addColumn<int>("calls");
    for (int mode = 0; mode < HeaderModes::setters.size(); ++mode) {
        const QString property = HeaderModes::properties.at(mode);
        const QString setter = HeaderModes::setters.at(mode);
        QTest::addRow("no stream, %s", qPrintable(property))
            << property << setter << HeaderModes::getSource << QVariant() << 1;
        QTest::addRow("no transport, %s", qPrintable(property))
            << property << setter << HeaderModes::getAvailable << QVariant(0) << 2;
        QTest::addRow("transport 1, %s", qPrintable(property))
            << property << setter << HeaderModes::getType << QVariant(1) << 3;
        QTest::addRow("transport 2, %s", qPrintable(property))
            << property << setter << HeaderModes::getType << QVariant(2) << 3;
        QTest::addRow("transport 255, %s", qPrintable(property))
            << property << setter << HeaderModes::getType << QVariant(255) << 3;
    }
}

void tst_AdvancedMiscSettingsModelHeaderModes::otherTransportKeepsTheStream()
{
    QFETCH(const QString, property);
    QFETCH(const QString, setter);
    QFETCH(const QString, call);
    QFETCH(const QVariant, answer);
    QFETCH(const int, calls);
    HeaderModes modes;
    modes.listen("listener");
    if (answer.isValid())
        modes.gate().script(call.toStdString(), answer);
    else
        modes.gate().failAlways(call.toStdString());
    QCOMPARE(modes.write(property.toLatin1(), 1),
             QStringList({HeaderModes::getSource, HeaderModes::getAvailable, HeaderModes::getType}).first(calls)
                 + QStringList(setter + " 1"));
    QCOMPARE(modes.value(property.toLatin1()), 1);
    QCOMPARE(modes.log.take(), QStringList(changedSignal(property)));
    QCOMPARE(modes.events, QStringList(setter));
}

void tst_AdvancedMiscSettingsModelHeaderModes::refusedModeWithoutAStopIsNotSignalled()
{
    QFETCH(const QString, setter);
    const char *property = QTest::currentDataTag();
    HeaderModes modes;
    modes.gate().script(HeaderModes::getType.toStdString(), 1);
    modes.gate().failNext(setter.toStdString());
    QCOMPARE(modes.write(property, 1),
             QStringList({HeaderModes::getSource, HeaderModes::getAvailable, HeaderModes::getType, setter + " 1"}));
    QCOMPARE(modes.value(property), 0);
    QCOMPARE(modes.log.take(), QStringList());
}

void tst_AdvancedMiscSettingsModelHeaderModes::failedReadOfTheTransportWritesNothing_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("availability") << HeaderModes::getAvailable
                                  << QStringList{HeaderModes::getSource, HeaderModes::getAvailable};
    QTest::newRow("type") << HeaderModes::getType
                          << QStringList{HeaderModes::getSource, HeaderModes::getAvailable, HeaderModes::getType};
}

void tst_AdvancedMiscSettingsModelHeaderModes::failedReadOfTheTransportWritesNothing()
{
    QFETCH(const QString, failing);
    QFETCH(const QStringList, calls);
    HeaderModes modes;
    modes.gate().failAlways(failing.toStdString());
    for (const QString &property : HeaderModes::properties) {
        QCOMPARE(modes.write(property.toLatin1(), 1), calls);
        QCOMPARE(modes.value(property.toLatin1()), 0);
    }
    QCOMPARE(modes.log.take(), QStringList());
    QVERIFY(modes.streaming());
}

void tst_AdvancedMiscSettingsModelHeaderModes::modeThatIsNoChangeDoesNothing()
{
    const char *property = QTest::currentDataTag();
    HeaderModes modes;
    // -1 is the value of a box in which nothing is selected.
    for (const int mode : {-1, 0})
        QCOMPARE(modes.write(property, mode), QStringList());
    modes.write(property, 1);
    modes.log.take();
    for (const int mode : {-1, 1})
        QCOMPARE(modes.write(property, mode), QStringList());
    QCOMPARE(modes.value(property), 1);
    QCOMPARE(modes.log.take(), QStringList());
}

void tst_AdvancedMiscSettingsModelHeaderModes::modeIsCutToAByte()
{
    for (const int transport : {0, 1}) {
        HeaderModes modes;
        modes.gate().script(HeaderModes::getType.toStdString(), transport);
        QVERIFY(modes.write("gigeHeaderModeIndex", 258).contains("zvtSetGigEHeaderMode 2"));
        QCOMPARE(modes.model.gigeHeaderModeIndex(), 258);
        QVERIFY(modes.write("gigeHeaderModeIndex", -2).contains("zvtSetGigEHeaderMode 254"));
    }
}

void tst_AdvancedMiscSettingsModelHeaderModes::cameraWithoutAControllerRefusesEveryMode()
{
    ZvtCameraModel root({}, nullptr);
    AdvancedMiscSettingsModel &model = *root.advancedMiscSettingsModel();
    CameraRig::settle();
    SignalLog log(&model);
    model.setGigeHeaderModeIndex(1);
    model.setClHeaderModeIndex(1);
    model.setCxpHeaderModeIndex(1);
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(model.gigeHeaderModeIndex(), 0);
}

// Order and listeners

void tst_AdvancedMiscSettingsModelHeaderModes::signalAndListenersComeBeforeTheStart()
{
    HeaderModes modes;
    modes.listen("first");
    modes.listen([&] {
        modes.events << (modes.streaming() ? "running" : "stopped");
        QCOMPARE(modes.model.gigeHeaderModeIndex(), 2);
    });
    QObject::connect(&modes.model, &AdvancedMiscSettingsModel::gigeHeaderModeIndexChanged, this, [&] {
        modes.events << "signal";
        QCOMPARE(modes.model.gigeHeaderModeIndex(), 2);
    });
    modes.model.setGigeHeaderModeIndex(2);
    QCOMPARE(modes.events,
             QStringList({HeaderModes::stopStream, "zvtSetGigEHeaderMode", "signal", "first", "stopped",
                          HeaderModes::startStream}));
}

void tst_AdvancedMiscSettingsModelHeaderModes::listenersMayChangeTheList()
{
    HeaderModes modes;
    auto &listeners = modes.rig.controller()->listeners;
    modes.listen([&] {
        listeners.remove(1); // The next one, which is then not called.
        modes.listen("added");
    });
    modes.listen("removed");
    modes.listen("last");
    modes.model.setGigeHeaderModeIndex(1);
    // An added one is called from the next change on.
    QCOMPARE(modes.events,
             QStringList({HeaderModes::stopStream, "zvtSetGigEHeaderMode", "last", HeaderModes::startStream}));
    modes.events.clear();
    listeners.remove(0);
    modes.model.setGigeHeaderModeIndex(2);
    QCOMPARE(modes.events,
             QStringList({HeaderModes::stopStream, "zvtSetGigEHeaderMode", "last", "added", HeaderModes::startStream}));
}

void tst_AdvancedMiscSettingsModelHeaderModes::listenerMayChangeAnotherMode()
{
    HeaderModes modes;
    modes.listen([&] { modes.model.setClHeaderModeIndex(1); });
    modes.model.setGigeHeaderModeIndex(1);
    QCOMPARE(modes.model.gigeHeaderModeIndex(), 1);
    QCOMPARE(modes.model.clHeaderModeIndex(), 1);
    QCOMPARE(modes.events,
             QStringList({HeaderModes::stopStream, "zvtSetGigEHeaderMode", HeaderModes::stopStream,
                          "zvtSetCameraLinkHeaderMode", HeaderModes::startStream, HeaderModes::startStream}));
    QVERIFY(modes.streaming());
}

// A camera whose answers are not scripted

void tst_AdvancedMiscSettingsModelHeaderModes::streamingCameraTakesEachMode()
{
    HeaderModes modes(false);
    QVERIFY(zvtSetGigEHeaderMode(modes.rig.controller()->GetHandle(), 1) != 0);
    for (const QString &property : HeaderModes::properties) {
        modes.model.setProperty(property.toLatin1(), 1);
        QVERIFY(modes.streaming());
    }
    QCOMPARE(modesOf(modes.rig), QList<int>({1, 1, 1}));
    // A mode that the camera does not know.
    modes.model.setGigeHeaderModeIndex(3);
    QCOMPARE(modes.model.gigeHeaderModeIndex(), 1);
    QVERIFY(modes.streaming());
    modes.read();
    for (const QString &property : HeaderModes::properties)
        QCOMPARE(modes.value(property.toLatin1()), 1);
}

void tst_AdvancedMiscSettingsModelHeaderModes::cameraThatDoesNotTellItsTransportIsNotChanged()
{
    HeaderModes modes(false);
    const QList<int> before = modesOf(modes.rig);
    for (const int failure : {1, 2}) {
        QVERIFY(modes.set("interfaces.typeFails", failure));
        for (const QString &property : HeaderModes::properties)
            modes.model.setProperty(property.toLatin1(), 1);
    }
    QCOMPARE(modesOf(modes.rig), before);
    QCOMPARE(modes.events, QStringList());
}

void tst_AdvancedMiscSettingsModelHeaderModes::cameraWithAnotherTransportKeepsStreaming()
{
    HeaderModes modes(false);
    QVERIFY(modes.set("identity.pleora", 0));
    for (const QString &property : HeaderModes::properties)
        modes.model.setProperty(property.toLatin1(), 1);
    QCOMPARE(modesOf(modes.rig), QList<int>({1, 1, 1}));
    QVERIFY(!modes.events.contains(HeaderModes::stopStream) && !modes.events.contains(HeaderModes::startStream));
}

// Deletion and disconnection

void tst_AdvancedMiscSettingsModelHeaderModes::modelMayBeDeletedMeanwhile_data()
{
    QTest::addColumn<bool>("inSlot");
    QTest::newRow("by a slot of the signal") << true;
    QTest::newRow("by a listener") << false;
}

void tst_AdvancedMiscSettingsModelHeaderModes::modelMayBeDeletedMeanwhile()
{
    QFETCH(const bool, inSlot);
    HeaderModes modes;
    auto *model = new AdvancedMiscSettingsModel(&modes.root);
    const auto remove = [&modes, model] {
        modes.events << "deleted";
        delete model;
    };
    if (inSlot)
        QObject::connect(model, &AdvancedMiscSettingsModel::gigeHeaderModeIndexChanged, this, remove);
    else
        modes.listen(remove);
    modes.listen("listener");
    model->setGigeHeaderModeIndex(1);
    QCOMPARE(modes.events,
             QStringList(
                 {HeaderModes::stopStream, "zvtSetGigEHeaderMode", "deleted", "listener", HeaderModes::startStream}));
    QVERIFY(modes.streaming());
}

void tst_AdvancedMiscSettingsModelHeaderModes::rootMayBeDeletedMeanwhile()
{
    CameraRig rig;
    scriptMisc(rig.gate());
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    CameraRig::settle();
    rig.controller()->listeners.add(HeaderModes::Listener::FromLamda([&] { root.reset(); }));
    root->advancedMiscSettingsModel()->setGigeHeaderModeIndex(1);
    QVERIFY(!root);
    QVERIFY(rig.camera().device<emulator::Sensor>()->streaming());
}

void tst_AdvancedMiscSettingsModelHeaderModes::cameraMayDisconnectMeanwhile_data()
{
    modelMayBeDeletedMeanwhile_data();
}

void tst_AdvancedMiscSettingsModelHeaderModes::cameraMayDisconnectMeanwhile()
{
    QFETCH(const bool, inSlot);
    HeaderModes modes;
    const auto disconnect = [&] { modes.rig.camera().disconnect(); };
    if (inSlot)
        QObject::connect(&modes.model, &AdvancedMiscSettingsModel::gigeHeaderModeIndexChanged, this, disconnect);
    else
        modes.listen(disconnect);
    modes.model.setGigeHeaderModeIndex(1);
    QCOMPARE(modes.events, QStringList({HeaderModes::stopStream, "zvtSetGigEHeaderMode", HeaderModes::startStream}));
    CameraRig::settle();
    // A new connection streams.
    modes.rig.camera().connect();
    QVERIFY(modes.streaming());
}

ZVT_TEST(tst_AdvancedMiscSettingsModelHeaderModes)
#include "tst_AdvancedMiscSettingsModelHeaderModes.moc"
