#include "platform/emulator/control.h"
#include "platform/emulator/devices/Analog.h"
#include "platform/emulator/devices/AutoFocus.h"
#include "platform/emulator/devices/Color.h"
#include "platform/emulator/devices/Cooler.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/DetectorGain.h"
#include "platform/emulator/devices/FieldOfView.h"
#include "platform/emulator/devices/Flag.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/FocusToDistance.h"
#include "platform/emulator/devices/LensCover.h"
#include "platform/emulator/devices/LensStates.h"
#include "platform/emulator/devices/Lockin.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/Temperatures.h"
#include "platform/emulator/devices/Zoom.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QFile>
#include <QTemporaryDir>

using emulator::Camera;
using emulator::Profile;
using emulator::SetupError;

class tst_Profile : public Test
{
    Q_OBJECT

private slots:
    void knowsTheBuiltInOnes();
    void isSoundAsBuiltIn_data();
    void isSoundAsBuiltIn();
    void hasTheLensThatItTellsOf_data() { isSoundAsBuiltIn_data(); }
    void hasTheLensThatItTellsOf();
    void showsEveryCapabilityPresentAndAbsent();
    void inheritsKeyByKey();
    void takesInheritedThingsAway();
    void extendsAFileBesideIt();
    void standsAlone();
    void namesWhatIsWrong_data();
    void namesWhatIsWrong();
    void refusesACircle();
    void refusesWhatIsNoProfileFile();

private:
    QString file(const QByteArray &content, const QString &name = QStringLiteral("mine.json"))
    {
        QFile out(m_folder.filePath(name));
        if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(out.fileName()));
        return out.fileName();
    }

    /// Returns the message of the SetupError for a camera of this profile, "" without an error.
    QString errorOf(const QString &profile)
    {
        try {
            Camera::create(profile, m_folder.path());
        } catch (const SetupError &error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }

    QTemporaryDir m_folder;
};

void tst_Profile::knowsTheBuiltInOnes()
{
    for (const auto *name : {"everything", "discrete-fov", "te-cooler", "low-cost", "board-6", "bare", "edge-values",
                             "irig", "speed-moves", "two-color"})
        QVERIFY2(Profile::names().contains(QLatin1String(name)), name);
    auto sorted = Profile::names();
    sorted.sort();
    QCOMPARE(Profile::names(), sorted);
}

void tst_Profile::isSoundAsBuiltIn_data()
{
    QTest::addColumn<QString>("name");
    for (const auto &name : Profile::names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_Profile::isSoundAsBuiltIn()
{
    QFETCH(QString, name);
    const auto profile = Profile::load(name);
    QCOMPARE(profile.name(), name);
    QVERIFY(profile.title().startsWith(QStringLiteral("Emulated camera, ")));
    QCOMPARE(profile.capabilities().size(), 35);
    const auto has = [&](const char *key) { return profile.capabilities().value(QLatin1String(key)).toBool(); };
    QVERIFY(has("hasFocusToDistance") <= has("hasFocus"));
    QVERIFY(has("hasFlagCooler") <= has("hasFlag"));
    QVERIFY(has("hasWindowDimensionsThatCanBeArbitrary") <= has("hasWindowSettings"));
    QCOMPARE(has("hasFPAGain"), profile.capabilities().value(QLatin1String("numFPAGainLevels")).toInt() > 0);
    if (name != QLatin1String("edge-values"))
        QVERIFY(!(has("hasContinuousOpticalZoom") && has("hasDiscontinuousOpticalZoom")));

    const auto camera = Camera::create(name, m_folder.path());
    const auto *cooler = camera->device<emulator::Cooler>();
    QVERIFY(cooler);
    // A thermoelectric cooler cools the detector or the flag.
    if (cooler->type() == emulator::Cooler::Thermoelectric || !has("hasFlagCooler"))
        QCOMPARE(has("hasTeCooler"), cooler->type() == emulator::Cooler::Thermoelectric);
    const auto *analog = camera->device<emulator::Analog>();
    QCOMPARE(analog && analog->skimmingAvailable(), has("hasSkimming"));
    constexpr int twoColors = 5; // The number of this detector.
    if (name != QLatin1String("edge-values"))
        QCOMPARE(camera->device<emulator::Color>()->number() == 2,
                 profile.identity().value(QLatin1String("detector")).toInt() == twoColors);
    QCOMPARE(camera->device<emulator::Recorder>() != nullptr, has("hasSsd"));
    QCOMPARE(camera->device<emulator::Lockin>() != nullptr, has("hasLockin"));
    const auto *flag = camera->device<emulator::Flag>();
    QCOMPARE(flag != nullptr, has("hasFlag"));
    QCOMPARE(flag && flag->temperatureControlled(), has("hasFlagCooler"));
    const QJsonObject temperatures = profile.devices().value(QLatin1String("temperatures")).toObject();
    QCOMPARE(temperatures.value(QLatin1String("frontPanel")).toBool(), has("hasFrontPanelTemperature"));
    QCOMPARE(temperatures.value(QLatin1String("airGap")).toBool(), has("hasAirGapTemperature"));
    QCOMPARE(temperatures.value(QLatin1String("internal")).toBool(),
             has("hasChassisTemperature") || has("hasInternalTemperature"));
    const auto &geometry = camera->device<emulator::Sensor>()->geometry();
    QCOMPARE(geometry.customAllowed(), has("hasWindowDimensionsThatCanBeArbitrary"));
    char readout[64];
    if (zvtGetReadoutName(static_cast<uint8_t>(profile.identity().value(QLatin1String("readout")).toInt()), readout,
                          sizeof readout)
        == 0)
        QVERIFY(QString::fromUtf8(readout).startsWith(QStringLiteral("R%1-").arg(geometry.limits().maximum.width)));
    const auto names = profile.devices().value(QLatin1String("corrections")).toObject().value(QLatin1String("names"));
    if (camera->device<emulator::Corrections>())
        QCOMPARE(names.toArray().size(), camera->device<emulator::Sensor>()->numPresets());
}

void tst_Profile::hasTheLensThatItTellsOf()
{
    QFETCH(QString, name);
    const auto camera = Camera::create(name, m_folder.path());
    const QJsonObject capabilities = camera->profile().capabilities();
    const auto has = [&](const char *key) { return capabilities.value(QLatin1String(key)).toBool(); };
    const auto *focus = camera->device<emulator::Focus>();
    const auto *zoom = camera->device<emulator::Zoom>();
    QCOMPARE(focus != nullptr, has("hasFocus"));
    QCOMPARE(camera->device<emulator::AutoFocus>() != nullptr, has("hasFocus"));
    QCOMPARE(focus && focus->movesByPercent(), has("hasFocusMovePercent"));
    QCOMPARE(zoom != nullptr, has("hasContinuousOpticalZoom"));
    QCOMPARE(zoom && zoom->movesByPercent(), has("hasFovMovePercent"));
    QCOMPARE(camera->device<emulator::FieldOfView>() != nullptr, has("hasDiscontinuousOpticalZoom"));
    if (focus)
        QCOMPARE(focus->hasField(emulator::FieldOfView::Wide), has("hasDiscontinuousOpticalZoom"));
    QCOMPARE(camera->device<emulator::FocusToDistance>() != nullptr, has("hasFocusToDistance"));
    QCOMPARE(camera->device<emulator::LensCover>() != nullptr, has("hasLensCover"));
    QCOMPARE(camera->device<emulator::LensStates>() != nullptr, has("hasLensStatesFunctionality"));
    const auto *gain = camera->device<emulator::DetectorGain>();
    QCOMPARE(gain != nullptr, has("hasFPAGain"));
    QCOMPARE(gain ? gain->levels() : 0, capabilities.value(QLatin1String("numFPAGainLevels")).toInt());
}

void tst_Profile::showsEveryCapabilityPresentAndAbsent()
{
    const auto bare = Profile::load(QStringLiteral("bare")).capabilities();
    for (const auto &key : bare.keys()) {
        QVERIFY2(!bare.value(key).toBool() && bare.value(key).toInt() == 0, qPrintable(key));
        bool present = false;
        for (const auto &name : Profile::names())
            present |= name != QLatin1String("edge-values")
                && Profile::load(name).capabilities().value(key).toVariant().toInt() > 0;
        QVERIFY2(present, qPrintable(key));
    }
}

void tst_Profile::inheritsKeyByKey()
{
    const auto profile = Profile::load(file(R"({"extends": "te-cooler", "identity": {"serial": "mine"},
        "clock": "irig", "capabilities": {"hasSsd": true}, "devices": {"cooler": {"setpoint": -3}}})"));
    QCOMPARE(profile.name(), QStringLiteral("mine"));
    QCOMPARE(profile.title(), QStringLiteral("mine"));
    QVERIFY(!profile.hasRealTimeClock());
    QCOMPARE(profile.identity().value(QLatin1String("serial")), QLatin1String("mine"));
    QCOMPARE(profile.identity().value(QLatin1String("model")), QLatin1String("Tansy 320 N"));
    QVERIFY(profile.capabilities().value(QLatin1String("hasSsd")).toBool());
    QVERIFY(profile.capabilities().value(QLatin1String("hasTeCooler")).toBool());
    const auto cooler = profile.devices().value(QLatin1String("cooler")).toObject();
    QCOMPARE(cooler.value(QLatin1String("setpoint")).toInt(), -3);
    QCOMPARE(cooler.value(QLatin1String("type")).toInt(), 1);
}

void tst_Profile::takesInheritedThingsAway()
{
    const auto profile = Profile::load(
        file(R"({"extends": "everything", "devices": {"cooler": null, "temperatures": {"lens": null}}})"));
    QVERIFY(!profile.devices().contains(QLatin1String("cooler")));
    const auto temperatures = profile.devices().value(QLatin1String("temperatures")).toObject();
    QVERIFY(!temperatures.contains(QLatin1String("lens")));
    QVERIFY(temperatures.contains(QLatin1String("internal")));
}

void tst_Profile::extendsAFileBesideIt()
{
    file(R"({"extends": "irig", "title": "Base"})", QStringLiteral("base.json"));
    const auto profile = Profile::load(file(R"({"extends": "base.json"})"));
    QVERIFY(!profile.hasRealTimeClock());
    QCOMPARE(profile.title(), QStringLiteral("mine"));
}

void tst_Profile::standsAlone()
{
    const auto profile = Profile::load(file("{}"));
    QVERIFY(profile.hasRealTimeClock());
    QCOMPARE(profile.capabilities().size(), 35);
    QCOMPARE(profile.identity().value(QLatin1String("type")).toInt(-1), 0);
    QCOMPARE(errorOf(m_folder.filePath(QStringLiteral("mine.json"))), QString());
}

void tst_Profile::namesWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *tag, const char *content, const char *message) {
        QTest::newRow(tag) << QByteArray(content) << QString::fromUtf8(message);
    };
    row("empty", "", "not JSON at byte 0: illegal value");
    row("cut off", "{\"title\": ", "not JSON at byte 10: unterminated object");
    row("a list", "[]", "must hold one object");
    row("unknown key", R"({"colour": "red"})", "colour: unknown key");
    row("title", R"({"title": 3})", "title: must be a text");
    row("extends", R"({"extends": {}})", "extends: must be a text");
    row("extends nobody", R"({"extends": "nobody"})", "extends: there is no profile \"nobody\"");
    row("clock", R"({"clock": "sun"})", "clock: must be \"rtc\" or \"irig\"");
    row("identity", R"({"identity": []})", "identity: must be an object");
    row("identity key", R"({"identity": {"colour": 1}})", "identity.colour: unknown key");
    row("identity kind", R"({"identity": {"type": "1"}})", "identity.type: must be a number");
    row("identity range", R"({"identity": {"type": 256}})", "identity.type: must lie between 0 and 255");
    row("identity fraction", R"({"identity": {"type": 1.5}})", "identity.type: must be a whole number");
    row("capability", R"({"capabilities": {"hasWings": true}})", "capabilities.hasWings: unknown key");
    row("capability kind", R"({"capabilities": {"hasSsd": 1}})", "capabilities.hasSsd: must be true or false");
    row("gain levels", R"({"capabilities": {"numFPAGainLevels": true}})",
        "capabilities.numFPAGainLevels: must be a number");
    row("device", R"({"devices": {"wings": {}}})", "devices.wings: unknown key");
    row("device kind", R"({"devices": {"cooler": 7}})", "devices.cooler: must be an object");
    row("device key", R"({"devices": {"cooler": {"colour": 1}}})", "devices.cooler.colour: unknown key");
    row("device value", R"({"devices": {"cooler": {"power": 1}}})", "devices.cooler.power: must be true or false");
    row("setpoint", R"({"devices": {"cooler": {"setpoint": 200}}})",
        "devices.cooler.setpoint: must lie between 60 and 120");
    row("ambient", R"({"devices": {"environment": {"ambient": 81}}})",
        "devices.environment.ambient: must lie between -60 and 80");
    row("chamber", R"({"devices": {"emulator": {"ChamberProfile": "9:23,3:60"}}})",
        "devices.emulator.ChamberProfile: must have ascending seconds");
    row("temperature sensor", R"({"devices": {"temperatures": {"lens": 22.5}}})",
        "devices.temperatures.lens: must be true or false");
    row("control", R"({"devices": {"flag": {"controlled": true, "control": {"kX": 1}}}})",
        "devices.flag.control.kX: unknown key");
    row("texts", R"({"devices": {"corrections": {"names": ["a", 1]}}})",
        "devices.corrections.names: must be a list of texts");
    row("no list", R"({"devices": {"corrections": {"names": "a"}}})",
        "devices.corrections.names: must be a list of texts");
    row("no name", R"({"devices": {"information": {"rows": ["Lens: 50 mm", ": 3"]}}})",
        "devices.information.rows: must be texts like \"Name: value\"");
    row("numbers", R"({"devices": {"sensor": {"sequencingModes": [true]}}})",
        "devices.sensor.sequencingModes: must be a list of numbers");
    row("limits", R"({"devices": {"focus": {"near": [1, 2, 3]}}})",
        "devices.focus.near: must have one entry, or one for each field of view");
    row("other limits", R"({"devices": {"focus": {"near": [1, 2], "far": [3]}}})",
        "devices.focus.far: must have one entry, or one for each field of view");
    row("limit out of range", R"({"devices": {"focus": {"far": [10001]}}})",
        "devices.focus.far: must hold whole numbers in the range");
    row("distances", R"({"devices": {"focus": {"nearest": [1, 0]}}})",
        "devices.focus.nearest: must hold two distances");
    row("zoom", R"({"devices": {"zoom": {"minimum": 100, "overtravel": 101}}})",
        "devices.zoom.overtravel: must lie between 0 and 100");
    row("gain level", R"({"devices": {"gain": {"levels": 2, "level": 2}}})",
        "devices.gain.level: must lie between 0 and 1");
}

void tst_Profile::namesWhatIsWrong()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, message);
    const QString path = file(content);
    QCOMPARE(errorOf(path), QStringLiteral("profile %1: %2").arg(path, message));
}

void tst_Profile::refusesACircle()
{
    const QString path = file(R"({"extends": "other.json"})");
    const QString other = file(R"({"extends": "mine.json"})", QStringLiteral("other.json"));
    QCOMPARE(errorOf(other), QStringLiteral("profile %1: extends: leads back to this profile").arg(other));
    file(R"({"extends": "mine.json"})");
    QCOMPARE(errorOf(path), QStringLiteral("profile %1: extends: leads back to this profile").arg(path));
}

void tst_Profile::refusesWhatIsNoProfileFile()
{
    QVERIFY(errorOf(QStringLiteral("nobody")).startsWith(QStringLiteral("no profile \"nobody\": ")));
    QVERIFY(errorOf(QString()).startsWith(QStringLiteral("no profile \"\": ")));
    QVERIFY(errorOf(m_folder.path()).startsWith(QStringLiteral("profile %1: cannot be read: ").arg(m_folder.path())));
    QVERIFY(errorOf(QStringLiteral("/dev/zero")).endsWith(QStringLiteral("too large for a profile")));
    QVERIFY(errorOf(file("{}", QStringLiteral("..json"))).endsWith(QStringLiteral("needs a name before its suffix")));
}

ZVT_TEST(tst_Profile)
#include "tst_Profile.moc"
