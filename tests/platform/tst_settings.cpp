#include "platform/emulator/Device.h"
#include "platform/emulator/OtherClient.h"
#include "platform/emulator/SetupError.h"
#include "tests/support/Test.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

using namespace emulator;

namespace
{

enum class Colour : uint8_t { Red, Green, Blue };

/// A device with a setting of each kind.
class Kinds : public Device
{
public:
    Kinds(Camera &camera, Section &section) : Device(camera)
    {
        const auto rising = [](const std::array<float, 2> &ends) {
            return ends[0] <= ends[1] ? Refusal() : QStringLiteral("must not fall");
        };
        addSettings(
            section,
            {
                {QStringLiteral("flag"), flag, Everywhere},
                {QStringLiteral("count"), count, Between{1, 200}, Everywhere},
                {QStringLiteral("size"), size, OneOf{{16, 32, 64}}, Everywhere},
                {QStringLiteral("factor"), factor, Everywhere},
                {QStringLiteral("name"), name, Everywhere},
                {QStringLiteral("names"), names, Everywhere},
                {QStringLiteral("pair"), pair, {Between{0, 10}, rising}, Everywhere},
                {QStringLiteral("list"), list, Between{0, 9}, Everywhere},
                {QStringLiteral("colour"), colour, Between{0, 2}, Everywhere},
                {QStringLiteral("available"), available, Profile | OtherClient},
                {QStringLiteral("kept"), kept, Memory},
                Setting(QStringLiteral("mode"), mode, Everywhere).onlyIf(available),
                Setting(QStringLiteral("counted"), counted, Snapshot | OtherClient).then([this] { ++changes; }),
                {QStringLiteral("computed"), [this] { return 2 * count; },
                 [this](int twice) { return twice % 2 ? Refused : assign(count, static_cast<uint8_t>(twice / 2)); },
                 OtherClient},
            });
    }

    Status setCount(uint8_t value) { return assign(count, value); }
    Status setFactor(float value) { return assign(factor, value); }
    Status setMode(bool value) { return assign(mode, value); }
    Status fetchMode(bool &value) const { return fetch(mode, value); }

    bool flag = false;
    uint8_t count = 3;
    uint16_t size = 16;
    float factor = 1;
    QString name;
    QStringList names;
    std::array<float, 2> pair{1, 2};
    std::vector<int> list;
    Colour colour = Colour::Red;
    bool available = true;
    bool kept = false;
    bool mode = false;
    int counted = 0;
    int changes = 0;
};

} // namespace

/// Settings of emulated devices: one table for profiles, snapshots, other clients and setters.
class tst_settings : public Test
{
    Q_OBJECT

private slots:
    void init();

    void aProfileGivesTheFirstValues();
    void theDefaultIsTheValueOfTheMember();
    void refusedValuesHaveOneMessage_data();
    void refusedValuesHaveOneMessage();
    void numbersOfMachinesAreRefused();
    void aSnapshotRestoresEveryKind();
    void aSnapshotLeavesOutWhatOnlyTheMemoryHas();
    void aSavedFirstValueIsNotReported();
    void settersFollowTheRow();
    void aSettingMayDependOnACondition();
    void aChangeHasItsConsequence();
    void aComputedSettingAsksTheDevice();
    void theListShowsWhatOtherClientsMayChange();
    void everySourceOfASettingIsNamed();

private:
    std::unique_ptr<Kinds> make(const QJsonObject &profile = {})
    {
        Section section(profile, QStringLiteral("profile test"), QStringLiteral("devices.kinds"));
        auto device = std::make_unique<Kinds>(*m_camera, section);
        section.finish();
        return device;
    }

    QTemporaryDir m_folder;
    std::shared_ptr<Camera> m_camera;
};

void tst_settings::init()
{
    Test::init();
    m_camera = Camera::create(QStringLiteral("bare"), m_folder.path());
}

void tst_settings::aProfileGivesTheFirstValues()
{
    const auto device = make({{"flag", true},
                              {"count", 200},
                              {"size", 64},
                              {"factor", 0.5},
                              {"name", "n"},
                              {"names", QJsonArray{"a", "b"}},
                              {"pair", QJsonArray{0.5, 10}},
                              {"list", QJsonArray{1, 2, 3}},
                              {"colour", 2},
                              {"available", false},
                              {"mode", true}});
    QVERIFY(device->flag && !device->available && device->mode);
    QCOMPARE(device->count, uint8_t(200));
    QCOMPARE(device->size, uint16_t(64));
    QCOMPARE(device->factor, 0.5F);
    QCOMPARE(device->name, "n");
    QCOMPARE(device->names, QStringList({"a", "b"}));
    QCOMPARE(device->pair, (std::array<float, 2>{0.5F, 10}));
    QCOMPARE(device->list, (std::vector{1, 2, 3}));
    QCOMPARE(int(device->colour), int(Colour::Blue));
    // A profile cannot contain a setting that is not for profiles.
    QVERIFY_THROWS_EXCEPTION(SetupError, make({{"counted", 1}}));
}

void tst_settings::theDefaultIsTheValueOfTheMember()
{
    const auto device = make();
    QCOMPARE(device->count, uint8_t(3));
    QCOMPARE(device->pair, (std::array<float, 2>{1, 2}));
}

void tst_settings::refusedValuesHaveOneMessage_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("why");
    const auto row = [](const char *key, const QJsonValue &value, const char *why) {
        QTest::addRow("%s: %s", key, why) << QString(key) << value << QString(why);
    };
    row("flag", 1, "must be true or false");
    row("count", "3", "must be a number");
    row("count", 1.5, "must be a whole number");
    row("count", 0, "must lie between 1 and 200");
    row("count", 300, "must lie between 1 and 200");
    row("size", 17, "must be one of 16, 32, 64");
    row("size", true, "must be a number");
    row("factor", 1e300, "must lie between -3.40282e+38 and 3.40282e+38");
    row("factor", QJsonValue(), "must be a number");
    row("name", 3, "must be a text");
    row("names", QJsonArray{"a", 1}, "must be a list of texts");
    row("pair", QJsonArray{1, 2, 3}, "must have 2 entries");
    row("pair", QJsonArray{2, 1}, "must not fall");
    row("pair", QJsonArray{0, 11}, "must hold numbers in the range");
    row("pair", 1, "must be a list of numbers");
    row("list", QJsonArray{0.5}, "must hold whole numbers in the range");
    row("colour", 3, "must lie between 0 and 2");
}

// The message is the same for every source of the value and contains the path of the key. The device keeps its value.
void tst_settings::refusedValuesHaveOneMessage()
{
    QFETCH(const QString, key);
    QFETCH(const QJsonValue, value);
    QFETCH(const QString, why);
    QString message;
    try {
        make({{key, value}});
    } catch (const SetupError &error) {
        message = error.what();
    }
    QCOMPARE(message, QStringLiteral("profile test: devices.kinds.%1: %2").arg(key, why));
    const auto device = make();
    const QJsonObject before = device->save();
    QCOMPARE(device->restore({{key, value}}), QStringList(key + ": " + why));
    QCOMPARE(device->change(key, value), why);
    QCOMPARE(device->save(), before);
}

void tst_settings::numbersOfMachinesAreRefused()
{
    const auto device = make();
    for (const double number : {std::nan(""), double(INFINITY), -double(INFINITY)}) {
        QVERIFY(!device->change("factor", number).isEmpty());
        QVERIFY(!device->change("count", number).isEmpty());
        QCOMPARE(device->setFactor(static_cast<float>(number)), Refused);
    }
    QCOMPARE(device->factor, 1.0F);
}

void tst_settings::aSnapshotRestoresEveryKind()
{
    const auto device = make();
    const QJsonObject fresh = device->save();
    QCOMPARE(fresh.keys(),
             QStringList({"colour", "count", "counted", "factor", "flag", "kept", "list", "mode", "name", "names",
                          "pair", "size"}));
    const QJsonObject other{{"flag", true},
                            {"count", 9},
                            {"size", 32},
                            {"factor", 2.5},
                            {"name", "n"},
                            {"names", QJsonArray{"a"}},
                            {"pair", QJsonArray{3, 4}},
                            {"list", QJsonArray{5}},
                            {"colour", 1},
                            {"kept", true},
                            {"mode", true},
                            {"counted", 7}};
    QCOMPARE(device->restore(other), QStringList());
    QCOMPARE(device->save(), other);
    QCOMPARE(device->restore({{"unknown", 1}}), QStringList());
    QCOMPARE(device->restore(fresh), QStringList());
    QCOMPARE(device->save(), fresh);
}

void tst_settings::aSnapshotLeavesOutWhatOnlyTheMemoryHas()
{
    const auto device = make();
    const QJsonObject saved = device->save();
    const QJsonObject inSnapshots = device->forSnapshot(saved);
    QStringList keys = saved.keys();
    QVERIFY(keys.removeOne("kept"));
    QCOMPARE(inSnapshots.keys(), keys);
    QCOMPARE(device->restore(inSnapshots), QStringList());
    QCOMPARE(device->restore({{"kept", true}}), QStringList());
    QVERIFY(device->kept);
}

// A first value may be a value that cannot be set.
void tst_settings::aSavedFirstValueIsNotReported()
{
    const auto device = make();
    device->size = 100;
    QCOMPARE(device->restore({{"size", 100}}), QStringList());
    QCOMPARE(device->restore({{"size", 101}}), QStringList("size: must be one of 16, 32, 64"));
}

void tst_settings::settersFollowTheRow()
{
    const auto device = make();
    QCOMPARE(device->setCount(200), Ok);
    for (const uint8_t count : {uint8_t(0), uint8_t(201)})
        QCOMPARE(device->setCount(count), Refused);
    QCOMPARE(device->count, uint8_t(200));
}

void tst_settings::aSettingMayDependOnACondition()
{
    const auto device = make({{"available", false}, {"mode", true}});
    bool mode = false;
    QCOMPARE(device->fetchMode(mode), Refused);
    QVERIFY(!mode);
    QCOMPARE(device->setMode(false), Refused);
    QCOMPARE(device->change("mode", false), "cannot be changed now");
    // The snapshot is of a camera in which the mode was available: its value is ignored now.
    QCOMPARE(device->restore({{"mode", false}}), QStringList());
    QVERIFY(device->mode);
    QCOMPARE(device->change("available", true), QString());
    QCOMPARE(device->fetchMode(mode), Ok);
    QVERIFY(mode);
    QCOMPARE(device->setMode(false), Ok);
    QVERIFY(!device->mode);
}

void tst_settings::aChangeHasItsConsequence()
{
    const auto device = make();
    QCOMPARE(device->change("counted", 1), QString());
    QVERIFY(!device->change("counted", "1").isEmpty());
    QCOMPARE(device->restore({{"counted", 2}}), QStringList());
    QCOMPARE(device->changes, 2);
}

void tst_settings::aComputedSettingAsksTheDevice()
{
    const auto device = make();
    QCOMPARE(device->change("computed", 40), QString());
    QCOMPARE(device->count, uint8_t(20));
    QCOMPARE(device->change("computed", 41), "is refused by the camera");
    QCOMPARE(device->change("computed", 500), "is refused by the camera");
    QCOMPARE(device->count, uint8_t(20));
    QCOMPARE(device->change("nothing", 1), "there is no such setting");
    QVERIFY(!device->save().contains("computed"));
}

void tst_settings::theListShowsWhatOtherClientsMayChange()
{
    const auto device = make({{"available", false}});
    const auto list = device->settings();
    QStringList names;
    for (const SettingInfo &setting : list)
        names << setting.name;
    QCOMPARE(names.join(u' '), "flag count size factor name names pair list colour available mode counted computed");
    QList<int> kinds;
    for (const SettingInfo &setting : list)
        kinds << setting.kind;
    using enum SettingInfo::Kind;
    QCOMPARE(kinds,
             (QList<int>{Flag, WholeNumber, WholeNumber, Number, Text, Texts, Numbers, Numbers, WholeNumber, Flag, Flag,
                         WholeNumber, WholeNumber}));
    const SettingInfo &count = list.at(1);
    QCOMPARE((QList<double>{count.range.minimum, count.range.maximum}), (QList<double>{1, 200}));
    QCOMPARE(count.value, QJsonValue(3));
    QVERIFY(count.changeable && count.choices.isEmpty());
    QCOMPARE(list.at(2).choices, (QList<double>{16, 32, 64}));
    QCOMPARE(list.at(6).value, QJsonValue(QJsonArray{1, 2}));
    QVERIFY(!list.at(10).changeable);
    QCOMPARE(list.at(12).value, QJsonValue(6));
}

// The same setting, refused from a profile, from the camera's storage and from another client.
void tst_settings::everySourceOfASettingIsNamed()
{
    const QString profile = m_folder.filePath("mine.json");
    const auto write = [](const QString &path, const QByteArray &content) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    };
    write(profile, R"({"extends": "everything", "devices": {"gain": {"level": 3}}})");
    try {
        Camera::create(profile, m_folder.path());
        QFAIL("the profile was taken");
    } catch (const SetupError &error) {
        QCOMPARE(QString(error.what()), "profile " + profile + ": devices.gain.level: must lie between 0 and 2");
    }
    auto camera = Camera::create(QStringLiteral("everything"), m_folder.path());
    QString why;
    QVERIFY(!camera->otherClient().set("gain.level", 3, &why));
    QCOMPARE(why, "other client: gain.level: must lie between 0 and 2");
    QVERIFY(!camera->otherClient().set("wings.span", 3, &why));
    QCOMPARE(why, "other client: wings.span: there is no such setting");
    QVERIFY(!camera->changeMakeUp("hasSsd", 1, &why));
    QCOMPARE(why, "other client: capabilities.hasSsd: must be true or false");
    QTest::ignoreMessage(QtInfoMsg, "state night: gain.level: must lie between 0 and 2");
    camera->restore({{"gain", QJsonObject{{"level", 3}}}}, "state night");

    const QString memory = camera->folder() + "/camera.json";
    camera.reset();
    write(memory, R"({"magic": "zvt-emulated-camera", "version": 1, "values": {"cooler": {"setpoint": 1000}}})");
    QTest::ignoreMessage(QtInfoMsg, qPrintable("storage " + memory + ": cooler.setpoint: must lie between 60 and 120"));
    Camera::create(QStringLiteral("everything"), m_folder.path());
}

ZVT_TEST(tst_settings)
#include "tst_settings.moc"
