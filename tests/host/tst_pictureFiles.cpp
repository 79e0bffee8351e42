#include "platform/emulator/Frame.h"
#include "standalone/desk/pictureFiles.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QImageReader>
#include <QTemporaryDir>

/// The files that the desk writes.
class tst_pictureFiles : public Test
{
    Q_OBJECT

private slots:
    void framesKeepTheirCounts_data();
    void framesKeepTheirCounts();
    void everyOfferedFormatCanBeWritten();
    void aPictureIsWrittenAsShown();
    void refusalsSayWhy_data();
    void refusalsSayWhy();
    void aRefusedFileLeavesTheOldOne();

private:
    static emulator::Frame frame()
    {
        emulator::Frame frame{{1234, 2, 0, 1'709'208'000'040'000}, {5, 3}, {}};
        for (int i = 0; i < 15; ++i)
            frame.counts.push_back(static_cast<uint16_t>(16'383 - i * 1000));
        return frame;
    }

    QTemporaryDir m_folder;
};

void tst_pictureFiles::framesKeepTheirCounts_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("PNG") << QStringLiteral("frame.png");
    QTest::newRow("TIFF") << QStringLiteral("frame.tiff");
    QTest::newRow("TIFF, short suffix") << QStringLiteral("frame.tif");
    QTest::newRow("upper case") << QStringLiteral("frame.PNG");
}

void tst_pictureFiles::framesKeepTheirCounts()
{
    QFETCH(QString, name);
    const QString file = m_folder.filePath(name);
    QCOMPARE(saveFrame(frame(), file), QString());
    QImageReader reader(file);
    const QImage image = reader.read();
    QCOMPARE(image.size(), QSize(5, 3));
    QCOMPARE(image.format(), QImage::Format_Grayscale16);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            QCOMPARE(reinterpret_cast<const uint16_t *>(image.constScanLine(y))[x],
                     frame().counts[static_cast<size_t>(5 * y + x)]);
    // Qt writes no texts into TIFF files.
    const bool hasTexts = name.endsWith(QStringLiteral("png"), Qt::CaseInsensitive);
    QCOMPARE(image.text(QStringLiteral("Description")),
             hasTexts ? QStringLiteral("Frame 1234, preset 2, 2024-02-29T12:00:00.040Z") : QString());
}

void tst_pictureFiles::everyOfferedFormatCanBeWritten()
{
    QCOMPARE(frameNameFilters(), QStringList({QStringLiteral("PNG (*.png)"), QStringLiteral("TIFF (*.tiff)")}));
}

void tst_pictureFiles::aPictureIsWrittenAsShown()
{
    QImage picture(4, 2, QImage::Format_RGB32);
    picture.fill(qRgb(1, 2, 3));
    picture.setPixel(3, 1, qRgb(250, 251, 252));
    const QString file = m_folder.filePath(QStringLiteral("view.png"));
    QCOMPARE(savePicture(picture, file), QString());
    QCOMPARE(QImage(file).convertToFormat(QImage::Format_RGB32), picture);
}

void tst_pictureFiles::refusalsSayWhy_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing folder") << QStringLiteral("missing/frame.png");
    QTest::newRow("a folder") << QStringLiteral(".");
    QTest::newRow("unknown format") << QStringLiteral("frame.xyz");
    QTest::newRow("no format") << QStringLiteral("frame");
}

void tst_pictureFiles::refusalsSayWhy()
{
    QFETCH(QString, name);
    const QString file = m_folder.filePath(name);
    const QStringList before = QDir(m_folder.path()).entryList(QDir::Files);
    const QString why = saveFrame(frame(), file);
    QVERIFY2(why.startsWith(file + QStringLiteral(" cannot be written: ")), qPrintable(why));
    QVERIFY(!why.endsWith(QStringLiteral(": ")));
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files), before);
}

void tst_pictureFiles::aRefusedFileLeavesTheOldOne()
{
    const QString file = m_folder.filePath(QStringLiteral("old.csv"));
    QCOMPARE(saveText("first", file), QString());
    QCOMPARE(saveText("second", file), QString());
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), QByteArray("second"));
    QVERIFY(!saveText("third", file + QStringLiteral("/below")).isEmpty());
    QCOMPARE(QDir(m_folder.path()).entryList({QStringLiteral("old.csv*")}).size(), 1);
}

ZVT_TEST(tst_pictureFiles)
#include "tst_pictureFiles.moc"
