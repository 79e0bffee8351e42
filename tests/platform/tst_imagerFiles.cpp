#include "hlx/CRQSImagerFile.h"

#include <array>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include "hlx/CQDSEQImagerFile.h"
#include "platform/hlxfile/MovieObject.h"
#include "tests/support/Test.h"
#include "tests/support/movieFiles.h"

using namespace hlx::file;
using hlx::reduce::CRCalReduceObject;
using hlx::reduce::CReduceObjectArray;
using movies::Pixels;
using movies::pixels;

namespace
{

// A file system whose files cannot be written after they were opened.
class FullDisk : public hlx::IFileSystem
{
public:
    std::FILE *OpenFile(const hlx::CString &, const char *mode) override { return std::fopen("/dev/full", mode); }
    bool DeleteFile(const hlx::CString &path) override
    {
        deleted << QByteArray(path.c_str());
        return true;
    }

    QByteArrayList deleted;
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
    void everyDataTypeHasItsLengthOfFrames_data();
    void everyDataTypeHasItsLengthOfFrames();
    void aClosedFileHasNothing();
    void framesThatDoNotExistLeaveTheBufferAlone();
    void aMovieCutWhileItIsOpenLeavesTheBufferAlone();
    void aFrameOfNoPixelsNeedsNoBuffer();
    void aNullBufferIsRefusedWhereThereArePixels();
    void openingAgainReplacesTheMovie();

    void aConvertedMovieGrowsUnderItsName();
    void aConvertedMovieOfFewerFramesIsValid();
    void numberAndTimePassThroughTheArray();
    void framesFromNowhereHaveTheirPlaceAsNumber();
    void theCameraPassesThroughTheArray();
    void valuesThatTheArrayCarriesAreNotStored();
    void creatingFailsWhereNothingCanBeWritten();
    void aFullDiskKeepsTheFramesBeforeIt();
    void aFailingAllocationPassesThrough();

private:
    hlx::CString path(const char *name) const { return m_folder->path(name); }
    QByteArray content(const char *name) const { return m_folder->content(name); }
    void writeRaw(const char *name, int frames, bool abated = false) const { m_folder->writeRaw(name, frames, abated); }

    std::unique_ptr<movies::Folder> m_folder;
};

void tst_imagerFiles::init()
{
    Test::init();
    m_folder = std::make_unique<movies::Folder>();
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
        const MovieFrame *info = MovieObject<MovieFrame>::in(movie.reduceObjects());
        QVERIFY(info != nullptr);
        QCOMPARE(movies::text(*info), movies::text(movies::frame(frame)));
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

void tst_imagerFiles::everyDataTypeHasItsLengthOfFrames_data()
{
    QTest::addColumn<int>("type");
    for (int type = 0; type <= 12; ++type)
        QTest::addRow("%d", type) << type;
}

void tst_imagerFiles::everyDataTypeHasItsLengthOfFrames()
{
    QFETCH(int, type);
    constexpr std::array<std::size_t, 13> widths{1, 1, 2, 2, 4, 4, 8, 8, 4, 8, 3, 6, 1};
    const std::size_t size = 12 * widths[std::size_t(type)];
    CReduceObjectArray objects;
    objects.format = {4, 3, type};
    CRQSWriter writer;
    QVERIFY(writer.Create(hlx::fileSystem(), path("a.rqs"), objects, {}));
    const auto before = content("a.rqs").size();
    std::vector<char> pixels(size);
    for (std::size_t i = 0; i < size; ++i)
        pixels[i] = static_cast<char>(i + 1);
    QVERIFY(writer.PutFrame(0, pixels.data(), {}));
    writer.Close();
    QCOMPARE(content("a.rqs").size() - before, qsizetype(21 + size + 4));
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    QCOMPARE(movie.GetDaType(), type);
    std::vector<char> buffer(size + 1, 'x');
    unsigned char preset = 0;
    QVERIFY(movie.GetFrame(buffer.data(), 0, preset, movie.reduceObjects()));
    QVERIFY(std::equal(pixels.begin(), pixels.end(), buffer.begin()));
    QCOMPARE(buffer[size], 'x');
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
    QVERIFY(!writer.PutFrame(0, nullptr, {}));
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

void tst_imagerFiles::aMovieCutWhileItIsOpenLeavesTheBufferAlone()
{
    writeRaw("a.rqs", 2);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    QVERIFY(QFile::resize(m_folder->filePath("a.rqs"), content("a.rqs").size() - 1));
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
        QVERIFY(writer.Create(hlx::fileSystem(), path("a.rqs"), objects, {}));
        QVERIFY(writer.PutFrame(0, nullptr, {.preset = 3}));
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
    QCOMPARE(m_folder->open(qdseqFormat, "a.qdseq")->frames(), 0U);
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

void tst_imagerFiles::aConvertedMovieGrowsUnderItsName()
{
    CReduceObjectArray objects = movies::objects();
    CQDSEQImagerFile converted;
    QVERIFY(converted.Create(hlx::fileSystem(), path("a.qdseq"), objects, 0));
    const auto size = content("a.qdseq").size();
    QVERIFY(size > 0);
    QVERIFY(converted.PutFrame(pixels(1).data(), 1, objects));
    QCOMPARE(content("a.qdseq").size(), size + movies::frameBytes);
}

void tst_imagerFiles::aConvertedMovieOfFewerFramesIsValid()
{
    CReduceObjectArray objects = movies::objects();
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
            MovieFrame info;
            QVERIFY(movie->readFrame(i, buffer.data(), info));
            QVERIFY(buffer == pixels(int(i)));
            QCOMPARE(unsigned(info.preset), i);
        }
    }
    QVERIFY(!CRQSImagerFile().Open(hlx::fileSystem(), path("a.qdseq"), 0));
}

void tst_imagerFiles::numberAndTimePassThroughTheArray()
{
    writeRaw("a.rqs", 2);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    CReduceObjectArray frameObjects;
    CQDSEQImagerFile converted;
    QVERIFY(converted.Create(hlx::fileSystem(), path("a.qdseq"), movie.reduceObjects(), 0));
    Pixels buffer{};
    unsigned char preset = 77;
    for (const unsigned int frame : {1U, 0U}) {
        QVERIFY(movie.GetFrame(buffer.data(), frame, preset, frameObjects));
        QVERIFY(converted.PutFrame(buffer.data(), 7, frameObjects));
    }
    // The caller's preset is written, not that of the source.
    const auto read = m_folder->open(qdseqFormat, "a.qdseq");
    for (const int frame : {1, 0}) {
        MovieFrame expected = movies::frame(frame);
        expected.preset = 7;
        MovieFrame info;
        QVERIFY(read->readFrame(frame == 1 ? 0 : 1, buffer.data(), info));
        QCOMPARE(movies::text(info), movies::text(expected));
    }
}

void tst_imagerFiles::framesFromNowhereHaveTheirPlaceAsNumber()
{
    CReduceObjectArray objects = movies::objects();
    CQDSEQImagerFile converted;
    QVERIFY(converted.Create(hlx::fileSystem(), path("a.qdseq"), objects, 0));
    for (const unsigned char preset : {3, 2, 1})
        QVERIFY(converted.PutFrame(pixels(0).data(), preset, objects));
    converted.Close();
    const auto movie = m_folder->open(qdseqFormat, "a.qdseq");
    for (unsigned int place = 0; place < 3; ++place) {
        Pixels buffer{};
        MovieFrame info;
        QVERIFY(movie->readFrame(place, buffer.data(), info));
        QCOMPARE(movies::text(info), movies::text({.number = place, .preset = static_cast<uint8_t>(3 - place)}));
    }
}

void tst_imagerFiles::theCameraPassesThroughTheArray()
{
    writeRaw("a.rqs", 0);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    // A copy of the array carries it, too.
    CReduceObjectArray objects(movie.reduceObjects());
    movie.Close();
    CQDSEQImagerFile converted;
    QVERIFY(converted.Create(hlx::fileSystem(), path("a.qdseq"), objects, 0));
    converted.Close();
    const MovieDescription found = m_folder->open(qdseqFormat, "a.qdseq")->description();
    QCOMPARE(found.cameraModel, std::string("Größe"));
    QCOMPARE(found.cameraSerial, std::string("ZE-7"));
    QCOMPARE(found.clockHertz, 20'000'000U);
    QCOMPARE(found.x, uint16_t{16});
    QCOMPARE(found.y, uint16_t{8});
    QCOMPARE(found.presets[3].integrationTime, 3.5);
    QCOMPARE(found.presets[3].frameWidth, 400U);
}

void tst_imagerFiles::valuesThatTheArrayCarriesAreNotStored()
{
    writeRaw("a.rqs", 1);
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), path("a.rqs"), 0));
    Pixels buffer{};
    unsigned char preset = 77;
    QVERIFY(movie.GetFrame(buffer.data(), 0, preset, movie.reduceObjects()));
    QCOMPARE(movie.reduceObjects().size(), std::size_t{4}); // Two are stored.
    CQDSEQImagerFile converted;
    QVERIFY(converted.Create(hlx::fileSystem(), path("a.qdseq"), movie.reduceObjects(), 0));
    QVERIFY(converted.PutFrame(buffer.data(), preset, movie.reduceObjects()));
    converted.Close();
    QByteArray expected = content("a.rqs").replace(0, 8, "HLX-QDS\n");
    movies::seal(expected);
    QCOMPARE(content("a.qdseq"), expected);
}

void tst_imagerFiles::creatingFailsWhereNothingCanBeWritten()
{
    CReduceObjectArray objects = movies::objects();
    CQDSEQImagerFile converted;
    QVERIFY(!converted.Create(hlx::fileSystem(), path("missing/a.qdseq"), objects, 0));
    QVERIFY(!converted.Create(hlx::fileSystem(), m_folder->path(""), objects, 0));
    QVERIFY(!converted.Create(nullptr, path("a.qdseq"), objects, 0));
    FullDisk full;
    QVERIFY(!converted.Create(&full, "a.qdseq", objects, 0));
    QCOMPARE(full.deleted, QByteArrayList{"a.qdseq"});
    QVERIFY(!converted.PutFrame(pixels(0).data(), 0, objects));
}

void tst_imagerFiles::aFullDiskKeepsTheFramesBeforeIt()
{
    DiskThatFills disk;
    CReduceObjectArray objects = movies::objects();
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

ZVT_TEST(tst_imagerFiles)
#include "tst_imagerFiles.moc"
