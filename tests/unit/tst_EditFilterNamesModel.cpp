#include "tests/support/SignalLog.h"
#include "tests/support/Test.h"
#include "tests/support/modelOf.h"

#include "setup/EditFilterNamesModel.h"
#include "setup/FilterNameEditorItemModel.h"
#include "setup/SetupFilterWheelSettingsModel.h"

#include <QPointer>

#include <thread>

namespace
{

constexpr int filterCount = 64;

/// The editor of filter names below a root that has read them, with helpers for tests.
struct Names {
    explicit Names(bool connected = true)
        : rig(QStringLiteral("everything"), connected), root(rig.controller(), nullptr),
          model(*root.editFilterNamesModel())
    {
        gate().script("zvtGetFilterNameEx", "Cold filter");
        model.refresh();
        CameraRig::settle();
    }
    ~Names() { emulator::Sdk::gate().script("zvtGetFilterName", {}); }

    emulator::Gate &gate() { return rig.gate(); }
    void refresh()
    {
        model.refresh();
        CameraRig::settle();
    }

    FilterNameEditorItemModel &filter(int id) const
    {
        return *qobject_cast<FilterNameEditorItemModel *>(model.filterListModel()->at(id));
    }

    /// Saves, and returns the names that it writes.
    QStringList save()
    {
        QStringList writes;
        const size_t mark = gate().mark();
        model.saveAllModified();
        for (const auto &call : gate().callsSince(mark))
            if (call.name == "zvtSetFilterInfoName" && call.thread == std::this_thread::get_id())
                writes << QString::fromStdString(call.arguments);
        CameraRig::settle();
        return writes;
    }

    CameraRig rig;
    ZvtCameraModel root;
    EditFilterNamesModel &model;
};

} // namespace

/// The editor of the names of all filters, and its rows.
class tst_EditFilterNamesModel : public Test
{
    Q_OBJECT

private slots:
    void rowChangesInOrder();
    void rowStaysModified();
    void defaultIsAModification();
    void defaultDiffersInCase();

    void nothingIsKnownAtFirst();
    void readsAllNamesInOrder();
    void publishesInOrder();
    void unknownDefaultIsEmpty();
    void unreadNameIsEmpty();
    void longNameIsNotReadBeyondItsBuffer();
    void refreshDropsTheEdits();

    void lengthsAreValid_data();
    void lengthsAreValid();
    void anyRowMakesTheNamesInvalid();

    void modifiedNamesAreWritten();
    void refusedNameIsSilent();
    void namesOfNoRowsAreSaved();
    void saveRefreshesAVisibleWheel();
    void saveWithoutACamera();
    void visibilityReadsNothing();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

// A row

void tst_EditFilterNamesModel::rowChangesInOrder()
{
    FilterNameEditorItemModel filter(7, QStringLiteral("Open"), QStringLiteral("Window"), nullptr);
    QCOMPARE(filter.filterID(), 7);
    QVERIFY(!filter.hasBeenModified());
    QVERIFY(!filter.isDefault());
    SignalLog log(&filter);
    filter.setName(QStringLiteral("Window"));
    QCOMPARE(log.take(), QStringList());
    QVERIFY(!filter.hasBeenModified());
    filter.setName(QStringLiteral("Open"));
    QCOMPARE(log.take(), QStringList({"nameChanged", "hasBeenModifiedChanged", "isDefaultChanged"}));
    QCOMPARE(filter.name(), QStringLiteral("Open"));
    QVERIFY(filter.isDefault());
}

void tst_EditFilterNamesModel::rowStaysModified()
{
    FilterNameEditorItemModel filter(7, QStringLiteral("Open"), QStringLiteral("Window"), nullptr);
    filter.setName(QStringLiteral("Windows"));
    filter.setName(QStringLiteral("Window"));
    QVERIFY(filter.hasBeenModified());
}

void tst_EditFilterNamesModel::defaultIsAModification()
{
    FilterNameEditorItemModel filter(7, QStringLiteral("Open"), QStringLiteral("Window"), nullptr);
    filter.useDefault();
    QCOMPARE(filter.name(), QStringLiteral("Open"));
    QVERIFY(filter.isDefault());
    QVERIFY(filter.hasBeenModified());
}

void tst_EditFilterNamesModel::defaultDiffersInCase()
{
    const FilterNameEditorItemModel filter(7, QStringLiteral("Open"), QStringLiteral("open"), nullptr);
    QVERIFY(!filter.isDefault());
}

// Reading

void tst_EditFilterNamesModel::nothingIsKnownAtFirst()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    CameraRig::settle();
    QVERIFY(!root.editFilterNamesModel()->refreshing());
    QVERIFY(!root.editFilterNamesModel()->hasRefreshed());
    QVERIFY(!root.editFilterNamesModel()->visible());
    QCOMPARE(root.editFilterNamesModel()->filterListModel()->size(), 0);
}

void tst_EditFilterNamesModel::readsAllNamesInOrder()
{
    Names names;
    emulator::Gate &sdk = emulator::Sdk::gate();
    const size_t mark = names.gate().mark();
    const size_t sdkMark = sdk.mark();
    names.refresh();
    const auto calls = names.gate().callsSince(mark);
    const auto defaults = sdk.callsSince(sdkMark);
    QCOMPARE(names.rig.callsSince(mark), QStringList(filterCount, QStringLiteral("zvtGetFilterNameEx")));
    QCOMPARE(defaults.size(), size_t(filterCount));
    int id = 0;
    for (const auto &call : calls)
        if (call.name == "zvtGetFilterNameEx") {
            QCOMPARE(call.arguments, std::to_string(id));
            QCOMPARE(defaults.at(static_cast<size_t>(id)).name, std::string("zvtGetFilterName"));
            QCOMPARE(defaults.at(static_cast<size_t>(id)).arguments, std::to_string(id));
            QVERIFY(call.thread != std::this_thread::get_id());
            ++id;
        }
    for (int row = 0; row < filterCount; ++row) {
        QCOMPARE(names.filter(row).filterID(), row);
        QCOMPARE(names.filter(row).name(), QStringLiteral("Cold filter"));
        QVERIFY(!names.filter(row).hasBeenModified());
    }
    names.filter(1).useDefault();
    QCOMPARE(names.filter(1).name(), QStringLiteral("Open"));
    names.filter(63).useDefault();
    QCOMPARE(names.filter(63).name(), QStringLiteral("Custom 32"));
}

void tst_EditFilterNamesModel::publishesInOrder()
{
    Names names;
    SignalLog log(&names.model);
    names.model.refresh();
    QCOMPARE(log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(names.model.refreshing());
    QVERIFY(!names.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(log.take(), QStringList({"filterListModelChanged", "hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(names.model.hasRefreshed());
}

void tst_EditFilterNamesModel::unknownDefaultIsEmpty()
{
    Names names;
    emulator::Sdk::gate().failNext("zvtGetFilterName", 3);
    names.refresh();
    names.filter(2).useDefault();
    QCOMPARE(names.filter(2).name(), QString());
    names.filter(3).useDefault();
    QCOMPARE(names.filter(3).name(), QStringLiteral("Sapphire"));
}

void tst_EditFilterNamesModel::unreadNameIsEmpty()
{
    Names names;
    names.gate().failNext("zvtGetFilterNameEx", 6);
    names.refresh();
    QCOMPARE(names.filter(4).name(), QStringLiteral("Cold filter"));
    QCOMPARE(names.filter(5).name(), QString());
    QCOMPARE(names.filter(6).name(), QStringLiteral("Cold filter"));
}

void tst_EditFilterNamesModel::longNameIsNotReadBeyondItsBuffer()
{
    Names names;
    names.gate().script("zvtGetFilterNameEx", QString(300, u'f'));
    names.gate().fillBuffers(true);
    names.refresh();
    QCOMPARE(names.filter(0).name(), QString(200, u'f'));
}

void tst_EditFilterNamesModel::refreshDropsTheEdits()
{
    Names names;
    const QPointer<FilterNameEditorItemModel> old = &names.filter(0);
    old->setName(QStringLiteral("Not saved"));
    names.refresh();
    QVERIFY(old.isNull());
    QCOMPARE(names.model.filterListModel()->size(), filterCount);
    QCOMPARE(names.filter(0).name(), QStringLiteral("Cold filter"));
    QVERIFY(!names.filter(0).hasBeenModified());
}

// Validation

void tst_EditFilterNamesModel::lengthsAreValid_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("valid");
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("one character") << "f" << true;
    QTest::newRow("blank") << " " << true;
    QTest::newRow("longest") << QString(199, u'f') << true;
    QTest::newRow("too long") << QString(200, u'f') << false;
    // The length counts UTF-16 units, not bytes of UTF-8.
    QTest::newRow("two bytes each") << QString(199, QChar(0xB5)) << true;
    QTest::newRow("two units each") << QStringLiteral("\U0001F4F7").repeated(100) << false;
}

void tst_EditFilterNamesModel::lengthsAreValid()
{
    QFETCH(const QString, name);
    QFETCH(const bool, valid);
    const Names names;
    names.filter(12).setName(name);
    QCOMPARE(names.model.validateAll(), valid);
}

void tst_EditFilterNamesModel::anyRowMakesTheNamesInvalid()
{
    const Names names;
    QVERIFY(names.model.validateAll());
    for (const int id : {0, 31, 63}) {
        names.filter(id).setName({});
        QVERIFY(!names.model.validateAll());
        names.filter(id).useDefault();
        QVERIFY(names.model.validateAll());
    }
}

// Saving

void tst_EditFilterNamesModel::modifiedNamesAreWritten()
{
    Names names;
    QCOMPARE(names.save(), QStringList());
    names.filter(40).setName(QStringLiteral("3,9 µm schmal "));
    names.filter(5).useDefault();
    names.filter(60).setName(QStringLiteral("x"));
    names.filter(60).setName(QStringLiteral("Cold filter"));
    QCOMPARE(names.save(), QStringList({"5, \"ND 0.6\"", "40, \"3,9 µm schmal \"", "60, \"Cold filter\""}));
    // The rows stay modified, so a second save writes them again.
    QCOMPARE(names.save().size(), 3);
}

void tst_EditFilterNamesModel::refusedNameIsSilent()
{
    Names names;
    names.gate().failAlways("zvtSetFilterInfoName");
    names.filter(5).useDefault();
    names.filter(6).useDefault();
    QCOMPARE(names.save().size(), 2);
    QCOMPARE(names.filter(5).name(), QStringLiteral("ND 0.6"));
}

void tst_EditFilterNamesModel::namesOfNoRowsAreSaved()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    CameraRig::settle();
    const size_t mark = rig.gate().mark();
    QVERIFY(root.editFilterNamesModel()->validateAll());
    root.editFilterNamesModel()->saveAllModified();
    QCOMPARE(rig.callsSince(mark), QStringList());
}

void tst_EditFilterNamesModel::saveRefreshesAVisibleWheel()
{
    Names names;
    SetupFilterWheelSettingsModel &wheel = *names.root.setupFilterWheelSettingsModel();
    names.save();
    QVERIFY(!wheel.hasRefreshed());
    wheel.setVisible(true);
    names.filter(1).setName(QStringLiteral("Window"));
    const size_t mark = names.gate().mark();
    names.save();
    QVERIFY(wheel.hasRefreshed());
    const QStringList calls = names.rig.callsSince(mark);
    QVERIFY(calls.indexOf("zvtSetFilterInfoName") < calls.indexOf("zvtGetNumFilters"));
    // A save that writes nothing refreshes it too.
    names.refresh();
    const size_t again = names.gate().mark();
    QCOMPARE(names.save(), QStringList());
    QVERIFY(names.rig.callsSince(again).contains("zvtGetNumFilters"));
}

void tst_EditFilterNamesModel::saveWithoutACamera()
{
    EditFilterNamesModel orphan(nullptr);
    orphan.saveAllModified();
    QVERIFY(orphan.validateAll());
    Names names(false);
    names.filter(5).setName(QStringLiteral("x"));
    QCOMPARE(names.save().size(), 1);
}

void tst_EditFilterNamesModel::visibilityReadsNothing()
{
    Names names;
    SignalLog log(&names.model);
    const size_t mark = names.gate().mark();
    names.model.setVisible(true);
    names.model.setVisible(true);
    CameraRig::settle();
    QCOMPARE(names.rig.callsSince(mark), QStringList());
    QCOMPARE(log.take(), QStringList("visibleChanged"));
    QVERIFY(names.model.visible());
}

void tst_EditFilterNamesModel::failingReads()
{
    auto model = modelOf<EditFilterNamesModel>();
    model.prepare = [](CameraRig &rig) { rig.gate().script("zvtGetFilterNameEx", "Cold filter"); };
    ReadExceptions exceptions;
    for (int number = 1; number <= filterCount; ++number)
        exceptions.insert(number == 1 ? QStringLiteral("zvtGetFilterNameEx")
                                      : QStringLiteral("zvtGetFilterNameEx#%1").arg(number),
                          {{"filterListModel"}, "the name in its row is empty", {"filterListModel"}});
    walkFailingReads(model, exceptions);
}

void tst_EditFilterNamesModel::heldReadsOutliveTheModel() { walkHeldDeletion(modelOf<EditFilterNamesModel>()); }

void tst_EditFilterNamesModel::secondRefreshIsDropped() { walkSecondRefresh(modelOf<EditFilterNamesModel>()); }

void tst_EditFilterNamesModel::readsWithoutACamera()
{
    walkNoCamera(modelOf<EditFilterNamesModel>(), {"filterListModel"});
}

void tst_EditFilterNamesModel::randomOperator() { walkRandomOperator(modelOf<EditFilterNamesModel>(), 45); }

ZVT_TEST(tst_EditFilterNamesModel)
#include "tst_EditFilterNamesModel.moc"
