#include "tests/support/Test.h"
#include "tests/unit/SsdRig.h"

/// The numbers of the SSD tab that are not shown as they were read, and those that are computed.
class tst_SsdTabModelLimits : public Test
{
    Q_OBJECT

private slots:
    void tooManyPretriggerFramesAreReduced_data();
    void tooManyPretriggerFramesAreReduced();
    void pretriggerFramesAreReducedWithoutARead();
    void tooManyFramesAreReduced_data();
    void tooManyFramesAreReduced();
    void emptyNameIsUntitled_data();
    void emptyNameIsUntitled();
    void nameFillsItsBuffer();

    void longestDuration_data();
    void longestDuration();
    void durationBeyondADay_data();
    void durationBeyondADay();
    void limitsFollowTheMode();
};

// Reduced numbers

void tst_SsdTabModelLimits::tooManyPretriggerFramesAreReduced_data()
{
    QTest::addColumn<uint>("frames");
    QTest::addColumn<uint>("pretrigger");
    QTest::addColumn<uint>("shown");
    QTest::newRow("above 128 frames") << 400U << 500U << 128U;
    QTest::newRow("one too many") << 400U << 401U << 128U;
    QTest::newRow("below 128 frames") << 100U << 101U << 100U;
    QTest::newRow("as many as frames") << 400U << 400U << 400U;
    QTest::newRow("no frames") << 0U << 1U << 0U;
}

void tst_SsdTabModelLimits::tooManyPretriggerFramesAreReduced()
{
    QFETCH(const uint, frames);
    QFETCH(const uint, pretrigger);
    QFETCH(const uint, shown);
    Ssd ssd;
    ssd.gate().script("zvtGetSsdNumFrames", frames);
    ssd.gate().script("zvtGetSsdPretriggerFrames", pretrigger);
    const size_t since = ssd.gate().mark();
    const QStringList signalled = ssd.refresh();
    QCOMPARE(signalled.count("pretriggerFramesToRecordChanged"), shown == pretrigger ? 1 : 2);
    QCOMPARE(ssd.model.pretriggerFramesToRecord(), shown);
    // The camera keeps its number until the next arm().
    QCOMPARE(ssd.rig.callsSince(since).filter("zvtSet"), QStringList());
}

void tst_SsdTabModelLimits::pretriggerFramesAreReducedWithoutARead()
{
    Ssd ssd;
    ssd.read();
    ssd.gate().script("zvtGetSsdNumFrames", 20U);
    ssd.gate().failNext("zvtGetSsdPretriggerFrames");
    QCOMPARE(ssd.refresh().count("pretriggerFramesToRecordChanged"), 1);
    QCOMPARE(ssd.model.pretriggerFramesToRecord(), 20U);
}

void tst_SsdTabModelLimits::tooManyFramesAreReduced_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<uint>("limit");
    QTest::addColumn<uint>("frames");
    QTest::addColumn<uint>("shown");
    QTest::newRow("memory") << int(SsdTabModel::MODE_TO_MEMORY) << 5000U << 5001U << 5000U;
    QTest::newRow("memory, just enough") << int(SsdTabModel::MODE_TO_MEMORY) << 5000U << 5000U << 5000U;
    QTest::newRow("drive") << int(SsdTabModel::MODE_TO_DISK) << 900U << 901U << 900U;
    QTest::newRow("drive, just enough") << int(SsdTabModel::MODE_TO_DISK) << 900U << 900U << 900U;
    QTest::newRow("drive without space") << int(SsdTabModel::MODE_TO_DISK) << 0U << 400U << 0U;
}

void tst_SsdTabModelLimits::tooManyFramesAreReduced()
{
    QFETCH(const int, mode);
    QFETCH(const uint, limit);
    QFETCH(const uint, frames);
    QFETCH(const uint, shown);
    Ssd ssd;
    ssd.gate().script("zvtGetSsdRecordMode", mode);
    ssd.gate().script("zvtGetSsdNumFrames", frames);
    ssd.gate().script(mode == SsdTabModel::MODE_TO_DISK ? "zvtGetSsdMaxNumFramesDisk" : "zvtGetSsdMaxNumFrames", limit);
    const size_t since = ssd.gate().mark();
    QCOMPARE(ssd.refresh().count("framesToRecordChanged"), frames == shown ? 1 : 2);
    QCOMPARE(ssd.model.framesToRecord(), shown);
    QCOMPARE(ssd.rig.callsSince(since).filter("zvtSet"), QStringList());
}

void tst_SsdTabModelLimits::emptyNameIsUntitled_data()
{
    QTest::addColumn<bool>("fails");
    QTest::newRow("empty") << false;
    QTest::newRow("not known") << true;
}

// A failed read replaces the name too.
void tst_SsdTabModelLimits::emptyNameIsUntitled()
{
    QFETCH(const bool, fails);
    Ssd ssd;
    ssd.read();
    if (fails)
        ssd.gate().failNext("zvtGetSsdSaveName");
    else
        ssd.gate().script("zvtGetSsdSaveName", "");
    const size_t since = ssd.gate().mark();
    QVERIFY(ssd.refresh().contains("filenameChanged"));
    QCOMPARE(ssd.model.filename(), "Untitled");
    QCOMPARE(ssd.rig.callsSince(since).filter("zvtSet"), QStringList());
}

void tst_SsdTabModelLimits::nameFillsItsBuffer()
{
    Ssd ssd;
    ssd.gate().fillBuffers(true);
    ssd.read();
    QCOMPARE(ssd.model.filename().size(), 200);
}

// Computed values

void tst_SsdTabModelLimits::longestDuration_data()
{
    QTest::addColumn<uint>("frames");
    QTest::addColumn<double>("rate");
    QTest::addColumn<QTime>("duration");
    QTest::newRow("whole seconds") << 5000U << 50.0 << QTime(0, 1, 40);
    QTest::newRow("truncated") << 2U << 3.0 << QTime(0, 0, 0, 666);
    QTest::newRow("no rate") << 5000U << 0.0 << QTime(0, 0);
    QTest::newRow("negative rate") << 5000U << -1.0 << QTime(0, 0);
    QTest::newRow("unknown rate") << 5000U << qQNaN() << QTime(0, 0);
    QTest::newRow("endless rate") << 5000U << qInf() << QTime(0, 0);
    QTest::newRow("just below a day") << 86'399U << 1.0 << QTime(23, 59, 59);
    QTest::newRow("a day") << 86'400U << 1.0 << QTime();
    QTest::newRow("beyond an int") << 4'294'967'295U << 1e-300 << QTime();
}

void tst_SsdTabModelLimits::longestDuration()
{
    QFETCH(const uint, frames);
    QFETCH(const double, rate);
    QFETCH(const QTime, duration);
    Ssd ssd;
    ssd.gate().script("zvtGetSsdRecordMode", SsdTabModel::MODE_TO_MEMORY);
    ssd.gate().script("zvtGetSsdMaxNumFrames", frames);
    ssd.gate().script("controller.GetAverageFrameRate", rate);
    ssd.read();
    QCOMPARE(ssd.model.maxRecordDuration(), duration);
    QCOMPARE(ssd.model.maxRecordDuration().isValid(), duration.isValid());
}

void tst_SsdTabModelLimits::durationBeyondADay_data()
{
    QTest::addColumn<uint>("milliseconds");
    for (const uint milliseconds : {86'400'000U, 2'147'483'648U, 4'294'967'295U})
        QTest::addRow("%u", milliseconds) << milliseconds;
}

void tst_SsdTabModelLimits::durationBeyondADay()
{
    QFETCH(const uint, milliseconds);
    Ssd ssd;
    ssd.gate().script("zvtGetSsdRecordDuration", milliseconds);
    ssd.read();
    QVERIFY(!ssd.model.recordDuration().isValid());
}

void tst_SsdTabModelLimits::limitsFollowTheMode()
{
    Ssd ssd;
    ssd.read();
    QCOMPARE(ssd.model.maxFramesToRecord(), 900U);
    QCOMPARE(ssd.model.maxRecordDuration(), QTime(0, 0, 18));
    QCOMPARE(ssd.model.pretriggerMaxFramesToRecord(), 5000U);
    ssd.model.setRecordMode(SsdTabModel::MODE_TO_MEMORY);
    QCOMPARE(ssd.model.maxFramesToRecord(), 5000U);
    QCOMPARE(ssd.model.maxRecordDuration(), QTime(0, 1, 40));
    QCOMPARE(ssd.model.pretriggerMaxFramesToRecord(), 5000U);
    ssd.model.setRecordType(SsdTabModel::TYPE_DURATION);
    QCOMPARE(ssd.model.pretriggerMaxFramesToRecord(), 400U);
    ssd.model.setRecordMode(SsdTabModel::MODE_TO_DISK);
    QCOMPARE(ssd.model.pretriggerMaxFramesToRecord(), 5000U);
}

ZVT_TEST(tst_SsdTabModelLimits)
#include "tst_SsdTabModelLimits.moc"
