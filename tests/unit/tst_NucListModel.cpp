#include "tests/support/Test.h"
#include "tests/support/computedMicroseconds.h"
#include "tests/unit/NucListRig.h"

#include "correction/NucInfoModel.h"

#include <QDateTime>
#include <QSignalSpy>

#include <algorithm>
#include <limits>
#include <memory>
#include <thread>

/// The list of corrections: its read, its rows, the free space, and the description of a row.
class tst_NucListModel : public Test
{
    Q_OBJECT

private slots:
    void startsEmptyAndReadsNothing();
    void readIsInOrder();
    void rowsAreInTheOrderOfTheCamera();
    void rolesHaveTheirNumbers();
    void otherRolesAreTheName();
    void rowsOutOfRangeAreEmpty();
    void fileTimesCountFrom1601();
    void rowWithoutInformationStays_data();
    void rowWithoutInformationStays();
    void windowOfAFailedConversionIsKept();
    void failedListingIsEmpty();
    void rowsAreInsertedOneByOneAtTheEnd();
    void listIsEmptyDuringARead();
    void emptyListSignalsNoRemoval();
    void freeSpaceIsSignalledOnChange();
    void failedFreeSpaceStays();
    void freeSpaceHasItsUnit_data();
    void freeSpaceHasItsUnit();
    void informationIsOfTheRow();
    void informationBelongsToTheCaller();
    void rowWithoutInformationHasNoModel();
    void tenThousandRowsAreLinear();
    void constructionOrderIsKept();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void refreshInTheGapIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_NucListModel::startsEmptyAndReadsNothing()
{
    CameraRig rig;
    const size_t mark = rig.gate().mark();
    ZvtCameraModel root(rig.controller(), nullptr);
    const NucListModel &model = *root.nucList();
    CameraRig::settle();
    QVERIFY(!rig.callsSince(mark).contains("zvtListNUCs"));
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(!model.refreshing());
    QVERIFY(!model.transferring());
    QVERIFY(!model.transferOk());
    QVERIFY(!model.transferUpload());
    QCOMPARE(model.progress(), 0);
    QCOMPARE(model.freeSpace(), 0ULL);
    QCOMPARE(model.freeSpaceString(), "0 B");
}

void tst_NucListModel::readIsInOrder()
{
    NucListRig list({"a", "b"});
    SignalLog log(&list.model);
    const size_t mark = list.gate().mark();
    list.model.refresh();
    QVERIFY(list.model.refreshing());
    QCOMPARE(log.take(), QStringList("refreshingChanged"));
    CameraRig::settle();
    QCOMPARE(list.calls(mark),
             QStringList({"zvtListNUCs", "zvtQueryNUCBasicInfo \"a\"", "zvtClocksToMilliseconds 20000",
                          "zvtQueryNUCBasicInfo \"b\"", "zvtClocksToMilliseconds 20000", "zvtGetNUCFreeSpace"}));
    QCOMPARE(log.take(),
             QStringList({"rowsAboutToBeInserted", "rowsInserted", "rowsAboutToBeInserted", "rowsInserted",
                          "freeSpaceChanged", "refreshingChanged"}));
    QVERIFY(!list.model.refreshing());
    const auto &calls = list.gate().callsSince(mark);
    QVERIFY(std::none_of(calls.begin(), calls.end(), [](const emulator::Call &call) {
        return call.name.starts_with("zvt") && call.thread == std::this_thread::get_id();
    }));
}

void tst_NucListModel::rowsAreInTheOrderOfTheCamera()
{
    NucListRig list({"Sky", "aerial", QStringLiteral("Glühofen")});
    hlx::TArray<zvtSDirEntry> entries;
    QCOMPARE(zvtListNUCs(list.handle(), &entries), 0);
    QStringList expected;
    for (const auto &entry : entries)
        expected << QString::fromUtf8(entry.name.c_str());
    QCOMPARE(expected.size(), 3);
    list.refresh();
    QCOMPARE(list.names(), expected);
    QVERIFY(expected.contains(QStringLiteral("Glühofen")));
}

void tst_NucListModel::rolesHaveTheirNumbers()
{
    NucListRig list({"a", "b"});
    list.refresh();
    QCOMPARE(list.model.roleNames(),
             (QHash<int, QByteArray>{{257, "name"},
                                     {258, "size"},
                                     {259, "date"},
                                     {260, "width"},
                                     {261, "height"},
                                     {262, "intTime"},
                                     {263, "infoOk"},
                                     {264, "index"}}));
    QCOMPARE(list.value(1, 257).toString(), "b");
    QCOMPARE(list.value(1, 258).toUInt(), 3332U);
    QCOMPARE(list.value(1, 260).toInt(), 64);
    QCOMPARE(list.value(1, 261).toInt(), 4);
    double milliseconds = 0;
    QCOMPARE(zvtClocksToMilliseconds(list.handle(), 20'000, &milliseconds), 0);
    QVERIFY(milliseconds > 0);
    QCOMPARE(list.value(1, 262).toDouble(), milliseconds);
    QCOMPARE(list.value(1, 263), QVariant(true));
    QCOMPARE(list.value(1, 264).toInt(), 1);
}

void tst_NucListModel::otherRolesAreTheName()
{
    NucListRig list({"a"});
    list.refresh();
    for (const int role : {-1, 0, static_cast<int>(Qt::DisplayRole), 256, 265, 1000})
        QCOMPARE(list.value(0, role), QVariant(QStringLiteral("a")));
}

void tst_NucListModel::rowsOutOfRangeAreEmpty()
{
    NucListRig list({"a"});
    list.refresh();
    QCOMPARE(list.value(1, 257), QVariant());
    QCOMPARE(list.model.data(QModelIndex(), 258), QVariant());
    QCOMPARE(list.model.rowCount(list.model.index(0)), 0);
    for (const int row : {-1, 1, 1000}) {
        QCOMPARE(list.model.nameAt(row), QString());
        QCOMPARE(list.model.infoAt(row), nullptr);
    }
    QCOMPARE(list.model.nameAt(0), "a");
}

void tst_NucListModel::fileTimesCountFrom1601()
{
    NucListRig list({"a"});
    const auto time = QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7, 89), Qt::UTC);
    QFile file(correctionFolder(list.rig.camera()) + "/a.nuc");
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    file.close();
    list.refresh();
    QCOMPARE(list.value(0, NucListModel::Date).toDateTime(), time);
    QCOMPARE(list.value(0, NucListModel::Date).toDateTime().timeSpec(), Qt::UTC);
}

void tst_NucListModel::rowWithoutInformationStays_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("no description") << "zvtQueryNUCBasicInfo";
    QTest::newRow("no integration time") << "zvtClocksToMilliseconds";
}

void tst_NucListModel::rowWithoutInformationStays()
{
    QFETCH(const QString, call);
    NucListRig list({"a", "b", "c"});
    list.gate().failNext(call.toStdString(), 2);
    const size_t mark = list.gate().mark();
    list.refresh();
    QCOMPARE(list.names(), QStringList({"a", "b", "c"}));
    for (int row = 0; row < 3; ++row)
        QCOMPARE(list.value(row, NucListModel::InfoOk), QVariant(row != 1));
    QCOMPARE(list.value(1, NucListModel::Size).toUInt(), 3332U);
    QVERIFY(list.value(1, NucListModel::Date).toDateTime().isValid());
    QCOMPARE(list.model.infoAt(1), nullptr);
    // The clocks are converted only after a query that succeeded.
    QCOMPARE(list.calls(mark).count("zvtClocksToMilliseconds 20000"), call == "zvtQueryNUCBasicInfo" ? 2 : 3);
}

void tst_NucListModel::windowOfAFailedConversionIsKept()
{
    NucListRig list({"a"});
    list.gate().failAlways("zvtClocksToMilliseconds");
    list.refresh();
    QCOMPARE(list.value(0, NucListModel::Width).toInt(), 64);
    QCOMPARE(list.value(0, NucListModel::Height).toInt(), 4);
}

void tst_NucListModel::failedListingIsEmpty()
{
    NucListRig list({"a"});
    list.refresh();
    list.gate().failAlways("zvtListNUCs");
    list.gate().script("zvtGetNUCFreeSpace", 77);
    const size_t mark = list.gate().mark();
    list.refresh();
    QCOMPARE(list.names(), QStringList());
    QCOMPARE(list.calls(mark), QStringList({"zvtListNUCs", "zvtGetNUCFreeSpace"}));
    QCOMPARE(list.model.freeSpace(), 77ULL);
}

void tst_NucListModel::rowsAreInsertedOneByOneAtTheEnd()
{
    NucListRig list({"a", "b", "c"});
    const QSignalSpy inserted(&list.model, &QAbstractItemModel::rowsInserted);
    const QSignalSpy reset(&list.model, &QAbstractItemModel::modelReset);
    list.refresh();
    QCOMPARE(inserted.size(), 3);
    for (int row = 0; row < 3; ++row) {
        QCOMPARE(inserted.at(row).at(1).toInt(), row);
        QCOMPARE(inserted.at(row).at(2).toInt(), row);
    }
    list.refresh();
    QCOMPARE(inserted.size(), 6);
    QCOMPARE(reset.size(), 0);
}

void tst_NucListModel::listIsEmptyDuringARead()
{
    NucListRig list({"a", "b"});
    list.refresh();
    list.gate().hold("zvtListNUCs");
    QStringList order;
    QObject::connect(&list.model, &NucListModel::refreshingChanged, this,
                     [&] { order << QStringLiteral("refreshing with %1").arg(list.model.rowCount()); });
    QObject::connect(&list.model, &QAbstractItemModel::rowsRemoved, this,
                     [&](const QModelIndex &, int first, int last) {
                         order << QStringLiteral("removed %1 to %2").arg(first).arg(last);
                     });
    list.model.refresh();
    QCOMPARE(order, QStringList({"refreshing with 2", "removed 0 to 1"}));
    QCOMPARE(list.model.rowCount(), 0);
    QCOMPARE(list.model.nameAt(0), QString());
    QVERIFY(list.gate().waitHeld("zvtListNUCs"));
    list.gate().release("*");
    CameraRig::settle();
    QCOMPARE(list.names(), QStringList({"a", "b"}));
}

void tst_NucListModel::emptyListSignalsNoRemoval()
{
    NucListRig list({"a"});
    const QSignalSpy removed(&list.model, &QAbstractItemModel::rowsRemoved);
    list.refresh();
    QCOMPARE(removed.size(), 0);
}

void tst_NucListModel::freeSpaceIsSignalledOnChange()
{
    NucListRig list;
    const QSignalSpy changed(&list.model, &NucListModel::freeSpaceChanged);
    list.gate().script("zvtGetNUCFreeSpace", QVariant::fromValue<qulonglong>(5'000'000'000));
    list.refresh();
    list.refresh();
    QCOMPARE(changed.size(), 1);
    QCOMPARE(list.model.freeSpace(), 5'000'000'000ULL);
}

void tst_NucListModel::failedFreeSpaceStays()
{
    NucListRig list;
    list.gate().script("zvtGetNUCFreeSpace", 1024);
    list.refresh();
    list.gate().failAlways("zvtGetNUCFreeSpace");
    const QSignalSpy changed(&list.model, &NucListModel::freeSpaceChanged);
    list.refresh();
    QCOMPARE(changed.size(), 0);
    QCOMPARE(list.model.freeSpace(), 1024ULL);
}

void tst_NucListModel::freeSpaceHasItsUnit_data()
{
    QTest::addColumn<qulonglong>("bytes");
    QTest::addColumn<QString>("text");
    for (const auto &[bytes, text] :
         std::initializer_list<std::pair<qulonglong, const char *>>{{0, "0 B"},
                                                                    {1023, "1023 B"},
                                                                    {1024, "1.00 KB"},
                                                                    {1'048'575, "1024.00 KB"},
                                                                    {1'048'576, "1.00 MB"},
                                                                    {1'073'741'823, "1024.00 MB"},
                                                                    {1'073'741'824, "1.00 GB"},
                                                                    {5'000'000'000'000, "4656.61 GB"}})
        QTest::newRow(text) << bytes << text;
}

void tst_NucListModel::freeSpaceHasItsUnit()
{
    QFETCH(const qulonglong, bytes);
    NucListRig list;
    list.gate().script("zvtGetNUCFreeSpace", bytes);
    list.refresh();
    QTEST(list.model.freeSpaceString(), "text");
}

void tst_NucListModel::informationIsOfTheRow()
{
    NucListRig list({QStringLiteral("Glühofen"), "a"});
    list.refresh();
    const size_t mark = list.gate().mark();
    const std::unique_ptr<NucInfoModel> info(list.model.infoAt(0)); // In the order of bytes.
    QVERIFY(info);
    CameraRig::settle();
    // Size and time are known: the camera is not asked for them.
    QCOMPARE(list.calls(mark).first(), QStringLiteral("zvtQueryNUCInfo \"Glühofen\""));
    const auto valueOf = [&](int row) { return info->data(info->index(row), NucInfoModel::Value).toString(); };
    QCOMPARE(valueOf(0), QStringLiteral("Glühofen"));
    QCOMPARE(valueOf(1), "3.25 KB");
    const QDateTime date = list.value(0, NucListModel::Date).toDateTime();
    QCOMPARE(valueOf(2), date.toString(Qt::TextDate));
}

void tst_NucListModel::informationBelongsToTheCaller()
{
    NucListRig list({"a"});
    list.refresh();
    const std::unique_ptr<NucInfoModel> first(list.model.infoAt(0));
    const std::unique_ptr<NucInfoModel> second(list.model.infoAt(0));
    QVERIFY(first != second);
    QCOMPARE(first->parent(), nullptr);
    CameraRig::settle();
}

void tst_NucListModel::rowWithoutInformationHasNoModel()
{
    NucListRig list({"a"});
    QFile file(correctionFolder(list.rig.camera()) + "/a.nuc");
    QVERIFY(file.resize(500));
    list.refresh();
    QCOMPARE(list.names(), QStringList("a"));
    QCOMPARE(list.value(0, NucListModel::InfoOk), QVariant(false));
    QCOMPARE(list.model.infoAt(0), nullptr);
}

void tst_NucListModel::tenThousandRowsAreLinear()
{
    const auto publish = [](int count) {
        NucListRig list;
        QStringList names;
        for (int number = 0; number < count; ++number)
            names << QStringLiteral("NUC %1").arg(number, 5, 10, QLatin1Char('0'));
        storeCorrections(list.rig.camera(), names, correctionFile(8, 1));
        qint64 least = std::numeric_limits<qint64>::max();
        for (int round = 0; round < 3; ++round) {
            list.model.refresh();
            QThreadPool::globalInstance()->waitForDone();
            const qint64 before = computedMicroseconds();
            CameraRig::settle();
            least = std::min(least, computedMicroseconds() - before);
        }
        return list.names() == names ? least : -1;
    };
    const qint64 few = publish(1000);
    const qint64 many = publish(10'000);
    QVERIFY(few > 0 && many > 0);
    QVERIFY2(many < 40 * few, qPrintable(QStringLiteral("%1 us, %2 us").arg(few).arg(many)));
}

// The root owns the list by value, after the states and before the wizard's model.
void tst_NucListModel::constructionOrderIsKept()
{
    NucListRig list;
    const QObjectList children = list.root.children();
    const auto place = [&](QObject *model) { return children.indexOf(model); };
    QCOMPARE(place(&list.model), place(list.root.cameraState()) + 1);
    QCOMPARE(place(list.root.nucProcess()), place(&list.model) + 1);
}

namespace
{

ModelUnderTest twoCorrections()
{
    auto model = modelOf<NucListModel>();
    model.prepare = [](CameraRig &rig) {
        deleteCorrections(rig.camera().handle());
        storeCorrections(rig.camera(), {"a", "b"});
    };
    model.ownState = {"progress", "transferring", "transferOk", "transferUpload"};
    return model;
}

} // namespace

// The walker sees the properties of the list, not its rows.
void tst_NucListModel::failingReads()
{
    const ReadException none{{}, "the rows are not properties; other tests look at them"};
    walkFailingReads(twoCorrections(),
                     {{"zvtListNUCs", none},
                      {"zvtQueryNUCBasicInfo", none},
                      {"zvtQueryNUCBasicInfo#2", none},
                      {"zvtClocksToMilliseconds", none},
                      {"zvtClocksToMilliseconds#2", none},
                      {"zvtGetNUCFreeSpace", {{"freeSpace", "freeSpaceString"}, "the text shows the same number"}}});
}

void tst_NucListModel::heldReadsOutliveTheModel() { walkHeldDeletion(twoCorrections()); }

void tst_NucListModel::secondRefreshIsDropped() { walkSecondRefresh(twoCorrections()); }

// The task has ended, but its result is not published yet.
void tst_NucListModel::refreshInTheGapIsDropped()
{
    NucListRig list({"a"});
    const size_t mark = list.gate().mark();
    list.model.refresh();
    QThreadPool::globalInstance()->waitForDone();
    list.model.refresh();
    CameraRig::settle();
    QCOMPARE(list.calls(mark).count("zvtListNUCs"), 1);
    QCOMPARE(list.names(), QStringList("a"));
}

void tst_NucListModel::readsWithoutACamera() { walkNoCamera(twoCorrections()); }

void tst_NucListModel::randomOperator() { walkRandomOperator(twoCorrections(), 51); }

ZVT_TEST(tst_NucListModel)
#include "tst_NucListModel.moc"
