#include "tests/support/SignalLog.h"
#include "tests/support/Test.h"
#include "tests/support/modelOf.h"
#include "tests/unit/threadCalls.h"

#include "manufacturing/VoltageItemModel.h"

namespace
{

/// A row below a root, with helpers for tests.
struct Voltage {
    explicit Voltage(bool editable, const QString &name = QStringLiteral("VREF"))
        : root(rig.controller(), nullptr), model(name, QStringLiteral("Reference"), 1.5F, editable, &root, 1.0, 2.25),
          log(&model)
    {
        CameraRig::settle();
        rig.gate().script("zvtSetVoltage", true);
    }

    /// Sets the voltage. Returns the calls on the GUI thread.
    QStringList set(float volts)
    {
        const size_t mark = rig.gate().mark();
        model.setVolts(volts);
        return threadCalls(rig.gate(), mark, CallPlace::OnGui);
    }

    CameraRig rig;
    ZvtCameraModel root;
    VoltageItemModel model;
    SignalLog log;
};

} // namespace

/// A voltage that the operator sets, or only sees.
class tst_VoltageItemModel : public Test
{
    Q_OBJECT

private slots:
    void showsWhatItWasMadeOf();
    void changedVoltageIsWritten();
    void sameVoltageIsNotWritten();
    void refusedVoltageStays();
    void fixedVoltageIsNeitherWrittenNorStored();
    void limitsAreNotChecked();
    void nameIsWrittenAsUtf8();
    void rowWithoutACamera();
};

void tst_VoltageItemModel::showsWhatItWasMadeOf()
{
    const Voltage voltage(true);
    QCOMPARE(voltage.model.sdkName(), QStringLiteral("VREF"));
    QCOMPARE(voltage.model.displayName(), QStringLiteral("Reference"));
    QCOMPARE(voltage.model.volts(), 1.5F);
    QVERIFY(voltage.model.editable());
    QCOMPARE(voltage.model.minVolts(), 1.0);
    QCOMPARE(voltage.model.maxVolts(), 2.25);
}

void tst_VoltageItemModel::changedVoltageIsWritten()
{
    Voltage voltage(true);
    QCOMPARE(voltage.set(1.75F), QStringList("zvtSetVoltage \"VREF\", 1.75"));
    QCOMPARE(voltage.log.take(), QStringList("voltsChanged"));
    QCOMPARE(voltage.model.volts(), 1.75F);
}

void tst_VoltageItemModel::sameVoltageIsNotWritten()
{
    Voltage voltage(true);
    QCOMPARE(voltage.set(1.5F), QStringList());
    QCOMPARE(voltage.log.take(), QStringList());
}

void tst_VoltageItemModel::refusedVoltageStays()
{
    Voltage voltage(true);
    voltage.rig.gate().failAlways("zvtSetVoltage");
    QCOMPARE(voltage.set(2.0F).size(), 1);
    QCOMPARE(voltage.log.take(), QStringList("voltsChanged"));
    QCOMPARE(voltage.model.volts(), 2.0F);
}

void tst_VoltageItemModel::fixedVoltageIsNeitherWrittenNorStored()
{
    Voltage voltage(false);
    QCOMPARE(voltage.set(2.0F), QStringList());
    QCOMPARE(voltage.log.take(), QStringList());
    QCOMPARE(voltage.model.volts(), 1.5F);
}

// The field of the page refuses such a voltage, and so does the camera.
void tst_VoltageItemModel::limitsAreNotChecked()
{
    Voltage voltage(true);
    QCOMPARE(voltage.set(-100.0F), QStringList("zvtSetVoltage \"VREF\", -100"));
}

void tst_VoltageItemModel::nameIsWrittenAsUtf8()
{
    Voltage voltage(true, QStringLiteral("V ß"));
    QCOMPARE(voltage.set(2.0F), QStringList("zvtSetVoltage \"V ß\", 2"));
}

void tst_VoltageItemModel::rowWithoutACamera()
{
    VoltageItemModel alone(QStringLiteral("VREF"), {}, 1.5F, true, nullptr, 1.0, 2.25);
    alone.setVolts(2.0F);
    QCOMPARE(alone.volts(), 2.0F);
}

ZVT_TEST(tst_VoltageItemModel)
#include "tst_VoltageItemModel.moc"
