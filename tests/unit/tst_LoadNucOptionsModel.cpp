#include "correction/LoadNucOptionsModel.h"
#include "tests/support/SignalLog.h"
#include "tests/support/Test.h"

namespace
{

struct Option {
    const char *name;
    bool start; ///< The value of a new model.
};

constexpr Option all[] = {{"loadSettings", false},     {"useIntTime", true},           {"useWindowSize", true},
                          {"useInvertRevert", true},   {"useFrameRate", false},        {"useFilter", false},
                          {"useFrameSyncMode", false}, {"useDigitalGainOffset", true}, {"useAnalogOffset", false},
                          {"useDetectorBias", false},  {"useFPAGainLevel", false},     {"useSkimming", false},
                          {"useColor", true}};

QStringList allSignals()
{
    QStringList names;
    for (const Option &option : all)
        names << QString::fromLatin1(option.name) + "Changed";
    return names;
}

QVariantList values(const LoadNucOptionsModel &model)
{
    QVariantList list;
    for (const Option &option : all)
        list << model.property(option.name);
    return list;
}

} // namespace

/// The choice of the settings that a load of a correction sets again.
class tst_LoadNucOptionsModel : public Test
{
    Q_OBJECT

private slots:
    void defaults();
    void changesAreSignalledOnce_data();
    void changesAreSignalledOnce();
    void restoreSignalsInOrder();
    void restoreSignalsOnlyWhatChanges();
    void restoreWithoutASaveSetsTheDefaults();
    void restoreTwiceKeepsTheSavedOptions();
    void optionsAreACopy();
};

void tst_LoadNucOptionsModel::defaults()
{
    const LoadNucOptionsModel model(nullptr);
    for (const Option &option : all)
        QCOMPARE(model.property(option.name).toBool(), option.start);
    QVERIFY(!model.options().loadSettings && model.options().useIntTime && model.options().useWindowSize);
    QVERIFY(model.options().useInvertRevert && !model.options().useFrameRate && !model.options().useFilter);
    QVERIFY(!model.options().useFrameSyncMode && model.options().useDigitalGainOffset);
    QVERIFY(!model.options().useAnalogOffset && !model.options().useDetectorBias && !model.options().useFPAGainLevel);
    QVERIFY(!model.options().useSkimming && model.options().useColor);
}

void tst_LoadNucOptionsModel::changesAreSignalledOnce_data()
{
    QTest::addColumn<bool>("start");
    for (const Option &option : all)
        QTest::newRow(option.name) << option.start;
}

void tst_LoadNucOptionsModel::changesAreSignalledOnce()
{
    QFETCH(const bool, start);
    const char *name = QTest::currentDataTag();
    LoadNucOptionsModel model(nullptr);
    SignalLog log(&model);
    QVERIFY(model.setProperty(name, start));
    QCOMPARE(log.take(), QStringList());
    QVERIFY(model.setProperty(name, !start));
    QVERIFY(model.setProperty(name, !start));
    QCOMPARE(log.take(), QStringList{QString::fromLatin1(name) + "Changed"});
    for (const Option &option : all)
        QCOMPARE(model.property(option.name).toBool(), (qstrcmp(option.name, name) == 0) != option.start);
}

void tst_LoadNucOptionsModel::restoreSignalsInOrder()
{
    LoadNucOptionsModel model(nullptr);
    model.save();
    for (const Option &option : all)
        model.setProperty(option.name, !option.start);
    SignalLog log(&model);
    model.restore();
    QCOMPARE(log.take(), allSignals());
    for (const Option &option : all)
        QCOMPARE(model.property(option.name).toBool(), option.start);
}

void tst_LoadNucOptionsModel::restoreSignalsOnlyWhatChanges()
{
    LoadNucOptionsModel model(nullptr);
    model.setUseFilter(true);
    model.save();
    model.setUseFilter(false);
    model.setUseColor(false);
    SignalLog log(&model);
    model.restore();
    QCOMPARE(log.take(), QStringList({"useFilterChanged", "useColorChanged"}));
    QVERIFY(model.useFilter() && model.useColor());
}

void tst_LoadNucOptionsModel::restoreWithoutASaveSetsTheDefaults()
{
    LoadNucOptionsModel model(nullptr);
    const QVariantList start = values(model);
    model.setLoadSettings(true);
    model.setUseSkimming(true);
    model.restore();
    QCOMPARE(values(model), start);
}

void tst_LoadNucOptionsModel::restoreTwiceKeepsTheSavedOptions()
{
    LoadNucOptionsModel model(nullptr);
    model.setLoadSettings(true);
    model.save();
    const QVariantList saved = values(model);
    for (int opening = 0; opening < 2; ++opening) {
        model.save();
        model.setLoadSettings(false);
        model.setUseFrameRate(true);
        model.restore();
        QCOMPARE(values(model), saved);
    }
}

void tst_LoadNucOptionsModel::optionsAreACopy()
{
    LoadNucOptionsModel model(nullptr);
    const LoadNucOptions before = model.options();
    model.setUseAnalogOffset(true);
    QVERIFY(!before.useAnalogOffset);
    QVERIFY(model.options().useAnalogOffset);
}

ZVT_TEST(tst_LoadNucOptionsModel)
#include "tst_LoadNucOptionsModel.moc"
