#include "tests/platform/CorrectionFixture.h"

#include "platform/emulator/replaceFile.h"
#include "tests/platform/callTimes.h"
#include "tests/platform/writeProfile.h"

#include <QDir>
#include <QFileInfo>

#include <filesystem>

#include <unistd.h>

using namespace emulator;
using namespace Qt::StringLiterals;

class tst_correctionStore : public CorrectionFixture
{
    Q_OBJECT

private slots:
    void init() { StateFixture::init(); }
    void cleanup() { StateFixture::cleanup(); }

    void isEmptyButForTheFactory();
    void listsByName();
    void entriesHaveSizeAndTime();
    void queriesReturnEveryField();
    void textsMayFillTheirFields();
    void readReturnsWhatWasWritten();
    void acceptsNamesByTheRule_data();
    void acceptsNamesByTheRule();
    void refusesAnIncompleteTable();
    void replacesACorrection();
    void removesACorrection();
    void renamesACorrection();
    void refusesRenames_data();
    void refusesRenames();
    void sizesAreSubtractedFromTheCapacity();
    void fillsTheLastByte();
    void aReplacementNeedsOnlyTheDifference();
    void aFullCameraKeepsNothing();
    void freeSpaceOfTenThousandFilesIsQuick();
    void guessesTheSize_data();
    void guessesTheSize();
    void damagedFilesAreListedButNotRead_data();
    void damagedFilesAreListedButNotRead();
    void refusesUnknownNames();
    void seesChangesByOtherProcesses();
    void survivesARestart();
    void tenThousandQueriesReadHeadsOnly();
    void callsAreQuick();
    void otherClientsSetCapacityAndSpeed();
    void aCameraWithoutCorrectionsHasNoStore();

private:
    /// Makes the corrections "0" to "9999". All of them are the same file.
    void makeTenThousandFiles(const image::Window &window)
    {
        const QByteArray first = QFile::encodeName(pathOf("0"));
        write(pathOf("0"), file(window));
        for (int i = 1; i < 10'000; ++i)
            QCOMPARE(link(first, QFile::encodeName(pathOf(QByteArray::number(i)))), 0);
    }
    /// The bytes that this process has read from files so far.
    static uint64_t bytesRead()
    {
        QFile io(u"/proc/self/io"_s);
        return io.open(QIODevice::ReadOnly) ? io.readLine().mid(7).trimmed().toULongLong() : 0;
    }
    zvtSNUCInfo query(const char *name, int (*function)(uint64_t, const char *, zvtSNUCInfo *) = zvtQueryNUCInfo)
    {
        zvtSNUCInfo info{};
        return function(m_handle, name, &info) == Ok ? info : zvtSNUCInfo{};
    }
};

void tst_correctionStore::isEmptyButForTheFactory()
{
    QCOMPARE(corrections(), factoryNames());
    QVERIFY(QDir(m_camera->folder() + "/nucs").isEmpty());
}

void tst_correctionStore::listsByName()
{
    for (const char *name : {"b", "Ä", "a", "B", "a2", ".hidden"})
        QVERIFY(save(name));
    QVERIFY(QDir(m_camera->folder() + "/nucs").mkdir(u"folder.nuc"_s));
    write(pathOf("x") + ".txt", file());
    write(m_camera->folder() + "/nucs/ space.nuc", file());
    const QStringList expected = QStringList{u".hidden"_s} + factoryNames().first(3) + QStringList{u"B"_s}
        + factoryNames().sliced(3) + QStringList{u"a"_s, u"a2"_s, u"b"_s, u"Ä"_s};
    QCOMPARE(corrections(), expected);
}

void tst_correctionStore::entriesHaveSizeAndTime()
{
    // 2024-02-29 12:00:00 in units of 100 ns since 1601.
    constexpr uint64_t startOfClock = 133'536'816'000'000'000;
    Clock::advance(1500);
    QVERIFY(save("night"));
    hlx::TArray<zvtSDirEntry> entries;
    QCOMPARE(zvtListNUCs(m_handle, &entries), 0);
    const auto &night = entries[5];
    QCOMPARE(night.name.c_str(), "night");
    QCOMPARE(night.size, uint32_t(smallSize));
    QCOMPARE(night.time100ns, startOfClock + 15'000'000);
    QCOMPARE(entries[0].size, uint32_t(factorySize));
    QVERIFY(entries[0].time100ns < startOfClock);

    for (const auto &entry : entries) {
        uint32_t size = 0;
        uint64_t time = 0;
        QCOMPARE(zvtGetNUCFileInfo(m_handle, entry.name.c_str(), &size, &time), 0);
        QCOMPARE(size, entry.size);
        QCOMPARE(time, entry.time100ns);
    }
}

void tst_correctionStore::queriesReturnEveryField()
{
    QVERIFY(save("night"));
    for (auto *const function : {zvtQueryNUCInfo, zvtQueryNUCBasicInfo}) {
        zvtSNUCInfo info = query("night", function);
        QCOMPARE(info.cameraModel, "Größe");
        QCOMPARE(info.cameraSerial, "ZE-7");
        QCOMPARE(info.x, uint16_t(16));
        QCOMPARE(info.y, uint16_t(8));
        QCOMPARE(info.width, uint16_t(64));
        QCOMPARE(info.height, uint16_t(4));
        CorrectionInfo expected = description();
        expected.x = info.x;
        expected.y = info.y;
        expected.width = info.width;
        expected.height = info.height;
        forEachNumber([](const auto &field, const auto &described) { QCOMPARE(field, described); }, info, expected);
    }
}

void tst_correctionStore::textsMayFillTheirFields()
{
    QVERIFY(save("night"));
    CorrectionInfo full = description();
    full.cameraModel = std::string(64, 'M');
    QCOMPARE(store().write("full", full, table()), Ok);
    QCOMPARE(QByteArray(query("full").cameraModel, 64), QByteArray(64, 'M'));

    m_camera->gate().fillBuffers(true);
    for (auto *const function : {zvtQueryNUCInfo, zvtQueryNUCBasicInfo}) {
        const zvtSNUCInfo info = query("night", function);
        QCOMPARE(QByteArray(info.cameraModel, 64), QByteArray("Größe").leftJustified(64, '#'));
        QCOMPARE(QByteArray(info.cameraSerial, 64), QByteArray("ZE-7").leftJustified(64, '#'));
        QCOMPARE(info.x, uint16_t(16));
    }
}

void tst_correctionStore::readReturnsWhatWasWritten()
{
    QVERIFY(save("night"));
    const auto correction = store().read("night");
    QVERIFY(correction);
    QVERIFY(correction->table->window == table().window);
    QVERIFY(correction->table->gains == table().gains);
    QCOMPARE(contentOf(pathOf("night")), file());
}

void tst_correctionStore::acceptsNamesByTheRule_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("plain") << QByteArray("Field 2") << true;
    QTest::newRow("dots") << QByteArray("..") << true;
    QTest::newRow("not ASCII") << QByteArray("Größe µ €") << true;
    QTest::newRow("extension") << QByteArray("night.nuc") << true;
    QTest::newRow("200 bytes") << QByteArray(200, 'n') << true;
    QTest::newRow("201 bytes") << QByteArray(201, 'n') << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("spaces") << QByteArray("   ") << false;
    QTest::newRow("space first") << QByteArray(" night") << false;
    QTest::newRow("folder") << QByteArray("../night") << false;
    QTest::newRow("colon") << QByteArray("a:b") << false;
    QTest::newRow("no UTF-8") << QByteArray("\xff") << false;
}

void tst_correctionStore::acceptsNamesByTheRule()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, accepted);
    QCOMPARE(save(name), accepted);
    QCOMPARE(zvtNUCExists(m_handle, name) == 0, accepted);
    QCOMPARE(corrections().size(), 5 + accepted);
    QVERIFY(save("other"));
    if (accepted)
        QCOMPARE(zvtDeleteNUC(m_handle, name), 0);
    QCOMPARE(zvtRenameNUC(m_handle, "other", name) == 0, accepted);
}

void tst_correctionStore::refusesAnIncompleteTable()
{
    auto incomplete = table();
    incomplete.flags.pop_back();
    QCOMPARE(store().write("night", description(), incomplete), Refused);
    QCOMPARE(store().write("night", description(), {}), Refused);
    QCOMPARE(corrections(), factoryNames());
}

void tst_correctionStore::replacesACorrection()
{
    QVERIFY(save("night"));
    QVERIFY(save("night", {0, 0, 128, 4}));
    QCOMPARE(corrections().size(), 6);
    QCOMPARE(query("night").width, uint16_t(128));
    QCOMPARE(QDir(m_camera->folder() + "/nucs").entryList(QDir::Files | QDir::Hidden), QStringList{u"night.nuc"_s});
}

void tst_correctionStore::removesACorrection()
{
    QVERIFY(save("night"));
    QCOMPARE(zvtDeleteNUC(m_handle, "night"), 0);
    QCOMPARE(corrections(), factoryNames());
    QVERIFY(zvtNUCExists(m_handle, "night") != 0);
    QCOMPARE(zvtDeleteNUC(m_handle, "night"), int(Refused));
}

void tst_correctionStore::renamesACorrection()
{
    QVERIFY(save("night"));
    const auto before = contentOf(pathOf("night"));
    QCOMPARE(zvtRenameNUC(m_handle, "night", "Nacht ä"), 0);
    QVERIFY(zvtNUCExists(m_handle, "night") != 0);
    QCOMPARE(zvtNUCExists(m_handle, "Nacht ä"), 0);
    QCOMPARE(contentOf(pathOf("Nacht ä")), before);
}

void tst_correctionStore::refusesRenames_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::newRow("unknown") << QByteArray("missing") << QByteArray("new");
    QTest::newRow("taken") << QByteArray("night") << QByteArray("day");
    QTest::newRow("its own name") << QByteArray("night") << QByteArray("night");
    QTest::newRow("taken by the factory") << QByteArray("night") << QByteArray("Factory 1 ms");
    QTest::newRow("of the factory") << QByteArray("Factory 1 ms") << QByteArray("new");
    QTest::newRow("invalid") << QByteArray("night") << QByteArray("a/b");
}

void tst_correctionStore::refusesRenames()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QVERIFY(save("night"));
    QVERIFY(save("day", {0, 0, 128, 4}));
    const auto before = corrections();
    QCOMPARE(zvtRenameNUC(m_handle, from, to), int(Refused));
    QCOMPARE(corrections(), before);
    QCOMPARE(query("day").width, uint16_t(128));
    QCOMPARE(query("night").width, uint16_t(64));
}

void tst_correctionStore::sizesAreSubtractedFromTheCapacity()
{
    QCOMPARE(freeSpace(), capacity - 5 * factorySize);
    QVERIFY(save("night"));
    QCOMPARE(freeSpace(), capacity - 5 * factorySize - smallSize);
    QVERIFY(save("night", {0, 0, 128, 4}));
    QCOMPARE(freeSpace(), capacity - 5 * factorySize - correctionFileSize(128, 4));
    QCOMPARE(zvtDeleteNUC(m_handle, "night"), 0);
    QCOMPARE(zvtDeleteNUC(m_handle, "Factory 1 ms"), 0);
    QCOMPARE(freeSpace(), capacity - 4 * factorySize);
    // A camera that is more than full has no space.
    QVERIFY(set("nucs.capacity", 10));
    QCOMPARE(freeSpace(), uint64_t(0));
}

void tst_correctionStore::fillsTheLastByte()
{
    QVERIFY(leaveFree(smallSize - 1));
    QVERIFY(!save("night"));
    QCOMPARE(corrections(), factoryNames());
    QVERIFY(QDir(m_camera->folder() + "/nucs").isEmpty());
    QVERIFY(leaveFree(smallSize));
    QVERIFY(save("night"));
    QCOMPARE(freeSpace(), uint64_t(0));
    QVERIFY(!save("other"));
}

void tst_correctionStore::aReplacementNeedsOnlyTheDifference()
{
    QVERIFY(save("night"));
    QVERIFY(leaveFree(0));
    QVERIFY(save("night"));
    const auto before = contentOf(pathOf("night"));
    QVERIFY(!save("night", {0, 0, 128, 4}));
    QCOMPARE(contentOf(pathOf("night")), before);
    QVERIFY(save("Factory 1 ms", {0, 0, 640, 512}));
    QCOMPARE(freeSpace(), uint64_t(0));
}

void tst_correctionStore::aFullCameraKeepsNothing()
{
    QVERIFY(save("night"));
    const auto before = contentOf(pathOf("night"));
    QVERIFY(set("nucs.capacity", 10));
    QVERIFY(!save("night"));
    QCOMPARE(contentOf(pathOf("night")), before);
    // The others need the capacity already.
    QVERIFY(set("nucs.capacity", QVariant::fromValue(5 * factorySize + smallSize - 1)));
    QVERIFY(!save("night"));
}

void tst_correctionStore::freeSpaceOfTenThousandFilesIsQuick()
{
    QVERIFY(set("nucs.capacity", 1e12));
    const uint64_t empty = freeSpace();
    makeTenThousandFiles({0, 0, 64, 4});
    QCOMPARE(empty - freeSpace(), 10'000 * smallSize);
    // The files were made some time ago.
    using namespace std::filesystem;
    const path folder = (m_camera->folder() + "/nucs").toStdString();
    last_write_time(folder, last_write_time(folder) - std::chrono::seconds(10));
    freeSpace();
    const auto mark = m_camera->gate().mark();
    for (int i = 0; i < 5; ++i)
        QCOMPARE(empty - freeSpace(), 10'000 * smallSize);
    QCOMPARE(zvtDeleteNUC(m_handle, "1"), 0);
    QCOMPARE(empty - freeSpace(), 9999 * smallSize);
    QVERIFY(slowestFunction(m_camera->gate(), mark) < std::chrono::milliseconds(1));
    // A change is seen at once, also directly after another one.
    for (const char *name : {"a", "b", "c"}) {
        const uint64_t before = freeSpace();
        QVERIFY(save(name));
        QCOMPARE(before - freeSpace(), smallSize);
    }
    QVERIFY(QFile::remove(pathOf("a")));
    QCOMPARE(empty - freeSpace(), 10'001 * smallSize);
}

void tst_correctionStore::guessesTheSize_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<uint32_t>("size"); // 0: refused.
    QTest::newRow("full") << 640 << 512 << 2'950'148U;
    QTest::newRow("small") << 64 << 4 << 3'332U;
    QTest::newRow("one pixel") << 1 << 1 << 1'037U;
    QTest::newRow("largest number") << 65535 << 65535 << 4'294'967'295U;
    QTest::newRow("no width") << 0 << 4 << 0U;
    QTest::newRow("no height") << 64 << 0 << 0U;
}

void tst_correctionStore::guessesTheSize()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(uint32_t, size);
    uint32_t guessed = 0;
    const int status = zvtGuessNUCSize(m_handle, static_cast<uint16_t>(width), static_cast<uint16_t>(height), &guessed);
    QCOMPARE(status, int(size == 0 ? Refused : Ok));
    QCOMPARE(guessed, size);
}

void tst_correctionStore::damagedFilesAreListedButNotRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("headIsValid");
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("head only") << file().first(1024) << false;
    QTest::newRow("truncated") << file().chopped(1) << false;
    QTest::newRow("with a tail") << file() + 'x' << false;
    QTest::newRow("text") << QByteArray(3'332, 'x') << false;
    QByteArray flipped = file();
    flipped[20] = static_cast<char>(flipped[20] ^ 1);
    QTest::newRow("head") << flipped << false;
    flipped = file();
    flipped[2000] = static_cast<char>(flipped[2000] ^ 1);
    QTest::newRow("table") << flipped << true;
}

void tst_correctionStore::damagedFilesAreListedButNotRead()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, headIsValid);
    write(pathOf("bad"), content);
    QVERIFY(corrections().contains(u"bad"_s));
    QCOMPARE(zvtNUCExists(m_handle, "bad"), 0);
    QCOMPARE(freeSpace(), capacity - 5 * factorySize - static_cast<uint64_t>(content.size()));
    zvtSNUCInfo info{};
    QCOMPARE(zvtQueryNUCBasicInfo(m_handle, "bad", &info) == 0, headIsValid);
    QCOMPARE(zvtQueryNUCInfo(m_handle, "bad", &info) == 0, headIsValid);
    QCOMPARE(info.width != 0, headIsValid);
    QVERIFY(!store().read("bad"));
    const QString local = m_folder->filePath(u"local"_s);
    QCOMPARE(zvtDownloadNUCStd(m_handle, "bad", qPrintable(local), {}), int(Refused));
    QVERIFY(!QFileInfo::exists(local));
    QCOMPARE(zvtRenameNUC(m_handle, "bad", "worse"), 0);
    QCOMPARE(zvtDeleteNUC(m_handle, "worse"), 0);
}

void tst_correctionStore::refusesUnknownNames()
{
    for (const char *name : {"missing", "", "../camera", "/etc/passwd"}) {
        QCOMPARE(zvtNUCExists(m_handle, name), int(Refused));
        zvtSNUCInfo info{};
        QCOMPARE(zvtQueryNUCBasicInfo(m_handle, name, &info), int(Refused));
        QCOMPARE(zvtQueryNUCInfo(m_handle, name, &info), int(Refused));
        uint32_t size = 0;
        uint64_t time = 0;
        QCOMPARE(zvtGetNUCFileInfo(m_handle, name, &size, &time), int(Refused));
        bool factory = true;
        QCOMPARE(zvtIsFactoryNUC(m_handle, name, &factory), int(Refused));
        QVERIFY(factory);
        QCOMPARE(zvtDeleteNUC(m_handle, name), int(Refused));
        QVERIFY(!store().read(name));
    }
}

void tst_correctionStore::seesChangesByOtherProcesses()
{
    write(pathOf("night"), file());
    QCOMPARE(query("night").width, uint16_t(64));
    const uint64_t before = freeSpace();
    QVERIFY(replaceFile(pathOf("night"), file({0, 0, 128, 4})));
    QCOMPARE(query("night").width, uint16_t(128));
    QCOMPARE(store().read("night")->table->window.width, 128);
    QCOMPARE(freeSpace(), before + smallSize - correctionFileSize(128, 4));
    QVERIFY(QFile::remove(pathOf("night")));
    QCOMPARE(corrections(), factoryNames());
    QVERIFY(!store().read("night"));
}

void tst_correctionStore::survivesARestart()
{
    QVERIFY(save("night"));
    switchOn();
    QVERIFY(corrections().contains(u"night"_s));
    QCOMPARE(query("night").height, uint16_t(4));
}

void tst_correctionStore::tenThousandQueriesReadHeadsOnly()
{
    QVERIFY(set("nucs.capacity", 1e12));
    makeTenThousandFiles({0, 0, 640, 512});
    hlx::TArray<zvtSDirEntry> entries;
    QCOMPARE(zvtListNUCs(m_handle, &entries), 0);
    QCOMPARE(entries.size(), 10'000 + 5);
    const uint64_t before = bytesRead();
    zvtSNUCInfo info{};
    for (const auto &entry : entries)
        QCOMPARE(zvtQueryNUCBasicInfo(m_handle, entry.name.c_str(), &info), 0);
    const uint64_t read = bytesRead() - before;
    QVERIFY2(read >= 10'000 * 1024 && read < 10'005 * 2048, qPrintable(QString::number(read)));
}

void tst_correctionStore::callsAreQuick()
{
    QVERIFY(save("night"));
    const auto mark = m_camera->gate().mark();
    for (int i = 0; i < 20; ++i) {
        bool factory = false;
        uint32_t size = 0;
        uint64_t time = 0;
        zvtSNUCInfo info{};
        corrections();
        freeSpace();
        zvtNUCExists(m_handle, "night");
        zvtIsFactoryNUC(m_handle, "Factory 1 ms", &factory);
        zvtGuessNUCSize(m_handle, 640, 512, &size);
        zvtGetNUCFileInfo(m_handle, "night", &size, &time);
        zvtQueryNUCBasicInfo(m_handle, "night", &info);
        zvtQueryNUCBasicInfo(m_handle, "Factory 1 ms", &info);
        zvtQueryNUCInfo(m_handle, "night", &info);
        zvtRenameNUC(m_handle, "night", "day");
        zvtRenameNUC(m_handle, "day", "night");
        zvtDeleteNUC(m_handle, i == 19 ? "night" : "missing");
    }
    QVERIFY(slowestFunction(m_camera->gate(), mark) < std::chrono::milliseconds(1));
}

void tst_correctionStore::otherClientsSetCapacityAndSpeed()
{
    QVERIFY(set("nucs.capacity", QVariant::fromValue(5 * factorySize + 1)));
    QCOMPARE(freeSpace(), uint64_t(1));
    QVERIFY(!set("nucs.capacity", -1));
    QVERIFY(!set("nucs.deletedFactory", QVariantMap()));
    QVERIFY(set("corrections.bytesPerSecond", 1000));
    QVERIFY(!set("corrections.bytesPerSecond", 999));
}

void tst_correctionStore::aCameraWithoutCorrectionsHasNoStore()
{
    for (const QString &profile :
         {u"bare"_s, writeProfile(m_folder->path(), "everything", R"({"corrections": null})")}) {
        switchOn(profile);
        QCOMPARE(corrections(), QStringList{u"failed"_s});
        uint64_t bytes = 0;
        QCOMPARE(zvtGetNUCFreeSpace(m_handle, &bytes), int(Absent));
        QCOMPARE(zvtNUCExists(m_handle, "Factory 1 ms"), int(Absent));
    }
}

ZVT_TEST(tst_correctionStore)
#include "tst_correctionStore.moc"
