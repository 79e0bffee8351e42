#include "tests/support/Test.h"
#include "tests/unit/TabRig.h"

#include "manufacturing/MfgVoltageSettingsModel.h"
#include "manufacturing/VoltageItemModel.h"

#include <QJsonArray>
#include <QPointer>

#include <optional>
#include <string>
#include <vector>

namespace
{

/// A voltage of a camera.
struct ScriptedVoltage {
    std::string name;
    QString displayName;
    double volts;
    bool editable;
    double minVolts;
    double maxVolts;
};

const std::vector<ScriptedVoltage> scriptedVoltages{{"VDDA", "Analog supply", 5.0, false, 0.0, 6.0},
                                                    {"VREF", "Referenz für alle", 1.5, true, 1.0, 2.3},
                                                    {"V ß", "", -2.5, true, -3.0, 3.0}};

/// Lets the camera have these voltages, in place of its own.
void scriptVoltages(emulator::Gate &gate, const std::vector<ScriptedVoltage> &voltages = scriptedVoltages)
{
    using emulator::Answer;
    gate.answerFrom([voltages](const emulator::Call &call) -> std::optional<Answer> {
        const auto success = [](const QJsonArray &results) { return Answer{emulator::Ok, results, {}}; };
        if (call.name == "zvtListVoltages") {
            QJsonArray names;
            for (const auto &voltage : voltages)
                names << QString::fromStdString(voltage.name);
            return success({QJsonValue(names)});
        }
        for (const auto &voltage : voltages) {
            if (call.arguments != '"' + voltage.name + '"')
                continue;
            if (call.name == "zvtGetVoltageDisplayName")
                return success({voltage.displayName});
            if (call.name == "zvtGetVoltage")
                return success({voltage.volts});
            if (call.name == "zvtGetVoltageEditable")
                return success({voltage.editable ? 1 : 0});
            if (call.name == "zvtGetVoltageLimits")
                return success({voltage.minVolts, voltage.maxVolts});
        }
        return std::nullopt;
    });
}

const QStringList rowReads{"zvtGetVoltageDisplayName", "zvtGetVoltage", "zvtGetVoltageEditable", "zvtGetVoltageLimits"};

/// The calls of a read.
QStringList readCalls()
{
    QStringList calls("zvtListVoltages");
    for (const auto &voltage : scriptedVoltages)
        for (const QString &call : rowReads)
            calls << QStringLiteral("%1 \"%2\"").arg(call, QString::fromStdString(voltage.name));
    return calls;
}

struct VoltageSettings : TabRig<MfgVoltageSettingsModel> {
    VoltageSettings() : TabRig(QStringLiteral("everything"))
    {
        scriptVoltages(gate());
        start();
    }

    VoltageItemModel *row(int index) { return qobject_cast<VoltageItemModel *>(model.voltageListModel()->at(index)); }

    QStringList names()
    {
        QStringList list;
        for (int index = 0; index < model.voltageListModel()->size(); ++index)
            list << row(index)->sdkName();
        return list;
    }
};

ModelUnderTest voltageModel()
{
    auto model = modelOf<MfgVoltageSettingsModel>();
    model.prepare = [](CameraRig &rig) { scriptVoltages(rig.gate()); };
    return model;
}

} // namespace

/// The list of the camera's voltages. tst_VoltageItemModel has the writes of its rows.
class tst_MfgVoltageSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder();
    void rowsShowTheVoltages();
    void flagsOfARead();
    void sectionStaysEnabledInLaterReads();
    void rowNeedsAllItsCalls_data();
    void rowNeedsAllItsCalls();
    void failedListHasNoRows();
    void cameraWithoutVoltagesHasNoRows();
    void everyReadMakesNewRows();
    void rowsKnowTheCamera();
    void displayNameFillsItsBuffer();
    void editedVoltageIsReplacedByARead();
    void voltagesOfTheEmulatedCamera();
    void visibilityReadsNothing();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_MfgVoltageSettingsModel::nothingIsKnownAtFirst()
{
    VoltageSettings voltages;
    QVERIFY(!voltages.model.refreshing() && !voltages.model.hasRefreshed() && !voltages.model.visible());
    QCOMPARE(voltages.model.voltageListModel()->size(), 0);
}

void tst_MfgVoltageSettingsModel::readsInOrder()
{
    VoltageSettings voltages;
    QCOMPARE(voltages.read(), readCalls());
}

void tst_MfgVoltageSettingsModel::rowsShowTheVoltages()
{
    VoltageSettings voltages;
    voltages.read();
    QCOMPARE(voltages.model.voltageListModel()->size(), 3);
    for (int index = 0; index < 3; ++index) {
        const ScriptedVoltage &voltage = scriptedVoltages[static_cast<size_t>(index)];
        const VoltageItemModel *row = voltages.row(index);
        QCOMPARE(row->sdkName(), QString::fromStdString(voltage.name));
        QCOMPARE(row->displayName(), voltage.displayName);
        QCOMPARE(row->volts(), static_cast<float>(voltage.volts));
        QCOMPARE(row->editable(), voltage.editable);
        // The limits are those of the camera, which are floats: 2.3 V is a little less.
        QCOMPARE(row->minVolts(), double{static_cast<float>(voltage.minVolts)});
        QCOMPARE(row->maxVolts(), double{static_cast<float>(voltage.maxVolts)});
    }
}

void tst_MfgVoltageSettingsModel::flagsOfARead()
{
    VoltageSettings voltages;
    voltages.log.watch(voltages.model.voltageListModel(), QStringLiteral("list."));
    voltages.model.refresh();
    QCOMPARE(voltages.log.take(), QStringList("refreshingChanged"));
    CameraRig::settle();
    QStringList after = voltages.log.take();
    QCOMPARE(after.mid(after.size() - 2), QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    QCOMPARE(after.count("list.sizeChanged"), 3);
}

void tst_MfgVoltageSettingsModel::sectionStaysEnabledInLaterReads()
{
    VoltageSettings voltages;
    voltages.read();
    voltages.log.take();
    voltages.model.refresh();
    QVERIFY(voltages.model.refreshing() && voltages.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(voltages.log.take(), QStringList({"refreshingChanged", "refreshingChanged"}));
    QVERIFY(voltages.model.hasRefreshed());
}

void tst_MfgVoltageSettingsModel::rowNeedsAllItsCalls_data()
{
    QTest::addColumn<int>("failing");
    for (const QString &call : rowReads)
        for (int row = 0; row < 3; ++row)
            QTest::addRow("%s %d", qPrintable(call), row) << row;
}

void tst_MfgVoltageSettingsModel::rowNeedsAllItsCalls()
{
    QFETCH(const int, failing);
    const QString call = QString::fromLatin1(QTest::currentDataTag()).section(u' ', 0, 0);
    VoltageSettings voltages;
    voltages.gate().failNext(call.toStdString(), failing + 1);
    QCOMPARE(voltages.read(), readCalls());
    QStringList expected{"VDDA", "VREF", "V ß"};
    expected.removeAt(failing);
    QCOMPARE(voltages.names(), expected);
    voltages.read();
    QCOMPARE(voltages.names().size(), 3);
}

void tst_MfgVoltageSettingsModel::failedListHasNoRows()
{
    VoltageSettings voltages;
    voltages.read();
    voltages.gate().failNext("zvtListVoltages");
    QCOMPARE(voltages.read(), QStringList("zvtListVoltages"));
    QCOMPARE(voltages.names(), QStringList());
    QVERIFY(voltages.model.hasRefreshed());
}

void tst_MfgVoltageSettingsModel::cameraWithoutVoltagesHasNoRows()
{
    VoltageSettings voltages;
    voltages.read();
    scriptVoltages(voltages.gate(), {});
    QCOMPARE(voltages.read(), QStringList("zvtListVoltages"));
    QCOMPARE(voltages.names(), QStringList());
    QVERIFY(voltages.model.hasRefreshed());
}

void tst_MfgVoltageSettingsModel::everyReadMakesNewRows()
{
    VoltageSettings voltages;
    voltages.read();
    const QPointer<VoltageItemModel> first = voltages.row(0);
    QVERIFY(first);
    voltages.read();
    QVERIFY(!first);
    QCOMPARE(voltages.names(), QStringList({"VDDA", "VREF", "V ß"}));
}

void tst_MfgVoltageSettingsModel::rowsKnowTheCamera()
{
    VoltageSettings voltages;
    voltages.read();
    QCOMPARE(voltages.callsOf([&] { voltages.row(1)->setVolts(1.25F); }), QStringList("zvtSetVoltage \"VREF\", 1.25"));
}

void tst_MfgVoltageSettingsModel::displayNameFillsItsBuffer()
{
    VoltageSettings voltages;
    voltages.gate().fillBuffers(true);
    voltages.read();
    QCOMPARE(voltages.row(0)->displayName().toUtf8().size(), 100);
}

void tst_MfgVoltageSettingsModel::editedVoltageIsReplacedByARead()
{
    VoltageSettings voltages;
    voltages.read();
    voltages.gate().failNext("zvtSetVoltage");
    voltages.row(1)->setVolts(2.0F);
    QCOMPARE(voltages.row(1)->volts(), 2.0F);
    voltages.read();
    QCOMPARE(voltages.row(1)->volts(), 1.5F);
}

void tst_MfgVoltageSettingsModel::voltagesOfTheEmulatedCamera()
{
    TabRig<MfgVoltageSettingsModel> voltages(QStringLiteral("everything"));
    voltages.start();
    voltages.read();
    const auto rowOf = [&](const char *name) -> VoltageItemModel * {
        for (int index = 0; index < voltages.model.voltageListModel()->size(); ++index)
            if (voltages.model.voltageListModel()->at(index)->property("sdkName") == QLatin1String(name))
                return qobject_cast<VoltageItemModel *>(voltages.model.voltageListModel()->at(index));
        return nullptr;
    };
    QVERIFY(rowOf("VDDA") && !rowOf("VDDA")->editable());
    QVERIFY(rowOf("VREF") && rowOf("VREF")->editable());
    rowOf("VREF")->setVolts(1.75F);
    voltages.read();
    QCOMPARE(rowOf("VREF")->volts(), 1.75F);
    rowOf("VREF")->setVolts(100);
    voltages.read();
    QCOMPARE(rowOf("VREF")->volts(), 1.75F);
    TabRig<MfgVoltageSettingsModel> none(QStringLiteral("bare"));
    none.start();
    none.read();
    QCOMPARE(none.model.voltageListModel()->size(), 0);
}

// The walkers

void tst_MfgVoltageSettingsModel::visibilityReadsNothing() { walkVisibility(voltageModel()); }

void tst_MfgVoltageSettingsModel::failingReads()
{
    const QStringList list{"voltageListModel"};
    ReadExceptions exceptions{{"zvtListVoltages", {list, "the rows are made from the names", list}}};
    for (const QString &call : rowReads)
        for (const char *number : {"", "#2", "#3"})
            exceptions.insert(call + QLatin1String(number), {list, "the row is missing", list});
    walkFailingReads(voltageModel(), exceptions);
}

void tst_MfgVoltageSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(voltageModel()); }

void tst_MfgVoltageSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(voltageModel()); }

void tst_MfgVoltageSettingsModel::readsWithoutACamera() { walkNoCamera(voltageModel()); }

void tst_MfgVoltageSettingsModel::randomOperator() { walkRandomOperator(voltageModel(), 96); }

ZVT_TEST(tst_MfgVoltageSettingsModel)
#include "tst_MfgVoltageSettingsModel.moc"
