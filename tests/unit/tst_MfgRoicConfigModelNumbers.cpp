#include "tests/support/Test.h"
#include "tests/unit/TabRig.h"

#include "manufacturing/MfgRoicConfigModel.h"

namespace
{

/// The numbers, and the calls that read them.
const QList<std::pair<const char *, std::string>> numbers{{"lineDeadWidth", "zvtGetMfgLineDeadWidth"},
                                                          {"preIntWidth", "zvtGetMfgPreIntDeadWidth"},
                                                          {"postIntWidth", "zvtGetMfgPostIntDeadWidth"},
                                                          {"preDeadRows", "zvtGetMfgPreDeadRows"},
                                                          {"postDeadRows", "zvtGetMfgPostDeadRows"}};

struct Roic : TabRig<MfgRoicConfigModel> {
    Roic() : TabRig(QStringLiteral("everything")) { start(); }

    /// The numbers that the model has read.
    QStringList known() const
    {
        QStringList known;
        for (const auto &[number, call] : numbers)
            if (model.wasRead(QLatin1String(number)))
                known << QLatin1String(number);
        return known;
    }
};

QStringList allNumbers()
{
    QStringList all;
    for (const auto &[number, call] : numbers)
        all << QLatin1String(number);
    return all;
}

} // namespace

/// Which numbers of the readout circuit have been read.
class tst_MfgRoicConfigModelNumbers : public Test
{
    Q_OBJECT

private slots:
    void numbersAreKnownAfterTheRead();
    void readZeroIsKnown();
    void otherNamesAreNotKnown();
    void failedNumberIsNotKnown_data();
    void failedNumberIsNotKnown();
    void readWithoutACameraFindsNothing();
    void writtenNumberWasNotRead();
};

void tst_MfgRoicConfigModelNumbers::numbersAreKnownAfterTheRead()
{
    Roic roic;
    QCOMPARE(roic.known(), QStringList());
    roic.model.refresh();
    QCOMPARE(roic.known(), QStringList());
    CameraRig::settle();
    QCOMPARE(roic.known(), allNumbers());
}

void tst_MfgRoicConfigModelNumbers::readZeroIsKnown()
{
    Roic roic;
    for (const auto &[number, call] : numbers)
        roic.gate().script(call, 0);
    roic.read();
    QCOMPARE(roic.known(), allNumbers());
}

void tst_MfgRoicConfigModelNumbers::otherNamesAreNotKnown()
{
    Roic roic;
    roic.read();
    for (const char *other : {"overrideDefaults", "lineDeadTime", "LineDeadWidth", ""})
        QVERIFY2(!roic.model.wasRead(QLatin1String(other)), other);
}

void tst_MfgRoicConfigModelNumbers::failedNumberIsNotKnown_data()
{
    QTest::addColumn<std::string>("call");
    for (const auto &[number, call] : numbers)
        QTest::newRow(number) << call;
}

void tst_MfgRoicConfigModelNumbers::failedNumberIsNotKnown()
{
    QFETCH(const std::string, call);
    const char *number = QTest::currentDataTag();
    Roic roic;
    roic.gate().failAlways(call);
    roic.read();
    QStringList others = allNumbers();
    others.removeOne(QLatin1String(number));
    QCOMPARE(roic.known(), others);
    roic.gate().failNever();
    roic.read();
    QCOMPARE(roic.known(), allNumbers());
    // A later failure keeps it.
    const QVariant before = roic.model.property(number);
    QVERIFY(before.toUInt() > 0);
    roic.gate().failAlways(call);
    roic.read();
    QCOMPARE(roic.known(), allNumbers());
    QCOMPARE(roic.model.property(number), before);
}

void tst_MfgRoicConfigModelNumbers::readWithoutACameraFindsNothing()
{
    Roic roic;
    roic.rig.camera().disconnect();
    roic.read();
    QVERIFY(roic.model.hasRefreshed());
    QCOMPARE(roic.known(), QStringList());
}

void tst_MfgRoicConfigModelNumbers::writtenNumberWasNotRead()
{
    Roic roic;
    roic.gate().script("zvtSetMfgPreDeadRows", true);
    roic.model.setPreDeadRows(7);
    QCOMPARE(roic.model.preDeadRows(), 7U);
    QCOMPARE(roic.known(), QStringList());
}

ZVT_TEST(tst_MfgRoicConfigModelNumbers)
#include "tst_MfgRoicConfigModelNumbers.moc"
