#include "platform/emulator/devices/BadPixelFolder.h"

#include "tests/platform/BadPixelRig.h"
#include "tests/support/Test.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <optional>

using emulator::BadPixelFolder;

/// The files of the lists of bad pixels when the disk or another program does something unusual.
class tst_badPixelFolder : public Test
{
    Q_OBJECT

private slots:
    void aNewerListIsWrittenNext();
    void aMissingFactoryListIsThatOfANewCamera();
    void aFolderIsNoFactoryList();
    void aRemovedFolderIsNotMadeAgain();
    void warnsOncePerPathUntilItIsWritten();
    void pathsAreCleaned_data();
    void pathsAreCleaned();
};

namespace
{

const QString factory = BadPixelFolder::factoryPath;

BadPixelFolder::Map listOf(int width)
{
    return std::make_shared<const emulator::image::BadPixelMap>(emulator::image::BadPixelMap{{0, 0, width, 1}});
}

/// A folder in which the factory's list of a new camera is 8 pixels wide.
struct Lists {
    QTemporaryDir folder;
    BadPixelFolder files{folder.path(), [] { return listOf(8); }};

    QString pathOf(const QString &path) const { return folder.path() + path; }
    /// The width of a list; 0 if it does not exist.
    int width(const QString &path) const
    {
        const auto list = files.read(path);
        return list ? list->window.width : 0;
    }
    /// The same of the list in a file.
    int writtenWidth(const QString &path) const
    {
        const auto list = hlx::BadPixelFile::load(hlx::fileSystem(), qPrintable(pathOf(path)));
        return list ? list->width : 0;
    }
};

void expectWarning(const char *path)
{
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^storage .*%1: cannot be written$").arg(path)));
}

} // namespace

void tst_badPixelFolder::aNewerListIsWrittenNext()
{
    const QTemporaryDir folder;
    std::optional<BadPixelFolder> files;
    // write() makes the first list, and Create comes meanwhile.
    files.emplace(folder.path(), [&files] {
        files->replace(factory, listOf(4));
        return listOf(8);
    });
    const auto written = [&folder] {
        const auto list = hlx::BadPixelFile::load(hlx::fileSystem(), qPrintable(folder.path() + factory));
        return list ? list->width : 0;
    };
    files->provideFactoryList();
    files->write();
    QCOMPARE(written(), 8);
    QVERIFY(!files->isWritten());
    QCOMPARE(files->read(factory)->window.width, 4);
    files->write();
    QVERIFY(files->isWritten());
    QCOMPARE(written(), 4);
}

void tst_badPixelFolder::aMissingFactoryListIsThatOfANewCamera()
{
    Lists lists;
    QCOMPARE(lists.width(factory), 8);
    QVERIFY(lists.files.unwritten(factory).has_value());
    QCOMPARE(lists.width("/Temp/ps0.bpl"), 0);
    QVERIFY(!lists.files.unwritten("/Temp/ps0.bpl"));
    // No list was replaced or provided before.
    lists.files.write();
    QVERIFY(!QFile::exists(lists.pathOf(factory)));
}

void tst_badPixelFolder::aFolderIsNoFactoryList()
{
    Lists lists;
    QVERIFY(QDir().mkpath(lists.pathOf(factory)));
    QVERIFY(!lists.files.hasFactoryFile());
    QCOMPARE(lists.width(factory), 8);
    lists.files.provideFactoryList();
    expectWarning("/factory.bpl");
    lists.files.write();
    QCOMPARE(lists.width(factory), 8);
    QVERIFY(QDir().rmdir(lists.pathOf(factory)));
    lists.files.write();
    QCOMPARE(lists.writtenWidth(factory), 8);
}

void tst_badPixelFolder::aRemovedFolderIsNotMadeAgain()
{
    Lists lists;
    QVERIFY(lists.folder.remove());
    lists.files.provideFactoryList();
    lists.files.replace("/Temp/ps0.bpl", listOf(2));
    lists.files.write();
    QVERIFY(!QFile::exists(lists.folder.path()));
    // No list is lost.
    QCOMPARE(lists.width(factory), 8);
    QCOMPARE(lists.width("/Temp/ps0.bpl"), 2);
    lists.files.replace(factory, listOf(4));
    lists.files.write();
    QCOMPARE(lists.width(factory), 4);
    QVERIFY(!lists.files.isWritten() && !QFile::exists(lists.folder.path()));
    QVERIFY(QDir().mkdir(lists.folder.path()));
    lists.files.write();
    QVERIFY(lists.files.isWritten());
    QCOMPARE(lists.writtenWidth(factory), 4);
    QCOMPARE(lists.writtenWidth("/Temp/ps0.bpl"), 2);
    QVERIFY(QDir(lists.folder.path()).removeRecursively());
}

void tst_badPixelFolder::warnsOncePerPathUntilItIsWritten()
{
    Lists lists;
    QFile obstacle(lists.pathOf("/Temp"));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    lists.files.replace("/Temp/ps0.bpl", listOf(2));
    expectWarning("/Temp/ps0.bpl");
    lists.files.write();
    lists.files.write();
    lists.files.replace("/Temp/ps0.bpl", listOf(3));
    lists.files.replace("/Temp/ps1.bpl", listOf(4));
    expectWarning("/Temp/ps1.bpl");
    lists.files.write();
    lists.files.write();
    QVERIFY(obstacle.remove());
    lists.files.write();
    QCOMPARE(lists.writtenWidth("/Temp/ps0.bpl"), 3);
    QVERIFY(QDir(lists.pathOf("/Temp")).removeRecursively() && obstacle.open(QIODevice::WriteOnly));
    lists.files.replace("/Temp/ps0.bpl", listOf(5));
    expectWarning("/Temp/ps0.bpl");
    lists.files.write();
}

void tst_badPixelFolder::pathsAreCleaned_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("clean");
    const auto row = [](const char *path, const char *clean) {
        QTest::newRow(path) << QString::fromLatin1(path) << QString::fromLatin1(clean);
    };
    row("/Temp/ps0.bpl", "/Temp/ps0.bpl");
    row("Temp/ps0.bpl", "/Temp/ps0.bpl");
    row("//Temp//./ps0.bpl", "/Temp/ps0.bpl");
    row("Temp/../Temp/ps0.bpl", "/Temp/ps0.bpl");
    // The file system refuses this path if the folder does not exist.
    row("/missing/../Temp/ps0.bpl", "/Temp/ps0.bpl");
    row("/../Temp/ps0.bpl", "");
    row("/Temp/../../ps0.bpl", "");
    row("", "");
}

void tst_badPixelFolder::pathsAreCleaned()
{
    QFETCH(const QString, path);
    QFETCH(const QString, clean);
    const BadPixelFolder files(QStringLiteral("/any/folder"), [] { return nullptr; });
    QCOMPARE(files.cleanPath(path), clean);
}

ZVT_TEST(tst_badPixelFolder)
#include "tst_badPixelFolder.moc"
