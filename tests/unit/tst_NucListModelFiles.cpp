#include "tests/support/Test.h"
#include "tests/unit/NucListRig.h"

#include <QDateTime>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUrl>

/// Deleting and renaming corrections, and the questions of the page about names and sizes.
class tst_NucListModelFiles : public Test
{
    Q_OBJECT

private slots:
    void deletingRemovesTheRow();
    void deletingReadsTheFreeSpace();
    void refusedDeletionKeepsTheRow();
    void deletionOfAnUnlistedNucKeepsTheRows();
    void renamingMovesTheRowToTheEnd();
    void renamedRowKeepsItsValues();
    void refusedRenamingChangesNothing();
    void renamingAnUnlistedNucKeepsTheRows();
    void everythingHappensOnTheCallersThread();
    void existenceIsAskedOfTheCamera();
    void factoryIsAskedOfTheCamera();
    void nameIsTestedAsAFileName_data();
    void nameIsTestedAsAFileName();
    void sizeIsGuessedForPresetZero();
    void guessIsZeroOnAFailure_data();
    void guessIsZeroOnAFailure();
    void localSizeIsThatOfTheFile();
    void nothingAnswersWithoutACamera();
};

void tst_NucListModelFiles::deletingRemovesTheRow()
{
    NucListRig list({"a", "B", "b", "c"});
    list.refresh();
    const QSignalSpy renumbered(&list.model, &QAbstractItemModel::dataChanged);
    const size_t mark = list.gate().mark();
    list.model.deleteNuc("b");
    QCOMPARE(list.calls(mark), QStringList({"zvtDeleteNUC \"b\"", "zvtGetNUCFreeSpace"}));
    QCOMPARE(list.names().count("b"), 0);
    QCOMPARE(list.names().count("B"), 1);
    QCOMPARE(list.files().size(), 3);
    // The row of "c" has another number.
    QCOMPARE(list.value(2, NucListModel::Index).toInt(), 2);
    QCOMPARE(renumbered.size(), 1);
    QCOMPARE(renumbered.first().at(0).toModelIndex().row(), 2);
    QCOMPARE(renumbered.first().at(1).toModelIndex().row(), 2);
    QCOMPARE(renumbered.first().at(2).value<QList<int>>(), QList<int>{NucListModel::Index});
    list.model.deleteNuc("c");
    QCOMPARE(renumbered.size(), 1);
}

void tst_NucListModelFiles::deletingReadsTheFreeSpace()
{
    NucListRig list({"a"});
    list.refresh();
    const qulonglong before = list.model.freeSpace();
    const QSignalSpy changed(&list.model, &NucListModel::freeSpaceChanged);
    list.model.deleteNuc("a");
    QCOMPARE(list.model.freeSpace(), before + 3332);
    QCOMPARE(changed.size(), 1);
    list.gate().failAlways("zvtGetNUCFreeSpace");
    list.model.deleteNuc("a");
    QCOMPARE(list.model.freeSpace(), before + 3332);
    QCOMPARE(changed.size(), 1);
}

// Also the free space is read, whatever the camera has answered.
void tst_NucListModelFiles::refusedDeletionKeepsTheRow()
{
    NucListRig list({"a"});
    list.refresh();
    list.gate().failAlways("zvtDeleteNUC");
    list.gate().script("zvtGetNUCFreeSpace", 12);
    list.model.deleteNuc("a");
    QCOMPARE(list.names(), QStringList("a"));
    QCOMPARE(list.files(), QStringList("a.nuc"));
    QCOMPARE(list.model.freeSpace(), 12ULL);
}

void tst_NucListModelFiles::deletionOfAnUnlistedNucKeepsTheRows()
{
    NucListRig list({"a"});
    list.refresh();
    storeCorrections(list.rig.camera(), {"b"});
    list.model.deleteNuc("b");
    QCOMPARE(list.names(), QStringList("a"));
    QCOMPARE(list.files(), QStringList("a.nuc"));
}

void tst_NucListModelFiles::renamingMovesTheRowToTheEnd()
{
    NucListRig list({"a", "b", "c"});
    list.refresh();
    QStringList order;
    QObject::connect(&list.model, &QAbstractItemModel::rowsInserted, this,
                     [&](const QModelIndex &, int first) { order << QStringLiteral("inserted %1").arg(first); });
    QObject::connect(&list.model, &QAbstractItemModel::rowsRemoved, this,
                     [&](const QModelIndex &, int first) { order << QStringLiteral("removed %1").arg(first); });
    const size_t mark = list.gate().mark();
    list.model.renameNuc("a", QStringLiteral("größer"));
    QCOMPARE(list.calls(mark), QStringList(QStringLiteral("zvtRenameNUC \"a\", \"größer\"")));
    QCOMPARE(order, QStringList({"inserted 3", "removed 0"}));
    QCOMPARE(list.names(), QStringList({"b", "c", QStringLiteral("größer")}));
    QCOMPARE(list.files().size(), 3);
}

void tst_NucListModelFiles::renamedRowKeepsItsValues()
{
    NucListRig list({"a", "b"});
    list.refresh();
    const QVariant date = list.value(0, NucListModel::Date);
    list.model.renameNuc("a", "z");
    for (const auto &[role, value] : std::initializer_list<std::pair<int, QVariant>>{{NucListModel::Date, date},
                                                                                     {NucListModel::Size, 3332U},
                                                                                     {NucListModel::Width, 64},
                                                                                     {NucListModel::Height, 4},
                                                                                     {NucListModel::InfoOk, true}})
        QCOMPARE(list.value(1, role), value);
    list.refresh();
    QCOMPARE(list.names(), QStringList({"b", "z"}));
}

void tst_NucListModelFiles::refusedRenamingChangesNothing()
{
    NucListRig list({"a", "b"});
    list.refresh();
    SignalLog log(&list.model);
    list.model.renameNuc("a", "b"); // The camera refuses it: no question is asked here.
    list.model.renameNuc("none", "c");
    list.gate().failAlways("zvtRenameNUC");
    list.model.renameNuc("a", "c");
    QCOMPARE(list.names(), QStringList({"a", "b"}));
    QCOMPARE(list.files(), QStringList({"a.nuc", "b.nuc"}));
    QCOMPARE(log.take(), QStringList());
}

void tst_NucListModelFiles::renamingAnUnlistedNucKeepsTheRows()
{
    NucListRig list({"a"});
    list.refresh();
    storeCorrections(list.rig.camera(), {"b"});
    list.model.renameNuc("b", "c");
    QCOMPARE(list.names(), QStringList("a"));
    QCOMPARE(list.files(), QStringList({"a.nuc", "c.nuc"}));
}

void tst_NucListModelFiles::everythingHappensOnTheCallersThread()
{
    NucListRig list({"a", "b"});
    const size_t mark = list.gate().mark();
    list.model.renameNuc("a", "c");
    list.model.deleteNuc("b");
    list.model.nucExists("c");
    list.model.isFactoryNuc("c");
    list.model.guessNucSize();
    for (const auto &call : list.gate().callsSince(mark))
        QCOMPARE(call.thread, std::this_thread::get_id());
}

void tst_NucListModelFiles::existenceIsAskedOfTheCamera()
{
    NucListRig list({"a"});
    QVERIFY(list.model.nucExists("a"));
    QVERIFY(!list.model.nucExists("A"));
    list.gate().failAlways("zvtNUCExists");
    QVERIFY(!list.model.nucExists("a"));
}

void tst_NucListModelFiles::factoryIsAskedOfTheCamera()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    CameraRig::settle();
    storeCorrections(rig.camera(), {"a"});
    QVERIFY(root.nucList()->isFactoryNuc("Factory 2 ms"));
    QVERIFY(!root.nucList()->isFactoryNuc("a"));
    QVERIFY(!root.nucList()->isFactoryNuc("none"));
    rig.gate().failAlways("zvtIsFactoryNUC");
    QVERIFY(!root.nucList()->isFactoryNuc("Factory 2 ms"));
}

void tst_NucListModelFiles::nameIsTestedAsAFileName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("valid");
    QTest::newRow("plain") << "Warm" << true;
    QTest::newRow("with a space") << "a b" << true;
    QTest::newRow("with dots") << "Cold.Start.nuc" << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("spaces") << "   " << false;
    QTest::newRow("space first") << " a" << false;
    for (const char character : QByteArrayLiteral("/\\:\"*?<>|"))
        QTest::addRow("with %c", character) << QString(QLatin1Char('a')) + QLatin1Char(character) << false;
}

void tst_NucListModelFiles::nameIsTestedAsAFileName()
{
    QFETCH(const QString, name);
    NucListRig list;
    const size_t mark = list.gate().mark();
    const size_t namesMark = emulator::Sdk::gate().mark();
    QTEST(list.model.nucNameValid(name), "valid");
    QCOMPARE(list.calls(mark), QStringList());
    QCOMPARE(emulator::Sdk::gate().callsSince(namesMark).front().name, std::string("zvtIsValidFileName"));
}

void tst_NucListModelFiles::sizeIsGuessedForPresetZero()
{
    NucListRig list;
    const size_t mark = list.gate().mark();
    QCOMPARE(list.model.guessNucSize(), 2'950'148U);
    QCOMPARE(list.calls(mark), QStringList({"zvtGetWindow 0", "zvtGuessNUCSize 640, 512"}));
}

void tst_NucListModelFiles::guessIsZeroOnAFailure_data()
{
    QTest::addColumn<int>("calls");
    QTest::newRow("zvtGetWindow") << 1;
    QTest::newRow("zvtGuessNUCSize") << 2;
}

void tst_NucListModelFiles::guessIsZeroOnAFailure()
{
    QFETCH(const int, calls);
    NucListRig list;
    list.gate().failAlways(QTest::currentDataTag());
    const size_t mark = list.gate().mark();
    QCOMPARE(list.model.guessNucSize(), 0U);
    QCOMPARE(list.calls(mark).size(), calls);
}

void tst_NucListModelFiles::localSizeIsThatOfTheFile()
{
    NucListRig list;
    const QTemporaryDir folder;
    QFile file(folder.filePath("a b%25 #1.nuc"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("12345"), 5);
    file.close();
    QCOMPARE(list.model.localFileSize(QUrl::fromLocalFile(file.fileName()).toString(QUrl::FullyEncoded)), 5ULL);
    QCOMPARE(list.model.localFileSize(QUrl::fromLocalFile(folder.filePath("none")).toString()), 0ULL);
    QCOMPARE(list.model.localFileSize(QString()), 0ULL);
}

void tst_NucListModelFiles::nothingAnswersWithoutACamera()
{
    ZvtCameraModel root({}, nullptr);
    NucListModel &model = *root.nucList();
    QVERIFY(!model.nucExists("a"));
    QVERIFY(!model.isFactoryNuc("a"));
    QCOMPARE(model.guessNucSize(), 0U);
    model.deleteNuc("a");
    model.renameNuc("a", "b");
    QCOMPARE(model.rowCount(), 0);
}

ZVT_TEST(tst_NucListModelFiles)
#include "tst_NucListModelFiles.moc"
