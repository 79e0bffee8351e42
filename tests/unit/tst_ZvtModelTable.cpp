#include "common/ZvtModelModel.h"
#include "common/ZvtModelTable.h"
#include "platform/emulator/control.h"
#include "tests/support/Test.h"

#include <QChildEvent>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>

#include <algorithm>
#include <functional>
#include <memory>

#include "zvt/zvtsdk.h"
#include "zvt/zvttypes.h"

namespace
{

using Record = zvtSModelInfo;

// The SDK's functions that a search of a row calls, in order.
constexpr const char *namedColumns[] = {"zvtGetDetectorTypeName", "zvtGetReadoutName", "zvtGetPleoraBoardTypeName",
                                        "zvtGetVariantName", "zvtGetCameraTypeName"};

const Record *records() { return static_cast<const Record *>(zvtGetModelInfoTable()); }

int recordCount()
{
    int count = 0;
    while (records()[count].name)
        ++count;
    return count;
}

ZvtModelModel *rowAt(const ObjectListModel *list, int number)
{
    return qobject_cast<ZvtModelModel *>(list->at(number));
}

QList<int> indexes(const ObjectListModel *list)
{
    QList<int> result;
    for (int number = 0; number < list->size(); ++number)
        result << rowAt(list, number)->index();
    return result;
}

// The numbers of the table's rows for which `fits` returns true.
QList<int> recordsWhere(const std::function<bool(const Record &)> &fits)
{
    QList<int> result;
    for (int number = 0; number < recordCount(); ++number)
        if (fits(records()[number]))
            result << number;
    return result;
}

QList<int> allRecords()
{
    return recordsWhere([](const Record &) { return true; });
}

QList<int> recordsLike(const Record &other)
{
    return recordsWhere([&](const Record &record) {
        return record.boardSet == other.boardSet && record.detectorType == other.detectorType
            && record.roicType == other.roicType;
    });
}

void setNumbers(ZvtModelTable &table, const Record &record)
{
    table.setBoardTypeFilter(record.boardSet);
    table.setDetectorTypeFilter(record.detectorType);
    table.setReadoutTypeFilter(record.roicType);
}

// A parent that receives the signals of a table during its construction. The parent gets the event of the new child
// from the constructor of QObject, before the table is built. The address of the child is that of the table, and
// connect() needs only the address and the static meta-object.
class Listener : public QObject
{
public:
    int filtered = 0;

protected:
    void childEvent(QChildEvent *event) override
    {
        if (event->added())
            connect(reinterpret_cast<ZvtModelTable *>(event->child()), &ZvtModelTable::filteredModelsChanged, this,
                    [this] { ++filtered; });
    }
};

} // namespace

class tst_ZvtModelTable : public Test
{
    Q_OBJECT

private slots:
    void cleanup();

    void startsWithAllRows();
    void announcesTheFilteredListWhileItIsBuilt();
    void belongsToNobodyInQml();
    void rowsDieWithTheTableAndNotBefore();
    void aTableInQmlFiltersOnce();

    void numbersFilterOnlyTogether();
    void aNegativeBoardSetIsIgnored();
    void anEqualBoardSetIsAnnouncedAgain();
    void equalDetectorAndReadoutAreNotAnnounced();
    void anAbsentNumberKeepsTheOldList();
    void withoutTextTheBoardSetAloneTurnsTheNumbersOn();
    void withTextAnyMissingNumberTurnsThemOff();
    void textAndNumbersFilterTogether();

    void anEqualTextDoesNothing();
    void everyWordMustBeFoundSomewhere_data();
    void everyWordMustBeFoundSomewhere();
    void everyColumnOfTheSdkIsSearched_data();
    void everyColumnOfTheSdkIsSearched();
    void columnsAreSearchedInTheirOrder();
    void blanksAreNoWords();

    void theIndexCountsInTheFilteredList();
    void theIndexNeedsAllFiveNumbers();
    void theIndexInAnEmptyListIsMinusOne();
};

void tst_ZvtModelTable::cleanup()
{
    for (const char *call : namedColumns)
        emulator::Sdk::gate().script(call, {});
}

void tst_ZvtModelTable::startsWithAllRows()
{
    const ZvtModelTable table;
    QVERIFY(recordCount() > 0);
    QCOMPARE(indexes(table.models()), allRecords());
    QCOMPARE(indexes(table.filteredModels()), allRecords());
    QCOMPARE(table.textFilter(), QString());
    QCOMPARE(table.boardTypeFilter(), -1);
    QCOMPARE(table.detectorTypeFilter(), -1);
    QCOMPARE(table.readoutTypeFilter(), -1);
}

void tst_ZvtModelTable::announcesTheFilteredListWhileItIsBuilt()
{
    Listener listener;
    const ZvtModelTable table(&listener);
    QCOMPARE(listener.filtered, 1);
}

void tst_ZvtModelTable::belongsToNobodyInQml()
{
    const ZvtModelTable table;
    for (ObjectListModel *const list : {table.models(), table.filteredModels()}) {
        QVERIFY(!list->parent());
        QCOMPARE(QJSEngine::objectOwnership(list), QJSEngine::CppOwnership);
        QCOMPARE(QJSEngine::objectOwnership(list->at(0)), QJSEngine::CppOwnership);
    }
}

// Rows are in both lists or in the full one only. Each is deleted once (the sanitizer checks this).
void tst_ZvtModelTable::rowsDieWithTheTableAndNotBefore()
{
    auto table = std::make_unique<ZvtModelTable>();
    QList<QPointer<QObject>> objects{table->models(), table->filteredModels()};
    for (int number = 0; number < table->models()->size(); ++number)
        objects << table->models()->at(number);
    const auto alive
        = [&] { return std::count_if(objects.begin(), objects.end(), [](auto &o) { return !o.isNull(); }); };

    setNumbers(*table, records()[0]);
    table->setTextFilter(QStringLiteral("no such camera"));
    table->setTextFilter(QString());
    QCOMPARE(indexes(table->filteredModels()), recordsLike(records()[0]));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(alive(), objects.size());

    table.reset();
    QCOMPARE(alive(), 0);
}

void tst_ZvtModelTable::aTableInQmlFiltersOnce()
{
    qmlRegisterType<ZvtModelTable>("test.models", 1, 0, "ZvtModelTable");
    qmlRegisterAnonymousType<ObjectListModel>("test.models", 1);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    const Record &record = records()[recordCount() - 1];
    component.setData(QStringLiteral("import QtQml\nimport test.models\n"
                                     "ZvtModelTable { property int changes: 0; onFilteredModelsChanged: ++changes\n"
                                     "property int board: -1; property int detector: -1; property int readout: -1\n"
                                     "boardTypeFilter: board; detectorTypeFilter: detector\n"
                                     "readoutTypeFilter: readout; textFilter: '' }")
                          .toUtf8(),
                      {});
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    const auto *const table = qobject_cast<ZvtModelTable *>(object.get());
    QCOMPARE(object->property("changes").toInt(), 0);
    object->setProperty("board", record.boardSet);
    object->setProperty("detector", record.detectorType);
    object->setProperty("readout", record.roicType);
    QCOMPARE(object->property("changes").toInt(), 1);
    QCOMPARE(indexes(table->filteredModels()), recordsLike(record));
}

void tst_ZvtModelTable::numbersFilterOnlyTogether()
{
    ZvtModelTable table;
    QSignalSpy filtered(&table, &ZvtModelTable::filteredModelsChanged);
    QSignalSpy board(&table, &ZvtModelTable::boardTypeFilterChanged);
    QSignalSpy detector(&table, &ZvtModelTable::detectorTypeFilterChanged);
    QSignalSpy readout(&table, &ZvtModelTable::readoutTypeFilterChanged);
    const Record &record = records()[0];
    table.setReadoutTypeFilter(record.roicType);
    table.setDetectorTypeFilter(record.detectorType);
    QCOMPARE(filtered.count(), 0);
    QCOMPARE(indexes(table.filteredModels()), allRecords());
    table.setBoardTypeFilter(record.boardSet);
    QCOMPARE(filtered.count(), 1);
    QCOMPARE(indexes(table.filteredModels()), recordsLike(record));
    QVERIFY(table.filteredModels()->size() < table.models()->size());
    QCOMPARE(QList<qsizetype>({board.count(), detector.count(), readout.count()}), QList<qsizetype>({1, 1, 1}));
}

void tst_ZvtModelTable::aNegativeBoardSetIsIgnored()
{
    ZvtModelTable table;
    table.setBoardTypeFilter(0);
    QSignalSpy changed(&table, &ZvtModelTable::boardTypeFilterChanged);
    table.setBoardTypeFilter(-1);
    QCOMPARE(table.boardTypeFilter(), 0);
    QCOMPARE(changed.count(), 0);
}

void tst_ZvtModelTable::anEqualBoardSetIsAnnouncedAgain()
{
    ZvtModelTable table;
    setNumbers(table, records()[0]);
    QSignalSpy changed(&table, &ZvtModelTable::boardTypeFilterChanged);
    QSignalSpy filtered(&table, &ZvtModelTable::filteredModelsChanged);
    table.setBoardTypeFilter(records()[0].boardSet);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(filtered.count(), 1);
}

void tst_ZvtModelTable::equalDetectorAndReadoutAreNotAnnounced()
{
    ZvtModelTable table;
    setNumbers(table, records()[0]);
    QSignalSpy detector(&table, &ZvtModelTable::detectorTypeFilterChanged);
    QSignalSpy readout(&table, &ZvtModelTable::readoutTypeFilterChanged);
    QSignalSpy filtered(&table, &ZvtModelTable::filteredModelsChanged);
    table.setDetectorTypeFilter(records()[0].detectorType);
    table.setReadoutTypeFilter(records()[0].roicType);
    QCOMPARE(detector.count() + readout.count() + filtered.count(), 0);
}

void tst_ZvtModelTable::anAbsentNumberKeepsTheOldList()
{
    ZvtModelTable table;
    setNumbers(table, records()[0]);
    QSignalSpy detector(&table, &ZvtModelTable::detectorTypeFilterChanged);
    QSignalSpy filtered(&table, &ZvtModelTable::filteredModelsChanged);
    table.setDetectorTypeFilter(-1);
    QCOMPARE(table.detectorTypeFilter(), -1);
    QCOMPARE(detector.count(), 1);
    QCOMPARE(filtered.count(), 0);
    QCOMPARE(indexes(table.filteredModels()), recordsLike(records()[0]));
}

// The detector -1 is then compared like any other number, and no row has it.
void tst_ZvtModelTable::withoutTextTheBoardSetAloneTurnsTheNumbersOn()
{
    ZvtModelTable table;
    table.setTextFilter(QStringLiteral("no such camera"));
    table.setDetectorTypeFilter(records()[0].detectorType);
    table.setReadoutTypeFilter(records()[0].roicType);
    table.setTextFilter(QString());
    QCOMPARE(indexes(table.filteredModels()), allRecords());

    table.setDetectorTypeFilter(-1);
    table.setBoardTypeFilter(records()[0].boardSet);
    table.setTextFilter(QStringLiteral("no such camera"));
    table.setTextFilter(QString());
    QCOMPARE(table.filteredModels()->size(), 0);
}

void tst_ZvtModelTable::withTextAnyMissingNumberTurnsThemOff()
{
    ZvtModelTable table;
    const Record &record = records()[0];
    table.setBoardTypeFilter(record.boardSet);
    table.setTextFilter(QStringLiteral(" "));
    QCOMPARE(indexes(table.filteredModels()), allRecords());
    table.setDetectorTypeFilter(record.detectorType);
    table.setTextFilter(QStringLiteral("  "));
    QCOMPARE(indexes(table.filteredModels()), allRecords());
    table.setReadoutTypeFilter(record.roicType);
    QCOMPARE(indexes(table.filteredModels()), recordsLike(record));
}

void tst_ZvtModelTable::textAndNumbersFilterTogether()
{
    ZvtModelTable table;
    const int last = recordCount() - 1;
    const Record &record = records()[last];
    setNumbers(table, record);
    table.setTextFilter(QString::fromUtf8(record.name));
    QVERIFY(indexes(table.filteredModels()).contains(last));
    for (const int index : indexes(table.filteredModels()))
        QVERIFY(recordsLike(record).contains(index));
    table.setTextFilter(QStringLiteral("no such camera"));
    QCOMPARE(table.filteredModels()->size(), 0);
}

void tst_ZvtModelTable::anEqualTextDoesNothing()
{
    ZvtModelTable table;
    QSignalSpy text(&table, &ZvtModelTable::textFilterChanged);
    QSignalSpy filtered(&table, &ZvtModelTable::filteredModelsChanged);
    table.setTextFilter(QString());
    QCOMPARE(text.count() + filtered.count(), 0);
    bool wasAnnouncedBefore = false;
    connect(&table, &ZvtModelTable::textFilterChanged, this, [&] { wasAnnouncedBefore = filtered.isEmpty(); });
    table.setTextFilter(QStringLiteral("640"));
    table.setTextFilter(QStringLiteral("640"));
    QCOMPARE(text.count(), 1);
    QCOMPARE(filtered.count(), 1);
    QVERIFY(wasAnnouncedBefore);
}

void tst_ZvtModelTable::everyWordMustBeFoundSomewhere_data()
{
    QTest::addColumn<QString>("filter");
    QTest::newRow("one word") << "linden";
    QTest::newRow("two columns") << "linden 640";
    QTest::newRow("the other order") << "640 LINDEN";
    QTest::newRow("blanks around") << "  Linden   640 ";
    QTest::newRow("part of a word") << "ind 4";
    QTest::newRow("found nowhere") << "linden zq7";
    QTest::newRow("no column of this text") << "Yes";
    const ZvtModelModel first(0);
    QTest::newRow("name and board set") << first.name().toUpper() + u' ' + first.boardSetName().toLower();
    QTest::newRow("subtype and readout") << first.subTypeName() + u' ' + first.roicTypeName();
    QTest::newRow("tabulator is no blank") << first.name() + u'\t' + first.boardSetName();
}

void tst_ZvtModelTable::everyWordMustBeFoundSomewhere()
{
    QFETCH(QString, filter);
    QList<int> expected;
    for (int number = 0; number < recordCount(); ++number) {
        const ZvtModelModel row(number);
        const QStringList texts
            = {row.name(),        row.boardSetName(), row.detectorTypeName(), row.roicTypeName(), row.pleoraBoardName(),
               row.variantName(), row.typeName(),     row.subTypeName()};
        bool fits = true;
        for (const QString &word : filter.split(u' '))
            fits = fits && !texts.filter(word, Qt::CaseInsensitive).isEmpty();
        if (fits)
            expected << number;
    }
    ZvtModelTable table;
    table.setTextFilter(filter);
    QCOMPARE(indexes(table.filteredModels()), expected);
}

void tst_ZvtModelTable::everyColumnOfTheSdkIsSearched_data()
{
    QTest::addColumn<QByteArray>("call");
    for (const char *call : namedColumns)
        QTest::newRow(call) << QByteArray(call);
}

void tst_ZvtModelTable::everyColumnOfTheSdkIsSearched()
{
    QFETCH(QByteArray, call);
    emulator::Sdk::gate().script(call.toStdString(), QStringLiteral("see zq7 there"));
    ZvtModelTable table;
    table.setTextFilter(QStringLiteral("Zq7"));
    QCOMPARE(indexes(table.filteredModels()), allRecords());
}

void tst_ZvtModelTable::columnsAreSearchedInTheirOrder()
{
    ZvtModelTable table;
    const size_t mark = emulator::Sdk::gate().mark();
    table.setTextFilter(QStringLiteral("zq7"));
    QStringList calls;
    for (const emulator::Call &call : emulator::Sdk::gate().callsSince(mark))
        if (call.name != "zvtGetModelInfoTable")
            calls << QString::fromStdString(call.name);
    QStringList expected;
    for (int number = 0; number < recordCount(); ++number)
        for (const char *call : namedColumns)
            expected << QString::fromLatin1(call);
    QCOMPARE(calls, expected);
}

void tst_ZvtModelTable::blanksAreNoWords()
{
    ZvtModelTable table;
    table.setTextFilter(QStringLiteral("zq7"));
    QCOMPARE(table.filteredModels()->size(), 0);
    table.setTextFilter(QStringLiteral("   "));
    QCOMPARE(indexes(table.filteredModels()), allRecords());
}

void tst_ZvtModelTable::theIndexCountsInTheFilteredList()
{
    ZvtModelTable table;
    const int last = recordCount() - 1;
    const Record &record = records()[last];
    const auto indexOf = [&] {
        return table.getIndexBasedOnCameraInfo(record.boardSet, record.type, record.subType, record.detectorType,
                                               record.roicType);
    };
    const auto first = recordsWhere([&](const Record &other) {
                           return other.boardSet == record.boardSet && other.type == record.type
                               && other.subType == record.subType && other.detectorType == record.detectorType
                               && other.roicType == record.roicType;
                       }).constFirst();
    QCOMPARE(indexOf(), first);
    setNumbers(table, record);
    QCOMPARE(indexOf(), static_cast<int>(recordsLike(record).indexOf(first)));
    QVERIFY(indexOf() < first);
}

void tst_ZvtModelTable::theIndexNeedsAllFiveNumbers()
{
    ZvtModelTable table;
    const Record &record = records()[0];
    const int numbers[] = {record.boardSet, record.type, record.subType, record.detectorType, record.roicType};
    for (int changed = 0; changed < 5; ++changed) {
        QList<int> other(std::begin(numbers), std::end(numbers));
        other[changed] = 256;
        QCOMPARE(table.getIndexBasedOnCameraInfo(other[0], other[1], other[2], other[3], other[4]), -1);
    }
}

void tst_ZvtModelTable::theIndexInAnEmptyListIsMinusOne()
{
    ZvtModelTable table;
    table.setTextFilter(QStringLiteral("zq7"));
    const Record &record = records()[0];
    int index = 0;
    QVERIFY(QMetaObject::invokeMethod(&table, "getIndexBasedOnCameraInfo", Q_RETURN_ARG(int, index),
                                      Q_ARG(int, record.boardSet), Q_ARG(int, record.type), Q_ARG(int, record.subType),
                                      Q_ARG(int, record.detectorType), Q_ARG(int, record.roicType)));
    QCOMPARE(index, -1);
}

ZVT_TEST(tst_ZvtModelTable)
#include "tst_ZvtModelTable.moc"
