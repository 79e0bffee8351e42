#include "common/BaseTabModel.h"
#include "common/Tab.h"
#include "tests/support/Test.h"

#include <QMetaProperty>

namespace
{

class OwnTabModel : public BaseTabModel
{
public:
    void refresh() override { ++reads; }
    int reads = 0;
};

} // namespace

class tst_BaseTabModel : public Test
{
    Q_OBJECT

private slots:
    void aForgottenRefreshShowsInTheLog();
    void aPageCallsTheRefreshOfTheTab();
    void aTabKeepsWhatItWasGiven();
    void aTabIsReadOnly();
};

void tst_BaseTabModel::aForgottenRefreshShowsInTheLog()
{
    BaseTabModel model;
    QTest::ignoreMessage(QtDebugMsg, "I'm not supposed to be here today");
    model.refresh();
}

void tst_BaseTabModel::aPageCallsTheRefreshOfTheTab()
{
    OwnTabModel model;
    QVERIFY(QMetaObject::invokeMethod(&model, "refresh"));
    QCOMPARE(model.reads, 1);
}

void tst_BaseTabModel::aTabKeepsWhatItWasGiven()
{
    QObject parent;
    BaseTabModel model;
    const auto *const tab = new Tab(&parent, QStringLiteral("Status"), QStringLiteral("StatusTab.qml"), &model);
    QCOMPARE(tab->parent(), &parent);
    QCOMPARE(tab->property("name").toString(), QStringLiteral("Status"));
    QCOMPARE(tab->property("qml").toString(), QStringLiteral("StatusTab.qml"));
    QCOMPARE(tab->property("model").value<QObject *>(), &model);
}

void tst_BaseTabModel::aTabIsReadOnly()
{
    const QMetaObject &meta = Tab::staticMetaObject;
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 3);
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        QVERIFY(!meta.property(i).isWritable());
}

ZVT_TEST(tst_BaseTabModel)
#include "tst_BaseTabModel.moc"
