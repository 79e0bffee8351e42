#include "tests/support/Test.h"
#include "tests/unit/SetupRig.h"

#include <QFile>
#include <QTemporaryDir>

#include <cmath>

namespace
{

/// A general setup whose values are written.
struct Writes : Setup {
    explicit Writes(const QString &profile = QStringLiteral("everything"), bool connected = true)
        : Setup(profile, connected), log(model)
    {
    }

    /// Writes a property. Returns the calls of the GUI thread.
    QStringList write(const char *property, const QVariant &value)
    {
        const size_t start = mark();
        model->setProperty(property, value);
        return guiCalls(start);
    }

    /// Waits for the running tasks. Returns their calls, sorted.
    QStringList reads(size_t start)
    {
        CameraRig::settle();
        return sorted(taskCalls(start));
    }

    SignalLog log;
};

const QStringList customChanged{"selectedWindowSizeIsCustomChanged"};

} // namespace

class tst_SetupGeneralModelWrites : public Test
{
    Q_OBJECT

private slots:
    void modeLeavesTheIndexAlone();
    void modeIndexSignalsTwice();
    void modeIndexThatSaysNothingNewIsDropped_data();
    void modeIndexThatSaysNothingNewIsDropped();
    void modeOfferedTwiceSelectsItsFirstRow();
    void presetsAreWritten_data();
    void presetsAreWritten();
    void refusedPresetStaysUntilTheNextRead();

    void listedSuperframeRateSelectsItsRow();
    void otherSuperframeRateGoesToTheCameraAsItIs();
    void rowOfASuperframeRateIsSelected();

    void standardSizeMovesTheWindow();
    void customRowLeavesTheWindow();
    void lastRowIsNoCustomOneWhereCustomIsNotAllowed();
    void sizeBeyondTheRowsIsNotWritten();
    void sizeIsNotWrittenWithoutRows();
    void windowThatCanNotBeReadIsEmpty();
    void freeWindowSelectsTheLastRow();
    void standardWindowSelectsItsRowAndCountsAsCustom();
    void windowIsCutToSixteenBits();
    void windowWithoutAnAnswerIsTheLastRow();

    void unchangedValueIsNotWritten();
    void partialReadsCoverAllPresets();
    void modelWithoutARootIsHarmless();
};

void tst_SetupGeneralModelWrites::modeLeavesTheIndexAlone()
{
    Writes setup;
    QCOMPARE(setup.write("sequencingMode", QVariant::fromValue(SetupGeneralModel::SUPERFRAMING)),
             QStringList({"SetPresetSequencingMode 1", "GetPresetSequencingMode"}));
    QCOMPARE(setup.model->sequencingMode(), SetupGeneralModel::SUPERFRAMING);
    QCOMPARE(setup.model->sequencingModeIndex(), 0);
    QCOMPARE(setup.log.take(), QStringList({"sequencingModeChanged"}));
}

void tst_SetupGeneralModelWrites::modeIndexSignalsTwice()
{
    Writes setup;
    QList<QPair<int, int>> shown;
    QObject::connect(setup.model, &SetupGeneralModel::sequencingModeChanged, this,
                     [&] { shown << QPair(int(setup.model->sequencingMode()), setup.model->sequencingModeIndex()); });
    QCOMPARE(setup.write("sequencingModeIndex", 2),
             QStringList({"SetPresetSequencingMode 2", "GetPresetSequencingMode"}));
    QCOMPARE(shown, (QList<QPair<int, int>>{{2, 0}, {2, 2}}));
    // The mode has been set before: only the row changes.
    setup.model->setSequencingMode(SetupGeneralModel::SUPERFRAMING);
    shown.clear();
    QCOMPARE(setup.write("sequencingModeIndex", 1), QStringList());
    QCOMPARE(shown, (QList<QPair<int, int>>{{1, 1}}));
}

void tst_SetupGeneralModelWrites::modeIndexThatSaysNothingNewIsDropped_data()
{
    QTest::addColumn<bool>("anyModes");
    QTest::addColumn<int>("index");
    QTest::newRow("no modes") << false << 1;
    QTest::newRow("present") << true << 0;
    QTest::newRow("beyond") << true << 3;
    QTest::newRow("negative") << true << -1;
}

void tst_SetupGeneralModelWrites::modeIndexThatSaysNothingNewIsDropped()
{
    QFETCH(bool, anyModes);
    QFETCH(int, index);
    Writes setup;
    if (!anyModes) {
        setup.gate().failNext("controller.GetSequencingModes");
        setup.refresh();
        setup.log.take();
    }
    QCOMPARE(setup.write("sequencingModeIndex", index), QStringList());
    QCOMPARE(setup.log.take(), QStringList());
}

void tst_SetupGeneralModelWrites::modeOfferedTwiceSelectsItsFirstRow()
{
    const QTemporaryDir folder;
    QFile profile(folder.filePath(QStringLiteral("twice.json")));
    QVERIFY(profile.open(QIODevice::WriteOnly));
    profile.write(
        R"({"title": "Twice", "extends": "everything", "devices": {"sensor": {"sequencingModes": [0, 2, 2]}}})");
    profile.close();
    Writes setup(profile.fileName());
    setup.model->setSequencingModeIndex(2);
    QCOMPARE(setup.model->sequencingMode(), SetupGeneralModel::PRESET_SEQUENCING);
    QCOMPARE(setup.model->sequencingModeIndex(), 1);
}

void tst_SetupGeneralModelWrites::presetsAreWritten_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<int>("value");
    QTest::newRow("activePreset") << "SetActivePreset 3" << 3;
    QTest::newRow("videoPreset") << "SetVideoPreset 2" << 2;
    QTest::newRow("gigEPreset") << "zvtSetGigEPreset 1" << 1;
}

void tst_SetupGeneralModelWrites::presetsAreWritten()
{
    QFETCH(QString, call);
    QFETCH(int, value);
    const char *property = QTest::currentDataTag();
    Writes setup;
    QCOMPARE(setup.write(property, value), QStringList({call}));
    QCOMPARE(setup.model->property(property).toInt(), value);
    QCOMPARE(setup.log.take(), QStringList({QLatin1String(property) + QStringLiteral("Changed")}));
    setup.refresh();
    QCOMPARE(setup.model->property(property).toInt(), value);
}

void tst_SetupGeneralModelWrites::refusedPresetStaysUntilTheNextRead()
{
    Writes setup;
    setup.gate().failAlways("controller.SetActivePreset");
    setup.model->setActivePreset(2);
    QCOMPARE(setup.model->activePreset(), 2);
    QCOMPARE(setup.log.take(), QStringList({"activePresetChanged"}));
    setup.refresh();
    QCOMPARE(setup.model->activePreset(), 0);
}

// The superframe

void tst_SetupGeneralModelWrites::listedSuperframeRateSelectsItsRow()
{
    Writes setup;
    const int row = static_cast<int>(setup.model->superframeRates().indexOf(10.0));
    QVERIFY(row > 0);
    QCOMPARE(setup.write("superframeRate", 10.0), QStringList({QStringLiteral("SetSuperframeRateIndex %1").arg(row)}));
    QCOMPARE(setup.model->superframeRateIndex(), row);
    QCOMPARE(setup.model->superframeRate(), 10.0);
    QCOMPARE(setup.log.take(), QStringList({"superframeRateIndexChanged", "superframeRateChanged"}));
}

void tst_SetupGeneralModelWrites::otherSuperframeRateGoesToTheCameraAsItIs()
{
    Writes setup;
    const size_t mark = setup.mark();
    const QStringList calls = setup.write("superframeRate", std::nextafter(10.0, 11.0));
    QCOMPARE(calls.size(), 1);
    QVERIFY(calls.first().startsWith("SetSuperframeRate 1, 10.0000"));
    QCOMPARE(setup.model->superframeRateIndex(), -1);
    QCOMPARE(setup.log.take(), QStringList({"superframeRateIndexChanged", "superframeRateChanged"}));
    QCOMPARE(setup.write("superframeRate", notANumber).filter("SetSuperframeRate 1, ").size(), 1);
    QCOMPARE(setup.model->superframeRateIndex(), -1);
    QCOMPARE(setup.reads(mark), QStringList());
}

void tst_SetupGeneralModelWrites::rowOfASuperframeRateIsSelected()
{
    Writes setup;
    QCOMPARE(setup.write("superframeRateIndex", 2), QStringList({"SetSuperframeRateIndex 2"}));
    QCOMPARE(setup.model->superframeRate(), setup.model->superframeRates().at(2));
    QCOMPARE(setup.log.take(), QStringList({"superframeRateIndexChanged", "superframeRateChanged"}));
    // A row outside the list does not change the rate.
    const double rate = setup.model->superframeRate();
    const int rows = static_cast<int>(setup.model->superframeRates().size());
    for (const int row : {rows, -1}) {
        QCOMPARE(setup.write("superframeRateIndex", row),
                 QStringList({QStringLiteral("SetSuperframeRateIndex %1").arg(row)}));
        QCOMPARE(setup.model->superframeRateIndex(), row);
        QCOMPARE(setup.model->superframeRate(), rate);
        QCOMPARE(setup.log.take(), QStringList({"superframeRateIndexChanged"}));
    }
}

// The window

void tst_SetupGeneralModelWrites::standardSizeMovesTheWindow()
{
    Writes setup;
    const size_t mark = setup.mark();
    QCOMPARE(setup.write("windowSizeIndex", 2), QStringList({"SetWindowSizeIndex 2", "GetWindow"}));
    QCOMPARE(setup.model->windowSizeIndex(), 2);
    QCOMPARE(setup.model->window(), QRect(160, 128, 320, 256));
    QVERIFY(!setup.model->selectedWindowSizeIsCustom());
    // Whether the size is custom is signalled in any case.
    QCOMPARE(setup.log.take(),
             QStringList({"windowSizeIndexChanged"}) + customChanged + QStringList({"windowChanged"}));
    QCOMPARE(setup.reads(mark), partialReadsOfAll());
}

void tst_SetupGeneralModelWrites::customRowLeavesTheWindow()
{
    Writes setup;
    const size_t mark = setup.mark();
    QCOMPARE(setup.write("windowSizeIndex", 5), QStringList({"SetWindowSizeIndex 5"}));
    QVERIFY(setup.model->selectedWindowSizeIsCustom());
    QCOMPARE(setup.model->window(), QRect(0, 0, 640, 512));
    QCOMPARE(setup.log.take(), QStringList({"windowSizeIndexChanged"}) + customChanged);
    QCOMPARE(setup.reads(mark), partialReadsOfAll());
    setup.model->setWindowSizeIndex(0);
    QVERIFY(!setup.model->selectedWindowSizeIsCustom());
}

void tst_SetupGeneralModelWrites::lastRowIsNoCustomOneWhereCustomIsNotAllowed()
{
    Writes setup(QStringLiteral("low-cost"));
    QCOMPARE(setup.write("windowSizeIndex", 1), QStringList({"SetWindowSizeIndex 1", "GetWindow"}));
    QVERIFY(!setup.model->selectedWindowSizeIsCustom());
    QCOMPARE(setup.model->window().size(), QSize(192, 144));
}

void tst_SetupGeneralModelWrites::sizeBeyondTheRowsIsNotWritten()
{
    Writes setup;
    const size_t mark = setup.mark();
    QCOMPARE(setup.write("windowSizeIndex", 6), QStringList({"GetWindow"}));
    QCOMPARE(setup.model->windowSizeIndex(), 6);
    QCOMPARE(setup.reads(mark), partialReadsOfAll());
    QCOMPARE(setup.write("windowSizeIndex", -1), QStringList({"SetWindowSizeIndex -1", "GetWindow"}));
}

void tst_SetupGeneralModelWrites::sizeIsNotWrittenWithoutRows()
{
    Writes setup(QStringLiteral("everything"), false);
    const size_t mark = setup.mark();
    QCOMPARE(setup.write("windowSizeIndex", 0), QStringList());
    QCOMPARE(setup.model->windowSizeIndex(), -1);
    QCOMPARE(setup.log.take(), QStringList());
    QCOMPARE(setup.reads(mark), QStringList());
}

void tst_SetupGeneralModelWrites::windowThatCanNotBeReadIsEmpty()
{
    Writes setup;
    setup.gate().failAlways("controller.GetWindow");
    setup.model->setWindowSizeIndex(2);
    QCOMPARE(setup.model->window(), QRect());
    QVERIFY(setup.log.take().contains("windowChanged"));
}

void tst_SetupGeneralModelWrites::freeWindowSelectsTheLastRow()
{
    Writes setup;
    const size_t mark = setup.mark();
    QCOMPARE(setup.write("window", QRect(16, 4, 96, 100)),
             QStringList({"SetWindow 16, 4, 96, 100", "GetWindowSizeIndex"}));
    QCOMPARE(setup.model->window(), QRect(16, 4, 96, 100));
    QCOMPARE(setup.model->windowSizeIndex(), 5);
    QVERIFY(setup.model->selectedWindowSizeIsCustom());
    QCOMPARE(setup.log.take(), QStringList({"windowChanged", "windowSizeIndexChanged"}) + customChanged);
    QCOMPARE(setup.reads(mark), partialReadsOfAll());
    // Another free window has the same row.
    setup.model->setWindow(QRect(16, 8, 96, 100));
    QCOMPARE(setup.log.take(), QStringList({"windowChanged"}));
}

void tst_SetupGeneralModelWrites::standardWindowSelectsItsRowAndCountsAsCustom()
{
    Writes setup;
    setup.model->setWindow(QRect(160, 128, 320, 256));
    QCOMPARE(setup.model->windowSizeIndex(), 2);
    QVERIFY(setup.model->selectedWindowSizeIsCustom());
    QCOMPARE(setup.log.take(), QStringList({"windowChanged", "windowSizeIndexChanged"}) + customChanged);
}

void tst_SetupGeneralModelWrites::windowIsCutToSixteenBits()
{
    Writes setup;
    QCOMPARE(setup.write("window", QRect(-1, 65537, 65536 + 64, 70000)).first(),
             QStringLiteral("SetWindow 65535, 1, 64, 4464"));
    // The camera refuses it; the model shows the requested window until the next read.
    QCOMPARE(setup.model->window(), QRect(-1, 65537, 65536 + 64, 70000));
    QCOMPARE(setup.model->windowSizeIndex(), 0);
}

void tst_SetupGeneralModelWrites::windowWithoutAnAnswerIsTheLastRow()
{
    Writes setup;
    setup.gate().failAlways("controller.GetWindowSizeIndex");
    setup.model->setWindow(QRect(160, 128, 320, 256));
    QCOMPARE(setup.model->windowSizeIndex(), 5);
}

// All setters

void tst_SetupGeneralModelWrites::unchangedValueIsNotWritten()
{
    Writes setup;
    const size_t mark = setup.mark();
    for (const char *property : {"visible", "sequencingMode", "sequencingModeIndex", "activePreset", "gigEPreset",
                                 "videoPreset", "windowSizeIndex", "window", "superframeRate", "superframeRateIndex"})
        QCOMPARE(setup.write(property, setup.model->property(property)), QStringList());
    QCOMPARE(setup.log.take(), QStringList());
    QCOMPARE(setup.reads(mark), QStringList());
}

void tst_SetupGeneralModelWrites::partialReadsCoverAllPresets()
{
    Writes setup;
    const size_t mark = setup.mark();
    setup.rig.controller()->SetPresetIntegrationTime(3, 1, 7.5);
    setup.model->partialRefreshAllPresets();
    QCOMPARE(setup.reads(mark), partialReadsOfAll());
    QCOMPARE(setup.model->ps(3)->integrationTime(), 7.5);
}

void tst_SetupGeneralModelWrites::modelWithoutARootIsHarmless()
{
    QObject parent;
    SetupGeneralModel model(&parent);
    model.setWindow(QRect(1, 2, 3, 4));
    QVERIFY(model.selectedWindowSizeIsCustom());
    QCOMPARE(model.windowSizeIndex(), -1);
    model.setActivePreset(2);
    model.setGigEPreset(2);
    model.setSuperframeRate(5.0);
    model.setSequencingMode(SetupGeneralModel::SUPERFRAMING);
    QCOMPARE(model.superframeRate(), 5.0);
    CameraRig::settle();
    model.refresh();
    CameraRig::settle();
    QCOMPARE(model.factoryCalibrationStrings(), QStringList({"No Factory Calibration"}));
    QCOMPARE(model.activePreset(), 0);
    QCOMPARE(model.gigEPreset(), 4);
    QVERIFY(model.hasRefreshed());
}

ZVT_TEST(tst_SetupGeneralModelWrites)
#include "tst_SetupGeneralModelWrites.moc"
