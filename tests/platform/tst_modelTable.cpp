#include "platform/emulator/control.h"
#include "platform/emulator/devices/Identity.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <functional>
#include <set>
#include <vector>

namespace
{

std::vector<const zvtSModelInfo *> models()
{
    std::vector<const zvtSModelInfo *> result;
    for (const auto *row = static_cast<const zvtSModelInfo *>(zvtGetModelInfoTable()); row->name; ++row)
        result.push_back(row);
    return result;
}

using Name = std::function<int(uint8_t, char *, uint32_t)>;

} // namespace

class tst_modelTable : public Test
{
    Q_OBJECT

private slots:
    void coversAllBoards();
    void isWellFormed();
    void showsFilterWheels();
    void showsNumbersWithoutNames();
    void knowsTheBuiltInCameras();
    void names_data();
    void names();
    void subtypesAreNamedByType();
};

void tst_modelTable::coversAllBoards()
{
    QVERIFY(models().size() >= 40);
    std::map<int, int> rows;
    for (const auto *model : models())
        ++rows[model->boardSet];
    for (int board = 0; board <= 6; ++board)
        QVERIFY2(rows[board] >= 3, qPrintable(QString::number(board)));
}

void tst_modelTable::isWellFormed()
{
    QCOMPARE(zvtGetModelInfoTable(), zvtGetModelInfoTable());
    std::set<std::string> seen;
    for (const auto *model : models()) {
        QVERIFY(*model->name && model->subTypeName && *model->subTypeName);
        QVERIFY2(seen.insert(model->name).second, model->name);
        QVERIFY(model->filterWheel <= 1);
        char text[256];
        if (zvtGetCameraSubtypeName(model->type, model->subType, text, sizeof text) == 0)
            QCOMPARE(model->subTypeName, text);
    }
}

void tst_modelTable::showsFilterWheels()
{
    std::set<int> kinds;
    for (const auto *model : models())
        kinds.insert(model->filterWheel);
    QCOMPARE(kinds, (std::set<int>{0, 1}));
}

void tst_modelTable::showsNumbersWithoutNames()
{
    std::map<std::string, int> unnamed;
    char text[256];
    for (const auto *model : models()) {
        unnamed["type"] += zvtGetCameraTypeName(model->type, text, sizeof text) != 0;
        unnamed["readout"] += zvtGetReadoutName(model->roicType, text, sizeof text) != 0;
        unnamed["detector"] += zvtGetDetectorTypeName(model->detectorType, text, sizeof text) != 0;
        unnamed["pleora"] += zvtGetPleoraBoardTypeName(model->pleoraBoard, text, sizeof text) != 0;
        unnamed["variant"] += zvtGetVariantName(model->variant, text, sizeof text) != 0;
        unnamed["board"] += model->boardSet > 6;
    }
    for (const auto &[kind, rows] : unnamed)
        QVERIFY2(rows > 0 && rows < 5, kind.c_str());
}

void tst_modelTable::knowsTheBuiltInCameras()
{
    for (const auto &name : emulator::Profile::names()) {
        if (name == QLatin1String("edge-values"))
            continue;
        const QJsonObject who = emulator::Profile::load(name).identity();
        const auto number = [&](const char *key) { return who.value(QLatin1String(key)).toInt(); };
        const auto all = models();
        const bool known = std::any_of(all.begin(), all.end(), [&](const zvtSModelInfo *model) {
            return who.value(QLatin1String("model")).toString() == QLatin1String(model->name)
                && model->boardSet == number("boardSet") && model->type == number("type")
                && model->subType == number("subtype") && model->detectorType == number("detector")
                && model->roicType == number("readout") && model->variant == number("variant")
                && model->pleoraBoard == number("pleora");
        });
        QVERIFY2(known, qPrintable(name));
    }
}

void tst_modelTable::names_data()
{
    QTest::addColumn<Name>("name");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("first");
    QTest::newRow("type") << Name(zvtGetCameraTypeName) << 7 << "Hazel";
    QTest::newRow("readout") << Name(zvtGetReadoutName) << 7 << "R320-A";
    QTest::newRow("detector") << Name(zvtGetDetectorTypeName) << 6 << "InSb";
    QTest::newRow("Pleora board") << Name(zvtGetPleoraBoardTypeName) << 4 << "None";
    QTest::newRow("variant") << Name(zvtGetVariantName) << 4 << "Standard";
}

void tst_modelTable::names()
{
    QFETCH(Name, name);
    QFETCH(int, count);
    QFETCH(QString, first);
    char text[64];
    for (int number = 0; number < 256; ++number) {
        qstrcpy(text, "old");
        const int status = name(static_cast<uint8_t>(number), text, sizeof text);
        QCOMPARE(status == 0, number < count);
        QCOMPARE(qstrcmp(text, "old") == 0, number >= count);
    }
    QCOMPARE(name(0, text, sizeof text), 0);
    QCOMPARE(QString::fromUtf8(text), first);
    QVERIFY(name(0, nullptr, 64) != 0);
}

void tst_modelTable::subtypesAreNamedByType()
{
    char text[200] = "old";
    QCOMPARE(zvtGetCameraSubtypeName(1, 2, text, sizeof text), 0);
    QCOMPARE(text, "Weatherproof");
    QCOMPARE(zvtGetCameraSubtypeName(3, 0, text, sizeof text), 0);
    QCOMPARE(text, "Handheld");
    for (const auto &[type, subtype] : {std::pair{0, 2}, {0, 3}, {3, 1}, {7, 0}, {255, 255}})
        QVERIFY(zvtGetCameraSubtypeName(static_cast<uint8_t>(type), static_cast<uint8_t>(subtype), text, sizeof text)
                != 0);
    QCOMPARE(text, "Handheld");
}

ZVT_TEST(tst_modelTable)
#include "tst_modelTable.moc"
