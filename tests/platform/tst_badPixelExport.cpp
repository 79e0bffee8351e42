#include "tests/platform/BadPixelRig.h"
#include "tests/support/Test.h"
#include "tests/support/computedMicroseconds.h"

#include <QDirIterator>
#include <QRegularExpression>

#include <algorithm>
#include <limits>
#include <mutex>

#include <unistd.h>

using Pixels = BadPixelRig::Pixels;

/// The lists of bad pixels that a camera makes from its corrections.
class tst_badPixelExport : public Test
{
    Q_OBJECT

private slots:
    void containsTheFlaggedPixelsRowByRow();
    void isOneOfTheWindow();
    void doesNotDependOnTheFlips_data();
    void doesNotDependOnTheFlips();
    void isThatOfTheCorrectionInUse();
    void replacesAFileAsAWhole();
    void pathsAreChecked_data();
    void pathsAreChecked();
    void needsACorrection();
    void unsavedCorrectionsHaveOne();
    void areThereBeforeTheyAreWritten();
    void aFileThatCannotBeWrittenIsTriedAgain();
    void takesLinearTime();
};

namespace
{

constexpr int refused = emulator::Refused;

/// Everything below a folder, with the sizes of the files.
QStringList allFiles(const QString &folder)
{
    QStringList all;
    for (QDirIterator entry(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                            QDirIterator::Subdirectories);
         entry.hasNext();) {
        entry.next();
        all << entry.filePath() + ' ' + QString::number(entry.fileInfo().isDir() ? 0 : entry.fileInfo().size());
    }
    all.sort();
    return all;
}

} // namespace

void tst_badPixelExport::containsTheFlaggedPixelsRowByRow()
{
    BadPixelRig rig;
    QVERIFY(rig.useWholeArray());
    const auto list = rig.exported();
    QCOMPARE(rig.sizeOf(list), "640x512");
    const Pixels flagged = rig.flagged();
    QVERIFY2(flagged.size() > 400 && flagged.size() < 600, QByteArray::number(flagged.size()));
    QVERIFY(rig.pixelsOf(list) == flagged && list->pixels.size() == flagged.size());
    QVERIFY(std::ranges::is_sorted(list->pixels, {}, [](const auto &pixel) { return std::pair(pixel.y, pixel.x); }));
    // The bytes of the file on the camera are those of the list.
    rig.camera().flushMemory();
    QFile file(rig.pathOf("/Temp/ps.bpl"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArrayView(list->bytes()).toByteArray());
}

void tst_badPixelExport::isOneOfTheWindow()
{
    BadPixelRig rig;
    QVERIFY(rig.useWholeArray());
    const Pixels all = rig.flagged();
    QVERIFY(rig.set("sensor.window", QVariantList{320, 128, 160, 128}));
    const auto list = rig.exported();
    QCOMPARE(rig.sizeOf(list), "160x128");
    Pixels inside;
    for (const auto &[x, y] : all)
        if (x >= 320 && x < 480 && y >= 128 && y < 256)
            inside.emplace(x - 320, y - 128);
    QVERIFY(!inside.empty() && rig.pixelsOf(list) == inside);
}

void tst_badPixelExport::doesNotDependOnTheFlips_data()
{
    QTest::addColumn<bool>("mirrored");
    QTest::addColumn<bool>("inverted");
    QTest::newRow("plain") << false << false;
    QTest::newRow("mirrored") << true << false;
    QTest::newRow("inverted") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_badPixelExport::doesNotDependOnTheFlips()
{
    QFETCH(const bool, mirrored);
    QFETCH(const bool, inverted);
    BadPixelRig rig;
    QVERIFY(rig.set("image.reverted", mirrored) && rig.set("image.inverted", inverted));
    QVERIFY(rig.make("mine"));
    const Pixels listed = rig.pixelsOf(rig.exported());
    QVERIFY(listed == rig.flagged(0, mirrored, inverted));
    // These are the pixels of the detector that have a fault.
    const auto read = rig.window();
    int faults = 0;
    for (const auto &fault : rig.camera().device<emulator::Sensor>()->array().mapsFor(read)->faults())
        if (fault.kind != emulator::image::Detector::Fault::Twinkling && read.contains({fault.x, fault.y, 1, 1})) {
            ++faults;
            QVERIFY(listed.contains({fault.x - read.x, fault.y - read.y}));
        }
    QVERIFY(faults > 10);
}

void tst_badPixelExport::isThatOfTheCorrectionInUse()
{
    BadPixelRig rig;
    const Pixels loaded = rig.pixelsOf(rig.exported());
    QVERIFY(rig.useNarrowLimits());
    QCOMPARE(rig.run(), "0 Done");
    const Pixels pending = rig.pixelsOf(rig.exported());
    QVERIFY(pending.size() > 10 * loaded.size());
    QCOMPARE(zvtDiscardNUC(rig.handle()), 0);
    QVERIFY(rig.pixelsOf(rig.exported()) == loaded);
}

void tst_badPixelExport::replacesAFileAsAWhole()
{
    BadPixelRig rig;
    const auto first = rig.exported();
    rig.camera().flushMemory();
    // A second name keeps the contents of a file that is replaced, and shows those of one that is written again.
    QVERIFY(QFile::exists(rig.pathOf("/Temp/ps.bpl")));
    const QString kept = rig.pathOf("/Temp/kept.bpl");
    QCOMPARE(::link(qPrintable(rig.pathOf("/Temp/ps.bpl")), qPrintable(kept)), 0);
    QVERIFY(rig.useNarrowLimits());
    QCOMPARE(rig.run(), "0 Done");
    const auto second = rig.exported();
    rig.camera().flushMemory();
    QVERIFY(first && second && second->pixels.size() > first->pixels.size());
    QVERIFY(rig.pixelsOf(rig.download("/Temp/kept.bpl")) == rig.pixelsOf(first));
    QCOMPARE(QDir(rig.pathOf("/Temp")).entryList(QDir::Files), QStringList({"kept.bpl", "ps.bpl"}));
}

void tst_badPixelExport::pathsAreChecked_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<bool>("accepted");
    const auto row = [](const QByteArray &path, bool accepted) {
        QTest::addRow("%s", path.left(60).constData()) << path << accepted;
    };
    row("/Temp/ps0.bpl", true);
    row("/Temp/two words.bpl", true);
    row("/Temp/Gr\xc3\xb6\xc3\x9f"
        "e.bpl",
        true);
    row("/Temp/" + QByteArray(251, 'x') + ".bpl", true);
    row("/Temp/" + QByteArray(252, 'y') + ".bpl", false);
    for (const char *path : {"",
                             "/",
                             "/Temp",
                             "/Temp/",
                             "/Temp/.bpl",
                             "/Temp/ps0",
                             "/Temp/ps0.BPL",
                             "/Temp/ps0.bpl/",
                             "/temp/ps0.bpl",
                             "Temp/ps0.bpl",
                             "//Temp/ps0.bpl",
                             "/ps0.bpl",
                             "/states/ps0.bpl",
                             "/Temp/a/ps0.bpl",
                             "/Temp/../ps0.bpl",
                             "/Temp/../Temp/ps0.bpl",
                             "/Temp/./ps0.bpl",
                             "/Temp/a\\b.bpl",
                             "/Temp/a:b.bpl",
                             "/Temp/ ps0.bpl",
                             "/Temp/\xff.bpl",
                             "/flashfs/system/factoryConfig/factory.bpl"})
        row(path, false);
}

void tst_badPixelExport::pathsAreChecked()
{
    QFETCH(const QByteArray, path);
    QFETCH(const bool, accepted);
    BadPixelRig rig;
    rig.camera().flushMemory();
    const QStringList before = allFiles(rig.camera().folder());
    QCOMPARE(zvtSaveBadPixelList(rig.handle(), 0, path.constData()), accepted ? 0 : refused);
    rig.camera().flushMemory();
    if (accepted)
        QVERIFY(rig.pixelsOf(rig.download(path.constData())) == rig.flagged());
    else
        QCOMPARE(allFiles(rig.camera().folder()), before);
}

void tst_badPixelExport::needsACorrection()
{
    BadPixelRig rig;
    for (const uint8_t preset : {2, 3, 4, 255})
        QCOMPARE(zvtSaveBadPixelList(rig.handle(), preset, "/Temp/ps0.bpl"), refused);
    QCOMPARE(zvtSaveBadPixelList(rig.handle(), 1, "/Temp/ps0.bpl"), 0);
    QCOMPARE(zvtUnloadNUC(rig.handle(), 1), 0);
    QCOMPARE(zvtSaveBadPixelList(rig.handle(), 1, "/Temp/ps1.bpl"), refused);
    rig.camera().flushMemory();
    QVERIFY(!QFile::exists(rig.pathOf("/Temp/ps1.bpl")));
    rig.open("bare");
    QVERIFY(zvtSaveBadPixelList(rig.handle(), 0, "/Temp/ps0.bpl") != 0);
}

void tst_badPixelExport::unsavedCorrectionsHaveOne()
{
    BadPixelRig rig;
    QCOMPARE(zvtSetNUCPreset(rig.handle(), 2), 0);
    QCOMPARE(zvtSaveBadPixelList(rig.handle(), 2, "/Temp/ps2.bpl"), refused);
    QVERIFY(rig.set("sensor.sequencingMode", 2));
    emulator::Clock::advance(1000);
    QCOMPARE(rig.run(), "0 Done");
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
    QVERIFY(rig.name(2).isEmpty());
    QVERIFY(rig.pixelsOf(rig.exported(2)) == rig.flagged(2) && !rig.flagged(2).empty());
}

void tst_badPixelExport::areThereBeforeTheyAreWritten()
{
    BadPixelRig rig;
    rig.camera().flushMemory();
    std::optional<BadPixelRig::List> list;
    {
        // Nothing is written while the lock is held. The functions do not release it, since it is held twice in them.
        const std::lock_guard lock(rig.camera().mutex());
        list = rig.exported();
        QVERIFY(rig.pixelsOf(list) == rig.flagged() && !rig.flagged().empty());
        QVERIFY(rig.download("Temp/../Temp//ps.bpl"));
        QVERIFY(!rig.download("/../Temp/ps.bpl") && !rig.download("/Temp/ps1.bpl"));
        QVERIFY(!QFile::exists(rig.pathOf("/Temp/ps.bpl")));
    }
    rig.camera().flushMemory();
    QFile file(rig.pathOf("/Temp/ps.bpl"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArrayView(list->bytes()).toByteArray());
    // From now on it is the file.
    QVERIFY(file.remove());
    QVERIFY(!rig.download("/Temp/ps.bpl"));
}

void tst_badPixelExport::aFileThatCannotBeWrittenIsTriedAgain()
{
    const QTemporaryDir folder;
    const QString path = QStringLiteral("/Temp/ps0.bpl");
    emulator::BadPixelFolder files(folder.path(), [] { return nullptr; });
    files.replace(path,
                  std::make_shared<emulator::image::BadPixelMap>(emulator::image::BadPixelMap{{8, 4, 2, 1}, {0, 1}}));
    QFile obstacle(folder.filePath(QStringLiteral("Temp")));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^storage .*/Temp/ps0.bpl: cannot be written")));
    files.write();
    QVERIFY(!files.isWritten() && files.unwritten(path));
    files.write();
    QVERIFY(!files.isWritten());
    QVERIFY(obstacle.remove());
    files.write();
    QVERIFY(files.isWritten() && !files.unwritten(path));
    const auto list = BadPixelRig::List::load(hlx::fileSystem(), qPrintable(folder.path() + path));
    QCOMPARE(BadPixelRig::sizeOf(list), "2x1");
    QVERIFY(BadPixelRig::pixelsOf(list) == (Pixels{{1, 0}}));
}

void tst_badPixelExport::takesLinearTime()
{
    BadPixelRig rig;
    QVERIFY(rig.useWholeArray() && rig.useNarrowLimits());
    emulator::Clock::advance(1000);
    QCOMPARE(rig.run(), "0 Done");
    // The list, and the bytes of its file. The camera's thread does not write the file meanwhile.
    const auto timeOf = [&rig] {
        rig.camera().flushMemory();
        const std::lock_guard lock(rig.camera().mutex());
        // unwritten() releases it once.
        const std::lock_guard again(rig.camera().mutex());
        qint64 shortest = std::numeric_limits<qint64>::max();
        for (int turn = 0; turn < 5; ++turn) {
            const qint64 start = computedMicroseconds();
            const int status = zvtSaveBadPixelList(rig.handle(), 0, "/Temp/ps.bpl");
            const auto bytes = rig.lists().unwritten(QStringLiteral("/Temp/ps.bpl"));
            const qint64 time = computedMicroseconds() - start;
            if (status != 0 || !bytes)
                return -1.0;
            shortest = std::min(shortest, time);
        }
        return double(shortest);
    };
    const double whole = timeOf();
    const auto large = rig.exported();
    QVERIFY2(large && large->pixels.size() > 100'000 && large->pixels.size() < 150'000,
             QByteArray::number(large ? large->pixels.size() : 0));
    QVERIFY(rig.pixelsOf(large) == rig.flagged());
    QVERIFY(rig.useSmallWindow());
    const double part = timeOf();
    const auto small = rig.exported();
    QVERIFY(small && small->pixels.size() > 5'000);
    // A sixteenth of the pixels; quadratic time would give 256.
    QVERIFY(whole > 0 && part > 0);
    QVERIFY2(whole / part < 64, QByteArray::number(whole / part));
}

ZVT_TEST(tst_badPixelExport)
#include "tst_badPixelExport.moc"
