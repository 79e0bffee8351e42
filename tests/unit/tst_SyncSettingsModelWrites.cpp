#include "tests/support/Test.h"
#include "tests/unit/SyncRig.h"

/// What the model of the synchronisation settings writes.
class tst_SyncSettingsModelWrites : public Test
{
    Q_OBJECT

private slots:
    void valuesAreWrittenAndStored_data();
    void valuesAreWrittenAndStored();
    void refusedValueIsNotStored_data() { valuesAreWrittenAndStored_data(); }
    void refusedValueIsNotStored();
    void presentValueIsNotWritten_data() { valuesAreWrittenAndStored_data(); }
    void presentValueIsNotWritten();
    void cameraRefusesWhatItLacks();

    void rateIsSnapped();
    void rateThatSnapsToThePresentOneIsNotWritten();
    void failedSnapPassesTheRate();
    void indexWritesTheModeOfItsRow();
    void indexThatSaysNothingNewIsDropped_data();
    void indexThatSaysNothingNewIsDropped();
    void timeIsSentWhole_data();
    void timeIsSentWhole();
    void timeIsCutToTheWidthOfItsParts();
    void refusedTimeIsNotStored();
    void triggersAreSentWhateverTheCameraAnswers();
    void sourceOfTheTabFollowsAtItsNextRead();
    void modelWithoutARootIsHarmless();
};

void tst_SyncSettingsModelWrites::valuesAreWrittenAndStored_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("call");
    const auto row = [](const char *property, const QVariant &value, const char *call) {
        QTest::newRow(property) << QByteArray(property) << value << call;
    };
    row("syncMode", 1, "zvtSetFrameSyncMode 1");
    row("syncSource", 2, "zvtSetFrameSyncSource 2");
    row("triggerMode", 1, "zvtSetTriggerMode 1");
    row("triggerSource", 2, "zvtSetTriggerSource 2");
    row("sequenceCount", 12U, "zvtSetSequenceCount 12");
    row("syncInDelay", 1.5F, "zvtSetFrameSyncDelay 1.5");
    row("triggerInDelay", 2.5F, "zvtSetTriggerDelay 2.5");
    row("syncOutDelayPS0", 3.5F, "zvtSetSyncOutDelay 0, 3.5");
    row("syncOutDelayPS1", 3.5F, "zvtSetSyncOutDelay 1, 3.5");
    row("syncOutDelayPS2", 3.5F, "zvtSetSyncOutDelay 2, 3.5");
    row("syncOutDelayPS3", 3.5F, "zvtSetSyncOutDelay 3, 3.5");
    row("syncOutPolarity", 1, "zvtSetSyncOutPolarity 1");
    row("syncOutSource", 2, "zvtSetSyncOutSource 2");
    row("syncInPolarity", 1, "zvtSetFrameSyncPolarity 1");
    row("triggerInPolarity", 1, "zvtSetTriggerPolarity 1");
}

void tst_SyncSettingsModelWrites::valuesAreWrittenAndStored()
{
    QFETCH(const QByteArray, property);
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    Sync sync;
    sync.refresh();
    QCOMPARE(sync.write(property, value), QStringList{call});
    QCOMPARE(sync.model->property(property), value);
    QCOMPARE(sync.log.take(), QStringList{QString::fromLatin1(property) + "Changed"});
    // The camera has it: a read changes nothing.
    QVERIFY(!sync.refresh().contains(QString::fromLatin1(property) + "Changed") || property == "triggerMode");
    QCOMPARE(sync.model->property(property), value);
}

void tst_SyncSettingsModelWrites::refusedValueIsNotStored()
{
    QFETCH(const QByteArray, property);
    QFETCH(const QVariant, value);
    QFETCH(const QString, call);
    Sync sync;
    sync.refresh();
    const QVariant before = sync.model->property(property);
    sync.gate().failAlways(call.section(u' ', 0, 0).toStdString());
    QCOMPARE(sync.write(property, value), QStringList{call});
    QCOMPARE(sync.model->property(property), before);
    QCOMPARE(sync.log.take(), QStringList());
}

void tst_SyncSettingsModelWrites::presentValueIsNotWritten()
{
    QFETCH(const QByteArray, property);
    QFETCH(const QVariant, value);
    Sync sync;
    sync.refresh();
    sync.write(property, value);
    sync.log.take();
    QCOMPARE(sync.write(property, value), QStringList());
    QCOMPARE(sync.log.take(), QStringList());
}

void tst_SyncSettingsModelWrites::cameraRefusesWhatItLacks()
{
    Sync sync;
    sync.refresh();
    sync.model->setSyncSource(3);
    QCOMPARE(sync.model->syncSource(), 0);
    sync.model->setTriggerMode(3);
    QCOMPARE(sync.model->triggerMode(), 0);
    sync.model->setSyncInDelay(-1);
    sync.model->setSyncInDelay(1'000'001);
    QCOMPARE(sync.model->syncInDelay(), 0.0F);
    sync.model->setSequenceCount(0);
    QCOMPARE(sync.model->sequenceCount(), 1U);
    QCOMPARE(sync.log.take(), QStringList());
}

// The trigger rate

void tst_SyncSettingsModelWrites::rateIsSnapped()
{
    Sync sync;
    sync.refresh();
    const double snapped = 20e6 / 666'667;
    QCOMPARE(sync.write("triggerRate", 30.0),
             QStringList({"zvtSnapHertz 30", "zvtSetInternalTriggerRate 29.9999850000075"}));
    QCOMPARE(sync.model->triggerRate(), snapped);
    QVERIFY(sync.model->triggerRate() != 30.0);
    QCOMPARE(sync.log.take(), QStringList{"triggerRateChanged"});
    // The camera stores it exactly.
    QVERIFY(!sync.refresh().contains("triggerRateChanged"));
}

void tst_SyncSettingsModelWrites::rateThatSnapsToThePresentOneIsNotWritten()
{
    Sync sync;
    sync.refresh();
    sync.model->setTriggerRate(30.0);
    sync.log.take();
    QCOMPARE(sync.write("triggerRate", 30.000001), QStringList{"zvtSnapHertz 30.000001"});
    QCOMPARE(sync.log.take(), QStringList());
}

void tst_SyncSettingsModelWrites::failedSnapPassesTheRate()
{
    Sync sync;
    sync.refresh();
    sync.gate().failAlways("zvtSnapHertz");
    QCOMPARE(sync.write("triggerRate", 30.5), QStringList({"zvtSnapHertz 30.5", "zvtSetInternalTriggerRate 30.5"}));
    QCOMPARE(sync.model->triggerRate(), 30.5);
    // The camera refuses what it cannot do.
    sync.log.take();
    QCOMPARE(sync.write("triggerRate", -5.0), QStringList({"zvtSnapHertz -5", "zvtSetInternalTriggerRate -5"}));
    QCOMPARE(sync.model->triggerRate(), 30.5);
    QCOMPARE(sync.log.take(), QStringList());
}

// The row of the trigger mode

void tst_SyncSettingsModelWrites::indexWritesTheModeOfItsRow()
{
    Sync sync;
    sync.setSequencing(2);
    sync.refresh();
    for (const int row : {3, 1, 2, 0}) {
        QCOMPARE(sync.write("triggerModeIndex", row), QStringList{QStringLiteral("zvtSetTriggerMode %1").arg(row)});
        QCOMPARE(sync.model->triggerMode(), row);
        QCOMPARE(sync.log.take(), QStringList{"triggerModeChanged"});
    }
}

void tst_SyncSettingsModelWrites::indexThatSaysNothingNewIsDropped_data()
{
    QTest::addColumn<bool>("isRead");
    QTest::addColumn<int>("index");
    QTest::newRow("negative") << true << -1;
    QTest::newRow("present") << true << 0;
    QTest::newRow("beyond the rows") << true << 3;
    QTest::newRow("without rows") << false << 0;
}

void tst_SyncSettingsModelWrites::indexThatSaysNothingNewIsDropped()
{
    QFETCH(const bool, isRead);
    QFETCH(const int, index);
    Sync sync;
    if (isRead)
        sync.refresh();
    QCOMPARE(sync.write("triggerModeIndex", index), QStringList());
    QCOMPARE(sync.log.take(), QStringList());
}

// The trigger time

void tst_SyncSettingsModelWrites::timeIsSentWhole_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("sent");
    QTest::newRow("day") << QByteArray("triggerTimeDay") << "17, 2, 3, 4, 5, 6";
    QTest::newRow("hour") << QByteArray("triggerTimeHour") << "1, 17, 3, 4, 5, 6";
    QTest::newRow("minute") << QByteArray("triggerTimeMinute") << "1, 2, 17, 4, 5, 6";
    QTest::newRow("second") << QByteArray("triggerTimeSecond") << "1, 2, 3, 17, 5, 6";
    QTest::newRow("millisecond") << QByteArray("triggerTimeMillisecond") << "1, 2, 3, 4, 17, 6";
    QTest::newRow("microsecond") << QByteArray("triggerTimeMicrosecond") << "1, 2, 3, 4, 5, 17";
}

void tst_SyncSettingsModelWrites::timeIsSentWhole()
{
    QFETCH(const QByteArray, property);
    QFETCH(const QString, sent);
    Sync sync;
    sync.gate().script("zvtGetIRIGTriggerTime", QVariantList{1, 2, 3, 4, 5, 6});
    sync.refresh();
    QCOMPARE(sync.write(property, 17), QStringList{"zvtSetIRIGTriggerTime " + sent});
    QCOMPARE(sync.model->property(property).toInt(), 17);
    QCOMPARE(sync.log.take(), QStringList{QString::fromLatin1(property) + "Changed"});
    QCOMPARE(sync.write(property, 17), QStringList());
}

// The camera gets what is left of a number and decides; the model stores the number.
void tst_SyncSettingsModelWrites::timeIsCutToTheWidthOfItsParts()
{
    Sync sync;
    sync.gate().script("zvtGetIRIGTriggerTime", QVariantList{1, 2, 3, 4, 5, 6});
    sync.refresh();
    QCOMPARE(sync.write("triggerTimeSecond", 300), QStringList{"zvtSetIRIGTriggerTime 1, 2, 3, 44, 5, 6"});
    QCOMPARE(sync.model->triggerTimeSecond(), 300);
    QCOMPARE(sync.write("triggerTimeDay", 65'538), QStringList{"zvtSetIRIGTriggerTime 2, 2, 3, 44, 5, 6"});
    QCOMPARE(sync.model->triggerTimeDay(), 65'538);
}

void tst_SyncSettingsModelWrites::refusedTimeIsNotStored()
{
    Sync sync;
    sync.refresh();
    const int before = sync.model->triggerTimeHour();
    sync.log.take();
    QCOMPARE(sync.write("triggerTimeHour", 24).size(), 1);
    QCOMPARE(sync.model->triggerTimeHour(), before);
    QCOMPARE(sync.log.take(), QStringList());
}

void tst_SyncSettingsModelWrites::triggersAreSentWhateverTheCameraAnswers()
{
    Sync sync;
    for (const bool fail : {false, true}) {
        if (fail)
            for (const char *name : {"zvtSoftwareTrigger", "zvtRearmTrigger"})
                sync.gate().failAlways(name);
        QCOMPARE(sync.callsOf([&] { sync.model->trigger(); }), QStringList{"zvtSoftwareTrigger"});
        QCOMPARE(sync.callsOf([&] { sync.model->rearm(); }), QStringList{"zvtRearmTrigger"});
        QCOMPARE(sync.log.take(), QStringList());
    }
}

// The source of the frame sync is also a setting of the Setup tab. Neither model tells the other.
void tst_SyncSettingsModelWrites::sourceOfTheTabFollowsAtItsNextRead()
{
    Sync sync;
    sync.refresh();
    auto *const tab = sync.root.property("setupTabModel").value<QObject *>();
    sync.model->setSyncSource(2);
    QCOMPARE(tab->property("syncSource").toInt(), 0);
    QMetaObject::invokeMethod(tab, "refresh");
    CameraRig::settle();
    QCOMPARE(tab->property("syncSource").toInt(), 2);
    tab->setProperty("syncSource", 1);
    QCOMPARE(sync.model->syncSource(), 2);
    sync.refresh();
    QCOMPARE(sync.model->syncSource(), 1);
}

void tst_SyncSettingsModelWrites::modelWithoutARootIsHarmless()
{
    QObject parent;
    SyncSettingsModel model(&parent);
    model.setSyncMode(1);
    model.setTriggerRate(5);
    model.setTriggerTimeDay(5);
    model.setSyncOutDelayPS3(5);
    model.trigger();
    model.rearm();
    model.sequencingModeChanged();
    QCOMPARE(model.syncMode(), -1);
    model.refresh();
    CameraRig::settle();
    QVERIFY(model.hasRefreshed());
    QCOMPARE(model.triggerModeStrings(), QStringList());
}

ZVT_TEST(tst_SyncSettingsModelWrites)
#include "tst_SyncSettingsModelWrites.moc"
