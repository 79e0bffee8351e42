#include "platform/emulator/devices/Interfaces.h"
#include "platform/hlxcamzvt/makeController.h"
#include "tests/platform/FrameRig.h"
#include "tests/platform/callTimes.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <map>

using emulator::Interfaces;

/// The digital interfaces of emulated cameras: transports, header modes and links.
class tst_DigitalInterfaces : public Test
{
    Q_OBJECT

private slots:
    void transportIsThatOfTheBoards_data();
    void transportIsThatOfTheBoards();
    void transportFollowsTheIdentity();
    void builtInCamerasHaveTheirTransports_data();
    void builtInCamerasHaveTheirTransports();
    void eitherReadOfTheTransportCanFail();
    void headerModesAreTakenInTheirRange_data() { modes(); }
    void headerModesAreTakenInTheirRange();
    void headerModeThatIsNotAvailableIsRefused_data() { modes(); }
    void headerModeThatIsNotAvailableIsRefused();
    void gigEHeaderModeNeedsAStoppedStream();
    void onlyGigENeedsAStoppedStream();
    void gigEHeaderModeWithoutAStreamIsTaken();
    void otherClientsSetThem_data();
    void otherClientsSetThem();
    void otherClientsDoNotSetWhatIsNotAvailable();
    void snapshotsHoldModesAndLinks();
    void linksHaveTheirValues_data();
    void linksHaveTheirValues();
    void framesDoNotDependOnThem();
    void functionsAreFast();

private:
    static void modes();
    QByteArray profileWithBoard(int board);

    QTemporaryDir m_folder;
};

namespace
{

constexpr int refused = emulator::Refused;
constexpr int none = -1; ///< A value that cannot be read.

/// The functions of a header mode.
struct Mode {
    const char *key;
    int last; ///< The largest mode.
    int (*available)(uint64_t handle, uint8_t *value);
    int (*get)(uint64_t handle, uint8_t *value);
    int (*set)(uint64_t handle, uint8_t value);
};

constexpr std::array modesOfSdk{
    Mode{"gigEHeaderMode", 2, zvtGetGigEHeaderModeAvailable, zvtGetGigEHeaderMode, zvtSetGigEHeaderMode},
    Mode{"cameraLinkHeaderMode", 1, zvtGetCameraLinkHeaderModeAvailable, zvtGetCameraLinkHeaderMode,
         zvtSetCameraLinkHeaderMode},
    Mode{"coaXPressHeaderMode", 1, zvtGetCoaXPressHeaderModeAvailable, zvtGetCoaXPressHeaderMode,
         zvtSetCoaXPressHeaderMode},
};

int read(const LensRig &rig, int (*get)(uint64_t, uint8_t *))
{
    uint8_t value = 99;
    const int status = get(rig.handle(), &value);
    if (status != 0 && value != 99)
        qFatal("a failed read has written its output");
    return status == 0 ? value : none;
}

/// The transport that the camera reports, none if it reports none.
int transportOf(const LensRig &rig) { return read(rig, zvtGetDeviceTLType); }

void setStreaming(LensRig &rig, bool streaming)
{
    const auto source = hlx::cam::makeController(rig.camera().shared_from_this())->GetVideoSource();
    if (!source)
        qFatal("the camera has no stream");
    if (streaming)
        source->StartStream();
    else
        source->StopStream();
}

} // namespace

void tst_DigitalInterfaces::modes()
{
    QTest::addColumn<int>("mode");
    for (size_t mode = 0; mode < modesOfSdk.size(); ++mode)
        QTest::newRow(modesOfSdk[mode].key) << static_cast<int>(mode);
}

/// Writes a profile of a camera with this board and no Pleora board. Returns its path.
QByteArray tst_DigitalInterfaces::profileWithBoard(int board)
{
    QFile file(m_folder.filePath(QStringLiteral("board%1.json").arg(board)));
    const QByteArray text
        = R"({"extends": "bare", "identity": {"pleora": 0, "boardSet": )" + QByteArray::number(board) + "}}";
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName().toUtf8();
}

void tst_DigitalInterfaces::transportIsThatOfTheBoards_data()
{
    QTest::addColumn<int>("board");
    QTest::addColumn<int>("withoutPleora");
    for (const int board : {0, 1, 2, 3})
        QTest::addRow("CameraLink on board %d", board) << board << 1;
    for (const int board : {4, 5, 6})
        QTest::addRow("CoaXPress on board %d", board) << board << 2;
    for (const int board : {7, 255})
        QTest::addRow("none on board %d", board) << board << none;
}

void tst_DigitalInterfaces::transportIsThatOfTheBoards()
{
    QFETCH(const int, board);
    QFETCH(const int, withoutPleora);
    const LensRig rig(profileWithBoard(board).constData());
    for (const auto &[pleora, transport] :
         {std::pair(0, withoutPleora), {1, 0}, {2, 0}, {3, 0}, {4, none}, {255, none}}) {
        QCOMPARE(zvtSetPleoraBoardType(rig.handle(), static_cast<uint8_t>(pleora)), 0);
        QCOMPARE(read(rig, zvtGetDeviceTLTypeAvailable), transport == none ? 0 : 1);
        QCOMPARE(transportOf(rig), transport);
        // Only the header mode of the transport is available.
        for (size_t mode = 0; mode < modesOfSdk.size(); ++mode)
            QCOMPARE(read(rig, modesOfSdk[mode].available), transport == static_cast<int>(mode) ? 1 : 0);
    }
}

void tst_DigitalInterfaces::transportFollowsTheIdentity()
{
    LensRig rig("discrete-fov");
    QCOMPARE(transportOf(rig), 0);
    QVERIFY(rig.set("identity.pleora", 0));
    QCOMPARE(transportOf(rig), 2);
    QCOMPARE(read(rig, zvtGetGigEHeaderMode), none);
    QCOMPARE(read(rig, zvtGetCoaXPressHeaderMode), 0);
    QVERIFY(rig.set("identity.pleora", 77));
    QCOMPARE(read(rig, zvtGetDeviceTLTypeAvailable), 0);
    QVERIFY(rig.set("identity.pleora", 3));
    QCOMPARE(read(rig, zvtGetDeviceTLTypeAvailable), 1);
    QCOMPARE(transportOf(rig), 0);
    QCOMPARE(read(rig, zvtGetGigEHeaderMode), 1);
}

void tst_DigitalInterfaces::builtInCamerasHaveTheirTransports_data()
{
    QTest::addColumn<QByteArray>("profile");
    const std::map<QString, int> special{
        {"bare", Interfaces::CameraLink},
        {"low-cost", Interfaces::CameraLink},
        {"board-6", Interfaces::CoaXPress},
        {"edge-values", none},
    };
    QTest::addColumn<int>("transport");
    for (const QString &name : emulator::Profile::names()) {
        const auto found = special.find(name);
        QTest::newRow(qPrintable(name)) << name.toUtf8()
                                        << (found == special.end() ? int(Interfaces::GigE) : found->second);
    }
}

void tst_DigitalInterfaces::builtInCamerasHaveTheirTransports()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const int, transport);
    const LensRig rig(profile.constData());
    QCOMPARE(read(rig, zvtGetDeviceTLTypeAvailable), transport == none ? 0 : 1);
    QCOMPARE(transportOf(rig), transport);
    const bool all = profile == "everything";
    for (size_t mode = 0; mode < modesOfSdk.size(); ++mode)
        QCOMPARE(read(rig, modesOfSdk[mode].available), all || transport == static_cast<int>(mode) ? 1 : 0);
    QCOMPARE(read(rig, zvtGetCameraLinkTypeWritable), all ? 1 : 0);
    QCOMPARE(read(rig, zvtGetCoaXPressLinkCountWritable), all ? 1 : 0);
}

void tst_DigitalInterfaces::eitherReadOfTheTransportCanFail()
{
    LensRig rig;
    const auto reads = [&] { return std::pair(read(rig, zvtGetDeviceTLTypeAvailable), transportOf(rig)); };
    QCOMPARE(reads(), std::pair(1, 0));
    QVERIFY(rig.set("interfaces.typeFails", 1));
    QCOMPARE(reads(), std::pair(none, 0));
    QVERIFY(rig.set("interfaces.typeFails", 2));
    QCOMPARE(reads(), std::pair(1, none));
    // The stream must still be stopped for a header mode.
    QCOMPARE(zvtSetGigEHeaderMode(rig.handle(), 1), refused);
    QVERIFY(!rig.set("interfaces.typeFails", 3));
    QVERIFY(rig.set("interfaces.typeFails", 0));
    QCOMPARE(reads(), std::pair(1, 0));
    QVERIFY(!rig.camera().snapshot().value("interfaces").toObject().contains("typeFails"));
}

void tst_DigitalInterfaces::headerModesAreTakenInTheirRange()
{
    QFETCH(const int, mode);
    const auto &[key, last, available, get, set] = modesOfSdk[static_cast<size_t>(mode)];
    LensRig rig;
    setStreaming(rig, false);
    QCOMPARE(read(rig, available), 1);
    QCOMPARE(read(rig, get), 0);
    for (int value = last; value >= 0; --value) {
        QCOMPARE(set(rig.handle(), static_cast<uint8_t>(value)), 0);
        QCOMPARE(read(rig, get), value);
        for (const int wrong : {last + 1, 255})
            QCOMPARE(set(rig.handle(), static_cast<uint8_t>(wrong)), refused);
        QCOMPARE(read(rig, get), value);
    }
}

void tst_DigitalInterfaces::headerModeThatIsNotAvailableIsRefused()
{
    QFETCH(const int, mode);
    const auto &[key, last, available, get, set] = modesOfSdk[static_cast<size_t>(mode)];
    LensRig rig("edge-values"); // It has no transport.
    setStreaming(rig, false);
    QCOMPARE(read(rig, available), 0);
    QCOMPARE(read(rig, get), none);
    QCOMPARE(set(rig.handle(), 0), refused);
    QVERIFY(rig.set("interfaces.allHeaderModes", true));
    QCOMPARE(read(rig, available), 1);
    QCOMPARE(read(rig, get), last); // The refused mode has changed nothing.
    QCOMPARE(set(rig.handle(), 0), 0);
    QCOMPARE(read(rig, get), 0);
    QVERIFY(rig.set("interfaces.allHeaderModes", false));
    QCOMPARE(read(rig, get), none);
}

void tst_DigitalInterfaces::gigEHeaderModeNeedsAStoppedStream()
{
    for (const char *profile : {"everything", "te-cooler"}) {
        LensRig rig(profile);
        QCOMPARE(zvtSetGigEHeaderMode(rig.handle(), 2), refused);
        setStreaming(rig, false);
        QCOMPARE(zvtSetGigEHeaderMode(rig.handle(), 2), 0);
        setStreaming(rig, true);
        QCOMPARE(zvtSetGigEHeaderMode(rig.handle(), 1), refused);
        QCOMPARE(zvtSetGigEHeaderMode(rig.handle(), 2), refused); // The present mode too.
        QCOMPARE(read(rig, zvtGetGigEHeaderMode), 2);
    }
}

void tst_DigitalInterfaces::onlyGigENeedsAStoppedStream()
{
    LensRig rig;
    QCOMPARE(zvtSetCameraLinkHeaderMode(rig.handle(), 1), 0);
    QCOMPARE(zvtSetCoaXPressHeaderMode(rig.handle(), 1), 0);
    QCOMPARE(zvtSetGigEHeaderMode(rig.handle(), 1), refused);
    QVERIFY(rig.set("identity.pleora", 0));
    QCOMPARE(zvtSetGigEHeaderMode(rig.handle(), 1), 0);
    QCOMPARE(read(rig, zvtGetGigEHeaderMode), 1);
    rig.open("low-cost");
    QCOMPARE(zvtSetCameraLinkHeaderMode(rig.handle(), 0), 0);
    rig.open("board-6");
    QCOMPARE(zvtSetCoaXPressHeaderMode(rig.handle(), 0), 0);
}

void tst_DigitalInterfaces::gigEHeaderModeWithoutAStreamIsTaken()
{
    const LensRig rig(
        writeProfile(m_folder.path(), "everything", R"({"sensor": {"videoStream": false}})").toUtf8().constData());
    QCOMPARE(transportOf(rig), 0);
    QCOMPARE(zvtSetGigEHeaderMode(rig.handle(), 1), 0);
    QCOMPARE(read(rig, zvtGetGigEHeaderMode), 1);
}

void tst_DigitalInterfaces::otherClientsSetThem_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("good");
    QTest::addColumn<QVariantList>("bad");
    const auto row = [](const char *name, const QVariant &good, const QVariantList &bad) {
        QTest::newRow(name) << QByteArray(name) << good << bad;
    };
    row("interfaces.gigEHeaderMode", 2, {3, -1, 0.5, "Image Only"});
    row("interfaces.cameraLinkHeaderMode", 1, {2, -1, true});
    row("interfaces.coaXPressHeaderMode", 1, {2, -1});
    row("interfaces.allHeaderModes", false, {0, "no"});
    row("interfaces.cameraLinkType", 255, {256, -1, 0.5});
    row("interfaces.cameraLinkTypeWritable", false, {0});
    row("interfaces.coaXPressLinks", 1, {0, 3, 1.5});
    row("interfaces.coaXPressLinksWritable", false, {0});
    row("interfaces.typeFails", 2, {3, -1, "type"});
}

void tst_DigitalInterfaces::otherClientsSetThem()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QVariant, good);
    QFETCH(const QVariantList, bad);
    LensRig rig;
    QVERIFY(settingOf(rig.camera(), QString::fromLatin1(name)) != good);
    QVERIFY(rig.set(name.constData(), good));
    for (const QVariant &wrong : bad)
        QVERIFY2(!rig.set(name.constData(), wrong), qPrintable(wrong.toString()));
    QCOMPARE(settingOf(rig.camera(), QString::fromLatin1(name)), good);
}

void tst_DigitalInterfaces::otherClientsDoNotSetWhatIsNotAvailable()
{
    LensRig rig("low-cost");
    QVERIFY(!rig.set("interfaces.gigEHeaderMode", 1));
    QVERIFY(!rig.set("interfaces.coaXPressHeaderMode", 1));
    QVERIFY(rig.set("interfaces.cameraLinkHeaderMode", 0));
    QCOMPARE(read(rig, zvtGetCameraLinkHeaderMode), 0);
}

void tst_DigitalInterfaces::snapshotsHoldModesAndLinks()
{
    LensRig rig;
    const QJsonObject before = rig.camera().snapshot();
    QCOMPARE(before.value("interfaces").toObject().keys(),
             QStringList({"cameraLinkHeaderMode", "cameraLinkType", "coaXPressHeaderMode", "coaXPressLinks",
                          "gigEHeaderMode"}));
    for (const Mode &mode : modesOfSdk)
        QVERIFY(rig.set(QByteArray("interfaces.") + mode.key, mode.last));
    QVERIFY(rig.set("interfaces.cameraLinkType", 7) && rig.set("interfaces.coaXPressLinks", 1));
    const QJsonObject after = rig.camera().snapshot();
    rig.camera().restore(before);
    QCOMPARE(rig.camera().snapshot(), before);
    for (const Mode &mode : modesOfSdk)
        QCOMPARE(read(rig, mode.get), 0);
    rig.camera().restore(after);
    QCOMPARE(rig.camera().snapshot(), after);
    for (const Mode &mode : modesOfSdk)
        QCOMPARE(read(rig, mode.get), mode.last);
    QCOMPARE(read(rig, zvtGetCameraLinkType), 7);
    QCOMPARE(read(rig, zvtGetCoaXPressLinkCount), 1);
}

void tst_DigitalInterfaces::linksHaveTheirValues_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("links");
    QTest::newRow("everything") << QByteArray("everything") << 1 << 2;
    QTest::newRow("bare") << QByteArray("bare") << 1 << 2;
    QTest::newRow("te-cooler") << QByteArray("te-cooler") << 0 << 2;
    QTest::newRow("board-6") << QByteArray("board-6") << 1 << 1;
    QTest::newRow("edge-values") << QByteArray("edge-values") << 255 << 1;
}

void tst_DigitalInterfaces::linksHaveTheirValues()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const int, type);
    QFETCH(const int, links);
    const LensRig rig(profile.constData());
    QCOMPARE(read(rig, zvtGetCameraLinkType), type);
    QCOMPARE(read(rig, zvtGetCoaXPressLinkCount), links);
}

void tst_DigitalInterfaces::framesDoNotDependOnThem()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    const auto before = rig.newest();
    for (const Mode &mode : modesOfSdk)
        QVERIFY(rig.set(QByteArray("interfaces.") + mode.key, mode.last));
    QVERIFY(rig.newest() == before);
}

void tst_DigitalInterfaces::functionsAreFast()
{
    LensRig rig;
    setStreaming(rig, false);
    const size_t mark = rig.camera().gate().mark();
    for (int repeat = 0; repeat < 5; ++repeat) {
        QCOMPARE(read(rig, zvtGetDeviceTLTypeAvailable), 1);
        QCOMPARE(transportOf(rig), 0);
        for (const Mode &mode : modesOfSdk) {
            QCOMPARE(mode.set(rig.handle(), 1), 0);
            QCOMPARE(read(rig, mode.get), 1);
            QCOMPARE(read(rig, mode.available), 1);
        }
        QCOMPARE(read(rig, zvtGetCameraLinkType), 1);
        QCOMPARE(read(rig, zvtGetCoaXPressLinkCount), 2);
    }
    QVERIFY(slowestFunction(rig.camera().gate(), mark) < std::chrono::milliseconds(1));
}

ZVT_TEST(tst_DigitalInterfaces)
#include "tst_DigitalInterfaces.moc"
