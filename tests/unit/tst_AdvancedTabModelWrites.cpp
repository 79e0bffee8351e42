#include "tests/support/Test.h"
#include "tests/unit/AdvancedTabRig.h"

/// What the Advanced tab writes.
class tst_AdvancedTabModelWrites : public Test
{
    Q_OBJECT

private slots:
    void gainsAndOffsetsAreWritten_data();
    void gainsAndOffsetsAreWritten();
    void refusedGainStaysUntilTheNextRead();
    void gainIsNotLimited();
    void linksAreOnlyStored_data();
    void linksAreOnlyStored();
    void blackHotIsWritten();
    void refusedBlackHotIsNotSignalled();
    void writeDuringAReadIsMadeAtOnce();
    void modelWithoutARootIsHarmless();
};

void tst_AdvancedTabModelWrites::gainsAndOffsetsAreWritten_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("call");
    for (int preset = 0; preset < 4; ++preset) {
        QTest::newRow(AdvancedTab::gains.at(preset))
            << 3.25F << QStringLiteral("zvtSetDigitalGain %1, 3.25").arg(preset);
        QTest::newRow(AdvancedTab::offsets.at(preset))
            << -16383.5F << QStringLiteral("zvtSetDigitalOffset %1, -16383.5").arg(preset);
    }
}

void tst_AdvancedTabModelWrites::gainsAndOffsetsAreWritten()
{
    QFETCH(const float, value);
    QFETCH(const QString, call);
    const char *property = QTest::currentDataTag();
    AdvancedTab tab;
    tab.read();
    QCOMPARE(tab.write(property, value), QStringList(call));
    QCOMPARE(tab.model.property(property).toFloat(), value);
    QCOMPARE(tab.log.take(), QStringList(changedSignal(property)));
    QCOMPARE(tab.write(property, value), QStringList());
    QCOMPARE(tab.log.take(), QStringList());
}

void tst_AdvancedTabModelWrites::refusedGainStaysUntilTheNextRead()
{
    AdvancedTab tab;
    tab.read();
    tab.gate().failAlways("zvtSetDigitalGain");
    QCOMPARE(tab.write("presetOneGain", 2.0F), QStringList("zvtSetDigitalGain 1, 2"));
    QCOMPARE(tab.log.take(), QStringList("presetOneGainChanged"));
    QCOMPARE(tab.model.presetOneGain(), 2.0F);
    tab.read();
    QCOMPARE(tab.model.presetOneGain(), 1.5F);
}

// The page limits the numbers, and the camera refuses others.
void tst_AdvancedTabModelWrites::gainIsNotLimited()
{
    AdvancedTab tab;
    tab.gate().script("zvtGetDigitalGain", {});
    tab.read();
    QCOMPARE(tab.write("presetZeroGain", 4.0F), QStringList("zvtSetDigitalGain 0, 4"));
    QCOMPARE(tab.model.presetZeroGain(), 4.0F);
    tab.read();
    QCOMPARE(tab.model.presetZeroGain(), 1.0F);
    tab.model.setPresetZeroGain(tab.model.gainMaxValue());
    tab.read();
    QCOMPARE(tab.model.presetZeroGain(), 3.999F);
}

void tst_AdvancedTabModelWrites::linksAreOnlyStored_data()
{
    QTest::addColumn<int>("read");
    QTest::newRow("selectedCameraLinkModeIndex") << 1;
    QTest::newRow("selectedCoaXPressLinksIndex") << 1;
}

void tst_AdvancedTabModelWrites::linksAreOnlyStored()
{
    QFETCH(const int, read);
    const char *property = QTest::currentDataTag();
    AdvancedTab tab;
    tab.read();
    for (const int index : {0, 2, -1}) {
        QCOMPARE(tab.write(property, index), QStringList());
        QCOMPARE(tab.model.property(property).toInt(), index);
        QCOMPARE(tab.log.take(), QStringList(changedSignal(property)));
    }
    QCOMPARE(tab.write(property, -1), QStringList());
    QCOMPARE(tab.log.take(), QStringList());
    tab.read();
    QCOMPARE(tab.model.property(property).toInt(), read);
}

void tst_AdvancedTabModelWrites::blackHotIsWritten()
{
    AdvancedTab tab;
    tab.read();
    tab.gate().script("zvtSetBlackHotEnabled", true);
    QCOMPARE(tab.write("blackHotEnabled", false), QStringList("zvtSetBlackHotEnabled 0"));
    QVERIFY(!tab.model.blackHotEnabled());
    QCOMPARE(tab.log.take(), QStringList("blackHotEnabledChanged"));
    QCOMPARE(tab.write("blackHotEnabled", false), QStringList());
    QCOMPARE(tab.write("blackHotEnabled", true), QStringList("zvtSetBlackHotEnabled 1"));
}

void tst_AdvancedTabModelWrites::refusedBlackHotIsNotSignalled()
{
    AdvancedTab tab;
    tab.read();
    tab.gate().failAlways("zvtSetBlackHotEnabled");
    for (int attempt = 0; attempt < 2; ++attempt) {
        QCOMPARE(tab.write("blackHotEnabled", false), QStringList("zvtSetBlackHotEnabled 0"));
        QVERIFY(tab.model.blackHotEnabled());
        QCOMPARE(tab.log.take(), QStringList());
    }
    // The read that follows returns the stored value and does not signal it either.
    QCOMPARE(tab.refresh(), AdvancedTab::readSignals);
}

void tst_AdvancedTabModelWrites::writeDuringAReadIsMadeAtOnce()
{
    AdvancedTab tab;
    tab.gate().hold("zvtGetBlackHotEnabled");
    tab.model.refresh();
    QVERIFY(tab.gate().waitHeld("zvtGetBlackHotEnabled"));
    QCOMPARE(tab.write("presetZeroGain", 2.0F), QStringList("zvtSetDigitalGain 0, 2"));
    QCOMPARE(tab.model.presetZeroGain(), 2.0F);
    tab.gate().release("*");
    CameraRig::settle();
    QCOMPARE(tab.model.presetZeroGain(), 1.5F); // The read had begun before.
}

void tst_AdvancedTabModelWrites::modelWithoutARootIsHarmless()
{
    AdvancedTabModel orphan(nullptr);
    orphan.refresh();
    CameraRig::settle();
    QVERIFY(orphan.hasRefreshed());
    orphan.setPresetZeroGain(2.0F);
    orphan.setBlackHotEnabled(true);
    QCOMPARE(orphan.presetZeroGain(), 2.0F);
    QVERIFY(!orphan.blackHotEnabled());
}

ZVT_TEST(tst_AdvancedTabModelWrites)
#include "tst_AdvancedTabModelWrites.moc"
