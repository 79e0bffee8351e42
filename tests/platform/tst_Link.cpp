#include "platform/emulator/devices/Link.h"
#include "tests/platform/RecorderRig.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <algorithm>

/// The link over which recordings come to the computer.
class tst_Link : public Test
{
    Q_OBJECT

private slots:
    void losesAboutAsManyFramesAsItIsSet_data();
    void losesAboutAsManyFramesAsItIsSet();
    void theFirstFrameIsNoExceptionOfTheShare();
    void losesOtherFramesInEachPass();
    void losesTheSameFramesAgain();
    void aWorseLinkAlsoLosesTheFramesOfABetterOne();
    void everyRecorderHasOne_data();
    void everyRecorderHasOne();
    void settingsOfTheProfileCount();
    void impossibleSettingsAreRefused_data();
    void impossibleSettingsAreRefused();
    void isNotInASnapshot();

private:
    static emulator::Link &link(RecorderRig &rig) { return *rig.camera().device<emulator::Link>(); }

    static std::vector<uint64_t> lost(RecorderRig &rig, uint32_t pass, uint64_t count = 100'000)
    {
        std::vector<uint64_t> numbers;
        for (uint64_t number = 0; number < count; ++number)
            if (link(rig).loses(number, pass))
                numbers.push_back(number);
        return numbers;
    }
};

void tst_Link::losesAboutAsManyFramesAsItIsSet_data()
{
    QTest::addColumn<int>("perMillion");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    QTest::newRow("none") << 0 << 0 << 0;
    QTest::newRow("the usual number") << 200 << 10 << 35;
    QTest::newRow("one of twenty") << 50'000 << 4'700 << 5'300;
    QTest::newRow("all") << 1'000'000 << 100'000 << 100'000;
}

void tst_Link::losesAboutAsManyFramesAsItIsSet()
{
    QFETCH(int, perMillion);
    QFETCH(int, least);
    QFETCH(int, most);
    RecorderRig rig;
    QVERIFY(rig.set("link.lossPerMillion", perMillion));
    for (uint32_t pass = 0; pass <= 5; ++pass) {
        const auto number = static_cast<int>(lost(rig, pass).size());
        QVERIFY2(number >= least && number <= most, qPrintable(QString::number(number)));
    }
}

void tst_Link::theFirstFrameIsNoExceptionOfTheShare()
{
    RecorderRig rig;
    QVERIFY(rig.set("link.lossPerMillion", 1));
    for (uint32_t pass = 0; pass <= 5; ++pass)
        QVERIFY(lost(rig, pass, 1).empty());
}

void tst_Link::losesOtherFramesInEachPass()
{
    RecorderRig rig;
    QVERIFY(rig.set("link.lossPerMillion", 50'000));
    const auto first = lost(rig, 0);
    const auto second = lost(rig, 1);
    std::vector<uint64_t> both;
    std::ranges::set_intersection(first, second, std::back_inserter(both));
    QVERIFY2(both.size() > 150 && both.size() < 350, qPrintable(QString::number(both.size())));
}

void tst_Link::losesTheSameFramesAgain()
{
    RecorderRig rig;
    QVERIFY(rig.set("link.lossPerMillion", 50'000));
    const auto before = lost(rig, 0, 1000);
    rig.wait(1000);
    QCOMPARE(lost(rig, 0, 1000), before);
    rig.open("everything");
    QVERIFY(rig.set("link.lossPerMillion", 50'000));
    QCOMPARE(lost(rig, 0, 1000), before);
}

void tst_Link::aWorseLinkAlsoLosesTheFramesOfABetterOne()
{
    RecorderRig rig;
    QVERIFY(rig.set("link.lossPerMillion", 20'000));
    const auto better = lost(rig, 2);
    QVERIFY(rig.set("link.lossPerMillion", 60'000));
    QVERIFY(std::ranges::includes(lost(rig, 2), better));
}

void tst_Link::everyRecorderHasOne_data()
{
    QTest::addColumn<QString>("profile");
    for (const QString &name : emulator::Profile::names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_Link::everyRecorderHasOne()
{
    QFETCH(const QString, profile);
    const QTemporaryDir folder;
    const auto camera = emulator::Camera::create(profile, folder.path());
    const bool hasLink = camera->device<emulator::Link>() != nullptr;
    QCOMPARE(hasLink, camera->device<emulator::Recorder>() != nullptr);
    if (!hasLink)
        return;
    QCOMPARE(settingOf(*camera, "link.bytesPerSecond").toInt(), 100'000'000);
    QCOMPARE(settingOf(*camera, "link.lossPerMillion").toInt(), 200);
}

void tst_Link::settingsOfTheProfileCount()
{
    RecorderRig rig;
    rig.openDevices(R"({"link": {"bytesPerSecond": 64000, "lossPerMillion": 7}})");
    QCOMPARE(link(rig).bytesPerSecond(), 64'000);
    QCOMPARE(settingOf(rig.camera(), "link.lossPerMillion").toInt(), 7);
}

void tst_Link::impossibleSettingsAreRefused_data()
{
    QTest::addColumn<QByteArray>("setting");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("stands still") << QByteArray("link.bytesPerSecond") << QVariant(0);
    QTest::newRow("too slow to end") << QByteArray("link.bytesPerSecond") << QVariant(999);
    QTest::newRow("finds frames") << QByteArray("link.lossPerMillion") << QVariant(-1);
    QTest::newRow("loses more than all") << QByteArray("link.lossPerMillion") << QVariant(1'000'001);
}

void tst_Link::impossibleSettingsAreRefused()
{
    QFETCH(const QByteArray, setting);
    QFETCH(const QVariant, value);
    RecorderRig rig;
    const QVariant before = settingOf(rig.camera(), setting);
    QVERIFY(!rig.set(setting.constData(), value));
    QCOMPARE(settingOf(rig.camera(), setting), before);
}

void tst_Link::isNotInASnapshot()
{
    RecorderRig rig;
    QVERIFY(rig.set("link.lossPerMillion", 5));
    QVERIFY(!rig.camera().snapshot().contains("link"));
    QVERIFY(rig.camera().snapshot().contains("recorder"));
}

ZVT_TEST(tst_Link)
#include "tst_Link.moc"
