#include "tests/support/Test.h"
#include "tests/support/modelOf.h"

#include "status/AboutItemModel.h"
#include "status/AboutModel.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTranslator>

#include "zvt/zvtsdk.h"

namespace
{

using RowList = QList<std::pair<QString, QString>>;

/// The rows that the model shows, as names and values.
RowList rowsOf(AboutModel &model)
{
    RowList rows;
    for (int row = 0; row < model.nameValueListModel()->size(); ++row) {
        const auto *item = qobject_cast<AboutItemModel *>(model.nameValueListModel()->at(row));
        rows.append({item->name(), item->value()});
    }
    return rows;
}

QStringList namesOf(const RowList &rows)
{
    QStringList names;
    for (const auto &row : rows)
        names << row.first;
    return names;
}

struct About {
    explicit About(bool connected = true, const QString &profile = QStringLiteral("bare"))
        : rig(profile, connected), root(rig.controller(), nullptr), model(*root.aboutModel())
    {
        CameraRig::settle();
    }

    RowList refresh()
    {
        model.refresh();
        CameraRig::settle();
        return rowsOf(model);
    }

    CameraRig rig;
    ZvtCameraModel root;
    AboutModel &model;
};

/// Marks each translated text.
class Marked : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *text, const char *, int) const override
    {
        return QLatin1Char('~') + QString::fromUtf8(text);
    }
};

const QStringList ownRows{"Camera Model", "Camera Serial", "Camera Type",   "Camera SubType",
                          "ROIC Type",    "Detector Type", "Operating Time"};

} // namespace

class tst_AboutModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsReadBeforeTheDialogAsks();
    void rowsStandInOrder();
    void valuesAreThoseOfTheCamera();
    void rowIsLeftOutIfAReadFails_data();
    void rowIsLeftOutIfAReadFails();
    void subtypeIsNamedByTheTypeOfTheRowBefore();
    void longestNamesAreWhole();
    void extraInformationFollowsAsItStands();
    void ownRowsAreTranslated();
    void cameraThatIsGoneHasTwoEmptyRows();
    void laterReadIsTheOnePublished();
    void listIsSignalledBeforeTheFlags();
    void rereadingRebuildsTheList();

    void fileHasAHeadingAndOneLineForEachRow();
    void fileIsUtf8();
    void headingIsReadAnew();
    void fileThatCannotBeOpenedIsTold();
    void fileThatCannotBeWrittenIsNotTold();
    void directoryStartsAtHome();
    void directoryAlwaysSignals();

    void heldReadsOutliveTheModel();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_AboutModel::nothingIsReadBeforeTheDialogAsks()
{
    CameraRig rig(QStringLiteral("bare"));
    const ZvtCameraModel root(rig.controller(), nullptr);
    AboutModel model(const_cast<ZvtCameraModel *>(&root));
    const size_t mark = rig.gate().mark();
    CameraRig::settle();
    QVERIFY(!rig.callsSince(mark).contains("zvtGetCameraExtraInfo"));
    QVERIFY(model.refreshing());
    QVERIFY(!model.hasRefreshed());
    QCOMPARE(model.nameValueListModel()->size(), 0);
}

void tst_AboutModel::rowsStandInOrder()
{
    About about;
    const size_t mark = about.rig.gate().mark();
    const size_t namesMark = emulator::Sdk::gate().mark();
    QCOMPARE(namesOf(about.refresh()).mid(0, ownRows.size()), ownRows);
    QCOMPARE(about.rig.callsSince(mark),
             QStringList({"zvtGetCameraModel", "zvtGetCameraSN", "zvtGetCameraType", "zvtGetCameraSubtype",
                          "zvtGetReadout", "zvtGetDetectorType", "zvtGetOperatingTime", "zvtGetCameraExtraInfo"}));
    QStringList names;
    for (const auto &call : emulator::Sdk::gate().callsSince(namesMark))
        names << QString::fromStdString(call.name);
    QCOMPARE(names,
             QStringList(
                 {"zvtGetCameraTypeName", "zvtGetCameraSubtypeName", "zvtGetReadoutName", "zvtGetDetectorTypeName"}));
}

void tst_AboutModel::valuesAreThoseOfTheCamera()
{
    About about;
    about.rig.gate().script("zvtGetCameraModel", "Corvin 7");
    about.rig.gate().script("zvtGetCameraSN", "0042");
    about.rig.gate().script("zvtGetOperatingTime", 61);
    const RowList rows = about.refresh();
    QCOMPARE(rows.at(0).second, QStringLiteral("Corvin 7"));
    QCOMPARE(rows.at(1).second, QStringLiteral("0042"));
    QCOMPARE(rows.at(2).second, about.root.cameraTypeName());
    QCOMPARE(rows.at(3).second, about.root.cameraSubtypeName());
    QCOMPARE(rows.at(4).second, about.root.readoutName());
    QCOMPARE(rows.at(5).second, about.root.detectorTypeName());
    // Neither number is padded.
    QCOMPARE(rows.at(6).second, QStringLiteral("1 hours, 1 minutes"));
}

void tst_AboutModel::rowIsLeftOutIfAReadFails_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QStringList>("missing");
    QTest::newRow("type") << "zvtGetCameraType" << QStringList({"Camera Type", "Camera SubType"});
    QTest::newRow("name of the type") << "zvtGetCameraTypeName" << QStringList("Camera Type");
    QTest::newRow("subtype") << "zvtGetCameraSubtype" << QStringList("Camera SubType");
    QTest::newRow("name of the subtype") << "zvtGetCameraSubtypeName" << QStringList("Camera SubType");
    QTest::newRow("readout") << "zvtGetReadout" << QStringList("ROIC Type");
    QTest::newRow("name of the readout") << "zvtGetReadoutName" << QStringList("ROIC Type");
    QTest::newRow("detector") << "zvtGetDetectorType" << QStringList("Detector Type");
    QTest::newRow("name of the detector") << "zvtGetDetectorTypeName" << QStringList("Detector Type");
    QTest::newRow("operating time") << "zvtGetOperatingTime" << QStringList("Operating Time");
    // These two rows are never left out.
    QTest::newRow("model") << "zvtGetCameraModel" << QStringList();
    QTest::newRow("serial") << "zvtGetCameraSN" << QStringList();
}

void tst_AboutModel::rowIsLeftOutIfAReadFails()
{
    QFETCH(const QString, failing);
    QFETCH(const QStringList, missing);
    About about;
    QStringList expected = namesOf(about.refresh());
    for (const QString &name : missing)
        QVERIFY(expected.removeOne(name));
    // The SDK's functions of type names take no handle and have a separate gate.
    for (emulator::Gate *gate : {&about.rig.gate(), &emulator::Sdk::gate()})
        gate->failAlways(failing.toStdString());
    const RowList rows = about.refresh();
    emulator::Sdk::gate().failNever();
    QCOMPARE(namesOf(rows), expected);
    if (missing.isEmpty())
        QCOMPARE(rows.at(failing == "zvtGetCameraModel" ? 0 : 1).second, QString());
}

void tst_AboutModel::subtypeIsNamedByTheTypeOfTheRowBefore()
{
    About about;
    about.rig.gate().script("zvtGetCameraType", 5);
    about.rig.gate().script("zvtGetCameraSubtype", 2);
    const size_t mark = emulator::Sdk::gate().mark();
    about.refresh();
    std::string arguments;
    for (const auto &call : emulator::Sdk::gate().callsSince(mark))
        if (call.name == "zvtGetCameraSubtypeName")
            arguments = call.arguments;
    QVERIFY2(arguments.starts_with("5, 2"), arguments.c_str());
}

void tst_AboutModel::longestNamesAreWhole()
{
    About about;
    const QString longest(199, QLatin1Char('x'));
    const char *const names[]{"zvtGetCameraTypeName", "zvtGetCameraSubtypeName", "zvtGetReadoutName",
                              "zvtGetDetectorTypeName"};
    for (const char *name : names)
        emulator::Sdk::gate().script(name, longest);
    const RowList rows = about.refresh();
    for (const char *name : names)
        emulator::Sdk::gate().script(name, {});
    for (int row = 2; row < 6; ++row)
        QCOMPARE(rows.at(row).second, longest);
}

void tst_AboutModel::extraInformationFollowsAsItStands()
{
    About about(true, QStringLiteral("everything"));
    hlx::TArray<zvtSInfoEntry> entries;
    QCOMPARE(zvtGetCameraExtraInfo(about.rig.camera().handle(), &entries), 0);
    RowList expected;
    for (const auto &entry : entries)
        expected.append({QString::fromUtf8(entry.name.c_str()), QString::fromUtf8(entry.value.c_str())});
    QVERIFY(!expected.isEmpty());
    QCOMPARE(about.refresh().mid(ownRows.size()), expected);

    about.rig.gate().failAlways("zvtGetCameraExtraInfo");
    QCOMPARE(namesOf(about.refresh()), ownRows);
}

void tst_AboutModel::ownRowsAreTranslated()
{
    const QTemporaryDir folder;
    About about(true, QStringLiteral("everything"));
    const RowList plain = about.refresh();
    Marked marked;
    QCoreApplication::installTranslator(&marked);
    const RowList rows = about.refresh();
    QVERIFY(about.model.saveTextFile(QUrl::fromLocalFile(folder.filePath("a.txt")).toString()));
    QCoreApplication::removeTranslator(&marked);
    QVERIFY(rows.size() == plain.size() && plain.size() > ownRows.size());
    for (int row = 0; row < rows.size(); ++row)
        QCOMPARE(rows.at(row).first, (row < ownRows.size() ? "~" : "") + plain.at(row).first);
    QCOMPARE(rows.at(6).second, "~" + plain.at(6).second);
    QFile file(folder.filePath("a.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().startsWith("~"));
}

void tst_AboutModel::cameraThatIsGoneHasTwoEmptyRows()
{
    About about(false);
    QCOMPARE(about.refresh(), RowList({{"Camera Model", ""}, {"Camera Serial", ""}}));
}

void tst_AboutModel::laterReadIsTheOnePublished()
{
    About about;
    const QSignalSpy published(&about.model, &AboutModel::nameValueListModelChanged);
    about.rig.gate().script("zvtGetCameraModel", "older");
    about.rig.gate().hold("zvtGetCameraSN");
    about.model.refresh();
    QVERIFY(about.rig.gate().waitHeld("zvtGetCameraSN"));
    about.rig.gate().script("zvtGetCameraModel", "newer");
    about.model.refresh();
    QVERIFY(about.rig.gate().waitHeld("zvtGetCameraSN", 2));
    about.rig.gate().release("*");
    CameraRig::settle();
    QCOMPARE(published.size(), 1);
    QCOMPARE(rowsOf(about.model).at(0).second, QStringLiteral("newer"));
}

void tst_AboutModel::listIsSignalledBeforeTheFlags()
{
    About about;
    QStringList order;
    QObject::connect(&about.model, &AboutModel::nameValueListModelChanged, this, [&] { order << "list"; });
    QObject::connect(&about.model, &AboutModel::hasRefreshedChanged, this, [&] { order << "hasRefreshed"; });
    QObject::connect(&about.model, &AboutModel::refreshingChanged, this, [&] { order << "refreshing"; });
    const QStringList each{"list", "hasRefreshed", "refreshing"};
    about.refresh();
    QCOMPARE(order, each);
    QVERIFY(about.model.hasRefreshed());
    QVERIFY(!about.model.refreshing());
    // Later reads signal again without a change of the values.
    about.model.refresh();
    QVERIFY(about.model.hasRefreshed());
    QVERIFY(!about.model.refreshing());
    CameraRig::settle();
    QCOMPARE(order, each + each);
}

void tst_AboutModel::rereadingRebuildsTheList()
{
    About about;
    about.refresh();
    const QPointer<QObject> old = about.model.nameValueListModel()->at(0);
    const int count = about.model.nameValueListModel()->size();
    about.refresh();
    QCOMPARE(about.model.nameValueListModel()->size(), count);
    QVERIFY(old.isNull());
}

// The file

void tst_AboutModel::fileHasAHeadingAndOneLineForEachRow()
{
    const QTemporaryDir folder;
    About about;
    about.rig.gate().script("zvtGetCameraModel", "Corvin 7");
    const RowList rows = about.refresh();
    const QString path = folder.filePath("a b%.txt");
    QVERIFY(about.model.saveTextFile(QUrl::fromLocalFile(path).toString()));
    QByteArray expected = "Corvin 7 Camera Controller Information\r\n\r\n";
    for (const auto &[name, value] : rows)
        expected += (name + ": " + value + "\r\n").toUtf8();
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), expected);
}

void tst_AboutModel::fileIsUtf8()
{
    const QTemporaryDir folder;
    About about;
    about.rig.gate().script("zvtGetCameraModel", QString::fromUtf8("Kühler 5 µm"));
    about.refresh();
    QVERIFY(about.model.saveTextFile(QUrl::fromLocalFile(folder.filePath("a.txt")).toString()));
    QFile file(folder.filePath("a.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY(text.startsWith("Kühler 5 µm Camera Controller Information\r\n\r\nCamera Model: Kühler 5 µm\r\n"));
}

void tst_AboutModel::headingIsReadAnew()
{
    const QTemporaryDir folder;
    About about;
    about.rig.gate().script("zvtGetCameraModel", "before");
    about.refresh();
    about.rig.gate().script("zvtGetCameraModel", "after");
    QVERIFY(about.model.saveTextFile(QUrl::fromLocalFile(folder.filePath("a.txt")).toString()));
    QFile file(folder.filePath("a.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().startsWith("after Camera Controller Information\r\n\r\nCamera Model: before\r\n"));
}

void tst_AboutModel::fileThatCannotBeOpenedIsTold()
{
    const QTemporaryDir folder;
    About about;
    about.refresh();
    QVERIFY(!about.model.saveTextFile(QUrl::fromLocalFile(folder.filePath("none/a.txt")).toString()));
    QVERIFY(!about.model.saveTextFile(QUrl::fromLocalFile(folder.path()).toString()));
}

// A full disk accepts the file, but no data.
void tst_AboutModel::fileThatCannotBeWrittenIsNotTold()
{
    About about;
    about.refresh();
    QVERIFY(about.model.saveTextFile(QStringLiteral("file:///dev/full")));
}

void tst_AboutModel::directoryStartsAtHome()
{
    About about;
    QCOMPARE(about.model.lastDirectory(), QUrl::fromLocalFile(QDir::homePath()));
}

void tst_AboutModel::directoryAlwaysSignals()
{
    About about;
    const QSignalSpy changed(&about.model, &AboutModel::lastDirectoryChanged);
    const QUrl folder = QUrl::fromLocalFile(QDir::tempPath());
    about.model.setLastDirectory(folder);
    QCOMPARE(about.model.lastDirectory(), folder);
    about.model.setLastDirectory(folder);
    QCOMPARE(changed.size(), 2);
    about.model.setLastDirectory(QUrl());
    QCOMPARE(changed.size(), 3);
    QCOMPARE(about.model.lastDirectory(), QUrl::fromLocalFile(QDir::homePath()));
}

void tst_AboutModel::heldReadsOutliveTheModel() { walkHeldDeletion(modelOf<AboutModel>()); }

void tst_AboutModel::readsWithoutACamera()
{
    walkNoCamera(modelOf<AboutModel>(), {QStringLiteral("nameValueListModel")});
}

void tst_AboutModel::randomOperator()
{
    auto model = modelOf<AboutModel>();
    // The operator's directory, not read from the camera.
    model.ownState << QStringLiteral("lastDirectory");
    walkRandomOperator(model, 22);
}

ZVT_TEST(tst_AboutModel)
#include "tst_AboutModel.moc"
