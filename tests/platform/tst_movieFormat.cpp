#include "platform/hlxfile/MovieFormat.h"

#include <QDataStream>

#include <bit>

#include "hlx/CRQSImagerFile.h"
#include "tests/support/Test.h"
#include "tests/support/movieFiles.h"

using namespace hlx::file;
using movies::Pixels;

namespace
{

/// Builds the bytes of a file independently of the platform.
class Bytes
{
public:
    Bytes() { m_stream.setByteOrder(QDataStream::LittleEndian); }

    template <class Number> Bytes &operator<<(Number value)
    {
        m_stream << value;
        return *this;
    }
    Bytes &raw(const QByteArray &bytes)
    {
        m_stream.writeRawData(bytes.constData(), static_cast<int>(bytes.size()));
        return *this;
    }
    Bytes &text(const QByteArray &bytes) { return (*this << quint32(bytes.size())).raw(bytes); }
    Bytes &real(float value) { return *this << std::bit_cast<quint32>(value); }
    Bytes &real(double value) { return *this << std::bit_cast<quint64>(value); }
    /// Appends the checksum of the bytes from an offset.
    Bytes &checksum(qsizetype from)
    {
        const QByteArray part = m_bytes.mid(from);
        return *this << quint32(
                   emulator::crc32({reinterpret_cast<const uint8_t *>(part.constData()), size_t(part.size())}));
    }

    const QByteArray &all() const { return m_bytes; }

private:
    QByteArray m_bytes;
    QDataStream m_stream{&m_bytes, QIODevice::WriteOnly};
};

QByteArray expectedDescription(bool abated)
{
    Bytes bytes;
    bytes << quint8(abated ? 1 : 0);
    bytes.text("Größe").text("ZE-7");
    bytes << quint32(20'000'000) << quint16(16) << quint16(8);
    for (int preset = 0; preset < 4; ++preset)
        bytes.real(preset + 0.5) << quint32(100 * (preset + 1));
    bytes << quint32(4) << quint32(3) << quint32(2) << quint32(2);
    bytes.raw(QByteArray::fromHex("2d8457b90ce1463f910a7e68f523bb01")) << quint8(1);
    bytes.text("25 mm").real(263.15F).real(373.15F) << quint32(3);
    bytes.real(1.0F).real(-0.5F).real(0.25F);
    bytes.raw(QByteArray::fromHex("6b1f0ed4935a4c27a8703d15c2ee4902")) << quint8(5) << quint8(0);
    bytes.text("ps5") << quint16(2) << quint16(1);
    bytes.real(0.5F).real(1.5F).real(-3.0F).real(4.0F);
    return bytes.all();
}

/// The movie of Folder::writeRaw(). `counted` is the number of frames in its head.
QByteArray expectedMovie(const char *magic, int frames, quint32 counted, bool abated = false)
{
    Bytes bytes;
    const QByteArray description = expectedDescription(abated);
    bytes.raw(magic) << quint32(2) << counted << quint32(description.size());
    bytes.raw(description) << quint32(0); // The checksum, see below.
    for (int frame = 0; frame < frames; ++frame) {
        const auto start = bytes.all().size();
        bytes.raw("FRAM") << quint32(70'000 + frame) << quint8(frame % 4) << quint8(2) << quint16(2026);
        bytes << quint16(300) << quint8(23) << quint8(59) << quint8(58) << quint16(999) << quint16(500 + frame);
        for (const uint16_t pixel : movies::pixels(frame))
            bytes << pixel;
        bytes.checksum(start);
    }
    QByteArray movie = bytes.all();
    movies::seal(movie);
    return movie;
}

} // namespace

class tst_movieFormat : public Test
{
    Q_OBJECT

private slots:
    void everyByteIsWhereTheFormatSays();
    void aMovieIsNotClosedUntilItsNumberIsWritten();
    void theDescriptionComesBack();
    void placesMayComeInAnyOrder();
    void aPlaceIsWrittenAgain();
    void placesBeyondTheLastAreRefused();
    void checksumsContinueOverPieces();
    void otherVersionsAreRefused_data();
    void otherVersionsAreRefused();
    void foreignFilesAreRefused_data();
    void foreignFilesAreRefused();
    void absurdSizesAreRefused_data();
    void absurdSizesAreRefused();

private:
    bool opens(const char *name) const { return CRQSImagerFile().Open(hlx::fileSystem(), m_folder.path(name), 0); }

    movies::Folder m_folder;
};

void tst_movieFormat::everyByteIsWhereTheFormatSays()
{
    for (const int frames : {0, 1, 5}) {
        m_folder.writeRaw("a.rqs", frames);
        QCOMPARE(m_folder.content("a.rqs"), expectedMovie("HLX-RQS\n", frames, quint32(frames)));
    }
    m_folder.writeRaw("a.rqs", 1, true);
    QCOMPARE(m_folder.content("a.rqs"), expectedMovie("HLX-RQS\n", 1, 1, true));
    QCOMPARE(MovieFormat::frameSize(movies::pixelBytes), uint64_t(movies::frameBytes));
}

void tst_movieFormat::aMovieIsNotClosedUntilItsNumberIsWritten()
{
    CRQSWriter writer;
    QVERIFY(writer.Create(hlx::fileSystem(), m_folder.path("a.rqs"), movies::objects(), movies::description()));
    QCOMPARE(m_folder.content("a.rqs"), expectedMovie("HLX-RQS\n", 0, 0xFFFFFFFF));
    QVERIFY(writer.PutFrame(0, movies::pixels(0).data(), movies::frame(0)));
    QCOMPARE(m_folder.content("a.rqs"), expectedMovie("HLX-RQS\n", 1, 0xFFFFFFFF));
    QCOMPARE(m_folder.open(rqsFormat, "a.rqs")->frames(), 1U);
    writer.Close();
    QCOMPARE(m_folder.content("a.rqs"), expectedMovie("HLX-RQS\n", 1, 1));
}

void tst_movieFormat::theDescriptionComesBack()
{
    m_folder.writeRaw("a.rqs", 0, true);
    const MovieDescription found = m_folder.open(rqsFormat, "a.rqs")->description();
    QVERIFY(found.abated);
    QCOMPARE(found.cameraModel, std::string("Größe"));
    QCOMPARE(found.cameraSerial, std::string("ZE-7"));
    QCOMPARE(found.clockHertz, 20'000'000U);
    QCOMPARE(found.x, uint16_t{16});
    QCOMPARE(found.y, uint16_t{8});
    for (unsigned int preset = 0; preset < 4; ++preset) {
        QCOMPARE(found.presets[preset].integrationTime, preset + 0.5);
        QCOMPARE(found.presets[preset].frameWidth, 100 * (preset + 1));
    }
}

void tst_movieFormat::placesMayComeInAnyOrder()
{
    CRQSWriter writer;
    QVERIFY(writer.Create(hlx::fileSystem(), m_folder.path("a.rqs"), movies::objects(), {}));
    for (const int place : {4, 0, 2})
        QVERIFY(writer.PutFrame(uint32_t(place), movies::pixels(place).data(), movies::frame(place)));
    writer.Close();
    const auto movie = m_folder.open(rqsFormat, "a.rqs");
    QCOMPARE(movie->frames(), 5U);
    for (int place = 0; place < 5; ++place) {
        Pixels buffer{};
        MovieFrame info;
        // Places at which no frame was put cannot be read.
        QCOMPARE(movie->readFrame(unsigned(place), buffer.data(), info), place % 2 == 0);
        QVERIFY(buffer == (place % 2 == 0 ? movies::pixels(place) : Pixels{}));
        QCOMPARE(info.number, place % 2 == 0 ? movies::frame(place).number : 0U);
    }
}

void tst_movieFormat::aPlaceIsWrittenAgain()
{
    CRQSWriter writer;
    QVERIFY(writer.Create(hlx::fileSystem(), m_folder.path("a.rqs"), movies::objects(), {}));
    for (const int place : {0, 1, 2})
        QVERIFY(writer.PutFrame(uint32_t(place), movies::pixels(place).data(), movies::frame(place)));
    QVERIFY(writer.PutFrame(1, movies::pixels(9).data(), {.number = 9, .flags = MovieFrame::fetchedAgain}));
    writer.Close();
    const auto movie = m_folder.open(rqsFormat, "a.rqs");
    QCOMPARE(movie->frames(), 3U);
    Pixels buffer{};
    MovieFrame info;
    QVERIFY(movie->readFrame(1, buffer.data(), info));
    QVERIFY(buffer == movies::pixels(9));
    QCOMPARE(movies::text(info), movies::text({.number = 9, .flags = 1}));
}

void tst_movieFormat::placesBeyondTheLastAreRefused()
{
    CRQSWriter writer;
    QVERIFY(writer.Create(hlx::fileSystem(), m_folder.path("a.rqs"), movies::objects(), movies::description()));
    // The number of frames would be that of a movie that is not closed.
    for (const uint32_t place : {0xFFFFFFFEU, 0xFFFFFFFFU})
        QVERIFY(!writer.PutFrame(place, movies::pixels(0).data(), {}));
    writer.Close();
    QCOMPARE(m_folder.content("a.rqs"), expectedMovie("HLX-RQS\n", 0, 0));
}

void tst_movieFormat::checksumsContinueOverPieces()
{
    std::vector<uint8_t> bytes(100);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<uint8_t>(37 * i);
    const std::span<const uint8_t> all(bytes);
    for (std::size_t length = 0; length <= all.size(); ++length)
        QCOMPARE(emulator::crc32(all.subspan(length), emulator::crc32(all.first(length))), emulator::crc32(all));
}

void tst_movieFormat::otherVersionsAreRefused_data()
{
    QTest::addColumn<quint32>("version");
    for (const quint32 version : {0U, 1U, 3U, 0xFFFFFFFFU})
        QTest::addRow("%u", version) << version;
}

void tst_movieFormat::otherVersionsAreRefused()
{
    QFETCH(quint32, version);
    m_folder.writeRaw("a.rqs", 1);
    QByteArray bytes = m_folder.content("a.rqs");
    qToLittleEndian(version, bytes.data() + 8);
    movies::seal(bytes);
    m_folder.store("a.rqs", bytes);
    QVERIFY(!opens("a.rqs"));
}

void tst_movieFormat::foreignFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("This is a text that is no movie, though it is longer than the head of one.");
    QTest::newRow("zeros") << QByteArray(1000, '\0');
    QTest::newRow("ones") << QByteArray(1000, '\xff');
    QTest::newRow("magic alone") << QByteArray("HLX-RQS\n");
    QTest::newRow("converted") << expectedMovie("HLX-QDS\n", 1, 1);
}

void tst_movieFormat::foreignFilesAreRefused()
{
    QFETCH(QByteArray, bytes);
    m_folder.store("a.rqs", bytes);
    QVERIFY(!opens("a.rqs"));
    QVERIFY(!opens(""));
    QVERIFY(!opens("missing.rqs"));
    QVERIFY(!CRQSImagerFile().Open(nullptr, m_folder.path("a.rqs"), 0));
}

void tst_movieFormat::absurdSizesAreRefused_data()
{
    QTest::addColumn<int>("offset");
    QTest::newRow("description") << 16;
    QTest::newRow("model") << 21;
    QTest::newRow("serial") << 21 + 4 + 7;
    QTest::newRow("width") << movies::formatOffset;
    QTest::newRow("height") << movies::formatOffset + 4;
    QTest::newRow("objects") << movies::formatOffset + 12;
    QTest::newRow("calibration's name") << movies::formatOffset + 16 + 16 + 1;
    QTest::newRow("coefficients") << movies::formatOffset + 16 + 16 + 1 + 9 + 8;
}

// The checksum is right, so the sizes themselves are refused.
void tst_movieFormat::absurdSizesAreRefused()
{
    QFETCH(int, offset);
    m_folder.writeRaw("a.rqs", 0);
    QByteArray unchanged = m_folder.content("a.rqs");
    movies::seal(unchanged);
    QCOMPARE(unchanged, m_folder.content("a.rqs"));
    for (const quint32 value : {0xFFFFFFFFU, 0x7FFFFFFFU, 0x40000000U, 0x10000U}) {
        QByteArray bytes = unchanged;
        qToLittleEndian(value, bytes.data() + offset);
        movies::seal(bytes);
        m_folder.store("absurd.rqs", bytes);
        QVERIFY(!opens("absurd.rqs"));
    }
}

ZVT_TEST(tst_movieFormat)
#include "tst_movieFormat.moc"
