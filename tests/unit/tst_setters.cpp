#include "tests/support/CameraRig.h"
#include "tests/support/Test.h"

#include "common/CameraRoot.h"
#include "common/Refresh.h"
#include "common/rows.h"
#include "common/setters.h"
#include "plugin/ZvtCameraModel.h"

#include <QSignalSpy>

#include "zvt/zvtsdk.h"

namespace
{

// The functions of the model below work without a camera, so that a test can choose every status.
int status = 0;
QStringList written;

int setLevel(uint64_t, uint8_t level)
{
    written << QStringLiteral("level %1").arg(level);
    return status;
}

int setDelay(uint64_t, uint8_t preset, float microseconds)
{
    written << QStringLiteral("delay %1 %2").arg(preset).arg(microseconds);
    return status;
}

int getLevel(uint64_t, uint8_t *level)
{
    *level = 7;
    return status;
}

int getGain(uint64_t, float *gain)
{
    *gain = 2.5F;
    return 0;
}

int setGain(uint64_t, float gain)
{
    written << QStringLiteral("gain %1").arg(gain);
    return status;
}

} // namespace

class SettingsModel : public QObject
{
    Q_OBJECT

public:
    int level = 1;
    double delay = 0.0;
    double gain = 0.0;
    bool reduceNoise = false;
    QString text;
    int refreshes = 0;
    int poolStatus = 99;

    struct Result {
        Nullable<int> level;
        Nullable<double> gain;
    };

    void refresh() { ++refreshes; }
    void writeSlowly(uint8_t value) { writeOnPool(m_pending, setLevel, value); }

    static const auto &rows();

signals:
    void levelChanged();
    void delayChanged();
    void gainChanged();

private slots:
    void finishedWriting() { poolStatus = m_pending.result(); }

private:
    Refresh<SettingsModel, int> m_pending{this, &SettingsModel::finishedWriting, RefreshForm::NoFlags};
};

const auto &SettingsModel::rows()
{
    static constexpr std::tuple rows{
        Row{getLevel, &Result::level, &SettingsModel::level, &SettingsModel::levelChanged, setLevel},
        Row{getGain, &Result::gain, &SettingsModel::gain, &SettingsModel::gainChanged, setGain}};
    return rows;
}

class tst_setters : public Test
{
    Q_OBJECT

private slots:
    void init();
    void storedValueMakesNoCall();
    void standardStoresWhatTheUserAskedForEvenIfRefused();
    void confirmedSnapsBackIfRefused();
    void acceptedSignalsOnlyWhatTheCameraTook();
    void everyFormWritesThenStoresThenSignals();
    void settersTellWhetherTheValueDiffered();
    void argumentsStandBeforeTheValue();
    void textIsWrittenAsUtf8();
    void controllerOperationsAreReadAndWritten();
    void storeOnlyWritesNothing();
    void writeAndRereadRefreshesBehindTheSignal();
    void writeOnPoolBringsTheStatusAndDropsASecondWrite();
    void tableReadsPublishesAndWrites();
    void setterFetchesTheHandleOfTheCameraAfresh();
};

void tst_setters::init()
{
    Test::init();
    status = 0;
    written.clear();
}

void tst_setters::storedValueMakesNoCall()
{
    SettingsModel model;
    const QSignalSpy spy(&model, &SettingsModel::levelChanged);
    writeStandard(&model, 1, model.level, &SettingsModel::levelChanged, setLevel);
    writeConfirmed(&model, 1, model.level, &SettingsModel::levelChanged, setLevel);
    storeOnly(&model, 1, model.level, &SettingsModel::levelChanged);
    writeAndReread(&model, 1, model.level, &SettingsModel::levelChanged, setLevel);
    QCOMPARE(written, QStringList());
    QCOMPARE(spy.size(), 0);
    QCOMPARE(model.refreshes, 0);
}

void tst_setters::standardStoresWhatTheUserAskedForEvenIfRefused()
{
    SettingsModel model;
    const QSignalSpy spy(&model, &SettingsModel::levelChanged);
    status = -1;
    writeStandard(&model, 3, model.level, &SettingsModel::levelChanged, setLevel);
    QCOMPARE(written, QStringList("level 3"));
    QCOMPARE(model.level, 3);
    QCOMPARE(spy.size(), 1);
}

void tst_setters::confirmedSnapsBackIfRefused()
{
    SettingsModel model;
    const QSignalSpy spy(&model, &SettingsModel::levelChanged);
    status = -1;
    writeConfirmed(&model, 3, model.level, &SettingsModel::levelChanged, setLevel);
    QCOMPARE(model.level, 1);
    QCOMPARE(spy.size(), 1);
    status = 0;
    writeConfirmed(&model, 3, model.level, &SettingsModel::levelChanged, setLevel);
    QCOMPARE(model.level, 3);
    QCOMPARE(spy.size(), 2);
    QCOMPARE(written, QStringList({"level 3", "level 3"}));
}

void tst_setters::acceptedSignalsOnlyWhatTheCameraTook()
{
    SettingsModel model;
    const QSignalSpy spy(&model, &SettingsModel::levelChanged);
    status = -1;
    writeAccepted(&model, 3, model.level, &SettingsModel::levelChanged, setLevel);
    QCOMPARE(model.level, 1);
    QCOMPARE(spy.size(), 0);
    status = 0;
    writeAccepted(&model, 3, model.level, &SettingsModel::levelChanged, setLevel);
    QCOMPARE(model.level, 3);
    QCOMPARE(spy.size(), 1);
}

void tst_setters::everyFormWritesThenStoresThenSignals()
{
    SettingsModel model;
    QStringList atSignal;
    QObject::connect(&model, &SettingsModel::levelChanged, &model,
                     [&] { atSignal << QStringLiteral("%1 written, %2 stored").arg(written.size()).arg(model.level); });
    writeStandard(&model, 2, model.level, &SettingsModel::levelChanged, setLevel);
    writeConfirmed(&model, 3, model.level, &SettingsModel::levelChanged, setLevel);
    writeAccepted(&model, 4, model.level, &SettingsModel::levelChanged, setLevel);
    writeAndReread(&model, 5, model.level, &SettingsModel::levelChanged, setLevel);
    storeOnly(&model, 6, model.level, &SettingsModel::levelChanged);
    QCOMPARE(atSignal,
             QStringList({"1 written, 2 stored", "2 written, 3 stored", "3 written, 4 stored", "4 written, 5 stored",
                          "4 written, 6 stored"}));
}

void tst_setters::settersTellWhetherTheValueDiffered()
{
    SettingsModel model;
    for (const int level : {1, 2}) {
        const bool differs = level != model.level;
        QCOMPARE(storeOnly(&model, level, model.level, &SettingsModel::levelChanged), differs);
        QCOMPARE(writeStandard(&model, level, model.level, &SettingsModel::levelChanged, setLevel), false);
    }
}

void tst_setters::textIsWrittenAsUtf8()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    CameraRig::settle(); // The root reads the general setup.
    SettingsModel model;
    model.setParent(&root);
    const size_t mark = rig.gate().mark();
    writeStandard(&model, QStringLiteral("W\u00e4rme"), model.text, &SettingsModel::levelChanged, zvtSetCameraModel);
    QCOMPARE(rig.gate().callsSince(mark).back().arguments, std::string("\"W\xc3\xa4rme\""));
    QCOMPARE(model.text, QStringLiteral("W\u00e4rme"));
    model.setParent(nullptr);
}

void tst_setters::controllerOperationsAreReadAndWritten()
{
    using hlx::cam::IZVTController;
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    SettingsModel model;
    model.setParent(&root);
    writeStandard(&model, true, model.reduceNoise, &SettingsModel::levelChanged, &IZVTController::SetReduceNoise);
    QVERIFY(rig.controller()->GetReduceNoise());
    writeStandard(&model, 2.0, model.delay, &SettingsModel::delayChanged, &IZVTController::SetPresetIntegrationTime, 1,
                  1);
    Nullable<double> milliseconds;
    QVERIFY(fetch(milliseconds, &IZVTController::GetPresetIntegrationTime, root.controller(), 1));
    QVERIFY(qAbs(milliseconds.get() - 2.0) < 0.01);
    // Without a controller an operation counts as failed.
    Nullable<double> none;
    QVERIFY(!fetch(none, &IZVTController::GetPresetIntegrationTime, {}, 1));
    QVERIFY(!none.set());
    QCOMPARE(readOr(-1.0, &IZVTController::GetPresetIntegrationTime, hlx::TSharedPtr<IZVTController>(), 1), -1.0);
    model.setParent(nullptr);
}

void tst_setters::argumentsStandBeforeTheValue()
{
    SettingsModel model;
    writeStandard(&model, 12.5, model.delay, &SettingsModel::delayChanged, setDelay, uint8_t{2});
    QCOMPARE(written, QStringList("delay 2 12.5"));
}

void tst_setters::storeOnlyWritesNothing()
{
    SettingsModel model;
    const QSignalSpy spy(&model, &SettingsModel::levelChanged);
    storeOnly(&model, 5, model.level, &SettingsModel::levelChanged);
    QCOMPARE(written, QStringList());
    QCOMPARE(model.level, 5);
    QCOMPARE(spy.size(), 1);
}

void tst_setters::writeAndRereadRefreshesBehindTheSignal()
{
    SettingsModel model;
    int refreshesAtSignal = -1;
    QObject::connect(&model, &SettingsModel::levelChanged, &model, [&] { refreshesAtSignal = model.refreshes; });
    writeAndReread(&model, 5, model.level, &SettingsModel::levelChanged, setLevel);
    QCOMPARE(refreshesAtSignal, 0);
    QCOMPARE(model.refreshes, 1);
}

void tst_setters::writeOnPoolBringsTheStatusAndDropsASecondWrite()
{
    SettingsModel model;
    status = -5;
    model.writeSlowly(4);
    model.writeSlowly(6);
    QTRY_COMPARE(model.poolStatus, -5);
    QCOMPARE(written, QStringList("level 4"));
}

void tst_setters::tableReadsPublishesAndWrites()
{
    SettingsModel model;
    SettingsModel::Result result;
    readAll(result, SettingsModel::rows(), 1);
    publishAll(&model, result, SettingsModel::rows());
    QCOMPARE(model.level, 7);
    QCOMPARE(model.gain, 2.5);
    writeStandard(&model, 8, std::get<0>(SettingsModel::rows()));
    QCOMPARE(model.level, 8);
    status = -1;
    writeConfirmed(&model, 9.0, std::get<1>(SettingsModel::rows()));
    QCOMPARE(model.gain, 2.5);
    QCOMPARE(written, QStringList({"level 8", "gain 9"}));
    // A row that fails does not affect the other.
    result = {};
    readAll(result, SettingsModel::rows(), 1);
    QVERIFY(!result.level.set());
    QVERIFY(result.gain.set());
}

void tst_setters::setterFetchesTheHandleOfTheCameraAfresh()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    CameraRig::settle(); // The root reads the general setup.
    SettingsModel model;
    model.setParent(&root);
    const size_t mark = rig.gate().mark();
    writeStandard(&model, 77.5, model.gain, &SettingsModel::gainChanged, zvtMfgSetCoolerSetpoint);
    QCOMPARE(rig.callsSince(mark), QStringList("zvtMfgSetCoolerSetpoint"));
    QCOMPARE(rig.gate().callsSince(mark).back().arguments, std::string("77.5"));
    model.setParent(nullptr);
}

ZVT_TEST(tst_setters)
#include "tst_setters.moc"
