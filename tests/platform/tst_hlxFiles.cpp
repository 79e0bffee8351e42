#include "hlx/CFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "hlx/IFileSystem.h"
#include "hlx/path.h"
#include "tests/support/Test.h"

using hlx::CFile;
using hlx::CString;

class tst_hlxFiles : public Test
{
    Q_OBJECT

private slots:
    void init();

    void makesFilenames();
    void makesPaths();
    void matchesWildcards_data();
    void matchesWildcards();
    void matchesWildcardsInReasonableTime();

    void writesBytesAsTheyAre();
    void writesFormattedText();
    void replacesAnExistingFile();
    void writingWithoutAnOpenFileDoesNothing();
    void refusesOtherFlagsAndBadPaths();
    void openingAgainClosesTheFirstFile();
    void deletesFiles();
    void opensNothingThatIsNoFile();

private:
    CString file(const char *name) const
    {
        return QDir(m_folder.path()).filePath(QLatin1String(name)).toUtf8().constData();
    }
    QByteArray content(const char *name) const
    {
        QFile opened(QDir(m_folder.path()).filePath(QLatin1String(name)));
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray("cannot open");
    }

    QTemporaryDir m_folder;
};

void tst_hlxFiles::init()
{
    Test::init();
    m_folder = QTemporaryDir();
    QVERIFY(m_folder.isValid());
}

void tst_hlxFiles::makesFilenames()
{
    QCOMPARE(hlx::path::MakeFilename("movie", ".rqs").c_str(), "movie.rqs");
    QCOMPARE(hlx::path::MakeFilename("movie 2.5 m", ".qdseq").c_str(), "movie 2.5 m.qdseq");
    QCOMPARE(hlx::path::MakeFilename("movie", "rqs").c_str(), "movie.rqs");
    QCOMPARE(hlx::path::MakeFilename("movie.old", "").c_str(), "movie.old");
    QCOMPARE(hlx::path::MakeFilename("", ".rqs").c_str(), ".rqs");
}

void tst_hlxFiles::makesPaths()
{
    using hlx::path::MakePath;
    QCOMPARE(MakePath("folder", "name", '/').c_str(), "folder/name");
    QCOMPARE(MakePath("folder/", "name", '/').c_str(), "folder/name");
    QCOMPARE(MakePath("folder", "/name", '/').c_str(), "folder/name");
    QCOMPARE(MakePath("folder/", "/name", '/').c_str(), "folder/name");
    QCOMPARE(MakePath("", "name", '/').c_str(), "name");
    QCOMPARE(MakePath("folder", "", '/').c_str(), "folder");
    QCOMPARE(MakePath("/", "name", '/').c_str(), "/name");
    QCOMPARE(MakePath("folder/", "name", '\\').c_str(), "folder/\\name");
}

void tst_hlxFiles::matchesWildcards_data()
{
    QTest::addColumn<QByteArray>("pattern");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("matches");
    const auto row = [](const char *pattern, const char *text, bool matches) {
        QTest::addRow("%s on %s", pattern, text) << QByteArray(pattern) << QByteArray(text) << matches;
    };
    row("", "", true);
    row("", "a", false);
    row("*", "", true);
    row("*", "anything", true);
    row("abc", "abc", true);
    row("abc", "abcd", false);
    row("abc", "ABC", false);
    row("a?c", "abc", true);
    row("a?c", "ac", false);
    row("?", "", false);
    row("a*c", "abbbc", true);
    row("a*c", "ac", true);
    row("a*c", "abcd", false);
    row("*b*b", "abab", true);
    row("*.rqs", "a.rqs.rqs", true);
    row("a**", "a", true);
    row("*?", "", false);
}

void tst_hlxFiles::matchesWildcards()
{
    QFETCH(QByteArray, pattern);
    QFETCH(QByteArray, text);
    QTEST(hlx::path::WildcardMatch(pattern.constData(), text.constData()), "matches");
}

void tst_hlxFiles::matchesWildcardsInReasonableTime()
{
    const QByteArray text(5000, 'a');
    const QByteArray pattern = QByteArray("a*").repeated(30) + "b";
    QVERIFY(!hlx::path::WildcardMatch(pattern.constData(), text.constData()));
}

void tst_hlxFiles::writesBytesAsTheyAre()
{
    CFile opened;
    QVERIFY(opened.Open(file("a.txt"), 0x28));
    opened.WriteString("one\r\n");
    hlx::IFile &base = opened;
    base.WriteString("two\n");
    opened.Close();
    QCOMPARE(content("a.txt"), "one\r\ntwo\n");
}

void tst_hlxFiles::writesFormattedText()
{
    {
        CFile opened;
        QVERIFY(opened.Open(file("a.txt"), 0x28));
        opened.WriteFormattedString("%4d,%4d\r\n", 12, 34);
        opened.WriteFormattedString("%s", "");
        opened.WriteFormattedString("%s", std::string(5000, 'x').c_str());
    }
    QCOMPARE(content("a.txt"), "  12,  34\r\n" + QByteArray(5000, 'x'));
}

void tst_hlxFiles::replacesAnExistingFile()
{
    for (const char *text : {"a longer text", "short"}) {
        CFile opened;
        QVERIFY(opened.Open(file("a.txt"), CFile::CreateForWriting));
        opened.WriteString(text);
    }
    QCOMPARE(content("a.txt"), "short");
}

void tst_hlxFiles::writingWithoutAnOpenFileDoesNothing()
{
    CFile opened;
    opened.WriteString("text");
    opened.WriteFormattedString("%d", 1);
    opened.Close();
    QVERIFY(opened.Open(file("a.txt"), 0x28));
    opened.Close();
    opened.Close();
    opened.WriteString("text");
    QCOMPARE(content("a.txt"), "");
}

void tst_hlxFiles::refusesOtherFlagsAndBadPaths()
{
    CFile opened;
    for (const int flags : {0, 0x08, 0x20, 0x29, -1})
        QVERIFY(!opened.Open(file("a.txt"), flags));
    QVERIFY(!QFile::exists(QString::fromUtf8(file("a.txt").c_str())));
    QVERIFY(!opened.Open("", 0x28));
    QVERIFY(!opened.Open(m_folder.path().toUtf8().constData(), 0x28));
    QVERIFY(!opened.Open(file("missing/a.txt"), 0x28));
    opened.WriteString("text");
}

void tst_hlxFiles::openingAgainClosesTheFirstFile()
{
    CFile opened;
    QVERIFY(opened.Open(file("a.txt"), 0x28));
    opened.WriteString("first");
    QVERIFY(opened.Open(file("b.txt"), 0x28));
    QCOMPARE(content("a.txt"), "first");
    QVERIFY(!opened.Open(file("missing/c.txt"), 0x28));
    opened.WriteString("nowhere");
    QCOMPARE(content("b.txt"), "");
}

void tst_hlxFiles::deletesFiles()
{
    CFile().Open(file("a.txt"), 0x28);
    QVERIFY(hlx::fileSystem()->DeleteFile(file("a.txt")));
    QVERIFY(!QFile::exists(QString::fromUtf8(file("a.txt").c_str())));
    QVERIFY(!hlx::fileSystem()->DeleteFile(file("a.txt")));
    QVERIFY(!hlx::fileSystem()->DeleteFile(m_folder.path().toUtf8().constData()));
    QVERIFY(!hlx::fileSystem()->DeleteFile(""));
    QVERIFY(QDir(m_folder.path()).exists());
}

void tst_hlxFiles::opensNothingThatIsNoFile()
{
    QVERIFY(hlx::fileSystem()->OpenFile(m_folder.path().toUtf8().constData(), "rb") == nullptr);
    QVERIFY(hlx::fileSystem()->OpenFile("/dev/zero", "rb") == nullptr);
    QVERIFY(hlx::fileSystem()->OpenFile(file("missing"), "rb") == nullptr);
}

ZVT_TEST(tst_hlxFiles)
#include "tst_hlxFiles.moc"
