#include "hlxui/IControllerModelFactory.h"
#include "tests/support/Test.h"

#include <cstring>

using hlx::cam::IController;
using hlx::cam::ui::controllerModelFactory;

namespace
{

QStringList asked;

template <char Name, bool Takes>
bool create(hlx::TSharedPtr<IController>, QObject *parent, QObject *&model, QString &qml)
{
    asked += QString(QLatin1Char(Name));
    if (!Takes)
        return false;
    model = new QObject(parent);
    qml = QString(QLatin1Char(Name)) + QStringLiteral("/main.qml");
    return true;
}

constexpr auto declining = &create<'d', false>;
constexpr auto first = &create<'a', true>;
constexpr auto second = &create<'b', true>;

} // namespace

class tst_factory : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void thereIsOneFactory();
    void withoutCreatorsNothingIsMade();
    void creatorsAreTriedInOrderUntilOneTakes();
    void aDecliningCreatorLeavesTheArgumentsAlone();
    void aCreatorIsKeptOnce();
    void anUnregisteredCreatorIsNotAsked();
    void registeringIsTheFourthOperation();
};

void tst_factory::init()
{
    Test::init();
    asked.clear();
}

void tst_factory::cleanup()
{
    for (const auto creator : {declining, first, second})
        controllerModelFactory()->UnregisterModelCreator(creator);
    QCOMPARE(controllerModelFactory()->CreatorCount(), 0);
}

void tst_factory::thereIsOneFactory()
{
    QVERIFY(controllerModelFactory());
    QCOMPARE(controllerModelFactory(), controllerModelFactory());
}

void tst_factory::withoutCreatorsNothingIsMade()
{
    QObject *model = nullptr;
    QString qml;
    QVERIFY(!controllerModelFactory()->CreateModel({}, nullptr, model, qml));
    QVERIFY(!model);
    QVERIFY(qml.isEmpty());
}

void tst_factory::creatorsAreTriedInOrderUntilOneTakes()
{
    auto *factory = controllerModelFactory();
    for (const auto creator : {declining, first, second})
        factory->RegisterModelCreator(creator);
    QObject parent;
    QObject *model = nullptr;
    QString qml;
    QVERIFY(factory->CreateModel({}, &parent, model, qml));
    QCOMPARE(asked, QStringList({"d", "a"}));
    QCOMPARE(qml, QStringLiteral("a/main.qml"));
    QVERIFY(model);
    QCOMPARE(model->parent(), &parent);
}

void tst_factory::aDecliningCreatorLeavesTheArgumentsAlone()
{
    controllerModelFactory()->RegisterModelCreator(declining);
    QObject untouched;
    QObject *model = &untouched;
    QString qml = QStringLiteral("untouched");
    QVERIFY(!controllerModelFactory()->CreateModel({}, nullptr, model, qml));
    QCOMPARE(asked, QStringList("d"));
    QCOMPARE(model, &untouched);
    QCOMPARE(qml, QStringLiteral("untouched"));
}

void tst_factory::aCreatorIsKeptOnce()
{
    controllerModelFactory()->RegisterModelCreator(declining);
    controllerModelFactory()->RegisterModelCreator(declining);
    QCOMPARE(controllerModelFactory()->CreatorCount(), 1);
}

void tst_factory::anUnregisteredCreatorIsNotAsked()
{
    auto *factory = controllerModelFactory();
    factory->RegisterModelCreator(first);
    factory->RegisterModelCreator(second);
    factory->UnregisterModelCreator(first);
    factory->UnregisterModelCreator(first);
    QCOMPARE(factory->CreatorCount(), 1);
    QObject parent;
    QObject *model = nullptr;
    QString qml;
    QVERIFY(factory->CreateModel({}, &parent, model, qml));
    QCOMPARE(asked, QStringList("b"));
}

void tst_factory::registeringIsTheFourthOperation()
{
    // A pointer to a virtual function contains its offset in the table, in bytes, plus one.
    const auto pointer = &hlx::cam::ui::IControllerModelFactory::RegisterModelCreator;
    std::ptrdiff_t place = 0;
    static_assert(sizeof(pointer) >= sizeof(place));
    std::memcpy(&place, &pointer, sizeof(place));
    QCOMPARE(place, std::ptrdiff_t(3 * sizeof(void *) + 1));
}

ZVT_TEST(tst_factory)
#include "tst_factory.moc"
