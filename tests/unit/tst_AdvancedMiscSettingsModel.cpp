#include "tests/support/Test.h"
#include "tests/unit/MiscRig.h"

namespace
{

const QStringList readCalls{"zvtGetIntegrateOutPolarity",          "zvtGetIRIGLatchSource",
                            "zvtGetGigEHeaderModeAvailable",       "zvtGetGigEHeaderMode",
                            "zvtGetCameraLinkHeaderModeAvailable", "zvtGetCameraLinkHeaderMode",
                            "zvtGetCoaXPressHeaderModeAvailable",  "zvtGetCoaXPressHeaderMode"};
/// By the call that reads them.
const QStringList values{"selectedIntegrateActivePolarityIndex",
                         "selectedIrigLatchIndex",
                         "gigeHeaderModeAvailable",
                         "gigeHeaderModeIndex",
                         "clHeaderModeAvailable",
                         "clHeaderModeIndex",
                         "cxpHeaderModeAvailable",
                         "cxpHeaderModeIndex"};
const QList<int> cameraValues{1, 2, 1, 2, 1, 1, 1, 1};
const QStringList firstFlags{"refreshingChanged", "hasRefreshedChanged"};
const QStringList lastFlags{"hasRefreshedChanged", "refreshingChanged"};
const QString capability = QStringLiteral("hasAdvancedMiscSettings");

/// The calls of reads since a mark, on any thread.
QStringList readsSince(Misc &misc, size_t since)
{
    QStringList calls = misc.calls(since, false) + misc.calls(since, true);
    calls.removeIf([](const QString &call) { return !readCalls.contains(call); });
    return calls;
}

ModelUnderTest miscModel()
{
    auto model = modelOf<AdvancedMiscSettingsModel>();
    model.prepare = [](CameraRig &rig) { scriptMisc(rig.gate()); };
    return model;
}

} // namespace

/// What the miscellaneous settings read, and the setters of the signal options.
/// tst_AdvancedMiscSettingsModelHeaderModes tests those of the header modes.
class tst_AdvancedMiscSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder();
    void publishesInOrder();
    void failedReadKeepsLastValue_data();
    void failedReadKeepsLastValue();
    void modeIsReadOnlyIfItIsAvailable_data();
    void modeIsReadOnlyIfItIsAvailable();

    void cameraWithoutTheseSettingsIsNotRead();
    void missingCapabilityBlocksNoLaterRead();
    void capabilityIsTestedAfterTheFlags();
    void runningReadBlocksAnother();
    void readEndsAfterADisconnection();
    void modelWithoutARootReadsNothing();

    void optionIsWritten_data();
    void optionIsWritten();
    void refusedOptionSnapsBack_data() { optionIsWritten_data(); }
    void refusedOptionSnapsBack();
    void presentOptionIsNotWritten_data() { optionIsWritten_data(); }
    void presentOptionIsNotWritten();
    void optionIsCutToAByte();

    void visibleIsKept();
    void rootReadsAVisibleSection();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void randomOperator();
};

void tst_AdvancedMiscSettingsModel::nothingIsKnownAtFirst()
{
    Misc misc;
    QVERIFY(!misc.model.refreshing() && !misc.model.hasRefreshed() && !misc.model.visible());
    for (const QString &property : values)
        QCOMPARE(misc.value(property.toLatin1()), 0);
}

// The read

void tst_AdvancedMiscSettingsModel::readsInOrder()
{
    Misc misc;
    QCOMPARE(misc.read(), readCalls);
    for (int i = 0; i < values.size(); ++i)
        QCOMPARE(misc.value(values.at(i).toLatin1()), cameraValues.at(i));
}

void tst_AdvancedMiscSettingsModel::publishesInOrder()
{
    Misc misc;
    for (int read = 0; read < 2; ++read) {
        misc.model.refresh();
        QCOMPARE(misc.log.take(), firstFlags);
        QVERIFY(misc.model.refreshing() && !misc.model.hasRefreshed());
        CameraRig::settle();
        // The second read signals also the unchanged values.
        QCOMPARE(misc.log.take(), changedSignals(values) + lastFlags);
        QVERIFY(!misc.model.refreshing() && misc.model.hasRefreshed());
    }
}

void tst_AdvancedMiscSettingsModel::failedReadKeepsLastValue_data()
{
    QTest::addColumn<int>("call");
    for (int call = 0; call < readCalls.size(); ++call)
        QTest::newRow(qPrintable(readCalls.at(call))) << call;
}

void tst_AdvancedMiscSettingsModel::failedReadKeepsLastValue()
{
    QFETCH(const int, call);
    Misc misc;
    misc.read();
    misc.gate().failNext(readCalls.at(call).toStdString());
    QStringList published = changedSignals(values);
    published.removeAt(call);
    if (readCalls.at(call).endsWith("Available")) // The mode is then not read.
        published.removeAt(call);
    QCOMPARE(misc.refresh(), published);
    for (int i = 0; i < values.size(); ++i)
        QCOMPARE(misc.value(values.at(i).toLatin1()), cameraValues.at(i));
    QVERIFY(misc.model.hasRefreshed());
}

void tst_AdvancedMiscSettingsModel::modeIsReadOnlyIfItIsAvailable_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<bool>("fails");
    for (const int call : {2, 4, 6}) {
        QTest::addRow("%s says no", qPrintable(readCalls.at(call))) << call << false;
        QTest::addRow("%s fails", qPrintable(readCalls.at(call))) << call << true;
    }
}

void tst_AdvancedMiscSettingsModel::modeIsReadOnlyIfItIsAvailable()
{
    QFETCH(const int, call);
    QFETCH(const bool, fails);
    Misc misc;
    misc.read();
    if (fails)
        misc.gate().failNext(readCalls.at(call).toStdString());
    else
        misc.gate().script(readCalls.at(call).toStdString(), 0);
    QStringList calls = readCalls;
    calls.removeAt(call + 1);
    QCOMPARE(misc.read(), calls);
    QCOMPARE(misc.value(values.at(call).toLatin1()), fails ? 1 : 0);
    QCOMPARE(misc.value(values.at(call + 1).toLatin1()), cameraValues.at(call + 1));
}

// The capability

void tst_AdvancedMiscSettingsModel::cameraWithoutTheseSettingsIsNotRead()
{
    Misc misc;
    misc.read();
    misc.setEquipment(capability, false);
    misc.log.take();
    const size_t since = misc.gate().mark();
    for (int read = 0; read < 2; ++read) {
        misc.read();
        QCOMPARE(misc.log.take(), firstFlags);
        QVERIFY(misc.model.refreshing() && !misc.model.hasRefreshed());
    }
    QCOMPARE(misc.calls(since, false) + misc.calls(since, true), QStringList());
    QCOMPARE(misc.model.gigeHeaderModeIndex(), 2);
}

void tst_AdvancedMiscSettingsModel::missingCapabilityBlocksNoLaterRead()
{
    Misc misc;
    misc.setEquipment(capability, false);
    misc.read();
    misc.setEquipment(capability, true);
    QCOMPARE(misc.read(), readCalls);
    QVERIFY(!misc.model.refreshing() && misc.model.hasRefreshed());
}

void tst_AdvancedMiscSettingsModel::capabilityIsTestedAfterTheFlags()
{
    Misc misc;
    QObject::connect(&misc.model, &AdvancedMiscSettingsModel::hasRefreshedChanged, this,
                     [&] { misc.setEquipment(capability, false); });
    const size_t since = misc.gate().mark();
    misc.read();
    QCOMPARE(readsSince(misc, since), QStringList()); // The change of the capability makes calls of its own.
    QVERIFY(misc.model.refreshing());
}

// Also while the camera loses the capability: the flags then stay those of the running read.
void tst_AdvancedMiscSettingsModel::runningReadBlocksAnother()
{
    Misc misc;
    const size_t since = misc.gate().mark();
    misc.gate().hold("zvtGetIntegrateOutPolarity");
    misc.model.refresh();
    QVERIFY(misc.gate().waitHeld("zvtGetIntegrateOutPolarity"));
    misc.setEquipment(capability, false);
    misc.log.take();
    misc.model.refresh();
    QCOMPARE(misc.log.take(), QStringList());
    misc.gate().release("*");
    CameraRig::settle();
    QCOMPARE(misc.calls(since, false).filter("zvtGetIntegrateOutPolarity").size(), 1);
    QVERIFY(!misc.model.refreshing() && misc.model.hasRefreshed());
}

void tst_AdvancedMiscSettingsModel::readEndsAfterADisconnection()
{
    Misc misc;
    misc.read();
    misc.gate().hold("zvtGetIRIGLatchSource");
    misc.model.refresh();
    QVERIFY(misc.gate().waitHeld("zvtGetIRIGLatchSource"));
    misc.rig.camera().disconnect();
    misc.log.take();
    misc.gate().release("*");
    CameraRig::settle();
    QCOMPARE(misc.log.take().last(2), lastFlags);
    QVERIFY(!misc.model.refreshing() && misc.model.hasRefreshed());
    QCOMPARE(misc.model.selectedIrigLatchIndex(), 2);
}

void tst_AdvancedMiscSettingsModel::modelWithoutARootReadsNothing()
{
    AdvancedMiscSettingsModel orphan(nullptr);
    SignalLog log(&orphan);
    orphan.refresh();
    CameraRig::settle();
    QCOMPARE(log.take(), firstFlags);
    QVERIFY(orphan.refreshing() && !orphan.hasRefreshed());
    orphan.setSelectedIrigLatchIndex(1);
    QCOMPARE(orphan.selectedIrigLatchIndex(), 0);
}

// The signal options

void tst_AdvancedMiscSettingsModel::optionIsWritten_data()
{
    QTest::addColumn<QString>("setter");
    QTest::newRow("selectedIntegrateActivePolarityIndex") << "zvtSetIntegrateOutPolarity";
    QTest::newRow("selectedIrigLatchIndex") << "zvtSetIRIGLatchSource";
}

void tst_AdvancedMiscSettingsModel::optionIsWritten()
{
    QFETCH(const QString, setter);
    const char *property = QTest::currentDataTag();
    Misc misc;
    QCOMPARE(misc.write(property, 1), QStringList(setter + " 1"));
    QCOMPARE(misc.value(property), 1);
    QCOMPARE(misc.log.take(), QStringList(changedSignal(property)));
}

void tst_AdvancedMiscSettingsModel::refusedOptionSnapsBack()
{
    QFETCH(const QString, setter);
    const char *property = QTest::currentDataTag();
    Misc misc;
    misc.gate().failAlways(setter.toStdString());
    for (int attempt = 0; attempt < 2; ++attempt) {
        QCOMPARE(misc.write(property, 1), QStringList(setter + " 1"));
        QCOMPARE(misc.value(property), 0);
        QCOMPARE(misc.log.take(), QStringList(changedSignal(property)));
    }
}

void tst_AdvancedMiscSettingsModel::presentOptionIsNotWritten()
{
    const char *property = QTest::currentDataTag();
    Misc misc;
    misc.read();
    QCOMPARE(misc.write(property, misc.value(property)), QStringList());
    QCOMPARE(misc.log.take(), QStringList());
}

void tst_AdvancedMiscSettingsModel::optionIsCutToAByte()
{
    Misc misc;
    QCOMPARE(misc.write("selectedIrigLatchIndex", 258), QStringList("zvtSetIRIGLatchSource 2"));
    QCOMPARE(misc.model.selectedIrigLatchIndex(), 258);
    QCOMPARE(misc.write("selectedIntegrateActivePolarityIndex", -1), QStringList("zvtSetIntegrateOutPolarity 255"));
}

// Visibility, and the walkers

void tst_AdvancedMiscSettingsModel::visibleIsKept()
{
    Misc misc;
    QCOMPARE(misc.write("visible", true), QStringList());
    misc.model.setVisible(true);
    QVERIFY(misc.model.visible());
    QCOMPARE(misc.log.take(), QStringList("visibleChanged"));
}

void tst_AdvancedMiscSettingsModel::rootReadsAVisibleSection()
{
    Misc misc;
    const auto refreshAll = [&] {
        const size_t since = misc.gate().mark();
        misc.root.refreshAllVisible();
        CameraRig::settle();
        return readsSince(misc, since);
    };
    QCOMPARE(refreshAll(), QStringList());
    misc.model.setVisible(true);
    QCOMPARE(refreshAll(), readCalls);
}

void tst_AdvancedMiscSettingsModel::failingReads()
{
    const char *reason = "the mode is read only if it is available";
    walkFailingReads(miscModel(),
                     {{readCalls.at(2), {{values.at(2), values.at(3)}, reason}},
                      {readCalls.at(4), {{values.at(4), values.at(5)}, reason}},
                      {readCalls.at(6), {{values.at(6), values.at(7)}, reason}}});
}

void tst_AdvancedMiscSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(miscModel()); }

void tst_AdvancedMiscSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(miscModel()); }

// walkNoCamera() does not apply: a model without a camera lacks the capability, and its read does not end.
void tst_AdvancedMiscSettingsModel::randomOperator() { walkRandomOperator(modelOf<AdvancedMiscSettingsModel>(), 85); }

ZVT_TEST(tst_AdvancedMiscSettingsModel)
#include "tst_AdvancedMiscSettingsModel.moc"
