#include "tests/support/CameraRig.h"
#include "tests/support/Test.h"

#include "plugin/ZvtCameraModel.h"
#include "status/StatusTabModel.h"

#include <QMetaProperty>
#include <QRandomGenerator>

/// An operator who does anything at any time, on a camera that fails, falls silent and changes by itself.
class tst_RandomOperator : public Test
{
    Q_OBJECT

private slots:
    void rootSurvivesAndTellsTheTruthInTheEnd_data();
    void rootSurvivesAndTellsTheTruthInTheEnd();
};

namespace
{

void writeSomething(QObject &model, QRandomGenerator &random)
{
    const QMetaObject *meta = model.metaObject();
    const QMetaProperty property = meta->property(random.bounded(meta->propertyCount()));
    QVariant value(random.bounded(4));
    if (property.isWritable() && value.convert(property.metaType()))
        property.write(&model, value);
}

} // namespace

void tst_RandomOperator::rootSurvivesAndTellsTheTruthInTheEnd_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<uint>("seed");
    uint seed = 1;
    for (const QString &profile : emulator::Profile::names())
        QTest::newRow(qPrintable(profile)) << profile << seed++;
}

void tst_RandomOperator::rootSurvivesAndTellsTheTruthInTheEnd()
{
    QFETCH(QString, profile);
    QFETCH(uint, seed);
    QRandomGenerator random(seed);
    CameraRig rig(profile);
    rig.gate().failRandomly(0.2, seed);
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    for (int step = 0; step < 1000; ++step) {
        switch (random.bounded(10)) {
        case 0:
            rig.camera().disconnect();
            break;
        case 1:
            rig.camera().connect();
            break;
        case 2:
            root->refreshAllVisible();
            break;
        case 3:
            root->statusTabModel()->setVisible(random.bounded(2) == 1);
            break;
        case 4:
            emulator::Clock::advance(random.bounded(60'000));
            break;
        case 5:
            QCoreApplication::processEvents();
            break;
        case 6:
            rig.camera().changeMakeUp(QStringLiteral("hasSsd"), random.bounded(2) == 1);
            break;
        case 7:
            if (random.bounded(20) == 0)
                root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
            break;
        default:
            writeSomething(*root, random);
        }
    }
    rig.gate().failNever();
    rig.camera().disconnect();
    rig.camera().connect();
    CameraRig::settle();
    root->refreshAllVisible();
    root->statusTabModel()->setVisible(false);
    root->statusTabModel()->setVisible(true);
    CameraRig::settle();

    const std::unique_ptr<ZvtCameraModel> fresh = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    fresh->refreshAllVisible();
    fresh->statusTabModel()->setVisible(true);
    CameraRig::settle();
    QVERIFY(root->connected());
    QCOMPARE(root->model(), fresh->model());
    QCOMPARE(root->hasNucMask(), fresh->hasNucMask());
    QCOMPARE(root->cameraCapabilitiesModel()->hasSsd(), fresh->cameraCapabilitiesModel()->hasSsd());
    for (const char *property : {"frameSize", "frameRate", "integrationTime", "time", "fpaTemp", "operatingTime"})
        QCOMPARE(root->statusTabModel()->property(property), fresh->statusTabModel()->property(property));
}

ZVT_TEST(tst_RandomOperator)
#include "tst_RandomOperator.moc"
