#include "hlx/CBadPixelList.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include "platform/hlx/BadPixelFile.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <limits>

using hlx::BadPixelFile;
using hlx::cam::zvt::CBadPixelList;

class tst_badPixelList : public Test
{
    Q_OBJECT

private slots:
    void init();

    void isEmptyAtFirst();
    void comesBackInOrder();
    void anIndexBeyondTheEndLeavesTheValuesAlone();
    void anImageOfNoPixelsIsAllowed();
    void refusesWhatIsNoList();
    void refusesAbsurdCountsAndPixelsOutside();
    void refusesAbsurdSizes_data();
    void refusesAbsurdSizes();
    void savingReportsFailure();
    void longListsTakeLinearTime();

private:
    hlx::CString path(const char *name) const { return m_folder.filePath(QLatin1String(name)).toUtf8().constData(); }
    void store(const QByteArray &bytes)
    {
        QFile file(m_folder.filePath("b.bpl"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    static QByteArray bytes()
    {
        const auto list = BadPixelFile{640, 512, {{12, 34}, {600, 500}, {639, 511}}}.bytes();
        return QByteArray(reinterpret_cast<const char *>(list.data()), static_cast<qsizetype>(list.size()));
    }

    QTemporaryDir m_folder;
};

void tst_badPixelList::init()
{
    Test::init();
    m_folder = QTemporaryDir();
    QVERIFY(m_folder.isValid());
}

void tst_badPixelList::isEmptyAtFirst()
{
    const CBadPixelList list;
    uint16_t width = 7;
    uint16_t height = 7;
    list.GetSize(width, height);
    QCOMPARE(width, uint16_t{0});
    QCOMPARE(height, uint16_t{0});
    QCOMPARE(list.GetCount(), 0U);
}

void tst_badPixelList::comesBackInOrder()
{
    const BadPixelFile file{640, 512, {{12, 34}, {600, 500}, {639, 511}, {0, 0}}};
    QVERIFY(file.save(hlx::fileSystem(), path("a.bpl")));
    CBadPixelList list;
    QVERIFY(list.Load(path("a.bpl")));
    uint16_t width = 0;
    uint16_t height = 0;
    list.GetSize(width, height);
    QCOMPARE(width, uint16_t{640});
    QCOMPARE(height, uint16_t{512});
    QCOMPARE(list.GetCount(), 4U);
    for (unsigned i = 0; i < list.GetCount(); ++i) {
        BadPixelFile::Pixel pixel;
        list.GetAt(i, pixel.x, pixel.y);
        QVERIFY(pixel == file.pixels[i]);
    }
}

void tst_badPixelList::anIndexBeyondTheEndLeavesTheValuesAlone()
{
    uint16_t x = 7;
    uint16_t y = 8;
    CBadPixelList().GetAt(0, x, y);
    QCOMPARE(x, uint16_t{7});
    QCOMPARE(y, uint16_t{8});
}

void tst_badPixelList::anImageOfNoPixelsIsAllowed()
{
    QVERIFY(BadPixelFile{}.save(hlx::fileSystem(), path("a.bpl")));
    CBadPixelList list;
    QVERIFY(list.Load(path("a.bpl")));
    QCOMPARE(list.GetCount(), 0U);
}

void tst_badPixelList::refusesWhatIsNoList()
{
    QVERIFY((BadPixelFile{4, 4, {{1, 2}}}.save(hlx::fileSystem(), path("a.bpl"))));
    CBadPixelList list;
    QVERIFY(list.Load(path("a.bpl")));
    QVERIFY(!list.Load(path("missing.bpl")));
    QVERIFY(!list.Load(m_folder.path().toUtf8().constData()));
    QVERIFY(!list.Load(""));
    for (int length = 0; length < bytes().size(); ++length) {
        store(bytes().left(length));
        QVERIFY2(!list.Load(path("b.bpl")), qPrintable(QString::number(length)));
    }
    for (const QByteArray &foreign : {bytes() + 'x', QByteArray(100, '\xff'), QByteArray("a text that is no list")}) {
        store(foreign);
        QVERIFY(!list.Load(path("b.bpl")));
    }
    // A failed load does not change the list.
    QCOMPARE(list.GetCount(), 1U);
}

void tst_badPixelList::refusesAbsurdCountsAndPixelsOutside()
{
    CBadPixelList list;
    store(bytes());
    QVERIFY(list.Load(path("b.bpl")));
    for (const quint32 count : {0U, 2U, 4U, 0x40000003U, 0xFFFFFFFFU}) {
        QByteArray wrong = bytes();
        qToLittleEndian(count, wrong.data() + 16);
        store(wrong);
        QVERIFY(!list.Load(path("b.bpl")));
    }
    for (const BadPixelFile::Pixel &outside : {BadPixelFile::Pixel{640, 0}, BadPixelFile::Pixel{0, 512}}) {
        QVERIFY((BadPixelFile{640, 512, {outside}}.save(hlx::fileSystem(), path("b.bpl"))));
        QVERIFY(!list.Load(path("b.bpl")));
    }
}

void tst_badPixelList::refusesAbsurdSizes_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("most pixels") << 2048 << 2048 << true;
    QTest::newRow("a row more") << 2048 << 2049 << false;
    QTest::newRow("a column more") << 2049 << 2048 << false;
    QTest::newRow("widest row") << 65535 << 1 << true;
    QTest::newRow("highest column") << 1 << 65535 << true;
    QTest::newRow("most of the widest rows") << 65535 << 64 << true;
    QTest::newRow("more of the widest rows") << 65535 << 65 << false;
    QTest::newRow("more of the highest columns") << 65 << 65535 << false;
    QTest::newRow("long sides") << 16384 << 16384 << false;
    QTest::newRow("greatest numbers") << 65535 << 65535 << false;
}

void tst_badPixelList::refusesAbsurdSizes()
{
    QFETCH(const int, width);
    QFETCH(const int, height);
    QFETCH(const bool, accepted);
    const BadPixelFile file{static_cast<uint16_t>(width), static_cast<uint16_t>(height), {{0, 0}}};
    QVERIFY(file.save(hlx::fileSystem(), path("a.bpl")));
    CBadPixelList list;
    QCOMPARE(list.Load(path("a.bpl")), accepted);
    QCOMPARE(list.GetCount(), accepted ? 1U : 0U);
}

void tst_badPixelList::savingReportsFailure()
{
    QVERIFY(!BadPixelFile{}.save(hlx::fileSystem(), path("missing/a.bpl")));
    QVERIFY(!BadPixelFile{}.save(nullptr, path("a.bpl")));
}

void tst_badPixelList::longListsTakeLinearTime()
{
    const auto timeOf = [this](uint16_t height) {
        BadPixelFile file{400, height, {}};
        for (uint16_t y = 0; y < height; ++y)
            for (uint16_t x = 0; x < file.width; ++x)
                file.pixels.push_back({x, y});
        qint64 shortest = std::numeric_limits<qint64>::max();
        for (int turn = 0; turn < 5; ++turn) {
            QElapsedTimer timer;
            timer.start();
            CBadPixelList list;
            const bool loaded = file.save(hlx::fileSystem(), path("a.bpl")) && list.Load(path("a.bpl"));
            shortest = std::min(shortest, timer.nsecsElapsed());
            if (!loaded || list.GetCount() != file.pixels.size())
                return -1.0;
        }
        return double(shortest);
    };
    const double small = timeOf(80);
    const double large = timeOf(320); // 128 000 pixels.
    QVERIFY(small > 0 && large > 0);
    // Quadratic time would give 16.
    QVERIFY2(large / small < 9, QByteArray::number(large / small));
}

ZVT_TEST(tst_badPixelList)
#include "tst_badPixelList.moc"
