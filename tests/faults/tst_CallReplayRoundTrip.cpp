#include "platform/emulator/CallRecorder.h"
#include "platform/emulator/CallReplay.h"
#include "tests/faults/randomActions.h"
#include "tests/support/Test.h"
#include "tests/support/modelProperties.h"

#include <QTemporaryDir>

#include <vector>

/// A session of a random operator that is recorded and repeated.
class tst_CallReplayRoundTrip : public Test
{
    Q_OBJECT

private slots:
    void everyModelShowsTheSameValuesAgain_data();
    void everyModelShowsTheSameValuesAgain();
};

namespace
{

constexpr int rounds = 3;
constexpr int steps = 150;

/// The values of all models, by "MODEL.PROPERTY".
QVariantMap valuesOf(const Models &models)
{
    QVariantMap values;
    for (auto model = models.byPath.cbegin(); model != models.byPath.cend(); ++model) {
        const QVariantMap own = ::valuesOf(model.value());
        for (auto value = own.cbegin(); value != own.cend(); ++value)
            values[model.key() + u'.' + value.key()] = value.value();
    }
    return values;
}

/// Changes settings of the camera without a call, so that only the recording has their values. It leaves out the
/// properties of the emulator, which the framework answers, and the identity: capabilities that follow it are recorded
/// only when their event is read.
void changeSettings(emulator::Camera &camera, QRandomGenerator &random)
{
    for (const emulator::SettingInfo &setting : camera.settings())
        if (setting.name.startsWith(QLatin1String("emulator.")) || setting.name.startsWith(QLatin1String("identity.")))
            continue;
        else if (setting.value.isBool())
            camera.otherClient().set(setting.name, random.bounded(2) == 1);
        else if (setting.value.isDouble() && random.bounded(4) == 0)
            camera.otherClient().set(setting.name, random.bounded(100));
}

enum class Session { Recorded, Repeated };

/// The values that the models show after each round of a session. The same seed makes the same session. In the recorded
/// one calls fail, and the camera changes without calls.
std::vector<QVariantMap> play(CameraRig &rig, uint seed, Session session)
{
    QRandomGenerator changes(seed);
    std::vector<QVariantMap> values;
    QRandomGenerator random(seed);
    rig.camera().connect();
    Models models(rig);
    models.root->setManufacturingMode(false);
    const Models otherClient(rig);
    for (int round = 0; round < rounds; ++round) {
        if (session == Session::Recorded)
            rig.gate().failRandomly(0.1, seed);
        for (int step = 0; step < steps; ++step) {
            doSomething(models, otherClient, rig, random);
            if (session == Session::Recorded && step % 10 == 0)
                changeSettings(rig.camera(), changes);
            // Calls that several reads make at the same time would be in another order when the session is repeated.
            CameraRig::settle();
        }
        rig.gate().failNever();
        rig.camera().disconnect();
        rig.camera().connect();
        CameraRig::settle();
        readEverything(models);
        values.push_back(valuesOf(models));
    }
    return values;
}

} // namespace

void tst_CallReplayRoundTrip::everyModelShowsTheSameValuesAgain_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<uint>("seed");
    uint seed = 11;
    for (const char *profile : {"everything", "low-cost", "te-cooler"})
        QTest::newRow(profile) << QString::fromLatin1(profile) << seed++;
}

void tst_CallReplayRoundTrip::everyModelShowsTheSameValuesAgain()
{
    QFETCH(QString, profile);
    QFETCH(uint, seed);
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("session.jsonl"));
    std::vector<QVariantMap> recorded;
    {
        CameraRig rig(profile, false);
        const emulator::CallRecorder recorder(rig.camera().shared_from_this(), file,
                                              [](const QString &message) { qWarning("%s", qPrintable(message)); });
        recorded = play(rig, seed, Session::Recorded);
    }
    const emulator::CallReplay replay(file);
    CameraRig rig(replay.profile(), false);
    replay.attachTo(rig.camera().shared_from_this());
    const std::vector<QVariantMap> repeated = play(rig, seed, Session::Repeated);
    for (size_t round = 0; round < rounds; ++round) {
        const QStringList different = differing(recorded[round], repeated[round]);
        QVERIFY2(different.isEmpty(), qPrintable(QStringLiteral("round %1: %2").arg(round).arg(different.join(", "))));
    }
}

ZVT_TEST(tst_CallReplayRoundTrip)
#include "tst_CallReplayRoundTrip.moc"
