#include "recording/convertToQdseq.h"

#include <malloc.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "hlx/memory.h"
#include "tests/support/limitFileSize.h"
#include "tests/unit/ConversionRig.h"

using namespace hlx::file;
using hlx::reduce::CReduceObjectArray;
using movies::Pixels;

namespace
{

/// Tells which files of a folder are closed, in this order. Those that were open for writing have a "+".
class ClosedFiles
{
public:
    explicit ClosedFiles(const QString &folder)
    {
        inotify_add_watch(m_queue, QFile::encodeName(folder).constData(), IN_CLOSE);
    }
    ~ClosedFiles() { close(m_queue); }

    QStringList names() const
    {
        alignas(inotify_event) char events[4096];
        const ssize_t size = read(m_queue, events, sizeof events);
        QStringList names;
        for (ssize_t at = 0; at < size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(events + at);
            names << QString::fromUtf8(event->name)
                    + ((event->mask & IN_CLOSE_WRITE) != 0 ? QStringLiteral("+") : QString());
            at += static_cast<ssize_t>(sizeof *event + event->len);
        }
        return names;
    }

private:
    int m_queue = inotify_init1(IN_NONBLOCK);
};

/// Records the sizes of all allocations, and lets those of one size fail.
class Allocations
{
public:
    explicit Allocations(std::size_t failing = 0)
    {
        sizes.clear();
        failingSize = failing;
        hlx::SetAllocationHook([](std::size_t size) {
            sizes.push_back(size);
            return size != failingSize;
        });
    }
    ~Allocations() { hlx::SetAllocationHook(nullptr); }

    static inline std::vector<std::size_t> sizes;
    static inline std::size_t failingSize = 0;
};

/// A movie of `frames` frames without reduce objects; byte i of frame k is 16 * k + i.
void writeMovie(const movies::Folder &folder, const hlx::reduce::SImageFormat &format, unsigned int frames)
{
    CReduceObjectArray objects;
    objects.format = format;
    CRQSWriter writer;
    QVERIFY(writer.Create(hlx::fileSystem(), folder.path("a.rqs"), objects, {}));
    std::vector<uint8_t> pixels(format.frameBytes());
    for (unsigned int frame = 0; frame < frames; ++frame) {
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = static_cast<uint8_t>(16 * frame + i);
        QVERIFY(writer.PutFrame(frame, pixels.empty() ? nullptr : pixels.data(), {}));
    }
}

} // namespace

/// The loop over the frames: its end, its failures and its memory.
class tst_ConvertToQdseqFrames : public ConversionRig
{
    Q_OBJECT

private slots:
    void ignoresTheFirstAnswer();
    void aCancelLeavesAShorterMovieAndSucceeds_data();
    void aCancelLeavesAShorterMovieAndSucceeds();

    void aDamagedFrameIsWrittenAsTheFrameBefore();
    void aDamagedFirstFrameIsWrittenAsZeros();
    void aMovieThatWasCutIsConvertedUpToItsLastWholeFrame();
    void framesThatCannotBeWrittenAreCounted();

    void closesTheInputBeforeTheOutput();
    void usesOneBufferOfAPowerOfTwo_data();
    void usesOneBufferOfAPowerOfTwo();
    void framesWithoutPixelsNeedNoBuffer();
    void aFailedAllocationThrowsAndClosesBothFiles();
    void anExceptionOfTheDelegateClosesBothFiles();
};

void tst_ConvertToQdseqFrames::ignoresTheFirstAnswer()
{
    m_folder->writeRaw("a.rqs", 3);
    QCOMPARE(convert(recorder([](std::size_t call) { return call == 0 ? 1 : 0; })), 1);
    QCOMPARE(m_calls, callsFor(3));
    QCOMPARE(converted()->frames(), 3U);
}

void tst_ConvertToQdseqFrames::aCancelLeavesAShorterMovieAndSucceeds_data()
{
    QTest::addColumn<unsigned int>("last");
    QTest::addColumn<int>("answer");
    QTest::newRow("first frame") << 0U << 1;
    QTest::newRow("second frame") << 1U << -1;
    QTest::newRow("last frame") << 3U << 7;
}

void tst_ConvertToQdseqFrames::aCancelLeavesAShorterMovieAndSucceeds()
{
    QFETCH(unsigned int, last);
    QFETCH(int, answer);
    m_folder->writeRaw("a.rqs", 4);
    QCOMPARE(convert(recorder([=](std::size_t call) { return call == last + 1 ? answer : 0; })), 1);
    QCOMPARE(m_calls.size(), std::size_t{last + 2});
    QCOMPARE(m_calls.back(), std::tuple(2, last, 4U));
    QCOMPARE(converted()->frames(), last + 1);
    QCOMPARE(countedFrames(), last + 1);
}

void tst_ConvertToQdseqFrames::aDamagedFrameIsWrittenAsTheFrameBefore()
{
    m_folder->writeRaw("a.rqs", 3);
    QByteArray bytes = m_folder->content("a.rqs");
    const int second = movies::firstFrame(bytes) + movies::frameBytes;
    bytes[second + 30] = static_cast<char>(~bytes[second + 30]);
    m_folder->store("a.rqs", bytes);
    QCOMPARE(convert(), 1);
    QCOMPARE(m_calls, callsFor(3));
    const auto movie = converted();
    QCOMPARE(movie->frames(), 3U);
    for (const int place : {0, 1, 2}) {
        const int source = place == 1 ? 0 : place;
        Pixels buffer{};
        MovieFrame info;
        QVERIFY(movie->readFrame(unsigned(place), buffer.data(), info));
        QVERIFY(buffer == movies::pixels(source));
        QCOMPARE(movies::text(info), movies::text(movies::frame(source)));
    }
}

void tst_ConvertToQdseqFrames::aDamagedFirstFrameIsWrittenAsZeros()
{
    m_folder->writeRaw("a.rqs", 2);
    QByteArray bytes = m_folder->content("a.rqs");
    const int first = movies::firstFrame(bytes);
    bytes[first] = 'X';
    m_folder->store("a.rqs", bytes);
    mallopt(M_PERTURB, 0xA5); // Fills allocated memory.
    QCOMPARE(convert(), 1);
    mallopt(M_PERTURB, 0);
    Pixels buffer = movies::pixels(9);
    MovieFrame info = movies::frame(9);
    QVERIFY(converted()->readFrame(0, buffer.data(), info));
    QVERIFY(buffer == Pixels{});
    QCOMPARE(movies::text(info), movies::text({}));
    QVERIFY(converted()->readFrame(1, buffer.data(), info));
    QVERIFY(buffer == movies::pixels(1));
}

void tst_ConvertToQdseqFrames::aMovieThatWasCutIsConvertedUpToItsLastWholeFrame()
{
    m_folder->writeRaw("a.rqs", 3);
    m_folder->store("a.rqs", m_folder->content("a.rqs").chopped(1));
    QCOMPARE(convert(), 1);
    QCOMPARE(m_calls, callsFor(2));
    QCOMPARE(converted()->frames(), 2U);
}

void tst_ConvertToQdseqFrames::framesThatCannotBeWrittenAreCounted()
{
    m_folder->writeRaw("a.rqs", 4);
    const QByteArray bytes = m_folder->content("a.rqs");
    limitFileSize(movies::firstFrame(bytes) + 2 * movies::frameBytes + 30);
    const int result = convert();
    limitFileSize({});
    QCOMPARE(result, 1);
    QCOMPARE(m_calls, callsFor(4));
    QCOMPARE(converted()->frames(), 2U);
    QCOMPARE(countedFrames(), 2U);
    // Nothing of the third frame is left.
    QCOMPARE(m_folder->content("a.qdseq").size(), qsizetype(movies::firstFrame(bytes) + 2 * movies::frameBytes));
}

void tst_ConvertToQdseqFrames::closesTheInputBeforeTheOutput()
{
    m_folder->writeRaw("a.rqs", 2);
    for (const bool cancelled : {false, true}) {
        const ClosedFiles closed(m_folder->filePath(""));
        QCOMPARE(convert(recorder([=](std::size_t) { return cancelled ? 1 : 0; })), 1);
        QCOMPARE(closed.names(), (QStringList{"a.rqs", "a.qdseq+"}));
    }
}

void tst_ConvertToQdseqFrames::usesOneBufferOfAPowerOfTwo_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<unsigned int>("height");
    QTest::addColumn<std::size_t>("size");
    const std::size_t sizes[] = {16, 16, 32, 32, 64, 64, 128, 128, 64, 128, 64, 128, 16};
    for (int type = 0; type < int(std::size(sizes)); ++type)
        QTest::addRow("type %d", type) << type << 3U << sizes[type];
    QTest::newRow("a power of two") << 2 << 4U << std::size_t{32};
    QTest::newRow("one above") << 1 << 16'385U << std::size_t{131'072};
}

void tst_ConvertToQdseqFrames::usesOneBufferOfAPowerOfTwo()
{
    QFETCH(int, type);
    QFETCH(unsigned int, height);
    QFETCH(std::size_t, size);
    writeMovie(*m_folder, {4, height, type}, 3);
    {
        const Allocations allocations;
        QCOMPARE(convert(), 1);
    }
    QCOMPARE(Allocations::sizes, std::vector<std::size_t>{size});
    // The buffer is large enough for all bytes of a pixel.
    QByteArray expected = m_folder->content("a.rqs").replace(0, 8, "HLX-QDS\n");
    movies::seal(expected);
    QCOMPARE(m_folder->content("a.qdseq"), expected);
}

void tst_ConvertToQdseqFrames::framesWithoutPixelsNeedNoBuffer()
{
    writeMovie(*m_folder, {0, 512, 2}, 2);
    {
        const Allocations allocations;
        QCOMPARE(convert(), 1);
    }
    QCOMPARE(Allocations::sizes, std::vector<std::size_t>());
    QCOMPARE(m_calls, callsFor(2));
    QCOMPARE(converted()->frames(), 2U);
}

void tst_ConvertToQdseqFrames::aFailedAllocationThrowsAndClosesBothFiles()
{
    writeMovie(*m_folder, {4, 3, 2}, 2);
    const ClosedFiles closed(m_folder->filePath(""));
    {
        const Allocations allocations(32);
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, convert());
    }
    QCOMPARE(closed.names(), (QStringList{"a.qdseq+", "a.rqs"}));
    QCOMPARE(m_calls, (Calls{{2, 0, 2}}));
    QCOMPARE(converted()->frames(), 0U);
    QCOMPARE(countedFrames(), 0U);
}

void tst_ConvertToQdseqFrames::anExceptionOfTheDelegateClosesBothFiles()
{
    m_folder->writeRaw("a.rqs", 3);
    const ClosedFiles closed(m_folder->filePath(""));
    // The sanitizers find the buffer if it is not freed.
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, convert(recorder([](std::size_t call) {
                                 return call == 2 ? throw std::runtime_error("test") : 0;
                             })));
    QCOMPARE(closed.names(), (QStringList{"a.qdseq+", "a.rqs"}));
    QCOMPARE(countedFrames(), 2U);
}

ZVT_TEST(tst_ConvertToQdseqFrames)
#include "tst_ConvertToQdseqFrames.moc"
