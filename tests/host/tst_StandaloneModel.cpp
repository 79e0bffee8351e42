#include "platform/emulator/control.h"
#include "standalone/CameraEntry.h"
#include "standalone/StandaloneModel.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

class tst_StandaloneModel : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void offersEveryProfileWithTheChosenOneFirst();
    void unknownProfileIsRefused();
    void connects();
    void stateIsCompleteWhenASignalTellsOfIt();
    void connectingTakesAsLongAsTheCamera();
    void connectIsPassedOverUnlessDisconnected();
    void disconnectIsPassedOverUnlessConnected();
    void unknownCameraFails();
    void silentCameraFails();
    void brokenStorageFailsUntilItIsRepaired();
    void anotherCameraComesToTheSameController();
    void aCameraChosenAgainIsTheSame();
    void aPulledCableIsNoticed();
    void aRefusedConnectionIsTold();
    void theReasonOfAFailureGoesWithTheNextAttempt();
    void aCameraConnectedMeanwhileStays();
    void mayDieWhileConnecting();
    void selectsAmongItsControllersOnly();

private:
    std::shared_ptr<emulator::Camera> camera() const;
    bool connectAndWait(const QString &key);
    bool disconnectAndWait();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<StandaloneModel> m_model;
};

void tst_StandaloneModel::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_model = std::make_unique<StandaloneModel>(QStringLiteral("low-cost"), m_folder->path(), StandaloneModel::Line{});
}

void tst_StandaloneModel::cleanup()
{
    m_model.reset();
    m_folder.reset();
}

/// The camera that the controller points at.
std::shared_ptr<emulator::Camera> tst_StandaloneModel::camera() const
{
    return emulator::Camera::find(m_model->controller()->GetHandle());
}

bool tst_StandaloneModel::connectAndWait(const QString &key)
{
    m_model->connect(key);
    return QTest::qWaitFor([this] { return !m_model->connecting(); }) && m_model->connected();
}

bool tst_StandaloneModel::disconnectAndWait()
{
    m_model->disconnect();
    return QTest::qWaitFor([this] { return !m_model->disconnecting(); }) && !m_model->connected();
}

void tst_StandaloneModel::offersEveryProfileWithTheChosenOneFirst()
{
    const ObjectListModel &cameras = *m_model->cameraFinder()->cameras();
    QStringList profiles;
    for (int row = 0; row < cameras.size(); ++row) {
        const auto *entry = qobject_cast<CameraEntry *>(cameras.at(row));
        QVERIFY(entry);
        QVERIFY(!entry->name().isEmpty());
        QCOMPARE(entry->folder(), m_folder->filePath(QStringLiteral("cameras/") + entry->profile()));
        QVERIFY(!profiles.contains(entry->key()));
        profiles.append(entry->profile());
    }
    QCOMPARE(profiles.constFirst(), QStringLiteral("low-cost"));
    profiles.sort();
    QCOMPARE(profiles, emulator::Profile::names());
    QCOMPARE(m_model->cameraName(), emulator::Profile::load(QStringLiteral("low-cost")).title());
    QVERIFY(m_model->configDir().startsWith(m_folder->path()));
}

void tst_StandaloneModel::unknownProfileIsRefused()
{
    QVERIFY_EXCEPTION_THROWN(StandaloneModel(QStringLiteral("bogus"), m_folder->path(), {}), emulator::SetupError);
}

void tst_StandaloneModel::connects()
{
    QSignalSpy connecting(m_model.get(), &StandaloneModel::connectingChanged);
    QSignalSpy connected(m_model.get(), &StandaloneModel::connectedChanged);
    m_model->connect(QStringLiteral("low-cost"));
    QVERIFY(m_model->connecting());
    QVERIFY(!m_model->connected());
    QCOMPARE(connecting.size(), 1);
    QTRY_VERIFY(!m_model->connecting());
    QVERIFY(m_model->connected());
    QVERIFY(camera()->connected());
    QCOMPARE(connecting.size(), 2);
    QCOMPARE(connected.size(), 1);

    QSignalSpy disconnecting(m_model.get(), &StandaloneModel::disconnectingChanged);
    m_model->disconnect();
    QVERIFY(m_model->disconnecting());
    QVERIFY(m_model->connected());
    QTRY_VERIFY(!m_model->disconnecting());
    QVERIFY(!m_model->connected());
    QCOMPARE(disconnecting.size(), 2);
    QCOMPARE(connected.size(), 2);
    QCOMPARE(connecting.size(), 2);
}

void tst_StandaloneModel::stateIsCompleteWhenASignalTellsOfIt()
{
    QStringList seen;
    const auto note = [this, &seen] {
        seen.append(QStringLiteral("%1%2%3")
                        .arg(m_model->connecting())
                        .arg(m_model->disconnecting())
                        .arg(m_model->connected()));
    };
    QObject::connect(m_model.get(), &StandaloneModel::connectingChanged, this, note);
    QObject::connect(m_model.get(), &StandaloneModel::disconnectingChanged, this, note);
    QObject::connect(m_model.get(), &StandaloneModel::connectedChanged, this, note);
    QVERIFY(connectAndWait(QStringLiteral("low-cost")));
    QVERIFY(disconnectAndWait());
    QCOMPARE(seen, QStringList({"100", "001", "001", "011", "000", "000"}));
}

void tst_StandaloneModel::connectingTakesAsLongAsTheCamera()
{
    const auto device = camera();
    device->gate().hold("controller.Connect");
    m_model->connect(QStringLiteral("low-cost"));
    QVERIFY(device->gate().waitHeld("controller.Connect"));
    QCoreApplication::processEvents();
    QVERIFY(m_model->connecting());
    QVERIFY(!m_model->connected());
    device->gate().release("*");
    QTRY_VERIFY(m_model->connected());
    QVERIFY(!m_model->connecting());
}

void tst_StandaloneModel::connectIsPassedOverUnlessDisconnected()
{
    const auto device = camera();
    device->gate().hold("controller.Connect");
    m_model->connect(QStringLiteral("low-cost"));
    m_model->connect(QStringLiteral("bare"));
    m_model->disconnect();
    QVERIFY(!m_model->disconnecting());
    QVERIFY(device->gate().waitHeld("controller.Connect"));
    device->gate().release("*");
    QTRY_VERIFY(m_model->connected());
    m_model->connect(QStringLiteral("bare"));
    QVERIFY(!m_model->connecting());
    QCOMPARE(camera(), device);
}

void tst_StandaloneModel::disconnectIsPassedOverUnlessConnected()
{
    QSignalSpy disconnecting(m_model.get(), &StandaloneModel::disconnectingChanged);
    m_model->disconnect();
    QVERIFY(!m_model->disconnecting());
    QCOMPARE(disconnecting.size(), 0);
}

void tst_StandaloneModel::unknownCameraFails()
{
    QSignalSpy failed(m_model.get(), &StandaloneModel::connectFailed);
    QVERIFY(!connectAndWait(QStringLiteral("bogus")));
    QCOMPARE(failed.size(), 1);
    QVERIFY(failed.at(0).at(0).toString().contains(QStringLiteral("bogus")));
    QVERIFY(connectAndWait(QStringLiteral("low-cost")));
}

void tst_StandaloneModel::silentCameraFails()
{
    QSignalSpy failed(m_model.get(), &StandaloneModel::connectFailed);
    QSignalSpy connecting(m_model.get(), &StandaloneModel::connectingChanged);
    QSignalSpy connected(m_model.get(), &StandaloneModel::connectedChanged);
    const auto device = camera();
    device->gate().failNext("controller.Connect");
    QVERIFY(!connectAndWait(QStringLiteral("low-cost")));
    QVERIFY(!device->connected());
    QCOMPARE(failed.size(), 1);
    QCOMPARE(failed.at(0).at(0).toString(), QStringLiteral("the camera does not answer"));
    QCOMPARE(m_model->connectError(), QStringLiteral("The camera does not answer."));
    QCOMPARE(connecting.size(), 2);
    QCOMPARE(connected.size(), 0);
}

void tst_StandaloneModel::brokenStorageFailsUntilItIsRepaired()
{
    const QString place = m_folder->filePath(QStringLiteral("cameras/bare"));
    QFile file(place);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QSignalSpy failed(m_model.get(), &StandaloneModel::connectFailed);
    QVERIFY(!connectAndWait(QStringLiteral("bare")));
    QCOMPARE(failed.size(), 1);
    QVERIFY(failed.at(0).at(0).toString().contains(place));
    QVERIFY(file.remove());
    QVERIFY(connectAndWait(QStringLiteral("bare")));
}

void tst_StandaloneModel::anotherCameraComesToTheSameController()
{
    const auto controller = m_model->controller();
    QVERIFY(connectAndWait(QStringLiteral("low-cost")));
    const auto first = controller->GetHandle();
    QVERIFY(disconnectAndWait());
    QSignalSpy name(m_model.get(), &StandaloneModel::cameraNameChanged);
    QVERIFY(connectAndWait(QStringLiteral("bare")));
    QVERIFY(controller->IsConnected());
    QVERIFY(controller->GetHandle() != first);
    QCOMPARE(camera()->profile().name(), QStringLiteral("bare"));
    QCOMPARE(name.size(), 1);
    QCOMPARE(m_model->cameraName(), camera()->profile().title());
}

void tst_StandaloneModel::aCameraChosenAgainIsTheSame()
{
    QVERIFY(connectAndWait(QStringLiteral("low-cost")));
    const auto first = camera();
    QVERIFY(disconnectAndWait());
    QVERIFY(connectAndWait(QStringLiteral("bare")));
    QVERIFY(!first->connected());
    QVERIFY(disconnectAndWait());
    QVERIFY(connectAndWait(QStringLiteral("low-cost")));
    QCOMPARE(camera(), first);
}

void tst_StandaloneModel::aPulledCableIsNoticed()
{
    QVERIFY(connectAndWait(QStringLiteral("low-cost")));
    QSignalSpy connected(m_model.get(), &StandaloneModel::connectedChanged);
    const auto device = camera();
    device->disconnect();
    QTRY_VERIFY(!m_model->connected());
    QVERIFY(!m_model->disconnecting());
    device->connect();
    QTRY_VERIFY(m_model->connected());
    QCOMPARE(connected.size(), 2);
    QVERIFY(disconnectAndWait());
    QVERIFY(!device->connected());
}

void tst_StandaloneModel::aRefusedConnectionIsTold()
{
    camera()->gate().script("controller.Connect", false);
    QVERIFY(!connectAndWait(QStringLiteral("low-cost")));
    QCOMPARE(m_model->connectError(), QStringLiteral("The camera refuses the connection."));
}

void tst_StandaloneModel::theReasonOfAFailureGoesWithTheNextAttempt()
{
    QString atTheEnd;
    QObject::connect(m_model.get(), &StandaloneModel::connectingChanged, this,
                     [this, &atTheEnd] { atTheEnd = m_model->connectError(); });
    QSignalSpy changed(m_model.get(), &StandaloneModel::connectErrorChanged);
    QVERIFY(!connectAndWait(QStringLiteral("bogus")));
    QCOMPARE(atTheEnd, QStringLiteral("There is no camera \"bogus\"."));
    m_model->connect(QStringLiteral("low-cost"));
    QCOMPARE(m_model->connectError(), QString());
    QTRY_VERIFY(m_model->connected());
    QCOMPARE(m_model->connectError(), QString());
    QCOMPARE(changed.size(), 2);
}

void tst_StandaloneModel::aCameraConnectedMeanwhileStays()
{
    const auto device = camera();
    device->connect();
    QVERIFY(connectAndWait(QStringLiteral("bare")));
    QCOMPARE(camera(), device);
    QCOMPARE(m_model->cameraName(), device->profile().title());
    QCOMPARE(m_model->connectError(), QString());
    QVERIFY(disconnectAndWait());
    QVERIFY(!device->connected());
}

void tst_StandaloneModel::mayDieWhileConnecting()
{
    const auto device = camera();
    m_model->connect(QStringLiteral("low-cost"));
    m_model.reset();
    QVERIFY(!device->connected());
}

void tst_StandaloneModel::selectsAmongItsControllersOnly()
{
    QSignalSpy index(m_model.get(), &StandaloneModel::controllerIndexChanged);
    QCOMPARE(m_model->controllerDisplayNames().size(), 1);
    QVERIFY(!m_model->canSelectController());
    for (const int row : {0, 1, -1})
        m_model->setControllerIndex(row);
    QCOMPARE(m_model->controllerIndex(), 0);
    QCOMPARE(index.size(), 0);
}

ZVT_TEST(tst_StandaloneModel)
#include "tst_StandaloneModel.moc"
