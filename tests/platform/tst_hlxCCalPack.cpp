#include "hlx/CCalPack.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include "platform/hlxfile/CalPackWriter.h"
#include "tests/support/Test.h"

using hlx::CCalPack;

namespace
{

void fill(CCalPack &pack)
{
    pack.cal(true)->name = "50 mm";
    pack.cal(true)->coefficients = {1.0F, 2.0F};
    for (const unsigned char preset : {2, 5}) {
        hlx::CNucFile *nuc = pack.nuc(preset, true);
        nuc->name = hlx::CString::FromFormat("nuc %d", preset);
        nuc->width = 3;
        nuc->height = 2;
        nuc->gains = {1.0F, 2.0F};
    }
}

} // namespace

class tst_hlxCCalPack : public Test
{
    Q_OBJECT

private slots:
    void init();

    void isEmptyAtFirst();
    void createsItsPartsWhenAsked();
    void comesBackAsItWasWritten_data();
    void comesBackAsItWasWritten();
    void anEmptyPackComesBackEmpty();
    void loadingReplacesWhatWasThere();
    void refusesWhatIsNoPack();
    void survivesEveryDamagedByte();
    void savingReportsFailure();

private:
    hlx::CString path(const char *name) const { return m_folder.filePath(QLatin1String(name)).toUtf8().constData(); }
    QByteArray savedBytes(const char *name)
    {
        CCalPack pack;
        fill(pack);
        hlx::saveCalPack(pack, hlx::fileSystem(), path(name));
        QFile file(m_folder.filePath(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void store(const QByteArray &bytes)
    {
        QFile file(m_folder.filePath("b.xcalpk"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    QTemporaryDir m_folder;
};

void tst_hlxCCalPack::init()
{
    Test::init();
    m_folder = QTemporaryDir();
    QVERIFY(m_folder.isValid());
}

void tst_hlxCCalPack::isEmptyAtFirst()
{
    CCalPack pack;
    QVERIFY(pack.cal(false) == nullptr);
    for (int preset = 0; preset < 256; ++preset)
        QVERIFY(pack.nuc(static_cast<unsigned char>(preset), false) == nullptr);
}

void tst_hlxCCalPack::createsItsPartsWhenAsked()
{
    CCalPack pack;
    QVERIFY(pack.cal(true) != nullptr);
    QCOMPARE(pack.cal(false), pack.cal(true));
    QVERIFY(pack.nuc(7, true) != nullptr);
    QCOMPARE(pack.nuc(7, false), pack.nuc(7, true));
    QVERIFY(pack.nuc(8, true) == nullptr);
    QVERIFY(pack.nuc(255, true) == nullptr);
}

void tst_hlxCCalPack::comesBackAsItWasWritten_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"a.cal", "a.xcalpk", "a.xnucpk"})
        QTest::newRow(name) << QByteArray(name);
}

void tst_hlxCCalPack::comesBackAsItWasWritten()
{
    QFETCH(QByteArray, name);
    QVERIFY(!savedBytes(name.constData()).isEmpty());
    CCalPack pack;
    QVERIFY(pack.Load(hlx::fileSystem(), path(name.constData())));
    QCOMPARE(pack.cal(false)->name.c_str(), "50 mm");
    QCOMPARE(pack.cal(false)->coefficients[1], 2.0F);
    for (unsigned char preset = 0; preset < CCalPack::presetCount; ++preset)
        QCOMPARE(pack.nuc(preset, false) != nullptr, preset == 2 || preset == 5);
    const hlx::CNucFile *nuc = pack.nuc(5, false);
    QCOMPARE(nuc->name.c_str(), "nuc 5");
    QCOMPARE(nuc->width, uint16_t{3});
    QCOMPARE(nuc->height, uint16_t{2});
    // Entries that an array does not contain have the neutral value.
    QCOMPARE(nuc->gains.size(), std::size_t{6});
    QCOMPARE(nuc->gains[1], 2.0F);
    QCOMPARE(nuc->gains[5], 1.0F);
    QCOMPARE(nuc->offsets[5], 0.0F);
}

void tst_hlxCCalPack::anEmptyPackComesBackEmpty()
{
    CCalPack pack;
    QVERIFY(hlx::saveCalPack(pack, hlx::fileSystem(), path("a.cal")));
    fill(pack);
    QVERIFY(pack.Load(hlx::fileSystem(), path("a.cal")));
    QVERIFY(pack.cal(false) == nullptr);
    QVERIFY(pack.nuc(2, false) == nullptr);
}

void tst_hlxCCalPack::loadingReplacesWhatWasThere()
{
    savedBytes("a.cal");
    CCalPack pack;
    pack.nuc(0, true);
    QVERIFY(pack.Load(hlx::fileSystem(), path("a.cal")));
    QVERIFY(pack.nuc(0, false) == nullptr);
}

void tst_hlxCCalPack::refusesWhatIsNoPack()
{
    const QByteArray bytes = savedBytes("a.cal");
    CCalPack pack;
    pack.nuc(1, true)->name = "kept";
    QVERIFY(!pack.Load(hlx::fileSystem(), path("missing.cal")));
    QVERIFY(!pack.Load(hlx::fileSystem(), m_folder.path().toUtf8().constData()));
    QVERIFY(!pack.Load(hlx::fileSystem(), ""));
    QVERIFY(!pack.Load(nullptr, path("a.cal")));
    for (int length = 0; length < bytes.size(); ++length) {
        store(bytes.left(length));
        QVERIFY2(!pack.Load(hlx::fileSystem(), path("b.xcalpk")), qPrintable(QString::number(length)));
    }
    store(bytes + 'x');
    QVERIFY(!pack.Load(hlx::fileSystem(), path("b.xcalpk")));
    store(QByteArray(1000, '\xff'));
    QVERIFY(!pack.Load(hlx::fileSystem(), path("b.xcalpk")));
    QCOMPARE(pack.nuc(1, false)->name.c_str(), "kept");
}

void tst_hlxCCalPack::survivesEveryDamagedByte()
{
    const QByteArray bytes = savedBytes("a.cal");
    for (int i = 0; i < bytes.size(); ++i) {
        QByteArray damaged = bytes;
        damaged[i] = static_cast<char>(~damaged[i]);
        store(damaged);
        CCalPack pack;
        pack.Load(hlx::fileSystem(), path("b.xcalpk"));
    }
}

void tst_hlxCCalPack::savingReportsFailure()
{
    CCalPack pack;
    QVERIFY(!hlx::saveCalPack(pack, hlx::fileSystem(), path("missing/a.cal")));
    QVERIFY(!hlx::saveCalPack(pack, nullptr, path("a.cal")));
}

ZVT_TEST(tst_hlxCCalPack)
#include "tst_hlxCCalPack.moc"
