#include "platform/emulator/crc32.h"
#include "platform/emulator/devices/MovieFolder.h"
#include "tests/platform/RecordedMoviesRig.h"
#include "tests/support/Test.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QTemporaryDir>

namespace
{

using Numbers = std::vector<uint32_t>;
using Damage = std::function<QByteArray(QByteArray)>; ///< Of the content of a file.
using ChangeOfValues = std::function<void(QJsonObject &)>;

/// Changes the values in the content of a file.
QByteArray withValues(const QByteArray &content, const ChangeOfValues &change)
{
    QJsonObject file = QJsonDocument::fromJson(content).object();
    QJsonObject values = file.value("values").toObject();
    change(values);
    file["values"] = values;
    return QJsonDocument(file).toJson();
}

/// Changes the values and then their checksum.
QByteArray rewritten(const QByteArray &content, const ChangeOfValues &change)
{
    return withValues(content, [&change](QJsonObject &values) {
        change(values);
        values.remove("checksum");
        const QByteArray text = QJsonDocument(values).toJson(QJsonDocument::Compact);
        const auto *const bytes = reinterpret_cast<const uint8_t *>(text.data());
        values["checksum"] = qint64(emulator::crc32({bytes, static_cast<size_t>(text.size())}));
    });
}

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

void addColumns()
{
    QTest::addColumn<Damage>("damage");
    QTest::addColumn<QByteArray>("report");
}

/// `report` is the end of the message.
void addRow(const char *name, const char *report, const Damage &damage)
{
    QTest::newRow(name) << damage << QByteArray(report);
}

} // namespace

/// Damaged files of recorded movies.
class tst_RecorderMovieDamage : public Test
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aDamagedFileStays();
    void noMovieOfTheProfileHasTheNumberOfADamagedFile();
    void aDamagedCorrectionIsNotLeftOut();
    void damagedFilesAreSkipped_data();
    void damagedFilesAreSkipped();
    void wrongValuesAreSkipped_data();
    void wrongValuesAreSkipped();
    void damageOfAByteIsHarmless();
    void aDamagedListOfNumbersIsReported();

private:
    void checkThatTheFileIsSkipped();

    QTemporaryDir m_folder; ///< Has the files of two movies.
    QByteArray m_second; ///< The content of the second one.
};

void tst_RecorderMovieDamage::initTestCase()
{
    init();
    RecordedMoviesRig rig;
    QVERIFY(rig.recordMovie(5) && rig.recordMovie(6) && QDir(m_folder.path()).mkdir("corrections"));
    QStringList files = rig.files();
    for (const QString &name : rig.files("corrections"))
        files << "corrections/" + name;
    QCOMPARE(files.size(), 5);
    for (const QString &name : files)
        QVERIFY(write(m_folder.filePath(name), rig.contentOf(name)));
    m_second = rig.contentOf("2.json");
}

void tst_RecorderMovieDamage::aDamagedFileStays()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.recordMovie(5) && rig.recordMovie(6));
    rig.flush();
    const QByteArray content = rig.contentOf("2.json").chopped(100);
    QVERIFY(rig.write("2.json", content));
    expectReport("2\\.json: corrupt");
    rig.restart();
    QCOMPARE(rig.movieNumbers(), Numbers{1});
    rig.useSmallestWindow();
    QVERIFY(rig.load(0) && rig.call(zvtSsdUnload) && rig.recordMovie(5));
    QCOMPARE(rig.movieNumbers(), (Numbers{1, 3}));
    rig.flush();
    QCOMPARE(rig.contentOf("2.json"), content);
}

void tst_RecorderMovieDamage::noMovieOfTheProfileHasTheNumberOfADamagedFile()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.recordMovie(5));
    rig.flush();
    QVERIFY(rig.write("1.json", "damaged"));
    expectReport("1\\.json: corrupt");
    rig.restartWith(R"({"movies": [{"name": "A"}, {"name": "B"}]})");
    QCOMPARE(rig.names(), "B");
    QCOMPARE(rig.contentOf("1.json"), "damaged");
}

void tst_RecorderMovieDamage::aDamagedCorrectionIsNotLeftOut()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.setWindow(160, 128) && rig.recordMovie(20));
    const QStringList corrections = rig.files("corrections");
    QCOMPARE(corrections.size(), 2);
    for (const QString &name : corrections)
        QVERIFY(rig.write("corrections/" + name, rig.contentOf("corrections/" + name).replace(5000, 6, "damage")));
    rig.restart();
    // Frames that were corrected in another way than when they were recorded would look as good.
    expectReport("corrections/.*\\.nuc: damaged");
    QVERIFY(rig.loadMovie(0) && rig.recorder().memory()->frames() == 20);
    QVERIFY(rig.checksums().empty());
    // A movie that is saved with the same corrections stores them again.
    QVERIFY(rig.call(zvtSsdUnload));
    expectReport("corrections/.*\\.nuc: damaged");
    QVERIFY(rig.recordMovie(20));
    const auto checksums = rig.checksums();
    QCOMPARE(rig.files("corrections"), corrections);
    rig.restart();
    QVERIFY(rig.loadMovie(1) && rig.checksums() == checksums && checksums.size() == 4);
    QVERIFY(rig.loadMovie(0) && rig.checksums().size() == 4);
}

void tst_RecorderMovieDamage::damagedFilesAreSkipped_data()
{
    addColumns();
    addRow("cut", "corrupt", [](QByteArray file) { return file.chopped(100); });
    addRow("empty", "corrupt", [](const QByteArray &) { return QByteArray(); });
    addRow("another version", "written by another version",
           [](QByteArray file) { return file.replace(R"("version": 1)", R"("version": 2)"); });
    addRow("another kind", "corrupt",
           [](QByteArray file) { return file.replace("zvt-emulated-movie", "zvt-emulated-drive"); });
    const auto changed = [](const char *name, const ChangeOfValues &change) {
        addRow(name, "damaged", [change](const QByteArray &file) { return withValues(file, change); });
    };
    changed("recipe", [](QJsonObject &movie) { movie["recipe"] = movie["recipe"].toString().replace(40, 1, "/"); });
    changed("name", [](QJsonObject &movie) { movie["name"] = "Other"; });
    changed("order of corrections", [](QJsonObject &movie) {
        const QJsonArray corrections = movie["corrections"].toArray();
        movie["corrections"] = QJsonArray{corrections.at(1), corrections.at(0)};
    });
    changed("checksum", [](QJsonObject &movie) { movie["checksum"] = 3; });
    changed("no checksum", [](QJsonObject &movie) { movie.remove("checksum"); });
}

void tst_RecorderMovieDamage::damagedFilesAreSkipped() { checkThatTheFileIsSkipped(); }

void tst_RecorderMovieDamage::wrongValuesAreSkipped_data()
{
    addColumns();
    const auto row = [](const char *name, const char *report, const ChangeOfValues &change) {
        addRow(name, report, [change](const QByteArray &file) { return rewritten(file, change); });
    };
    row("no recipe", "damaged", [](QJsonObject &movie) { movie.remove("recipe"); });
    row("too few corrections", "damaged", [](QJsonObject &movie) { movie["corrections"] = QJsonArray(); });
    row("long name", "damaged", [](QJsonObject &movie) { movie["name"] = QString(68, 'a'); });
    row("another renderer", "its frames were rendered in another way",
        [](QJsonObject &movie) { movie["renderer"] = 0; });
    row("another layout", "its recipe has another layout", [](QJsonObject &movie) { movie["layout"] = 0; });
    row("no layout", "damaged", [](QJsonObject &movie) { movie.remove("layout"); });
    row("formats above 32 bits", "damaged", [](QJsonObject &movie) { movie["formats"] = qint64(UINT32_MAX) + 1; });
    row("later format", "from another format", [](QJsonObject &movie) { movie["formats"] = 1; });
    row("missing correction", "its correction abc cannot be read: No such file",
        [](QJsonObject &movie) { movie["corrections"] = QJsonArray{"abc"}; });
}

void tst_RecorderMovieDamage::wrongValuesAreSkipped() { checkThatTheFileIsSkipped(); }

/// The second of two movies is damaged. It is reported and left out, and its number is not used again.
void tst_RecorderMovieDamage::checkThatTheFileIsSkipped()
{
    QFETCH(Damage, damage);
    QFETCH(QByteArray, report);
    const QByteArray damaged = damage(m_second);
    QVERIFY(damaged != m_second && write(m_folder.filePath("2.json"), damaged));
    expectReport("2\\.json: " + report);
    const emulator::Drive::Content content = emulator::MovieFolder(m_folder.path()).read();
    QCOMPARE(content.movies.size(), size_t(1));
    QCOMPARE(content.movies.front().number, 1U);
    QCOMPARE(content.lastNumber, 2U);
}

void tst_RecorderMovieDamage::damageOfAByteIsHarmless()
{
    QLoggingCategory::setFilterRules("default.info=false");
    constexpr qsizetype step = 397; // Every byte would take minutes.
    for (qsizetype place = 0; place < m_second.size(); place += step) {
        QByteArray damaged = m_second;
        damaged[place] = static_cast<char>(damaged[place] ^ 2);
        QVERIFY(write(m_folder.filePath("2.json"), damaged));
        QCOMPARE(emulator::MovieFolder(m_folder.path()).read().movies.size(), size_t(1));
    }
    QLoggingCategory::setFilterRules({});
}

void tst_RecorderMovieDamage::aDamagedListOfNumbersIsReported()
{
    RecordedMoviesRig rig;
    QVERIFY(rig.recordMovie(5) && rig.recordMovie(5));
    rig.flush();
    QVERIFY(rig.write("drive.json", "damage"));
    expectReport("drive\\.json: corrupt");
    rig.restart();
    rig.useSmallestWindow();
    QVERIFY(rig.recordMovie(5));
    QCOMPARE(rig.movieNumbers(), (Numbers{1, 2, 3}));
}

ZVT_TEST(tst_RecorderMovieDamage)
#include "tst_RecorderMovieDamage.moc"
