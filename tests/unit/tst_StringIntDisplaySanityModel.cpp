#include "common/StringIntDisplaySanityModel.h"
#include "tests/support/Test.h"

#include <QMetaMethod>
#include <QMetaProperty>

class tst_StringIntDisplaySanityModel : public Test
{
    Q_OBJECT

private slots:
    void init();
    void startsEmpty();
    void appendsToBothLists();
    void removesARowFromBothLists();
    void removesAllRows();
    void announcesStringsValuesAndSizeInThisOrder();
    void announcesAnEditThatChangesNothing();
    void listsAreTrueWhenAnnounced();
    void rowsThatDoNotExistAreEmpty_data();
    void rowsThatDoNotExistAreEmpty();
    void findsTheFirstOfEqualValues();
    void offersReadOnlyPropertiesAndNoMethodsToPages();

private:
    StringIntDisplaySanityModel *m_model = nullptr;
    QStringList m_announced;
};

void tst_StringIntDisplaySanityModel::init()
{
    Test::init();
    delete m_model;
    m_model = new StringIntDisplaySanityModel(this);
    m_announced.clear();
    connect(m_model, &StringIntDisplaySanityModel::stringsChanged, this, [this] { m_announced << "strings"; });
    connect(m_model, &StringIntDisplaySanityModel::valuesChanged, this, [this] { m_announced << "values"; });
    connect(m_model, &StringIntDisplaySanityModel::sizeChanged, this, [this] { m_announced << "size"; });
}

void tst_StringIntDisplaySanityModel::startsEmpty()
{
    QCOMPARE(m_model->size(), 0);
    QVERIFY(m_model->strings().isEmpty());
    QVERIFY(m_model->values().isEmpty());
}

void tst_StringIntDisplaySanityModel::appendsToBothLists()
{
    m_model->append(QStringLiteral("off"), 4);
    m_model->append(QStringLiteral("on"), -2);
    QCOMPARE(m_model->strings(), QStringList({QStringLiteral("off"), QStringLiteral("on")}));
    QCOMPARE(m_model->values(), QList<int>({4, -2}));
    QCOMPARE(m_model->size(), 2);
    QCOMPARE(m_model->stringAt(1), QStringLiteral("on"));
    QCOMPARE(m_model->valueAt(1), -2);
}

void tst_StringIntDisplaySanityModel::removesARowFromBothLists()
{
    for (int value = 0; value < 3; ++value)
        m_model->append(QString::number(value), value);
    m_model->remove(1);
    QCOMPARE(m_model->strings(), QStringList({QStringLiteral("0"), QStringLiteral("2")}));
    QCOMPARE(m_model->values(), QList<int>({0, 2}));
}

void tst_StringIntDisplaySanityModel::removesAllRows()
{
    m_model->append(QStringLiteral("off"), 0);
    m_model->append(QStringLiteral("on"), 1);
    m_model->removeAll();
    QCOMPARE(m_model->size(), 0);
    QVERIFY(m_model->strings().isEmpty());
    QVERIFY(m_model->values().isEmpty());
}

void tst_StringIntDisplaySanityModel::announcesStringsValuesAndSizeInThisOrder()
{
    const QStringList once = {QStringLiteral("strings"), QStringLiteral("values"), QStringLiteral("size")};
    m_model->append(QStringLiteral("off"), 0);
    QCOMPARE(m_announced, once);
    m_model->remove(0);
    QCOMPARE(m_announced, once + once);
    m_model->removeAll();
    QCOMPARE(m_announced, once + once + once);
}

void tst_StringIntDisplaySanityModel::announcesAnEditThatChangesNothing()
{
    m_model->removeAll();
    m_model->everythingChanged();
    QCOMPARE(m_announced.size(), 6);
}

void tst_StringIntDisplaySanityModel::listsAreTrueWhenAnnounced()
{
    bool seen = false;
    connect(m_model, &StringIntDisplaySanityModel::stringsChanged, this, [&] {
        QCOMPARE(m_model->strings().size(), m_model->values().size());
        seen = m_model->size() == 1;
    });
    m_model->append(QStringLiteral("off"), 0);
    QVERIFY(seen);
}

void tst_StringIntDisplaySanityModel::rowsThatDoNotExistAreEmpty_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("before the first") << -1;
    QTest::newRow("behind the last") << 2;
    QTest::newRow("far off") << 1000;
}

void tst_StringIntDisplaySanityModel::rowsThatDoNotExistAreEmpty()
{
    QFETCH(int, index);
    m_model->append(QStringLiteral("off"), 5);
    m_model->append(QStringLiteral("on"), 6);
    QCOMPARE(m_model->stringAt(index), QString());
    QCOMPARE(m_model->valueAt(index), -1);
}

void tst_StringIntDisplaySanityModel::findsTheFirstOfEqualValues()
{
    QCOMPARE(m_model->findFirstIndexOfValue(0), -1);
    for (const int value : {3, 7, 7, 3})
        m_model->append(QString::number(value), value);
    QCOMPARE(m_model->findFirstIndexOfValue(3), 0);
    QCOMPARE(m_model->findFirstIndexOfValue(7), 1);
    QCOMPARE(m_model->findFirstIndexOfValue(4), -1);
}

void tst_StringIntDisplaySanityModel::offersReadOnlyPropertiesAndNoMethodsToPages()
{
    const QMetaObject &meta = StringIntDisplaySanityModel::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        QVERIFY(!meta.property(i).isWritable());
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Signal);
}

ZVT_TEST(tst_StringIntDisplaySanityModel)
#include "tst_StringIntDisplaySanityModel.moc"
