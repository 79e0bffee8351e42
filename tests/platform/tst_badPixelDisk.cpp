#include "tests/platform/BadPixelRig.h"
#include "tests/support/Test.h"
#include "tests/support/computedMicroseconds.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRegularExpression>

using Pixels = BadPixelRig::Pixels;

/// Cameras whose lists of bad pixels cannot be written, and arrays and windows for which there are none.
class tst_badPixelDisk : public Test
{
    Q_OBJECT

private slots:
    void aListThatCannotBeWrittenIsUsed();
    void eachFlushTriesAgain();
    void theEndOfTheProcessTriesAgain();
    void leavesAnUnwrittenListBehind();
    void aRemovedFolderLosesNoList();
    void downloadsOfOtherFilesProvideNoList();
    void aLargeArrayHasNoFirstList();
    void aLargeWindowIsRefusedAtOnce();
};

namespace
{

constexpr auto path = BadPixelRig::factoryPath;
constexpr uint32_t all = BadPixelRig::all;
constexpr int refused = emulator::Refused;

void expectWarning()
{
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^storage .*/factory.bpl: cannot be written$")));
}

/// Makes it impossible to write the factory's list of a camera.
bool obstruct(emulator::Camera &camera)
{
    camera.flushMemory();
    QFile obstacle(camera.folder() + QStringLiteral("/flashfs"));
    return QDir(obstacle.fileName()).removeRecursively() && obstacle.open(QIODevice::WriteOnly);
}

bool clear(emulator::Camera &camera) { return QFile::remove(camera.folder() + QStringLiteral("/flashfs")); }

} // namespace

void tst_badPixelDisk::aListThatCannotBeWrittenIsUsed()
{
    BadPixelRig rig;
    QVERIFY(rig.useNarrowLimits() && rig.make("narrow") && rig.useOnlyTheList());
    const Pixels first = rig.flagged(0);
    Pixels both = rig.flagged(1);
    QVERIFY(first != both && first.size() > 10 * both.size());
    QVERIFY(obstruct(rig.camera()));
    expectWarning();
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 1), 0);
    rig.camera().flushMemory();
    QVERIFY(rig.pixelsOf(rig.download(path)) == first);
    QCOMPARE(rig.run(), "0 Done");
    QVERIFY(rig.flagged(0) == first);
    QCOMPARE(zvtDiscardNUC(rig.handle()), 0);
    both.insert(first.begin(), first.end());
    QCOMPARE(zvtMfgFactoryBPLAppend(rig.handle(), 2), 0);
    QVERIFY(rig.pixelsOf(rig.download(path)) == both);
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), all), 0);
    QVERIFY(rig.flagged(0) == both && rig.flagged(1) == both);
    rig.camera().flushMemory();
    // The end of the camera writes it.
    QVERIFY(clear(rig.camera()));
    rig.open("everything");
    QVERIFY(rig.useSmallWindow() && QFile::exists(rig.pathOf(path)));
    QVERIFY(rig.pixelsOf(rig.download(path)) == both);
}

void tst_badPixelDisk::eachFlushTriesAgain()
{
    BadPixelRig rig;
    QVERIFY(obstruct(rig.camera()));
    expectWarning();
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 1), 0);
    rig.camera().flushMemory();
    QVERIFY(!rig.isWritten() && clear(rig.camera()));
    // Nothing has changed since.
    rig.camera().flushMemory();
    QVERIFY(rig.isWritten() && QFile::exists(rig.pathOf(path)));
    QVERIFY(rig.pixelsOf(rig.download(path)) == rig.flagged());
}

// A second process makes a camera that it does not end.
void tst_badPixelDisk::theEndOfTheProcessTriesAgain()
{
    const QTemporaryDir folder;
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ZVT_TEST_FOLDER", folder.path());
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {"tst_badPixelDisk", "leavesAnUnwrittenListBehind"});
    QVERIFY(process.waitForFinished());
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, process.readAll());
    const QString file = folder.path() + QStringLiteral("/cameras/everything") + QLatin1String(path);
    const auto list = BadPixelRig::List::load(hlx::fileSystem(), qPrintable(file));
    QVERIFY(list && list->pixels.size() > 100);
}

void tst_badPixelDisk::leavesAnUnwrittenListBehind()
{
    const QString folder = qEnvironmentVariable("ZVT_TEST_FOLDER");
    if (folder.isEmpty())
        return;
    static auto *const left = new std::shared_ptr(emulator::Camera::create("everything", folder));
    emulator::Camera &camera = **left;
    camera.connect();
    QVERIFY(obstruct(camera));
    expectWarning();
    QCOMPARE(zvtMfgFactoryBPLCreate(camera.handle(), all), 0);
    camera.flushMemory();
    QVERIFY(clear(camera) && !QFile::exists(camera.folder() + QLatin1String(path)));
}

void tst_badPixelDisk::aRemovedFolderLosesNoList()
{
    BadPixelRig rig;
    rig.camera().flushMemory();
    QVERIFY(QDir(rig.camera().folder()).removeRecursively());
    // The first list comes back, but not its file.
    const Pixels first = rig.pixelsOf(rig.download(path));
    QVERIFY(first.size() > 300);
    rig.camera().flushMemory();
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), all), 0);
    rig.camera().flushMemory();
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QCOMPARE(zvtAbortNUC(rig.handle()), 0);
    QCOMPARE(zvtMfgFactoryBPLCreate(rig.handle(), 1), 0);
    rig.camera().flushMemory();
    QVERIFY(rig.pixelsOf(rig.download(path)) == rig.flagged());
    QVERIFY(!QFile::exists(rig.camera().folder()));
}

void tst_badPixelDisk::downloadsOfOtherFilesProvideNoList()
{
    BadPixelRig rig;
    QVERIFY(rig.exported());
    QVERIFY(rig.removeFactoryList());
    QVERIFY(rig.download("/Temp/ps.bpl") && !rig.download("/Temp/missing.bpl"));
    rig.camera().flushMemory();
    QVERIFY(!QFile::exists(rig.pathOf(path)));
    QVERIFY(rig.download(path));
    rig.camera().flushMemory();
    QVERIFY(QFile::exists(rig.pathOf(path)));
}

void tst_badPixelDisk::aLargeArrayHasNoFirstList()
{
    BadPixelRig rig;
    rig.openWith(R"({"sensor": {"maximumSize": "4096x2048", "windowSizes": ["4096x2048"]}})");
    QVERIFY(!rig.download(path) && rig.isWritten());
    // A run and Append use the known pixels of the window.
    QVERIFY(rig.useOnlyTheList());
    QCOMPARE(rig.run(), "0 Done");
    const Pixels known = rig.flagged();
    QVERIFY(!known.empty());
    QCOMPARE(zvtMfgFactoryBPLAppend(rig.handle(), 1), 0);
    QCOMPARE(rig.sizeOf(rig.download(path)), "160x128");
    QVERIFY(rig.pixelsOf(rig.download(path)) == known);
    // The list is now one of this window.
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 320, 256}));
    QCOMPARE(zvtStartNUC(rig.handle()), refused);
}

void tst_badPixelDisk::aLargeWindowIsRefusedAtOnce()
{
    BadPixelRig rig;
    rig.open("edge-values");
    QCOMPARE(rig.window().pixels(), int64_t(65535) * 65535);
    const qint64 start = computedMicroseconds();
    for (const auto function : {zvtMfgFactoryBPLCreate, zvtMfgFactoryBPLAppend, zvtMfgFactoryBPLApply})
        QCOMPARE(function(rig.handle(), all), refused);
    QCOMPARE(zvtSaveBadPixelList(rig.handle(), 0, "/Temp/ps0.bpl"), refused);
    const qint64 time = computedMicroseconds() - start;
    QVERIFY2(time < 100'000, QByteArray::number(time));
}

ZVT_TEST(tst_badPixelDisk)
#include "tst_badPixelDisk.moc"
