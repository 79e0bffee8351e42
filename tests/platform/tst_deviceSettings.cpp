#include "platform/emulator/Clock.h"
#include "platform/emulator/OtherClient.h"
#include "platform/emulator/SetupError.h"
#include "platform/emulator/devices/Cooler.h"
#include "platform/emulator/devices/EmulatorProperties.h"
#include "platform/emulator/devices/FactoryCalibrations.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/Zoom.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <QFile>
#include <QTemporaryDir>

#include <cmath>

using namespace emulator;

namespace
{

QStringList &reports()
{
    static QStringList list;
    return list;
}

/// What a restored value is refused for is reported as information: collects these reports while it lives.
class Reports
{
public:
    Reports()
    {
        reports().clear();
        m_before = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
            if (type == QtInfoMsg)
                reports() << text;
        });
    }
    Reports(const Reports &) = delete;
    Reports &operator=(const Reports &) = delete;
    ~Reports() { qInstallMessageHandler(m_before); }

private:
    QtMessageHandler m_before;
};

} // namespace

/// The settings of all devices of all cameras.
class tst_deviceSettings : public Test
{
    Q_OBJECT

private slots:
    void init();

    void everySettingTakesItsOwnValue_data() { profiles(); }
    void everySettingTakesItsOwnValue();
    void aCameraTakesItsOwnValuesBack_data() { profiles(); }
    void aCameraTakesItsOwnValuesBack();
    void aRestartIsSilent();
    void anotherClientMayUseAnyTypeOfNumber();
    void damagedPresetsAreNamed();
    void aDamagedFrameWidthChangesNothing();
    void aFrameThatWasTooShortTakesAsLongAsItMust();
    void damagedSelectionsAreNamed();
    void theEndOfARangeCanBeSet();
    void aLensThatCoastedPastItsRangeComesBack();
    void aPropertyMayBeNoNumber();
    void limitsNeedAnEntry();

private:
    static void profiles();
    std::shared_ptr<Camera> camera(const QString &profile = "everything")
    {
        auto camera = Camera::create(profile, m_folder->path());
        camera->connect();
        return camera;
    }
    QString fileWith(const QByteArray &profile)
    {
        QFile file(m_folder->filePath("mine.json"));
        if (!file.open(QIODevice::WriteOnly) || file.write(profile) != profile.size())
            qFatal("the profile cannot be written");
        return file.fileName();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_deviceSettings::init()
{
    Test::init();
    Clock::manual();
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_deviceSettings::profiles()
{
    QTest::addColumn<QString>("profile");
    for (const QString &name : Profile::names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_deviceSettings::everySettingTakesItsOwnValue()
{
    QFETCH(const QString, profile);
    const auto subject = camera(profile);
    const auto settings = subject->settings();
    QVERIFY(settings.size() > 20);
    for (const SettingInfo &setting : settings) {
        QString why;
        const bool taken = subject->otherClient().set(setting.name, setting.value.toVariant(), &why);
        // This profile starts with values that cannot be set.
        const bool cannotBeSet = profile == "edge-values"
            && QStringList{"autoFocus.regionSize", "identity.model", "identity.serial", "palette.name", "video.offset"}
                   .contains(setting.name);
        QVERIFY2(taken == (setting.changeable && !cannotBeSet), qPrintable(setting.name + ": " + why));
    }
}

void tst_deviceSettings::aCameraTakesItsOwnValuesBack()
{
    QFETCH(const QString, profile);
    const auto subject = camera(profile);
    const QJsonObject snapshot = subject->snapshot();
    const Reports collected;
    subject->restore(snapshot);
    QCOMPARE(reports(), QStringList());
    QCOMPARE(subject->snapshot(), snapshot);
}

void tst_deviceSettings::aRestartIsSilent()
{
    camera()->otherClient().set("cooler.setpoint", 90);
    const Reports collected;
    QCOMPARE(settingOf(*camera(), "cooler.setpoint").toDouble(), 90.0);
    QCOMPARE(reports(), QStringList());
}

void tst_deviceSettings::anotherClientMayUseAnyTypeOfNumber()
{
    const auto subject = camera();
    auto client = subject->otherClient();
    for (const QVariant &one : {QVariant::fromValue<uint8_t>(1), QVariant::fromValue<int64_t>(1),
                                QVariant::fromValue<unsigned long>(1), QVariant(1.0F), QVariant(1.0)})
        QVERIFY2(client.set("gain.level", one), one.typeName());
    QVERIFY(client.set("sensor.window", QVariant::fromValue(QList<int>{16, 4, 96, 100})));
    for (const QVariant &bad : {QVariant(QByteArray("1")), QVariant(QPoint(1, 1)), QVariant(QChar('1'))})
        QVERIFY2(!client.set("gain.level", bad), bad.typeName());
    QVERIFY(!client.set("emulator./ChamberProfile", QByteArray("x")));
}

void tst_deviceSettings::damagedPresetsAreNamed()
{
    const auto subject = camera();
    auto &device = *subject->device<Sensor>();
    QCOMPARE(device.restore({{"presets", "x"}}), QStringList("presets: must be a list"));
    QCOMPARE(device.restore({{"presets", QJsonArray{1}}}), QStringList("presets.0: must be an object"));
    QCOMPARE(
        device.restore({{"presets",
                         QJsonArray{QJsonObject(),
                                    QJsonObject{{"integrationWidth", 1}, {"dwellCount", "7"}, {"frameWidth", 0.5}}}}}),
        QStringList({"presets.1.integrationWidth: must lie between 20 and 20000000",
                     "presets.1.dwellCount: must be a number", "presets.1.frameWidth: must be a whole number"}));
    QCOMPARE(device.restore({{"superframeWidth", true}}), QStringList("superframeWidth: must be a number"));
}

void tst_deviceSettings::aDamagedFrameWidthChangesNothing()
{
    const auto subject = camera();
    auto &sensor = *subject->device<Sensor>();
    uint32_t before = 0, after = 0;
    sensor.frameWidth(0, before);
    QCOMPARE(sensor.restore({{"presets", QJsonArray{QJsonObject{{"integrationWidth", 1000}}}}}), QStringList());
    sensor.frameWidth(0, after);
    QCOMPARE(after, before);
    QCOMPARE(sensor.restore({{"presets", QJsonArray{QJsonObject{{"integrationWidth", 1000}, {"frameWidth", true}}}}}),
             QStringList("presets.0.frameWidth: must be a number"));
    sensor.frameWidth(0, after);
    QCOMPARE(after, before);
    QCOMPARE(sensor.restore({{"presets", QJsonArray{QJsonObject{{"frameWidth", 1}}}}}),
             QStringList("presets.0.frameWidth: is refused by the camera"));
    sensor.frameWidth(0, after);
    QCOMPARE(after, before);
}

// A write of the integration register alone leaves a frame that is too short for it.
void tst_deviceSettings::aFrameThatWasTooShortTakesAsLongAsItMust()
{
    const auto subject = camera();
    auto &sensor = *subject->device<Sensor>();
    QCOMPARE(sensor.setFrameRate(0, 200), Ok);
    QCOMPARE(sensor.setIntegrationWidth(0, 10'000'000), Ok);
    const QJsonObject saved = sensor.save();
    QCOMPARE(sensor.setIntegrationTime(0, 1), Ok);
    QCOMPARE(sensor.restore(saved), QStringList());
    uint32_t clocks = 0;
    QCOMPARE(sensor.frameWidth(0, clocks), Ok);
    QVERIFY(clocks > 10'000'000);
}

void tst_deviceSettings::damagedSelectionsAreNamed()
{
    const auto subject = camera();
    auto &calibrations = *subject->device<FactoryCalibrations>();
    QCOMPARE(calibrations.restore({{"selected", 3}}), QStringList("selected: must be a list of numbers"));
    QCOMPARE(calibrations.restore({{"selected", QJsonArray{0}}}), QStringList("selected: must have 4 entries"));
    QCOMPARE(calibrations.restore({{"selected", QJsonArray{0, 0, 0, 99}}}),
             QStringList("selected: must hold whole numbers in the range"));
    int row = 7;
    QCOMPARE(calibrations.selected(0, row), Ok);
    QCOMPARE(row, int(FactoryCalibrations::none));
}

// 60.1 is no float: the setpoint next to it is in the range.
void tst_deviceSettings::theEndOfARangeCanBeSet()
{
    const QString profile
        = fileWith(R"({"extends": "everything", "devices": {"cooler": {"minimum": 60.1, "maximum": 90.1,
                                     "setpoint": 90.1}}})");
    const auto subject = camera(profile);
    auto &cooler = *subject->device<Cooler>();
    QVERIFY(subject->otherClient().set("cooler.setpoint", 60.1));
    const QJsonObject saved = cooler.save();
    QVERIFY(subject->otherClient().set("cooler.setpoint", 90.1));
    QCOMPARE(cooler.restore(saved), QStringList());
    QCOMPARE(settingOf(*subject, "cooler.setpoint").toFloat(), 60.1F);
}

void tst_deviceSettings::aLensThatCoastedPastItsRangeComesBack()
{
    const QString profile = fileWith(R"({"extends": "everything", "devices": {"zoom": {"overtravel": 400,
                                     "slowingSeconds": 5}}})");
    auto subject = camera(profile);
    QCOMPARE(subject->device<Zoom>()->move(3), Ok);
    Clock::advance(60'000);
    QVERIFY(subject->device<Zoom>()->position() > subject->device<Zoom>()->maximum());
    subject.reset();
    const Reports collected;
    subject = camera(profile);
    QCOMPARE(reports(), QStringList());
    QCOMPARE(subject->device<Zoom>()->position(), subject->device<Zoom>()->maximum());
}

// The framework's values are not JSON.
void tst_deviceSettings::aPropertyMayBeNoNumber()
{
    const auto subject = camera();
    auto &properties = *subject->device<EmulatorProperties>();
    QVERIFY(properties.set("/BlackbodyTemp1", NAN));
    QVariant value;
    QVERIFY(properties.get("/BlackbodyTemp1", value));
    QVERIFY(std::isnan(value.toFloat()));
    QVERIFY(!subject->otherClient().set("emulator./BlackbodyTemp1", double(NAN)));
}

void tst_deviceSettings::limitsNeedAnEntry()
{
    const QString profile = fileWith(R"({"extends": "everything", "devices": {"focus": {"near": []}}})");
    try {
        camera(profile);
        QFAIL("the profile was taken");
    } catch (const SetupError &error) {
        QVERIFY(QString(error.what()).endsWith("focus.near: must have one entry, or one for each field of view"));
    }
}

ZVT_TEST(tst_deviceSettings)
#include "tst_deviceSettings.moc"
