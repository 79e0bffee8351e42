#include "tests/support/SignalLog.h"
#include "tests/support/Test.h"
#include "tests/unit/NucInfoRig.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QTranslator>

#include <algorithm>
#include <cstring>

namespace
{

/// Translates the texts of one context to "CONTEXT text".
class ContextTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return qstrcmp(context, "NucInfoModel") == 0 ? QStringLiteral("T ") + QString::fromLatin1(text) : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class tst_NucInfoModel : public Test
{
    Q_OBJECT

private slots:
    void rowsAreInOrder();
    void twoBiasesHaveTwoRows();
    void sizeHasItsUnit_data();
    void sizeHasItsUnit();
    void truthsAndColoursHaveTheirWords();
    void namesAndTruthsAreTranslated();
    void fullTextFieldsAreTakenWhole();
    void unknownModesHaveNoWords();
    void fileIsAskedForOnlyWithoutSizeAndTime_data();
    void fileIsAskedForOnlyWithoutSizeAndTime();
    void failedQueryLeavesNoRows_data();
    void failedQueryLeavesNoRows();
    void readStartsWithTheModel();
    void signalsFollowTheRows();
    void everyRoleButTheNameIsTheValue();
    void rowsOutOfRangeAreEmpty();
    void nameIsCopied();
    void heldReadOutlivesTheModel();
    void lostCameraHasNoRows();
    void storedCorrectionDescribesItself();
};

void tst_NucInfoModel::rowsAreInOrder()
{
    NucInfoRig correction;
    const auto model = correction.read();
    const NucInfoRows expected{{"Name", "Warm"},
                               {"Size", "2.81 MB"},
                               {"Date", "Thu Jan 1 00:00:00 1970 GMT"},
                               {"Camera Model", "Campion 640 C"},
                               {"Camera Serial", "ZE-100001"},
                               {"Integration Time", "2.000000 ms"},
                               {"Color", "P on N"},
                               {"Frame Rate", "119.88 Hz"},
                               {"Window", "320x256 (16,8)"},
                               {"Invert", "True"},
                               {"Revert", "False"},
                               {"Readout Mode", "Frame Sync Starts Readout"},
                               {"Filter ID", "7"},
                               {"Detector Bias", "250.25"},
                               {"FPA Gain Level", "3"},
                               {"Digital Gain", "1.250"},
                               {"Digital Offset", "-12.5"},
                               {"Analog Offset", "-12.500"},
                               {"Skimming Enabled", "False"},
                               {"Skimming Voltage", "1.200"},
                               {"NUC Type", "Two-Point"},
                               {"NUC Source", "External"},
                               {"Frames To Average", "16"},
                               {"Detect Bad Pixels", "True"},
                               {"A/D Min", "1000"},
                               {"A/D Max", "15000"},
                               {"Gain Min", "0.75"},
                               {"Gain Max", "1.50"},
                               {"Detect Twinkling Pixels", "False"},
                               {"Twinkler Frames To Collect", "32"},
                               {"Twinkler Delta", "200"},
                               {"Total Bad Pixels", "101"},
                               {"Factory Bad Pixels", "103"},
                               {"New Bad Pixels", "110"},
                               {"Twinkling Pixels", "102"},
                               {"Pixels Above Gain Max", "104"},
                               {"Pixels Below Gain Min", "105"},
                               {"Pixels Above A/D Max (Source 1", "106"},
                               {"Pixels Below A/D Min (Source 1", "107"},
                               {"Pixels Above A/D Max (Source 2", "108"},
                               {"Pixels Below A/D Min (Source 2", "109"}};
    const NucInfoRows rows = rowsOf(*model);
    for (qsizetype row = 0; row < std::min(rows.size(), expected.size()); ++row)
        QCOMPARE(rows.at(row), expected.at(row));
    QCOMPARE(rows.size(), 41);
    QVERIFY(model->status());
    QVERIFY(!model->refreshing());
}

void tst_NucInfoModel::twoBiasesHaveTwoRows()
{
    zvtSNUCInfo info = someInfo();
    info.biasKind = 2;
    NucInfoRig correction(info);
    const auto model = correction.read();
    const NucInfoRows rows = rowsOf(*model);
    QCOMPARE(rows.size(), 42);
    QCOMPARE(rows.at(13), std::pair(QStringLiteral("Detector Bias (P on N)"), QStringLiteral("250.25")));
    QCOMPARE(rows.at(14), std::pair(QStringLiteral("Detector Bias (N on P)"), QStringLiteral("99.50")));
    QCOMPARE(rows.at(15).first, "FPA Gain Level");
}

void tst_NucInfoModel::sizeHasItsUnit_data()
{
    QTest::addColumn<unsigned int>("size");
    QTest::addColumn<QString>("text");
    QTest::newRow("byte") << 1U << "1 B";
    QTest::newRow("largest number of bytes") << 1023U << "1023 B";
    QTest::newRow("kilobyte") << 1024U << "1.00 KB";
    QTest::newRow("largest number of kilobytes") << 1'048'575U << "1024.00 KB";
    QTest::newRow("megabyte") << 1'048'576U << "1.00 MB";
    QTest::newRow("largest number of megabytes") << 1'073'741'823U << "1024.00 MB";
    QTest::newRow("gigabyte") << 1'073'741'824U << "1.00 GB";
    QTest::newRow("largest size") << 4'294'967'295U << "4.00 GB";
}

void tst_NucInfoModel::sizeHasItsUnit()
{
    QFETCH(const unsigned int, size);
    NucInfoRig correction;
    const auto model = correction.read(size);
    QTEST(valueOf(*model, "Size"), "text");
}

void tst_NucInfoModel::truthsAndColoursHaveTheirWords()
{
    zvtSNUCInfo info = someInfo();
    info.invert = false;
    info.revert = true;
    info.skimmingEnabled = true;
    info.detectBadPixels = false;
    info.detectTwinklers = true;
    info.color = 7;
    info.nucType = 2;
    info.nucSource = 1;
    info.frameSyncMode = 0;
    NucInfoRig correction(info);
    const auto model = correction.read();
    QCOMPARE(valueOf(*model, "Invert"), "False");
    QCOMPARE(valueOf(*model, "Revert"), "True");
    QCOMPARE(valueOf(*model, "Skimming Enabled"), "True");
    QCOMPARE(valueOf(*model, "Detect Bad Pixels"), "False");
    QCOMPARE(valueOf(*model, "Detect Twinkling Pixels"), "True");
    QCOMPARE(valueOf(*model, "Color"), "N on P");
    QCOMPARE(valueOf(*model, "NUC Type"), "Offset Update");
    QCOMPARE(valueOf(*model, "NUC Source"), "Internal");
    QCOMPARE(valueOf(*model, "Readout Mode"), "Frame Sync Starts Integration");
}

void tst_NucInfoModel::namesAndTruthsAreTranslated()
{
    ContextTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const auto remove = qScopeGuard([&] { QCoreApplication::removeTranslator(&translator); });
    NucInfoRig correction;
    const auto model = correction.read();
    const NucInfoRows rows = rowsOf(*model);
    QCOMPARE(rows.size(), 41);
    QVERIFY(std::ranges::all_of(rows, [](const auto &row) { return row.first.startsWith("T "); }));
    QCOMPARE(valueOf(*model, "T Invert"), "T True");
    QCOMPARE(valueOf(*model, "T Revert"), "T False");
    QCOMPARE(valueOf(*model, "T Color"), "P on N");
    QCOMPARE(valueOf(*model, "T Readout Mode"), "Frame Sync Starts Readout");
}

void tst_NucInfoModel::fullTextFieldsAreTakenWhole()
{
    zvtSNUCInfo info = someInfo();
    std::ranges::fill(info.cameraModel, 'm');
    std::ranges::fill(info.cameraSerial, 's');
    NucInfoRig correction(info);
    const auto model = correction.read();
    QCOMPARE(valueOf(*model, "Camera Model"), QString(64, 'm'));
    QCOMPARE(valueOf(*model, "Camera Serial"), QString(64, 's'));
}

void tst_NucInfoModel::unknownModesHaveNoWords()
{
    zvtSNUCInfo info = someInfo();
    info.frameSyncMode = 9;
    info.nucType = 9;
    info.nucSource = 9;
    NucInfoRig correction(info);
    const auto model = correction.read();
    QCOMPARE(valueOf(*model, "Readout Mode"), "Frame Sync Starts ");
    QCOMPARE(valueOf(*model, "NUC Type"), "");
    QCOMPARE(valueOf(*model, "NUC Source"), "");
}

void tst_NucInfoModel::fileIsAskedForOnlyWithoutSizeAndTime_data()
{
    QTest::addColumn<unsigned int>("size");
    QTest::addColumn<quint64>("time");
    QTest::addColumn<bool>("asked");
    QTest::addColumn<QString>("shownSize");
    QTest::addColumn<QString>("shownDate");
    QTest::newRow("both") << 5U << quint64{someTime} << false << "5 B"
                          << "Thu Jan 1 00:00:00 1970 GMT";
    QTest::newRow("no size") << 0U << quint64{someTime} << false << "0 B"
                             << "Thu Jan 1 00:00:00 1970 GMT";
    QTest::newRow("no time") << 5U << quint64{0} << false << "5 B"
                             << "Mon Jan 1 00:00:00 1601 GMT";
    QTest::newRow("neither") << 0U << quint64{0} << true << "42 B"
                             << "Fri Jan 2 00:00:00 1970 GMT";
}

void tst_NucInfoModel::fileIsAskedForOnlyWithoutSizeAndTime()
{
    QFETCH(const unsigned int, size);
    QFETCH(const quint64, time);
    QFETCH(const bool, asked);
    NucInfoRig correction;
    correction.rig.gate().script("zvtGetNUCFileInfo", QVariantList{42, quint64{someTime + 864'000'000'000}});
    const size_t mark = correction.rig.gate().mark();
    const auto model = correction.read(size, time);
    QStringList calls{"zvtQueryNUCInfo", "zvtClocksToMilliseconds", "zvtClocksToHertz"};
    if (asked)
        calls.prepend("zvtGetNUCFileInfo");
    QCOMPARE(correction.rig.callsSince(mark), calls);
    QTEST(valueOf(*model, "Size"), "shownSize");
    QTEST(valueOf(*model, "Date"), "shownDate");
}

void tst_NucInfoModel::failedQueryLeavesNoRows_data()
{
    QTest::addColumn<int>("calls");
    QTest::newRow("zvtGetNUCFileInfo") << 1;
    QTest::newRow("zvtQueryNUCInfo") << 2;
    QTest::newRow("zvtClocksToMilliseconds") << 3;
    QTest::newRow("zvtClocksToHertz") << 4;
}

void tst_NucInfoModel::failedQueryLeavesNoRows()
{
    QFETCH(const int, calls);
    NucInfoRig correction;
    correction.rig.gate().script("zvtGetNUCFileInfo", QVariantList{42, 1});
    correction.rig.gate().failAlways(QTest::currentDataTag());
    const size_t mark = correction.rig.gate().mark();
    const auto model = correction.start(0, 0);
    SignalLog log(model.get());
    CameraRig::settle();
    QCOMPARE(correction.rig.callsSince(mark).size(), calls);
    QCOMPARE(log.take(), QStringList("refreshingChanged"));
    QCOMPARE(model->rowCount(), 0);
    QVERIFY(!model->status());
    QVERIFY(!model->refreshing());
}

void tst_NucInfoModel::readStartsWithTheModel()
{
    NucInfoRig correction;
    correction.rig.gate().hold("zvtQueryNUCInfo");
    const auto model = correction.start();
    QVERIFY(correction.rig.gate().waitHeld("zvtQueryNUCInfo"));
    QVERIFY(model->refreshing());
    QVERIFY(!model->status());
    QCOMPARE(model->rowCount(), 0);
}

void tst_NucInfoModel::signalsFollowTheRows()
{
    NucInfoRig correction;
    const auto model = correction.start();
    bool rowsWereThere = false;
    QObject::connect(model.get(), &NucInfoModel::refreshingChanged, model.get(),
                     [&] { rowsWereThere = model->rowCount() == 41 && model->status() && !model->refreshing(); });
    int inserted = 0;
    QObject::connect(model.get(), &QAbstractItemModel::rowsInserted, model.get(),
                     [&](const QModelIndex &, int first, int last) {
                         QCOMPARE(first, inserted);
                         inserted = last + 1;
                         QVERIFY(model->refreshing());
                     });
    CameraRig::settle();
    QVERIFY(rowsWereThere);
    QCOMPARE(inserted, 41);
}

void tst_NucInfoModel::everyRoleButTheNameIsTheValue()
{
    NucInfoRig correction;
    const auto model = correction.read();
    const QModelIndex first = model->index(0);
    QCOMPARE(model->roleNames(), (QHash<int, QByteArray>{{257, "name"}, {258, "value"}}));
    QCOMPARE(model->data(first, 257).toString(), "Name");
    for (const int role : {258, 259, static_cast<int>(Qt::DisplayRole), -1})
        QCOMPARE(model->data(first, role).toString(), "Warm");
}

void tst_NucInfoModel::rowsOutOfRangeAreEmpty()
{
    NucInfoRig correction;
    const auto model = correction.read();
    QCOMPARE(model->data(QModelIndex(), 257), QVariant());
    QCOMPARE(model->data(model->index(41), 257), QVariant());
    QCOMPARE(model->data(model->index(-1), 258), QVariant());
    QCOMPARE(model->rowCount(model->index(0)), 0);
}

void tst_NucInfoModel::nameIsCopied()
{
    NucInfoRig correction;
    char name[] = "Hei\xc3\x9f";
    correction.rig.gate().hold("zvtQueryNUCInfo");
    const auto model = correction.start(1, 1, name);
    QVERIFY(correction.rig.gate().waitHeld("zvtQueryNUCInfo"));
    std::strcpy(name, "gone");
    correction.rig.gate().release("*");
    CameraRig::settle();
    QCOMPARE(valueOf(*model, "Name"), QStringLiteral("Hei\u00df"));
}

void tst_NucInfoModel::heldReadOutlivesTheModel()
{
    NucInfoRig correction;
    for (const char *name : {"zvtGetNUCFileInfo", "zvtQueryNUCInfo", "zvtClocksToMilliseconds", "zvtClocksToHertz"}) {
        correction.rig.gate().script("zvtGetNUCFileInfo", QVariantList{42, 1});
        correction.rig.gate().hold(name);
        auto model = correction.start(0, 0);
        QVERIFY(correction.rig.gate().waitHeld(name));
        model.reset();
        correction.rig.gate().release("*");
        CameraRig::settle();
    }
}

void tst_NucInfoModel::lostCameraHasNoRows()
{
    NucInfoRig correction;
    correction.rig.camera().disconnect();
    const auto model = correction.read();
    QVERIFY(!model->status());
    QVERIFY(!model->refreshing());
    NucInfoModel unknown(0, "Warm", 0, 0, nullptr);
    CameraRig::settle();
    QVERIFY(!unknown.status());
}

// The camera's own records, without a script: a factory correction of the profile.
void tst_NucInfoModel::storedCorrectionDescribesItself()
{
    CameraRig rig;
    const auto name = QByteArrayLiteral("Factory 2 ms");
    NucInfoModel model(rig.camera().handle(), name.constData(), 0, 0, nullptr);
    CameraRig::settle();
    QVERIFY(model.status());
    QCOMPARE(valueOf(model, "Name"), "Factory 2 ms");
    QCOMPARE(valueOf(model, "Camera Serial"), "ZE-100001");
    QCOMPARE(valueOf(model, "Window"), "640x512 (0,0)");
    QCOMPARE(valueOf(model, "NUC Type"), "Two-Point");
}

ZVT_TEST(tst_NucInfoModel)
#include "tst_NucInfoModel.moc"
