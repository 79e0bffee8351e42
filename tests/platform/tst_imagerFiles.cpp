#include "hlx/CRQSImagerFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <array>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include "hlx/CQDSEQImagerFile.h"
#include "hlx/CRCalReduceObject.h"
#include "platform/hlxfile/CRQSWriter.h"
#include "platform/hlxfile/MovieReader.h"
#include "tests/support/Test.h"

using namespace hlx::file;
using hlx::reduce::CRCalReduceObject;
using hlx::reduce::CReduceObjectArray;

namespace
{

using Pixels = std::array<uint16_t, 12>;

Pixels pixels(int frame)
{
    Pixels result{};
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = static_cast<uint16_t>(1000 * frame + static_cast<int>(i));
    return result;
}

CReduceObjectArray describedObjects()
{
    CReduceObjectArray objects;
    objects.format = {4, 3, 2};
    auto *calibration
        = dynamic_cast<CRCalReduceObject *>(objects.GetObjectOfType(CRCalReduceObject::classTypeID(), -1, true));
    calibration->flag = 1;
    calibration->calibration.name = "25 mm";
    calibration->calibration.low = 263.15F;
    calibration->calibration.high = 373.15F;
    calibration->calibration.coefficients = {1.0F, -0.5F, 0.25F};
    hlx::CNucFile nuc;
    nuc.name = "ps5";
    nuc.width = 2;
    nuc.height = 1;
    nuc.gains = {0.5F, 1.5F};
    nuc.offsets = {-3.0F, 4.0F};
    objects.GetCorrection(5, true)->CreateFromNucFile(nuc);
    return objects;
}

// A file system whose files cannot be written after they were opened.
class FullDisk : public hlx::IFileSystem
{
public:
    std::FILE *OpenFile(const hlx::CString &, const char *mode) override { return std::fopen("/dev/full", mode); }
    bool DeleteFile(const hlx::CString &) override { return false; }
};

// One file in memory, whose size the test limits.
class DiskThatFills : public hlx::IFileSystem
{
public:
    ~DiskThatFills() override { close(m_file); }

    std::FILE *OpenFile(const hlx::CString &, const char *mode) override { return fdopen(dup(m_file), mode); }
    bool DeleteFile(const hlx::CString &) override { return false; }
    void fill() { QCOMPARE(fcntl(m_file, F_ADD_SEALS, F_SEAL_GROW), 0); }

private:
    int m_file = memfd_create("disk", MFD_ALLOW_SEALING);
};

} // namespace

class tst_imagerFiles : public Test
{
    Q_OBJECT

private slots:
    void init();

    void aRawMovieComesBackAsItWasWritten();
    void reduceObjectsComeBackWithTheMovie();
    void aClosedFileHasNothing();
    void framesThatDoNotExistLeaveTheBufferAlone();
    void aDamagedFrameLeavesTheBufferAlone();
    void aMovieCutWhileItIsOpenLeavesTheBufferAlone();
    void aFrameOfNoPixelsNeedsNoBuffer();
    void aNullBufferIsRefusedWhereThereArePixels();
    void openingAgainReplacesTheMovie();
    void aWriterThatWasNotClosedLeavesNoMovie();

    void aConvertedMovieGrowsUnderItsName();
    void aConvertedMovieOfFewerFramesIsValid();
    void creatingFailsWhereNothingCanBeWritten();
    void aFullDiskKeepsTheFramesBeforeIt();
    void aFailingAllocationPassesThrough();

    void refusesACutMovieAtEveryLength();
    void survivesEveryDamagedByte();
    void refusesForeignFiles_data();
    void refusesForeignFiles();
    void refusesAbsurdSizes_data();
    void refusesAbsurdSizes();

private:
    hlx::CString path(const char *name) const { return m_folder.filePath(QLatin1String(name)).toUtf8().constData(); }
    QByteArray content(const char *name) const;
    void store(const char *name, const QByteArray &bytes) const;
    void writeRaw(const char *name, int frames, bool abated = false) const;
    bool opens(const char *name) const { return CRQSImagerFile().Open(hlx::fileSystem(), path(name), 0); }

    QTemporaryDir m_folder;
};

void tst_imagerFiles::init()
{
    Test::init();
    m_folder = QTemporaryDir();
    QVERIFY(m_folder.isValid());
}

QByteArray tst_imagerFiles::content(const char *name) const
{
    QFile file(m_folder.filePath(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_imagerFiles::store(const char *name, const QByteArray &bytes) const
{
    QFile file(m_folder.filePath(QLatin1String(name)));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

void tst_imagerFiles::writeRaw(const char *name, int frames, bool abated) const
{
    CRQSWriter writer;
    QVERIFY(writer.Create(hlx::fileSystem(), path(name), describedObjects(), abated));
    for (int i = 0; i < frames; ++i)
        QVERIFY(writer.PutFrame(pixels(i).data(), static_cast<unsigned char>(i % 4)));
}

void tst_imagerFiles::aRawMovieComesBackAsItWasWritten()
{
    writeRaw("a.rqs", 3);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    QCOMPARE(movie.nFrames(), 3U);
    QCOMPARE(movie.xPixels(), 4U);
    QCOMPARE(movie.yPixels(), 3U);
    QCOMPARE(movie.GetDaType(), 2);
    QVERIFY(!movie.IsAbated());
    for (const int frame : {2, 0, 1}) {
        Pixels buffer{};
        unsigned char preset = 77;
        QVERIFY(movie.GetFrame(buffer.data(), static_cast<unsigned int>(frame), preset, movie.reduceObjects()));
        QVERIFY(buffer == pixels(frame));
        QCOMPARE(int(preset), frame % 4);
    }
    writeRaw("b.rqs", 0, true);
    QVERIFY(movie.Open(hlx::fileSystem(), path("b.rqs"), 0));
    QVERIFY(movie.IsAbated());
    QCOMPARE(movie.nFrames(), 0U);
}

void tst_imagerFiles::reduceObjectsComeBackWithTheMovie()
{
    writeRaw("a.rqs", 1);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    CReduceObjectArray &objects = movie.reduceObjects();
    QCOMPARE(objects.size(), std::size_t{2});
    const auto *calibration
        = dynamic_cast<CRCalReduceObject *>(objects.GetObjectOfType(CRCalReduceObject::classTypeID(), -1, false));
    QVERIFY(calibration != nullptr);
    QCOMPARE(calibration->flag, uint8_t{1});
    QCOMPARE(calibration->calibration.name.c_str(), "25 mm");
    QCOMPARE(calibration->calibration.low, 263.15F);
    QCOMPARE(calibration->calibration.high, 373.15F);
    QCOMPARE(calibration->calibration.coefficients.size(), std::size_t{3});
    QCOMPARE(calibration->calibration.coefficients[1], -0.5F);
    const auto *correction = objects.GetCorrection(5, false);
    QVERIFY(correction != nullptr);
    QCOMPARE(correction->flag, uint8_t{0});
    QCOMPARE(correction->correction().name.c_str(), "ps5");
    QCOMPARE(correction->correction().gains[1], 1.5F);
    QCOMPARE(correction->correction().offsets[0], -3.0F);
    movie.Close();
    QCOMPARE(movie.reduceObjects().size(), std::size_t{0});
}

void tst_imagerFiles::aClosedFileHasNothing()
{
    CRQSImagerFile movie;
    QCOMPARE(movie.nFrames(), 0U);
    QCOMPARE(movie.xPixels(), 0U);
    QCOMPARE(movie.yPixels(), 0U);
    QCOMPARE(movie.GetDaType(), 0);
    QVERIFY(!movie.IsAbated());
    unsigned char preset = 77;
    QVERIFY(!movie.GetFrame(nullptr, 0, preset, movie.reduceObjects()));
    QCOMPARE(int(preset), 77);
    movie.Close();
    CReduceObjectArray objects;
    CQDSEQImagerFile converted;
    QVERIFY(!converted.PutFrame(nullptr, 0, objects));
    converted.Close();
    CRQSWriter writer;
    QVERIFY(!writer.PutFrame(nullptr, 0));
    writer.Close();
}

void tst_imagerFiles::framesThatDoNotExistLeaveTheBufferAlone()
{
    writeRaw("a.rqs", 2);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    for (const unsigned int frame : {2U, 1000U, 0xFFFFFFFFU}) {
        Pixels buffer = pixels(9);
        unsigned char preset = 77;
        QVERIFY(!movie.GetFrame(buffer.data(), frame, preset, movie.reduceObjects()));
        QVERIFY(buffer == pixels(9));
        QCOMPARE(int(preset), 77);
    }
}

void tst_imagerFiles::aDamagedFrameLeavesTheBufferAlone()
{
    writeRaw("a.rqs", 2);
    QByteArray bytes = content("a.rqs");
    bytes[bytes.size() - 24 - 5] = 'X';
    store("a.rqs", bytes);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    Pixels buffer = pixels(9);
    unsigned char preset = 77;
    QVERIFY(!movie.GetFrame(buffer.data(), 1, preset, movie.reduceObjects()));
    QVERIFY(buffer == pixels(9));
    QCOMPARE(int(preset), 77);
    QVERIFY(movie.GetFrame(buffer.data(), 0, preset, movie.reduceObjects()));
    QVERIFY(buffer == pixels(0));
}

void tst_imagerFiles::aMovieCutWhileItIsOpenLeavesTheBufferAlone()
{
    writeRaw("a.rqs", 2);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    QVERIFY(QFile::resize(m_folder.filePath("a.rqs"), content("a.rqs").size() - 1));
    Pixels buffer = pixels(9);
    unsigned char preset = 77;
    QVERIFY(!movie.GetFrame(buffer.data(), 1, preset, movie.reduceObjects()));
    QVERIFY(buffer == pixels(9));
}

void tst_imagerFiles::aFrameOfNoPixelsNeedsNoBuffer()
{
    CReduceObjectArray objects;
    objects.format = {0, 512, 2};
    {
        CRQSWriter writer;
        QVERIFY(writer.Create(hlx::fileSystem(), path("a.rqs"), objects, false));
        QVERIFY(writer.PutFrame(nullptr, 3));
    }
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    unsigned char preset = 77;
    QVERIFY(movie.GetFrame(nullptr, 0, preset, movie.reduceObjects()));
    QCOMPARE(int(preset), 3);
    CQDSEQImagerFile converted;
    QVERIFY(converted.Create(hlx::fileSystem(), path("a.qdseq"), movie.reduceObjects(), 0));
    QVERIFY(converted.PutFrame(nullptr, preset, movie.reduceObjects()));
}

void tst_imagerFiles::aNullBufferIsRefusedWhereThereArePixels()
{
    writeRaw("a.rqs", 1);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    unsigned char preset = 77;
    QVERIFY(!movie.GetFrame(nullptr, 0, preset, movie.reduceObjects()));
    CQDSEQImagerFile converted;
    QVERIFY(converted.Create(hlx::fileSystem(), path("a.qdseq"), movie.reduceObjects(), 0));
    QVERIFY(!converted.PutFrame(nullptr, 0, movie.reduceObjects()));
    converted.Close();
    CReduceObjectArray objects;
    QCOMPARE(MovieReader::open(qdseqFormat, hlx::fileSystem(), path("a.qdseq"), objects)->frames(), 0U);
}

void tst_imagerFiles::openingAgainReplacesTheMovie()
{
    writeRaw("a.rqs", 2);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    QVERIFY(!movie.Open(hlx::fileSystem(), path("missing.rqs"), 0));
    QCOMPARE(movie.nFrames(), 0U);
    QCOMPARE(movie.reduceObjects().size(), std::size_t{0});
}

void tst_imagerFiles::aWriterThatWasNotClosedLeavesNoMovie()
{
    CRQSWriter writer;
    QVERIFY(writer.Create(hlx::fileSystem(), path("a.rqs"), describedObjects(), false));
    QVERIFY(writer.PutFrame(pixels(0).data(), 0));
    QVERIFY(!opens("a.rqs"));
    writer.Close();
    QVERIFY(opens("a.rqs"));
}

void tst_imagerFiles::aConvertedMovieGrowsUnderItsName()
{
    CReduceObjectArray objects = describedObjects();
    CQDSEQImagerFile converted;
    QVERIFY(converted.Create(hlx::fileSystem(), path("a.qdseq"), objects, 0));
    const auto size = content("a.qdseq").size();
    QVERIFY(size > 0);
    QVERIFY(converted.PutFrame(pixels(1).data(), 1, objects));
    QCOMPARE(content("a.qdseq").size(), size + 5 + 24);
}

void tst_imagerFiles::aConvertedMovieOfFewerFramesIsValid()
{
    CReduceObjectArray objects = describedObjects();
    for (const unsigned int frames : {5U, 2U, 0U}) {
        CQDSEQImagerFile converted;
        QVERIFY(converted.Create(hlx::fileSystem(), path("a.qdseq"), objects, 0));
        for (unsigned int i = 0; i < frames; ++i)
            QVERIFY(converted.PutFrame(pixels(int(i)).data(), static_cast<unsigned char>(i), objects));
        converted.Close();

        CReduceObjectArray found;
        const auto movie = MovieReader::open(qdseqFormat, hlx::fileSystem(), path("a.qdseq"), found);
        QVERIFY(movie != nullptr);
        QCOMPARE(movie->frames(), frames);
        QCOMPARE(found.size(), objects.size());
        for (unsigned int i = 0; i < frames; ++i) {
            Pixels buffer{};
            unsigned char preset = 77;
            QVERIFY(movie->readFrame(i, buffer.data(), preset));
            QVERIFY(buffer == pixels(int(i)));
            QCOMPARE(unsigned(preset), i);
        }
    }
    QVERIFY(!opens("a.qdseq"));
}

void tst_imagerFiles::creatingFailsWhereNothingCanBeWritten()
{
    CReduceObjectArray objects = describedObjects();
    CQDSEQImagerFile converted;
    QVERIFY(!converted.Create(hlx::fileSystem(), path("missing/a.qdseq"), objects, 0));
    QVERIFY(!converted.Create(hlx::fileSystem(), m_folder.path().toUtf8().constData(), objects, 0));
    QVERIFY(!converted.Create(nullptr, path("a.qdseq"), objects, 0));
    FullDisk full;
    QVERIFY(!converted.Create(&full, path("a.qdseq"), objects, 0));
    QVERIFY(!converted.PutFrame(pixels(0).data(), 0, objects));
}

void tst_imagerFiles::aFullDiskKeepsTheFramesBeforeIt()
{
    DiskThatFills disk;
    CReduceObjectArray objects = describedObjects();
    CQDSEQImagerFile converted;
    QVERIFY(converted.Create(&disk, "a.qdseq", objects, 0));
    QVERIFY(converted.PutFrame(pixels(0).data(), 0, objects));
    disk.fill();
    QVERIFY(!converted.PutFrame(pixels(1).data(), 1, objects));
    converted.Close();
    CReduceObjectArray found;
    const auto movie = MovieReader::open(qdseqFormat, &disk, "a.qdseq", found);
    QVERIFY(movie != nullptr);
    QCOMPARE(movie->frames(), 1U);
}

void tst_imagerFiles::aFailingAllocationPassesThrough()
{
    writeRaw("a.rqs", 1);
    CRQSImagerFile movie;
    hlx::SetAllocationHook([](std::size_t) { return false; });
    QVERIFY_THROWS_EXCEPTION(std::bad_alloc, movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    hlx::SetAllocationHook(nullptr);
    QCOMPARE(movie.nFrames(), 0U);
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
}

void tst_imagerFiles::refusesACutMovieAtEveryLength()
{
    writeRaw("a.rqs", 2);
    const QByteArray bytes = content("a.rqs");
    for (int length = 0; length < bytes.size(); ++length) {
        store("cut.rqs", bytes.left(length));
        QVERIFY2(!opens("cut.rqs"), qPrintable(QString::number(length)));
    }
    store("long.rqs", bytes + 'x');
    QVERIFY(!opens("long.rqs"));
}

void tst_imagerFiles::survivesEveryDamagedByte()
{
    writeRaw("a.rqs", 1);
    const QByteArray bytes = content("a.rqs");
    for (int i = 0; i < bytes.size(); ++i) {
        QByteArray damaged = bytes;
        damaged[i] = static_cast<char>(~damaged[i]);
        store("damaged.rqs", damaged);
        CRQSImagerFile movie;
        if (!movie.Open(hlx::fileSystem(), path("damaged.rqs"), 0))
            continue;
        std::vector<char> buffer(movie.reduceObjects().format.frameBytes());
        unsigned char preset = 0;
        movie.GetFrame(buffer.data(), 0, preset, movie.reduceObjects());
    }
}

void tst_imagerFiles::refusesForeignFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("This is a text that is no movie, though it is longer than the head of one.");
    QTest::newRow("zeros") << QByteArray(1000, '\0');
    QTest::newRow("ones") << QByteArray(1000, '\xff');
    QTest::newRow("magic alone") << QByteArray("HLX-RQS\n");
}

void tst_imagerFiles::refusesForeignFiles()
{
    QFETCH(QByteArray, bytes);
    store("a.rqs", bytes);
    QVERIFY(!opens("a.rqs"));
    QVERIFY(!CRQSImagerFile().Open(hlx::fileSystem(), m_folder.path().toUtf8().constData(), 0));
    QVERIFY(!CRQSImagerFile().Open(nullptr, path("a.rqs"), 0));
}

void tst_imagerFiles::refusesAbsurdSizes_data()
{
    // The head is 20 bytes; the description begins with the flag, width, height, type and number of objects.
    QTest::addColumn<int>("offset");
    QTest::newRow("version") << 8;
    QTest::newRow("frames") << 12;
    QTest::newRow("description") << 16;
    QTest::newRow("width") << 21;
    QTest::newRow("height") << 25;
    QTest::newRow("objects") << 33;
    QTest::newRow("calibration's name") << 54;
    QTest::newRow("coefficients") << 71;
}

void tst_imagerFiles::refusesAbsurdSizes()
{
    QFETCH(int, offset);
    writeRaw("a.rqs", 0);
    for (const quint32 value : {0xFFFFFFFFU, 0x7FFFFFFFU, 0x40000000U, 0x10000U}) {
        QByteArray bytes = content("a.rqs");
        qToLittleEndian(value, bytes.data() + offset);
        store("absurd.rqs", bytes);
        QVERIFY(!opens("absurd.rqs"));
    }
}

ZVT_TEST(tst_imagerFiles)
#include "tst_imagerFiles.moc"
