#include "platform/hlxfile/MovieReader.h"

#include "hlx/CQDSEQImagerFile.h"
#include "hlx/CRQSImagerFile.h"
#include "platform/hlxfile/MovieObject.h"
#include "tests/support/Test.h"
#include "tests/support/movieFiles.h"

using namespace hlx::file;
using hlx::reduce::CReduceObjectArray;
using movies::frameBytes;
using movies::Pixels;
using movies::pixels;

namespace
{

/// The bytes that this process has read from files so far.
qint64 bytesRead()
{
    QFile counters(QStringLiteral("/proc/self/io"));
    if (!counters.open(QIODevice::ReadOnly))
        throw std::runtime_error("no counters");
    return counters.readLine().mid(6).trimmed().toLongLong(); // "rchar: NUMBER"
}

/// Inverts a byte.
QByteArray damaged(QByteArray bytes, qsizetype offset)
{
    bytes[offset] = static_cast<char>(~bytes[offset]);
    return bytes;
}

/// The same movie before it was closed.
QByteArray notClosed(QByteArray bytes) { return bytes.replace(12, 4, QByteArray(4, '\xff')); }

} // namespace

/// Movies that were cut off, never closed or damaged.
class tst_movieDamage : public Test
{
    Q_OBJECT

private slots:
    void aCutMovieOpensUpToItsLastWholeFrame_data();
    void aCutMovieOpensUpToItsLastWholeFrame();
    void aDamagedFrameFailsAlone();
    void aFrameWithoutItsMarkIsNoFrame();
    void aDamagedFrameLeavesTheArrayAlone();
    void damagedFramesAtTheEndAreDropped_data();
    void damagedFramesAtTheEndAreDropped();
    void aPlaceWithoutAFrameAtTheEndIsDropped();
    void aFrameCutInTheMiddleOfTheFileFailsAlone();
    void bytesAfterTheLastFrameAreNoFrame();
    void aDamagedHeadOrDescriptionIsRefused();
    void aDamagedNumberOfFramesIsCounted();
    void openingReadsFramesOnlyAtTheEnd();
    void aConvertedMovieThatWasCutOpensToo();

private:
    /// The number of frames of a raw movie with these bytes; -1 if it does not open.
    int framesOf(const QByteArray &bytes)
    {
        m_folder.store("a.rqs", bytes);
        const auto movie = m_folder.open(rqsFormat, "a.rqs");
        return movie == nullptr ? -1 : static_cast<int>(movie->frames());
    }
    QByteArray movie(int frames)
    {
        m_folder.writeRaw("a.rqs", frames);
        return m_folder.content("a.rqs");
    }

    movies::Folder m_folder;
};

void tst_movieDamage::aCutMovieOpensUpToItsLastWholeFrame_data()
{
    QTest::addColumn<bool>("closed");
    QTest::newRow("closed") << true;
    QTest::newRow("never closed") << false;
}

void tst_movieDamage::aCutMovieOpensUpToItsLastWholeFrame()
{
    QFETCH(bool, closed);
    const QByteArray whole = closed ? movie(3) : notClosed(movie(3));
    const int first = movies::firstFrame(whole);
    QCOMPARE(whole.size(), qsizetype(first + 3 * frameBytes));
    for (int length = 0; length <= whole.size(); ++length) {
        const int expected = length < first ? -1 : (length - first) / frameBytes;
        QCOMPARE(framesOf(whole.left(length)), expected);
        CRQSImagerFile cut;
        QCOMPARE(cut.Open(hlx::fileSystem(), m_folder.path("a.rqs"), 0), expected >= 0);
        QCOMPARE(cut.nFrames(), unsigned(std::max(expected, 0)));
        for (int frame = 0; frame < expected; ++frame) {
            Pixels buffer{};
            unsigned char preset = 77;
            QVERIFY(cut.GetFrame(buffer.data(), unsigned(frame), preset, cut.reduceObjects()));
            QVERIFY(buffer == pixels(frame));
        }
    }
}

void tst_movieDamage::aDamagedFrameFailsAlone()
{
    const QByteArray whole = movie(3);
    // Also the last frame stays in its place: the movie is complete.
    for (const int frame : {0, 1, 2}) {
        const int start = movies::firstFrame(whole) + frame * frameBytes;
        for (int offset = start; offset < start + frameBytes; ++offset) {
            QCOMPARE(framesOf(damaged(whole, offset)), 3);
            const auto movie = m_folder.open(rqsFormat, "a.rqs");
            for (int place = 0; place < 3; ++place) {
                Pixels buffer = pixels(9);
                MovieFrame info = movies::frame(9);
                QCOMPARE(movie->readFrame(unsigned(place), buffer.data(), info), place != frame);
                QVERIFY(buffer == pixels(place == frame ? 9 : place));
                QCOMPARE(movies::text(info), movies::text(movies::frame(place == frame ? 9 : place)));
            }
        }
    }
}

// The checksum alone does not make a frame.
void tst_movieDamage::aFrameWithoutItsMarkIsNoFrame()
{
    QByteArray bytes = movie(1);
    const int first = movies::firstFrame(bytes);
    for (const bool marked : {true, false}) {
        bytes[first] = marked ? 'F' : 'X';
        const QByteArray frame = bytes.mid(first, frameBytes - 4);
        qToLittleEndian(
            emulator::crc32({reinterpret_cast<const uint8_t *>(frame.constData()), std::size_t(frame.size())}),
            bytes.data() + first + frame.size());
        QCOMPARE(framesOf(notClosed(bytes)), marked ? 1 : 0);
    }
}

void tst_movieDamage::aDamagedFrameLeavesTheArrayAlone()
{
    const QByteArray whole = movie(2);
    m_folder.store("a.rqs", damaged(whole, whole.size() - 5));
    CRQSImagerFile movie;
    QVERIFY(movie.Open(hlx::fileSystem(), m_folder.path("a.rqs"), 0));
    Pixels buffer = pixels(9);
    unsigned char preset = 77;
    QVERIFY(!movie.GetFrame(buffer.data(), 1, preset, movie.reduceObjects()));
    QVERIFY(buffer == pixels(9));
    QCOMPARE(int(preset), 77);
    QVERIFY(MovieObject<MovieFrame>::in(movie.reduceObjects()) == nullptr);
    QVERIFY(movie.GetFrame(buffer.data(), 0, preset, movie.reduceObjects()));
    QVERIFY(!movie.GetFrame(buffer.data(), 1, preset, movie.reduceObjects()));
    const MovieFrame *info = MovieObject<MovieFrame>::in(movie.reduceObjects());
    QVERIFY(info != nullptr);
    QCOMPARE(info->number, movies::frame(0).number);
}

void tst_movieDamage::damagedFramesAtTheEndAreDropped_data()
{
    QTest::addColumn<bool>("cut");
    QTest::newRow("cut") << true;
    QTest::newRow("never closed") << false;
}

void tst_movieDamage::damagedFramesAtTheEndAreDropped()
{
    QFETCH(bool, cut);
    const QByteArray whole = cut ? movie(5).chopped(1) : notClosed(movie(4));
    const int first = movies::firstFrame(whole);
    for (int offset = 0; offset < frameBytes; ++offset) {
        QCOMPARE(framesOf(damaged(whole, first + 3 * frameBytes + offset)), 3);
        QCOMPARE(framesOf(damaged(damaged(whole, first + 3 * frameBytes), first + 2 * frameBytes + offset)), 2);
        // In front of a whole one it stays.
        QCOMPARE(framesOf(damaged(whole, first + 2 * frameBytes + offset)), 4);
    }
    QByteArray none = whole;
    for (int frame = 0; frame < 4; ++frame)
        none = damaged(none, first + frame * frameBytes);
    QCOMPARE(framesOf(none), 0);
}

void tst_movieDamage::aPlaceWithoutAFrameAtTheEndIsDropped()
{
    const QByteArray whole = movie(2);
    QCOMPARE(framesOf(notClosed(whole) + QByteArray(3 * frameBytes, '\0')), 2);
}

void tst_movieDamage::aFrameCutInTheMiddleOfTheFileFailsAlone()
{
    QByteArray bytes = movie(3);
    const int first = movies::firstFrame(bytes);
    bytes.remove(first + frameBytes, frameBytes / 2);
    // Two whole frames fit, of which the second has no mark at its place.
    QCOMPARE(framesOf(bytes), 1);
}

void tst_movieDamage::bytesAfterTheLastFrameAreNoFrame()
{
    const QByteArray whole = movie(2);
    for (const int extra : {1, frameBytes - 1, frameBytes, 3 * frameBytes + 1})
        QCOMPARE(framesOf(whole + QByteArray(extra, 'x')), 2);
}

void tst_movieDamage::aDamagedHeadOrDescriptionIsRefused()
{
    const QByteArray whole = movie(1);
    for (int offset = 0; offset < movies::firstFrame(whole); ++offset)
        if (offset < 12 || offset >= 16)
            QCOMPARE(framesOf(damaged(whole, offset)), -1);
}

void tst_movieDamage::aDamagedNumberOfFramesIsCounted()
{
    QByteArray bytes = movie(3);
    for (const quint32 counted : {0U, 1U, 2U, 3U, 4U, 0x7FFFFFFFU, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
        qToLittleEndian(counted, bytes.data() + 12);
        QCOMPARE(framesOf(bytes), 3);
    }
}

void tst_movieDamage::openingReadsFramesOnlyAtTheEnd()
{
    constexpr int side = 100;
    constexpr qint64 size = 2 * side * side;
    CReduceObjectArray objects;
    objects.format = {side, side, 2};
    const std::vector<char> buffer(size);
    CRQSWriter writer;
    QVERIFY(writer.Create(hlx::fileSystem(), m_folder.path("a.rqs"), objects, {}));
    for (uint32_t place = 0; place < 20; ++place)
        QVERIFY(writer.PutFrame(place, buffer.data(), {}));
    // A movie that is not closed is checked at its end, a complete one not at all.
    for (const qint64 frames : {1, 0}) {
        const qint64 before = bytesRead();
        QCOMPARE(m_folder.open(rqsFormat, "a.rqs")->frames(), 20U);
        const qint64 read = bytesRead() - before;
        QVERIFY2(read >= frames * size && read < frames * size + size, qPrintable(QString::number(read)));
        writer.Close();
    }
}

void tst_movieDamage::aConvertedMovieThatWasCutOpensToo()
{
    CReduceObjectArray objects = movies::objects();
    CQDSEQImagerFile converted;
    QVERIFY(converted.Create(hlx::fileSystem(), m_folder.path("a.qdseq"), objects, 0));
    for (const int frame : {0, 1, 2})
        QVERIFY(converted.PutFrame(pixels(frame).data(), 0, objects));
    QCOMPARE(m_folder.open(qdseqFormat, "a.qdseq")->frames(), 3U);
    m_folder.store("b.qdseq", m_folder.content("a.qdseq").chopped(1));
    QCOMPARE(m_folder.open(qdseqFormat, "b.qdseq")->frames(), 2U);
}

ZVT_TEST(tst_movieDamage)
#include "tst_movieDamage.moc"
