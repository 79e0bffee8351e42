#include "hlxui/ControllerModel.h"
#include "hlxui/IInvokeEvent.h"
#include "hlxui/ObjectListModel.h"
#include "hlxui/StringListModel.h"
#include "tests/support/Test.h"

#include <QAbstractItemModelTester>
#include <QJSEngine>
#include <QPointer>
#include <QQmlEngine>
#include <QSignalSpy>

namespace
{

class InvokeEvent : public IInvokeEvent
{
public:
    InvokeEvent(QStringList *log, const QString &text) : IInvokeEvent(QEvent::Type(1000)), m_log(log), m_text(text) { }
    void invoke() override { m_log->append(m_text); }

private:
    QStringList *m_log;
    QString m_text;
};

/// Runs events like a root model.
class Receiver : public QObject
{
public:
    bool event(QEvent *event) override
    {
        auto *invokable = dynamic_cast<IInvokeEvent *>(event);
        if (!invokable)
            return QObject::event(event);
        invokable->invoke();
        return true;
    }
};

class MaskedModel : public ControllerModel
{
public:
    uint8_t hasNucMask() override { return 5; }
};

} // namespace

class tst_hostModels : public Test
{
    Q_OBJECT

private slots:
    void noPresetHasACorrectionByDefault();
    void aFamilyOverridesTheMask();
    void postedEventsRunInOrder();

    void rowsFollowAppending();
    void nullIsNotAppended();
    void rowsThatDoNotExistAreNull();
    void ownedItemsAreAdopted();
    void foreignItemsKeepTheirParent();
    void removingDeletesLater();
    void removingAStrangerChangesNothing();
    void removingAForeignItemKeepsItAlive();
    void removingAllDeletesLater();
    void anItemMayRemoveItselfInItsOwnHandler();
    void detachingKeepsAllAlive();
    void emptyingAnEmptyListIsSilent();
    void anItemDeletedElsewhereLeavesTheList();
    void theListTakesItsItemsAlong();
    void theEngineCollectsNeitherListNorItems();
    void tenThousandRowsComeAndGo();

    void stringsAreRows();
};

void tst_hostModels::noPresetHasACorrectionByDefault()
{
    ControllerModel model;
    QCOMPARE(model.hasNucMask(), uint8_t(0));
    QCOMPARE(model.property("hasNucMask").toInt(), 0);
}

void tst_hostModels::aFamilyOverridesTheMask()
{
    MaskedModel model;
    QJSEngine engine;
    QQmlEngine::setObjectOwnership(&model, QQmlEngine::CppOwnership);
    engine.globalObject().setProperty(QStringLiteral("model"), engine.newQObject(&model));
    QCOMPARE(engine.evaluate(QStringLiteral("model.hasNucMask + 1")).toInt(), 6);
    QSignalSpy changed(&model, &ControllerModel::hasNucMaskChanged);
    emit model.hasNucMaskChanged();
    QCOMPARE(changed.size(), 1);
}

void tst_hostModels::postedEventsRunInOrder()
{
    Receiver receiver;
    QStringList log;
    for (const auto *text : {"first", "second"})
        QCoreApplication::postEvent(&receiver, new InvokeEvent(&log, QString::fromLatin1(text)));
    QVERIFY(log.isEmpty());
    QCoreApplication::sendPostedEvents(&receiver);
    QCOMPARE(log, QStringList({"first", "second"}));
}

void tst_hostModels::rowsFollowAppending()
{
    ObjectListModel list(true);
    QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy sizeChanged(&list, &ObjectListModel::sizeChanged);
    auto *a = new QObject;
    auto *b = new QObject;
    list.append(a);
    list.push_back(b);
    QCOMPARE(sizeChanged.size(), 2);
    QCOMPARE(list.size(), 2);
    QCOMPARE(list.rowCount(), 2);
    QCOMPARE(list.rowCount(list.index(0)), 0);
    QCOMPARE(list.at(1), b);
    QCOMPARE(list.indexOf(a), 0);
    QCOMPARE(list.roleNames().value(ObjectListModel::ItemRole), QByteArray("item"));
    QCOMPARE(list.data(list.index(0), ObjectListModel::ItemRole).value<QObject *>(), a);
    QVERIFY(!list.data(list.index(0), Qt::DisplayRole).isValid());
    QVERIFY(!list.data({}, ObjectListModel::ItemRole).isValid());
}

void tst_hostModels::nullIsNotAppended()
{
    ObjectListModel list(true);
    QSignalSpy sizeChanged(&list, &ObjectListModel::sizeChanged);
    list.append(nullptr);
    QCOMPARE(list.size(), 0);
    QCOMPARE(sizeChanged.size(), 0);
}

void tst_hostModels::rowsThatDoNotExistAreNull()
{
    ObjectListModel list(true);
    list.append(new QObject);
    QVERIFY(!list.at(-1));
    QVERIFY(!list.at(1));
    QObject stranger;
    QCOMPARE(list.indexOf(&stranger), -1);
    QCOMPARE(list.indexOf(nullptr), -1);
}

void tst_hostModels::ownedItemsAreAdopted()
{
    ObjectListModel list(true);
    auto *item = new QObject;
    list.append(item);
    QCOMPARE(item->parent(), &list);
}

void tst_hostModels::foreignItemsKeepTheirParent()
{
    QObject parent;
    ObjectListModel list(false);
    auto *item = new QObject(&parent);
    list.append(item);
    QCOMPARE(item->parent(), &parent);
    list.detachAll();
    QCOMPARE(item->parent(), &parent);
}

void tst_hostModels::removingDeletesLater()
{
    ObjectListModel list(true);
    QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QPointer<QObject> a = new QObject;
    QPointer<QObject> b = new QObject;
    list.append(a);
    list.append(b);
    QSignalSpy sizeChanged(&list, &ObjectListModel::sizeChanged);
    bool aliveAtRemoval = false;
    connect(&list, &ObjectListModel::rowsRemoved, this, [&] { aliveAtRemoval = !a.isNull() && list.at(0) == b; });
    list.remove(a);
    QVERIFY(aliveAtRemoval);
    QVERIFY(a);
    QCOMPARE(sizeChanged.size(), 1);
    QTRY_VERIFY(!a);
    QCOMPARE(sizeChanged.size(), 1);
    QCOMPARE(list.at(0), b.data());
}

void tst_hostModels::removingAStrangerChangesNothing()
{
    ObjectListModel list(true);
    list.append(new QObject);
    QSignalSpy sizeChanged(&list, &ObjectListModel::sizeChanged);
    QObject stranger;
    list.remove(&stranger);
    list.remove(nullptr);
    QCOMPARE(list.size(), 1);
    QCOMPARE(sizeChanged.size(), 0);
}

void tst_hostModels::removingAForeignItemKeepsItAlive()
{
    ObjectListModel list(false);
    QPointer<QObject> item = new QObject(this);
    list.append(item);
    list.remove(item);
    list.append(item);
    list.removeAll();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(item);
    delete item;
}

void tst_hostModels::removingAllDeletesLater()
{
    ObjectListModel list(true);
    QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QPointer<QObject> item = new QObject;
    list.append(item);
    list.append(new QObject);
    QSignalSpy sizeChanged(&list, &ObjectListModel::sizeChanged);
    list.removeAll();
    QVERIFY(item);
    QCOMPARE(list.size(), 0);
    QCOMPARE(sizeChanged.size(), 1);
    QTRY_VERIFY(!item);
    QCOMPARE(sizeChanged.size(), 1);
}

void tst_hostModels::anItemMayRemoveItselfInItsOwnHandler()
{
    ObjectListModel list(true);
    QPointer<QObject> item = new QObject;
    list.append(item);
    connect(item, &QObject::objectNameChanged, &list, [&] { list.remove(item); });
    item->setObjectName(QStringLiteral("finished"));
    QCOMPARE(item->objectName(), QStringLiteral("finished"));
    QCOMPARE(list.size(), 0);
    QTRY_VERIFY(!item);
}

void tst_hostModels::detachingKeepsAllAlive()
{
    auto list = std::make_unique<ObjectListModel>(true);
    QPointer<QObject> item = new QObject;
    list->append(item);
    list->detachAll();
    QCOMPARE(list->size(), 0);
    QVERIFY(!item->parent());
    list.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(item);
    delete item;
}

void tst_hostModels::emptyingAnEmptyListIsSilent()
{
    ObjectListModel list(true);
    QSignalSpy sizeChanged(&list, &ObjectListModel::sizeChanged);
    QSignalSpy reset(&list, &ObjectListModel::modelReset);
    list.removeAll();
    list.detachAll();
    QCOMPARE(sizeChanged.size(), 0);
    QCOMPARE(reset.size(), 0);
}

void tst_hostModels::anItemDeletedElsewhereLeavesTheList()
{
    ObjectListModel list(true);
    QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
    auto *a = new QObject;
    auto *b = new QObject;
    list.append(a);
    list.append(b);
    QSignalSpy sizeChanged(&list, &ObjectListModel::sizeChanged);
    delete a;
    QCOMPARE(list.size(), 1);
    QCOMPARE(list.at(0), b);
    QCOMPARE(sizeChanged.size(), 1);
}

void tst_hostModels::theListTakesItsItemsAlong()
{
    auto list = std::make_unique<ObjectListModel>(true);
    QPointer<QObject> present = new QObject;
    QPointer<QObject> removed = new QObject;
    list->append(present);
    list->append(removed);
    list->remove(removed);
    list.reset();
    QVERIFY(!present);
    QVERIFY(!removed);
}

void tst_hostModels::theEngineCollectsNeitherListNorItems()
{
    QPointer<ObjectListModel> list = new ObjectListModel(false);
    QPointer<StringListModel> strings = new StringListModel;
    QPointer<QObject> item = new QObject;
    list->append(item);
    {
        QJSEngine engine;
        engine.globalObject().setProperty(QStringLiteral("list"), engine.newQObject(list));
        engine.globalObject().setProperty(QStringLiteral("strings"), engine.newQObject(strings));
        QCOMPARE(engine.evaluate(QStringLiteral("list.at(0) !== null && list.rowCount() === list.size")).toBool(),
                 true);
        engine.globalObject().deleteProperty(QStringLiteral("list"));
        engine.globalObject().deleteProperty(QStringLiteral("strings"));
        engine.collectGarbage();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(list);
    QVERIFY(strings);
    QVERIFY(item);
    delete item;
    delete strings;
    delete list;
}

void tst_hostModels::tenThousandRowsComeAndGo()
{
    ObjectListModel list(true);
    QPointer<QObject> last;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 10'000; ++i)
            list.append(last = new QObject);
        QCOMPARE(list.size(), 10'000);
        list.removeAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!last);
    }
    QVERIFY(list.children().isEmpty());
}

void tst_hostModels::stringsAreRows()
{
    StringListModel list;
    QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
    list.removeAll();
    list.push_back(QStringLiteral("warm"));
    list.push_back(QStringLiteral("cold"));
    QCOMPARE(list.rowCount(), 2);
    QCOMPARE(list.rowCount(list.index(0)), 0);
    QCOMPARE(list.data(list.index(1), Qt::DisplayRole).toString(), QStringLiteral("cold"));
    QCOMPARE(list.roleNames().value(Qt::DisplayRole), QByteArray("display"));
    QVERIFY(!list.data(list.index(1), Qt::EditRole).isValid());
    QVERIFY(!list.data({}, Qt::DisplayRole).isValid());
    list.removeAll();
    QCOMPARE(list.rowCount(), 0);
}

ZVT_TEST(tst_hostModels)
#include "tst_hostModels.moc"
