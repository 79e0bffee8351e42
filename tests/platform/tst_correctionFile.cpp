#include "tests/platform/CorrectionFixture.h"

#include "platform/emulator/crc32.h"

#include <QtEndian>

#include <cmath>
#include <limits>
#include <random>

using namespace emulator;

class tst_correctionFile : public CorrectionFixture
{
    Q_OBJECT

private slots:
    void returnsWhatItContains();
    void hasTheDocumentedSize();
    void hasTheDocumentedOffsets();
    void checksumIsTheCommonOne();
    void longTextsAreCutBetweenCharacters_data();
    void longTextsAreCutBetweenCharacters();
    void headNeedsNoTable();
    void refusesEveryTruncation();
    void refusesATail();
    void refusesEveryFlippedBit();
    void refusesWrongValuesWithRightChecksums_data();
    void refusesWrongValuesWithRightChecksums();
    void survivesRandomDamage();

private:
    static constexpr image::Window small{3, 5, 7, 2};
    static constexpr qsizetype headSize = 1024;
    static constexpr qsizetype windowPlace = 140;

    static std::span<const uint8_t> spanOf(const QByteArray &content)
    {
        return {reinterpret_cast<const uint8_t *>(content.constData()), static_cast<size_t>(content.size())};
    }
    static std::optional<Correction> read(const QByteArray &content) { return fromCorrectionFile(spanOf(content)); }

    template <class Number> static void put(QByteArray &content, qsizetype place, Number value)
    {
        qToLittleEndian(value, content.data() + place);
    }
    template <class Number> static Number at(const QByteArray &content, qsizetype place)
    {
        return qFromLittleEndian<Number>(content.constData() + place);
    }

    /// Returns these contents with valid checksums.
    static QByteArray sealed(QByteArray content)
    {
        put(content, headSize - 4, crc32(spanOf(content.first(headSize - 4))));
        put(content, content.size() - 4, crc32(spanOf(content.sliced(headSize).chopped(4))));
        return content;
    }
};

void tst_correctionFile::returnsWhatItContains()
{
    const auto written = table(small);
    CorrectionInfo info = description();
    const auto correction = read(bytesOf(toCorrectionFile(info, written)));
    QVERIFY(correction);
    info.x = small.x;
    info.y = small.y;
    info.width = small.width;
    info.height = small.height;
    QVERIFY(correction->info == info);
    QVERIFY(correction->table->window == small);
    QVERIFY(correction->table->gains == written.gains);
    QVERIFY(correction->table->offsets == written.offsets);
    QVERIFY(correction->table->flags == written.flags);
}

void tst_correctionFile::hasTheDocumentedSize()
{
    QCOMPARE(correctionFileSize(640, 512), uint64_t(2'950'148));
    QCOMPARE(file({0, 0, 64, 4}).size(), qsizetype(3'332));
    QCOMPARE(correctionFileSize(64, 4), uint64_t(3'332));
    QCOMPARE(correctionFileSize(65'535, 65'535), uint64_t(1'028) + uint64_t(9) * 65'535 * 65'535);
}

void tst_correctionFile::hasTheDocumentedOffsets()
{
    const QByteArray content = file(small);
    QCOMPARE(content.first(12), QByteArray("HLX-NUC\n\1\0\0\0", 12));
    QCOMPARE(content.sliced(12, 64), QByteArray("Größe").leftJustified(64, '\0'));
    QCOMPARE(content.sliced(76, 64), QByteArray("ZE-7").leftJustified(64, '\0'));
    const auto first = description();
    QCOMPARE(at<uint16_t>(content, 140), uint16_t(3));
    QCOMPARE(at<uint16_t>(content, 142), uint16_t(5));
    QCOMPARE(at<uint16_t>(content, 144), uint16_t(7));
    QCOMPARE(at<uint16_t>(content, 146), uint16_t(2));
    QCOMPARE(content.sliced(148, 2), QByteArray("\1\1"));
    QCOMPARE(at<uint32_t>(content, 151), first.integrationWidth);
    QCOMPARE(at<float>(content, 161), first.detectorBias);
    QCOMPARE(at<float>(content, 178), first.analogOffset);
    QCOMPARE(at<uint32_t>(content, 190), first.numFrames);
    QCOMPARE(at<float>(content, 206), first.gainMinimum);
    QCOMPARE(at<uint32_t>(content, 214), first.totalBadPixels);
    QCOMPARE(at<uint32_t>(content, 250), first.newBadPixels);
    QCOMPARE(content.sliced(254, 1020 - 254), QByteArray(1020 - 254, '\0'));
    const auto written = table(small);
    QCOMPARE(at<float>(content, headSize + 4), written.gains[1]);
    QCOMPARE(at<float>(content, headSize + 4 * 14 + 4), written.offsets[1]);
    QCOMPARE(at<uint8_t>(content, headSize + 8 * 14 + 1), written.flags[1]);
    QCOMPARE(content.toHex(), sealed(content).toHex());
}

void tst_correctionFile::checksumIsTheCommonOne()
{
    QCOMPARE(crc32(spanOf("123456789")), 0xcbf43926U);
    QCOMPARE(crc32({}), 0U);
    QCOMPARE(crc32(spanOf("The quick brown fox jumps over the lazy dog")), 0x414fa339U);
}

void tst_correctionFile::longTextsAreCutBetweenCharacters_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("kept");
    QTest::newRow("empty") << QByteArray() << QByteArray();
    QTest::newRow("63") << QByteArray(63, 'M') << QByteArray(63, 'M');
    QTest::newRow("64") << QByteArray(64, 'M') << QByteArray(64, 'M');
    QTest::newRow("65") << QByteArray(65, 'M') << QByteArray(64, 'M');
    QTest::newRow("a character across the end") << QByteArray(63, 'M') + "ß" << QByteArray(63, 'M');
    QTest::newRow("a character before the end") << QByteArray(62, 'M') + "ßß" << QByteArray(62, 'M') + "ß";
}

void tst_correctionFile::longTextsAreCutBetweenCharacters()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, kept);
    CorrectionInfo info;
    info.cameraModel = text.toStdString();
    info.cameraSerial = "after it";
    const auto head = readCorrectionHead(toCorrectionFile(info, table(small)));
    QVERIFY(head);
    QCOMPARE(QByteArray::fromStdString(head->cameraModel), kept);
    QCOMPARE(head->cameraSerial, std::string("after it"));
}

void tst_correctionFile::headNeedsNoTable()
{
    const QByteArray content = file(small);
    QVERIFY(readCorrectionHead(spanOf(content.first(headSize))));
    QVERIFY(readCorrectionHead(spanOf(content.first(headSize) + "anything")));
    QVERIFY(!readCorrectionHead(spanOf(content.first(headSize - 1))));
}

void tst_correctionFile::refusesEveryTruncation()
{
    const QByteArray content = file(small);
    QVERIFY(read(content));
    for (qsizetype size = 0; size < content.size(); ++size)
        QVERIFY2(!read(content.first(size)), qPrintable(QString::number(size)));
}

void tst_correctionFile::refusesATail() { QVERIFY(!read(file(small) + '\0')); }

void tst_correctionFile::refusesEveryFlippedBit()
{
    QByteArray content = file(small);
    for (qsizetype bit = 0; bit < content.size() * 8; ++bit) {
        const auto flip = [&] { content[bit / 8] = static_cast<char>(content[bit / 8] ^ (1 << (bit % 8))); };
        flip();
        QVERIFY2(!read(content), qPrintable(QString::number(bit)));
        QCOMPARE(readCorrectionHead(spanOf(content)).has_value(), bit / 8 >= headSize);
        flip();
    }
    QVERIFY(read(content));
}

void tst_correctionFile::refusesWrongValuesWithRightChecksums_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray sound = file(small);
    QVERIFY(read(sealed(sound)));
    const auto row = [&](const char *name, qsizetype place, auto value) {
        QByteArray content = sound;
        put(content, place, value);
        QTest::newRow(name) << sealed(content);
    };
    row("other magic", 0, uint8_t('X'));
    row("later version", 8, uint32_t(2));
    row("no width", windowPlace + 4, uint16_t(0));
    row("no height", windowPlace + 6, uint16_t(0));
    row("wider than the table", windowPlace + 4, uint16_t(8));
    row("narrower than the table", windowPlace + 4, uint16_t(6));
    row("too many pixels", windowPlace + 4, uint64_t(0xffff'ffff));
    row("gain that is no number", headSize, std::numeric_limits<float>::quiet_NaN());
    row("infinite offset", headSize + 4 * 14, std::numeric_limits<float>::infinity());
    row("unknown flag", headSize + 8 * 14, uint8_t(8));
}

void tst_correctionFile::refusesWrongValuesWithRightChecksums()
{
    QFETCH(QByteArray, content);
    QVERIFY(!read(content));
}

void tst_correctionFile::survivesRandomDamage()
{
    const QByteArray sound = file(small);
    std::mt19937 random(1);
    const auto below = [&](qsizetype end) { return static_cast<qsizetype>(random() % static_cast<uint32_t>(end)); };
    for (int round = 0; round < 5000; ++round) {
        QByteArray content = sound;
        for (qsizetype n = below(20); n >= 0; --n)
            content[below(content.size())] = static_cast<char>(random());
        if (round % 3 == 1)
            content.insert(below(content.size()), QByteArray(below(50), static_cast<char>(random())));
        else if (round % 3 == 2)
            content.remove(below(content.size()), below(50));
        QVERIFY(content == sound || !read(content));
        // With valid checksums the values decide.
        if (const auto correction = read(sealed(content))) {
            QVERIFY(correction->table->isComplete());
            for (const float gain : correction->table->gains)
                QVERIFY(std::isfinite(gain));
        }
    }
}

ZVT_TEST(tst_correctionFile)
#include "tst_correctionFile.moc"
