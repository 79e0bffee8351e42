#include "common/ZvtModelModel.h"
#include "platform/emulator/control.h"
#include "tests/support/Test.h"

#include "zvt/zvtsdk.h"
#include "zvt/zvttypes.h"

namespace
{

using Record = zvtSModelInfo;

const Record *records() { return static_cast<const Record *>(zvtGetModelInfoTable()); }

} // namespace

class tst_ZvtModelModel : public Test
{
    Q_OBJECT

private slots:
    void cleanup();
    void countsTheRecordsBeforeTheEnd();
    void boardSetsHaveNames_data();
    void boardSetsHaveNames();
    void aRowShowsItsRecord();
    void aRowShowsTheNamesOfTheSdk();
    void aNameThatTheSdkRefusesReadsError_data();
    void aNameThatTheSdkRefusesReadsError();
    void valuesAreReadAnewOnEachGet();
    void aNameMayFillItsBuffer();
};

void tst_ZvtModelModel::cleanup()
{
    emulator::Sdk::gate().failNever();
    emulator::Sdk::gate().fillBuffers(false);
    emulator::Sdk::gate().script("zvtGetReadoutName", {});
}

void tst_ZvtModelModel::countsTheRecordsBeforeTheEnd()
{
    const int count = ZvtModelModel::count();
    QVERIFY(count > 0);
    for (int number = 0; number < count; ++number)
        QVERIFY(records()[number].name);
    QVERIFY(!records()[count].name);
}

void tst_ZvtModelModel::boardSetsHaveNames_data()
{
    QTest::addColumn<int>("boardSet");
    QTest::addColumn<QString>("text");
    int number = 0;
    for (const char *name : {"ZVT1", "ZVT2", "ALDER", "ELM", "Corvin", "Linden", "Rowan", "Error"})
        QTest::addRow("%d", number) << number << QString::fromLatin1(name), ++number;
    QTest::newRow("255") << 255 << QStringLiteral("Error");
}

void tst_ZvtModelModel::boardSetsHaveNames()
{
    QFETCH(int, boardSet);
    QTEST(BoardTypeText(static_cast<uint8_t>(boardSet)), "text");
}

void tst_ZvtModelModel::aRowShowsItsRecord()
{
    for (int number = 0; number < ZvtModelModel::count(); ++number) {
        const ZvtModelModel row(number);
        const Record &record = records()[number];
        const auto value = [&](const char *name) { return row.property(name).toInt(); };
        QCOMPARE(value("index"), number);
        QCOMPARE(value("boardSet"), int(record.boardSet));
        QCOMPARE(value("type"), int(record.type));
        QCOMPARE(value("detectorType"), int(record.detectorType));
        QCOMPARE(value("roicType"), int(record.roicType));
        QCOMPARE(value("subType"), int(record.subType));
        QCOMPARE(value("pleoraBoard"), int(record.pleoraBoard));
        QCOMPARE(value("variant"), int(record.variant));
        QCOMPARE(value("filterWheel"), int(record.filterWheel));
        QCOMPARE(row.property("name").toString(), QString::fromUtf8(record.name));
        QCOMPARE(row.property("subTypeName").toString(), QString::fromUtf8(record.subTypeName));
        QCOMPARE(row.property("boardSetName").toString(), BoardTypeText(record.boardSet));
        QCOMPARE(row.property("filterWheelText").toString(),
                 record.filterWheel != 0 ? QStringLiteral("Yes") : QStringLiteral("No"));
        QVERIFY(!row.parent());
    }
}

void tst_ZvtModelModel::aRowShowsTheNamesOfTheSdk()
{
    const auto nameOf = [](int (*lookUp)(uint8_t, char *, uint32_t), uint8_t value) {
        char buffer[256] = "Error";
        lookUp(value, buffer, sizeof(buffer));
        return QString::fromUtf8(buffer);
    };
    for (int number = 0; number < ZvtModelModel::count(); ++number) {
        const ZvtModelModel row(number);
        const Record &record = records()[number];
        QCOMPARE(row.property("typeName").toString(), nameOf(zvtGetCameraTypeName, record.type));
        QCOMPARE(row.property("roicTypeName").toString(), nameOf(zvtGetReadoutName, record.roicType));
        QCOMPARE(row.property("detectorTypeName").toString(), nameOf(zvtGetDetectorTypeName, record.detectorType));
        QCOMPARE(row.property("pleoraBoardName").toString(), nameOf(zvtGetPleoraBoardTypeName, record.pleoraBoard));
        QCOMPARE(row.property("variantName").toString(), nameOf(zvtGetVariantName, record.variant));
    }
}

void tst_ZvtModelModel::aNameThatTheSdkRefusesReadsError_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QByteArray>("call");
    QTest::newRow("type") << QByteArray("typeName") << QByteArray("zvtGetCameraTypeName");
    QTest::newRow("readout") << QByteArray("roicTypeName") << QByteArray("zvtGetReadoutName");
    QTest::newRow("detector") << QByteArray("detectorTypeName") << QByteArray("zvtGetDetectorTypeName");
    QTest::newRow("board") << QByteArray("pleoraBoardName") << QByteArray("zvtGetPleoraBoardTypeName");
    QTest::newRow("variant") << QByteArray("variantName") << QByteArray("zvtGetVariantName");
}

void tst_ZvtModelModel::aNameThatTheSdkRefusesReadsError()
{
    QFETCH(QByteArray, property);
    QFETCH(QByteArray, call);
    const ZvtModelModel row(0);
    QVERIFY(row.property(property).toString() != QStringLiteral("Error"));
    emulator::Sdk::gate().failNext(call.toStdString());
    QCOMPARE(row.property(property).toString(), QStringLiteral("Error"));
    QVERIFY(row.property(property).toString() != QStringLiteral("Error"));
}

void tst_ZvtModelModel::valuesAreReadAnewOnEachGet()
{
    const ZvtModelModel row(0);
    const QString before = row.roicTypeName();
    emulator::Sdk::gate().script("zvtGetReadoutName", QStringLiteral("another"));
    QCOMPARE(row.roicTypeName(), QStringLiteral("another"));
    emulator::Sdk::gate().script("zvtGetReadoutName", {});
    QCOMPARE(row.roicTypeName(), before);
}

void tst_ZvtModelModel::aNameMayFillItsBuffer()
{
    emulator::Sdk::gate().fillBuffers(true);
    QCOMPARE(ZvtModelModel(0).typeName().toUtf8().size(), 256);
}

ZVT_TEST(tst_ZvtModelModel)
#include "tst_ZvtModelModel.moc"
