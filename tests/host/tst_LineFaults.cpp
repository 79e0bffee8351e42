#include "platform/emulator/control.h"
#include "standalone/StandaloneModel.h"
#include "standalone/desk/Faults.h"
#include "standalone/desk/LineModel.h"
#include "tests/support/Test.h"

#include "zvt/zvtsdk.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QtConcurrent>

#include <algorithm>
#include <memory>

/// Tests the list of changes, the beginning and the end of the model of the line, and its change to another camera.
/// tst_LineCard tests the rest of it.
class tst_LineFaults : public Test
{
    Q_OBJECT

private slots:
    void theListOfChangesHasAllCommandsAndNoReads();
    void theListOfChangesHasTheOperationsOfTheController();
    void startsWithTheLineOfTheStandaloneModel();
    void itsEndReleasesTheCamera();
    void aNewCameraHasTheFaultsWhenItConnects();
    void aHoldDoesNotStopTheNextCamera();
    void mayEndWhileTheConnectionIsHeld();
    void pluggingConnectsNoOtherCamera();
    void theFaultsOfADestroyedSourceEnd();
};

/// Connects this camera. Returns whether it worked.
static bool connects(StandaloneModel &standalone, const QString &key)
{
    standalone.connect(key);
    return QTest::qWaitFor([&] { return !standalone.connecting(); }) && standalone.connected();
}

/// Reads from the camera on the thread pool.
static QFuture<void> readGain(emulator::Camera &camera)
{
    return QtConcurrent::run([camera = camera.shared_from_this()] {
        uint8_t level = 0;
        zvtGetGainLevel(camera->handle(), &level);
    });
}

/// Whether a name is in the list of changes.
static bool isChange(const QString &name)
{
    return std::ranges::any_of(LineFaults::changes(), [&](const std::string &change) {
        const QString text = QString::fromStdString(change);
        return text.endsWith('*') ? name.startsWith(text.chopped(1)) : name == text;
    });
}

void tst_LineFaults::theListOfChangesHasAllCommandsAndNoReads()
{
    static const QRegularExpression reads(
        "^zvt((Mfg)?(Get|Is|Has|List|Read|Query|Clocks|Calc|Snap|Guess|Download)"
        "|(CoolerType|FrameSyncMode|NUCSource|NUCType|VideoZoomFactor)Text$|(NUC|State)Exists$)");
    QStringList wrong;
    for (const char *function : {
#define SDK_FUNCTION(name) #name,
#include "tests/platform/sdkFunctions.inc"
#undef SDK_FUNCTION
         }) {
        const QString name = QString::fromLatin1(function);
        if (isChange(name) == reads.match(name).hasMatch())
            wrong << name;
    }
    QCOMPARE(wrong, QStringList());
}

void tst_LineFaults::theListOfChangesHasTheOperationsOfTheController()
{
    static const QRegularExpression operation("\"(controller\\.[A-Za-z.]+)\"");
    static const QRegularExpression reads(
        "^controller\\.(Get|Is|Has|Can|Find|Download|Connect$|capabilities|properties\\.get$)");
    QSet<QString> names;
    for (const char *folder : {"/platform/hlxcam", "/platform/hlxcamzvt"}) {
        QDirIterator files(QStringLiteral(ZVT_SOURCE_DIR) + folder, {"*.cpp"});
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            auto matches = operation.globalMatch(QString::fromUtf8(file.readAll()));
            while (matches.hasNext())
                names << matches.next().captured(1);
        }
    }
    QVERIFY(names.contains("controller.SetWindow"));
    QStringList wrong;
    for (const QString &name : std::as_const(names))
        if (isChange(name) == reads.match(name).hasMatch())
            wrong << name;
    QCOMPARE(wrong, QStringList());
}

void tst_LineFaults::startsWithTheLineOfTheStandaloneModel()
{
    const QTemporaryDir folder;
    StandaloneModel::Line line;
    line.latency = 30;
    line.failRate = 0.25;
    line.seed = 7;
    StandaloneModel standalone(QStringLiteral("low-cost"), folder.path(), line);
    Faults faults;
    const LineModel started(standalone, faults);
    QCOMPARE(started.latency(), 30);
    QCOMPARE(started.failPercent(), "25");
    QCOMPARE(started.seed(), "7");
    QCOMPARE(faults.texts(),
             QStringList({"Each call takes 30 ms longer", "Each call fails with the probability 0.25"}));
}

void tst_LineFaults::itsEndReleasesTheCamera()
{
    const QTemporaryDir folder;
    StandaloneModel standalone(QStringLiteral("low-cost"), folder.path(), {});
    const auto camera = standalone.camera().shared_from_this();
    {
        Faults faults;
        LineModel ended(standalone, faults);
        QCOMPARE(ended.enterHold("*"), QString());
        ended.pull();
    }
    QVERIFY(camera->gate().requests().empty());
    QVERIFY(connects(standalone, "low-cost"));
}

void tst_LineFaults::aNewCameraHasTheFaultsWhenItConnects()
{
    const QTemporaryDir folder;
    StandaloneModel standalone(QStringLiteral("low-cost"), folder.path(), {});
    Faults faults;
    LineModel line(standalone, faults);
    QCOMPARE(line.enterFailPercent("100"), QString());
    QVERIFY(!connects(standalone, "bare"));
    QVERIFY(!connects(standalone, "low-cost"));
    QCOMPARE(line.enterFailPercent("0"), QString());
    QVERIFY(connects(standalone, "bare"));
}

void tst_LineFaults::aHoldDoesNotStopTheNextCamera()
{
    const QTemporaryDir folder;
    StandaloneModel standalone(QStringLiteral("low-cost"), folder.path(), {});
    Faults faults;
    auto line = std::make_unique<LineModel>(standalone, faults);
    QCOMPARE(line->enterHold("*"), QString());
    // A camera that is made now.
    QVERIFY(connects(standalone, "bare"));
    const QFuture<void> first = readGain(standalone.camera());
    QVERIFY(standalone.camera().gate().waitHeld("zvtGetGainLevel"));
    standalone.disconnect();
    QTRY_VERIFY(!standalone.connected());
    // One that exists.
    QVERIFY(connects(standalone, "low-cost"));
    QTRY_VERIFY(first.isFinished());
    const QFuture<void> second = readGain(standalone.camera());
    QVERIFY(standalone.camera().gate().waitHeld("zvtGetGainLevel"));
    line.reset();
    QTRY_VERIFY(second.isFinished());
}

void tst_LineFaults::mayEndWhileTheConnectionIsHeld()
{
    const QTemporaryDir folder;
    auto standalone = std::make_unique<StandaloneModel>(QStringLiteral("low-cost"), folder.path(), LineFaults{});
    const auto camera = standalone->camera().shared_from_this();
    Faults faults;
    {
        LineModel line(*standalone, faults);
        QCOMPARE(line.enterHold("*"), QString());
        standalone->connect("low-cost");
        QVERIFY(camera->gate().waitHeld(LineFaults::connection));
    }
    QTRY_VERIFY(standalone->connected());
    standalone->disconnect();
    QTRY_VERIFY(!standalone->connected());
    // Without a model of the line.
    camera->gate().hold("*");
    standalone->connect("low-cost");
    QVERIFY(camera->gate().waitHeld(LineFaults::connection));
    standalone.reset();
    QVERIFY(!camera->connected());
}

void tst_LineFaults::pluggingConnectsNoOtherCamera()
{
    const QTemporaryDir folder;
    StandaloneModel standalone(QStringLiteral("low-cost"), folder.path(), {});
    Faults faults;
    LineModel line(standalone, faults);
    QVERIFY(connects(standalone, "low-cost"));
    line.pull();
    QTRY_VERIFY(line.canMoveCable() && !standalone.connected());
    QVERIFY(!connects(standalone, "bare"));
    QCOMPARE(standalone.camera().profile().name(), "bare");
    line.plug();
    QTRY_VERIFY(line.canMoveCable());
    QVERIFY(!standalone.camera().connected());
}

void tst_LineFaults::theFaultsOfADestroyedSourceEnd()
{
    Faults faults;
    {
        const QObject source;
        faults.add(
            &source, [] { return QStringList{"Slow"}; }, [] {});
        QVERIFY(faults.active());
    }
    faults.update();
    QVERIFY(!faults.active());
}

ZVT_TEST(tst_LineFaults)
#include "tst_LineFaults.moc"
