#include "platform/emulator/devices/FilterWheel.h"
#include "tests/platform/FilterRig.h"
#include "tests/support/Test.h"

#include <QElapsedTimer>
#include <QRegularExpression>

#include <cmath>
#include <future>

using emulator::Clock;

/// The light that the filter wheel passes, the names of the filters, and the values that are kept.
class tst_filterWheelValues : public Test
{
    Q_OBJECT

private slots:
    void filtersPassTheirShareOfTheLight_data();
    void filtersPassTheirShareOfTheLight();
    void aFilterGlowsWithTheCase();
    void spokesHideTheScene();
    void scansTurnTheWheel();
    void aFilterPreventsSaturation();
    void namesAreTheUsersOrBuiltIn();
    void namesFillBuffersOfAnySize();
    void namesAreRefused_data();
    void namesAreRefused();
    void manyNamesAreQuick();
    void valuesOutliveTheProcess();
    void snapshotsHoldTheFilterOnly();
    void settingsOfAnotherClient();
    void badSettingsAreRefused_data();
    void badSettingsAreRefused();
};

void tst_filterWheelValues::filtersPassTheirShareOfTheLight_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<double>("transmission");
    QTest::newRow("Empty") << 0 << 1.0;
    QTest::newRow("Open") << 1 << 1.0;
    QTest::newRow("Blocked") << 2 << 0.0;
    QTest::newRow("Sapphire") << 3 << 0.85;
    QTest::newRow("ND 0.3") << 4 << std::pow(10, -0.3);
    QTest::newRow("ND 1.0") << 6 << 0.1;
    QTest::newRow("ND 2.0") << 8 << 0.01;
    QTest::newRow("ND 3.0") << 9 << 0.001;
    QTest::newRow("SP 5.00 um") << 13 << 0.5;
    QTest::newRow("LP 2.00 um") << 14 << 0.5;
    QTest::newRow("BP 2.20 um") << 18 << 0.06;
    QTest::newRow("BP 10.60 um") << 31 << 0.06;
    QTest::newRow("Custom 1") << 32 << 1.0;
}

void tst_filterWheelValues::filtersPassTheirShareOfTheLight()
{
    QFETCH(const int, id);
    QFETCH(const double, transmission);
    Wheel wheel;
    QVERIFY(wheel.useSmallWindow() && wheel.showArea(20));
    const double open = wheel.mean();
    QVERIFY(wheel.set("filters.inserted", listOf({2, 0, 0, 0})));
    const double blocked = wheel.mean();
    QVERIFY(wheel.set("filters.inserted", listOf({id, 0, 0, 0})));
    const double present = wheel.mean();
    QVERIFY2(std::abs((present - blocked) / (open - blocked) - transmission) < 0.005,
             qPrintable(QString::number(present)));
    // The user's name does not change the glass.
    QCOMPARE(wheel.setName(static_cast<uint8_t>(id), "Blocked by hand"), 0);
    QCOMPARE(wheel.mean(), present);
}

void tst_filterWheelValues::aFilterGlowsWithTheCase()
{
    Wheel wheel;
    QVERIFY(wheel.useSmallWindow() && wheel.showArea(20) && wheel.set("filters.inserted", listOf({2, 0, 0, 0})));
    const auto glow = [&] {
        return wheel.mean() - 1000 - 2 * (wheel.exposure().readout.caseCelsius - 25) - wheel.exposure().readout.dark();
    };
    const double before = glow();
    const double celsius = wheel.exposure().readout.caseCelsius;
    QVERIFY(wheel.set("environment.ambient", 50));
    Clock::advance(2'000'000);
    const double ratio = glow() / before;
    const double expected
        = emulator::image::Light::of(wheel.exposure().readout.caseCelsius, emulator::image::Light::Medium)
        / emulator::image::Light::of(celsius, emulator::image::Light::Medium);
    QVERIFY2(std::abs(ratio / expected - 1) < 0.05, qPrintable(QString::number(ratio)));
    QVERIFY(expected > 2);
}

void tst_filterWheelValues::spokesHideTheScene()
{
    Wheel wheel;
    QVERIFY(wheel.useSmallWindow() && wheel.showArea(35));
    QVERIFY(wheel.set("filters.inserted", listOf({1, 0, 6, 1})));
    QVERIFY(wheel.set("filters.current", 21));
    // Two steps of 0.8 s: a spoke passes in the middle 40 % of each.
    const std::pair<int, bool> moments[] = {{0, false},   {239, false},  {241, true},  {559, true}, {561, false},
                                            {800, false}, {1039, false}, {1041, true}, {1359, true}};
    int64_t last = 0;
    for (const auto &[moment, dark] : moments) {
        Clock::advance(moment - last);
        last = moment;
        QVERIFY2(wheel.isDark() == dark, qPrintable(QString::number(moment)));
    }
    Clock::advance(2);
    const double behind = wheel.mean();
    Clock::advance(1000);
    QVERIFY(std::abs(wheel.mean() - behind) < 30);
    QCOMPARE(wheel.current(), 21);
}

void tst_filterWheelValues::scansTurnTheWheel()
{
    Wheel wheel;
    QVERIFY(wheel.useSmallWindow() && wheel.showArea(35));
    QVERIFY(wheel.set("filters.inserted", listOf({1, 2, 1, 2})));
    Clock::automatic();
    auto scanning = std::async(std::launch::async, [&] { return zvtScanFilters(wheel.handle()); });
    QTRY_COMPARE(wheel.current(), -1);
    // The wheel ends its round without the command.
    wheel.camera().disconnect();
    QCOMPARE(scanning.get(), int(emulator::NotConnected));
    wheel.camera().connect();
    Clock::stop();
    QList<bool> seen{wheel.isDark()};
    for (int step = 0; step < 25; ++step) {
        Clock::advance(200);
        if (wheel.isDark() != seen.last())
            seen << wheel.isDark();
    }
    QCOMPARE(seen, QList<bool>({false, true, false, true, false}));
}

void tst_filterWheelValues::aFilterPreventsSaturation()
{
    Wheel wheel;
    QVERIFY(wheel.useSmallWindow() && wheel.showArea(60));
    const auto saturated = [&] {
        uint8_t flag = 77;
        zvtGetSaturatedFlag(wheel.handle(), &flag);
        return flag;
    };
    QCOMPARE(saturated(), uint8_t(1));
    QVERIFY(wheel.set("filters.inserted", listOf({8, 0, 0, 0})));
    QCOMPARE(saturated(), uint8_t(0));
    // The flag of a frame that has been computed says the same.
    QVERIFY(!wheel.newest().empty());
    QCOMPARE(saturated(), uint8_t(0));
    QVERIFY(wheel.set("filters.inserted", listOf({1, 0, 0, 0})));
    QCOMPARE(saturated(), uint8_t(1));
}

void tst_filterWheelValues::namesAreTheUsersOrBuiltIn()
{
    Wheel wheel;
    for (int id = 0; id < 64; ++id)
        QCOMPARE(wheel.name(static_cast<uint8_t>(id)), std::string(zvtGetFilterName(static_cast<uint8_t>(id))));
    const std::string names[] = {"Fenster für µm ", " ", std::string(199, 'f')};
    for (const std::string &name : names) {
        QCOMPARE(wheel.setName(21, name), 0);
        QCOMPARE(wheel.name(21), name);
    }
    QCOMPARE(wheel.name(20), std::string("BP 3.00 um"));
    // The built-in name takes the user's away.
    QCOMPARE(wheel.setName(21, "BP 3.30 um"), 0);
    QVERIFY(wheel.set("filters.names", QStringList{"a"}));
    QCOMPARE(wheel.name(0), std::string("a"));
    QCOMPARE(wheel.name(21), std::string("BP 3.30 um"));
    QCOMPARE(wheel.name(64), std::string("?"));
    QCOMPARE(wheel.name(255), std::string("?"));
}

void tst_filterWheelValues::namesFillBuffersOfAnySize()
{
    Wheel wheel("discrete-fov");
    const std::string longest(199, 'f');
    QCOMPARE(wheel.setName(63, longest), 0);
    for (const uint32_t size : {1U, 64U, 199U, 200U, 257U})
        for (const uint8_t id : {0, 21, 63}) {
            std::string buffer(size + 8, '#');
            QCOMPARE(zvtGetFilterNameEx(wheel.handle(), id, buffer.data(), size), 0);
            QCOMPARE(buffer.substr(size), std::string(8, '#'));
            QCOMPARE(std::string(buffer.c_str()), wheel.name(id).substr(0, size - 1));
        }
    QCOMPARE(wheel.name(63), longest);
}

void tst_filterWheelValues::namesAreRefused_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("empty") << 5 << QByteArray("");
    QTest::newRow("200 bytes") << 5 << QByteArray(200, 'f');
    QTest::newRow("100 characters of two bytes") << 5 << QByteArray("ä").repeated(100);
    QTest::newRow("not UTF-8") << 5 << QByteArray("\xff");
    QTest::newRow("ID") << 64 << QByteArray("name");
    QTest::newRow("last ID") << 255 << QByteArray("name");
}

void tst_filterWheelValues::namesAreRefused()
{
    QFETCH(const int, id);
    QFETCH(const QByteArray, name);
    Wheel wheel;
    QCOMPARE(wheel.setName(5, "before"), 0);
    QCOMPARE(wheel.setName(static_cast<uint8_t>(id), name.toStdString()), refused);
    QCOMPARE(wheel.name(5), std::string("before"));
}

void tst_filterWheelValues::manyNamesAreQuick()
{
    Wheel wheel;
    constexpr int rounds = 7;
    qint64 fastest = std::numeric_limits<qint64>::max();
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        for (uint8_t id = 0; id < 64; ++id)
            QCOMPARE(wheel.setName(id, "Name " + std::to_string(round)), 0);
        fastest = std::min(fastest, timer.nsecsElapsed());
    }
    QVERIFY2(fastest < 5'000'000, qPrintable(QString::number(fastest)));
}

void tst_filterWheelValues::valuesOutliveTheProcess()
{
    Wheel wheel;
    QVERIFY(wheel.set("filters.inserted", listOf({7, 8, 7})));
    QCOMPARE(zvtScanFilters(wheel.handle()), 0);
    QCOMPARE(zvtSetFilterIDInSlot(wheel.handle(), 2, 9), 0);
    QCOMPARE(wheel.turnTo(9), 0);
    QCOMPARE(zvtSetFilterIDInSlot(wheel.handle(), 2, 7), 0);
    QCOMPARE(wheel.setName(9, "Fenster "), 0);
    wheel.restart();
    QCOMPARE(wheel.known(), Ids({7, 8, 7, 0}));
    QCOMPARE(wheel.name(9), std::string("Fenster "));
    QCOMPARE(wheel.current(), 7);
    // It is at the third slot, which holds the ID, and not at the first one.
    QVERIFY(wheel.set("filters.inserted", listOf({1, 1, 2})) && wheel.showArea(35));
    LensRig::coolDetector();
    QVERIFY(wheel.isDark());
    // A turn in progress has ended.
    QVERIFY(wheel.set("filters.current", 8));
    wheel.restart();
    QCOMPARE(wheel.current(), 8);
}

void tst_filterWheelValues::snapshotsHoldTheFilterOnly()
{
    Wheel wheel;
    QCOMPARE(wheel.turnTo(21), 0);
    QCOMPARE(wheel.setName(21, "Fenster"), 0);
    const QJsonObject snapshot = wheel.camera().snapshot();
    QCOMPARE(snapshot.value(QStringLiteral("filters")).toObject(), QJsonObject({{QStringLiteral("current"), 21}}));
    QCOMPARE(wheel.turnTo(1), 0);
    QCOMPARE(wheel.setName(21, "Glas"), 0);
    wheel.camera().restore(snapshot);
    QCOMPARE(wheel.current(), -1);
    Clock::advance(1800);
    QCOMPARE(wheel.current(), 21);
    QCOMPARE(wheel.name(21), std::string("Glas"));
    // A state of another set of filters.
    QVERIFY(wheel.set("filters.known", listOf({1, 2, 3})));
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("snapshot: filters.current: .*"));
    wheel.camera().restore(snapshot);
    QCOMPARE(wheel.current(), 3);
}

void tst_filterWheelValues::settingsOfAnotherClient()
{
    Wheel wheel;
    const auto value = [&](const char *name) {
        for (const auto &setting : wheel.camera().settings())
            if (setting.name == QLatin1String(name))
                return setting.value.toVariant();
        return QVariant();
    };
    QCOMPARE(value("filters.inserted").toList(), listOf({1, 13, 21, 25}));
    QVERIFY(wheel.set("filters.inserted", listOf({63, 0, 1})));
    QCOMPARE(value("filters.inserted").toList(), listOf({63, 0, 1}));
    QVERIFY(wheel.set("filters.known", listOf({0, 63, 2})));
    QCOMPARE(wheel.known(), Ids({0, 63, 2, 0}));
    QVERIFY(wheel.set("filters.current", 63));
    QCOMPARE(value("filters.current").toInt(), 63);
    QVERIFY(wheel.set("filters.names", QStringList{"", "b", "Blocked"}));
    QCOMPARE(value("filters.names").toStringList().mid(0, 4), QStringList({"", "b", "", ""}));
    QCOMPARE(wheel.name(2), std::string("Blocked"));
}

void tst_filterWheelValues::badSettingsAreRefused_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("two slots") << QByteArray("filters.inserted") << QVariant(listOf({1, 2}));
    QTest::newRow("five slots") << QByteArray("filters.inserted") << QVariant(listOf({1, 2, 3, 4, 5}));
    QTest::newRow("ID above 63") << QByteArray("filters.inserted") << QVariant(listOf({1, 2, 64}));
    QTest::newRow("no list") << QByteArray("filters.inserted") << QVariant(1);
    QTest::newRow("known, five slots") << QByteArray("filters.known") << QVariant(listOf({1, 2, 3, 4, 5}));
    QTest::newRow("not in the wheel") << QByteArray("filters.current") << QVariant(2);
    QTest::newRow("65 names") << QByteArray("filters.names") << QVariant(QStringList(65, QStringLiteral("a")));
    QTest::newRow("long name") << QByteArray("filters.names") << QVariant(QStringList{QString(200, u'f')});
    QTest::newRow("slot") << QByteArray("filters.slot") << QVariant(1);
}

void tst_filterWheelValues::badSettingsAreRefused()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QVariant, value);
    Wheel wheel;
    const QJsonObject before = wheel.camera().device<emulator::FilterWheel>()->save();
    QVERIFY(!wheel.set(name.constData(), value));
    QCOMPARE(wheel.camera().device<emulator::FilterWheel>()->save(), before);
}

ZVT_TEST(tst_filterWheelValues)
#include "tst_filterWheelValues.moc"
