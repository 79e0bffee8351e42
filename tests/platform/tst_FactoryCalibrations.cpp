#include "platform/emulator/control.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/FactoryCalibrations.h"
#include "platform/hlxcamzvt/makeController.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QJsonArray>
#include <QTemporaryDir>

#include <array>
#include <mutex>

using emulator::Camera;
using emulator::FactoryCalibrations;

class tst_FactoryCalibrations : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void oneBringsItsTimeAndItsCorrection();
    void theRowBehindTheLastStandsForNone();
    void whatIsNotThereIsRefused();
    void aSnapshotRestoresTheSelection();
    void anotherClientSelectsOne();
    void timesMustMatchTheNames();
    void aCameraMayHaveNone();

private:
    void use(const QString &profile);
    FactoryCalibrations &calibrations() { return *m_camera->device<FactoryCalibrations>(); }
    int selected(int preset)
    {
        int row = -7;
        return calibrations().selected(preset, row) == emulator::Ok ? row : -7;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<Camera> m_camera;
};

void tst_FactoryCalibrations::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    use(QStringLiteral("everything"));
}

void tst_FactoryCalibrations::cleanup()
{
    m_camera.reset();
    m_folder.reset();
}

void tst_FactoryCalibrations::use(const QString &profile)
{
    m_camera = Camera::create(profile, m_folder->path());
    m_camera->connect();
}

void tst_FactoryCalibrations::oneBringsItsTimeAndItsCorrection()
{
    QCOMPARE(calibrations().names().size(), 3);
    QCOMPARE(selected(2), -1);
    QCOMPARE(calibrations().select(2, 1), emulator::Ok);
    QCOMPARE(selected(2), 1);
    double milliseconds = 0.0;
    QCOMPARE(m_camera->device<emulator::Sensor>()->integrationTime(2, milliseconds), emulator::Ok);
    QCOMPARE(milliseconds, 0.2);
    std::array<char, 64> name{};
    QCOMPARE(zvtGetNUCName(m_camera->handle(), 2, name.data(), name.size()), 0);
    QCOMPARE(QString::fromUtf8(name.data()), QStringLiteral("50 to 150 \u00b0C"));
}

void tst_FactoryCalibrations::theRowBehindTheLastStandsForNone()
{
    QCOMPARE(calibrations().select(0, 2), emulator::Ok);
    QCOMPARE(calibrations().select(0, 3), emulator::Ok);
    QCOMPARE(selected(0), -1);
    double milliseconds = 0.0;
    QCOMPARE(m_camera->device<emulator::Sensor>()->integrationTime(0, milliseconds), emulator::Ok);
    QCOMPARE(milliseconds, 0.018);
}

void tst_FactoryCalibrations::whatIsNotThereIsRefused()
{
    for (const int row : {-1, 4})
        QCOMPARE(calibrations().select(0, row), emulator::Refused);
    for (const int preset : {-1, 4}) {
        QCOMPARE(calibrations().select(preset, 0), emulator::Refused);
        QCOMPARE(selected(preset), -7);
    }
    QCOMPARE(selected(0), -1);
    emulator::Section section({{QStringLiteral("names"), QJsonArray{QStringLiteral("Day")}}}, QStringLiteral("test"));
    emulator::Corrections corrections(*m_camera, section);
    const std::lock_guard lock(m_camera->mutex());
    QCOMPARE(corrections.load(1, "Night"), emulator::Refused);
}

void tst_FactoryCalibrations::aSnapshotRestoresTheSelection()
{
    QCOMPARE(calibrations().select(1, 2), emulator::Ok);
    const QJsonObject saved = calibrations().save();
    QCOMPARE(calibrations().select(1, 0), emulator::Ok);
    calibrations().restore(saved);
    QCOMPARE(selected(1), 2);
    // Values that are not valid are ignored.
    calibrations().restore({{QStringLiteral("selected"), QJsonArray{3, -2, QStringLiteral("first")}}});
    QCOMPARE(selected(0), -1);
    QCOMPARE(selected(1), 2);
    calibrations().restore({{QStringLiteral("selected"), 1}});
    QCOMPARE(selected(1), 2);
}

void tst_FactoryCalibrations::anotherClientSelectsOne()
{
    auto other = m_camera->otherClient();
    const auto name = QStringLiteral("factoryCalibrations.selected");
    QVERIFY(other.set(QStringLiteral("sensor.activePreset"), 2));
    QVERIFY(other.set(name, 1));
    QCOMPARE(selected(2), 1);
    double milliseconds = 0.0;
    QCOMPARE(m_camera->device<emulator::Sensor>()->integrationTime(2, milliseconds), emulator::Ok);
    QCOMPARE(milliseconds, 0.2);
    QVERIFY(other.set(name, -1));
    QCOMPARE(selected(2), -1);
    for (const auto &value : {QVariant(-2), QVariant(4), QVariant(0.5), QVariant(QStringLiteral("1")), QVariant()})
        QVERIFY(!other.set(name, value));
    QVERIFY(!other.set(QStringLiteral("factoryCalibrations.colour"), 1));
    QCOMPARE(selected(2), -1);
}

void tst_FactoryCalibrations::timesMustMatchTheNames()
{
    emulator::Section section({{QStringLiteral("names"), QJsonArray{QStringLiteral("Day")}}}, QStringLiteral("test"));
    QVERIFY_THROWS_EXCEPTION(emulator::SetupError, FactoryCalibrations(*m_camera, section));
}

void tst_FactoryCalibrations::aCameraMayHaveNone()
{
    use(QStringLiteral("bare"));
    const auto controller = hlx::cam::makeController(m_camera);
    hlx::TArray<hlx::cam::IController::SFactoryCalibration> list;
    bool calibrated = true;
    QVERIFY(!controller->GetFactoryCalibrations(&list));
    QVERIFY(!controller->GetIsFactoryCalibrated(&calibrated));
    QVERIFY(calibrated);
    QCOMPARE(m_camera->gate().calls().back().status, int(emulator::Absent));
}

ZVT_TEST(tst_FactoryCalibrations)
#include "tst_FactoryCalibrations.moc"
