#include "tests/support/Test.h"
#include "tests/unit/NucInfoRig.h"

#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

/// The text file of the description of a correction.
class tst_NucInfoModelFile : public Test
{
    Q_OBJECT

private slots:
    void rowsAreSaved();
    void fileIsReplaced();
    void fileThatCannotBeOpenedIsReported();
    void failedWriteIsNotReported();
};

void tst_NucInfoModelFile::rowsAreSaved()
{
    zvtSNUCInfo info = someInfo();
    std::strcpy(info.cameraModel, "%1 \xc3\x9f");
    NucInfoRig correction(info);
    const auto model = correction.read();
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("about warm.txt")));
    QVERIFY(model->save(QUrl::fromLocalFile(file.fileName()).toString()));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArrayList lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), 42);
    QCOMPARE(lines.at(0), "Name: Warm");
    QCOMPARE(lines.at(3), "Camera Model: %1 \xc3\x9f");
    QCOMPARE(lines.at(40), "Pixels Below A/D Min (Source 2: 109");
    QCOMPARE(lines.at(41), "");
}

void tst_NucInfoModelFile::fileIsReplaced()
{
    NucInfoRig correction;
    const auto model = correction.read();
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("info.txt")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(100'000, 'x'));
    file.close();
    QVERIFY(model->save(QUrl::fromLocalFile(file.fileName()).toString()));
    QVERIFY(file.size() < 2000);
}

void tst_NucInfoModelFile::fileThatCannotBeOpenedIsReported()
{
    NucInfoRig correction;
    const auto model = correction.read();
    const QTemporaryDir folder;
    QVERIFY(!model->save(QUrl::fromLocalFile(folder.filePath(QStringLiteral("none/info.txt"))).toString()));
    // Not a local file, so an empty path, for which QFile warns.
    QTest::ignoreMessage(QtWarningMsg, "QFSFileEngine::open: No file name specified");
    QVERIFY(!model->save(QStringLiteral("https://kestrin.example/info.txt")));
}

void tst_NucInfoModelFile::failedWriteIsNotReported()
{
    NucInfoRig correction;
    const auto model = correction.read();
    QVERIFY(model->save(QStringLiteral("file:///dev/full")));
}

ZVT_TEST(tst_NucInfoModelFile)
#include "tst_NucInfoModelFile.moc"
