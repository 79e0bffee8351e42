#include "common/Nullable.h"
#include "tests/support/Test.h"

#include <QFuture>
#include <QPromise>
#include <QString>

#include <stdexcept>
#include <string>
#include <vector>

namespace
{

// The text of the exception that `action` throws; empty if it throws none.
template <class Action> std::string thrownBy(Action action)
{
    try {
        action();
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return {};
}

int fill(int *value, int status)
{
    *value = 42;
    return status;
}

} // namespace

class tst_Nullable : public Test
{
    Q_OBJECT

private slots:
    void startsUnset();
    void readingAnUnsetValueThrows();
    void anAssignedValueIsSet();
    void isMadeFromAValue();
    void takesTheOtherStateInACopy();
    void givesItsAddressToAFunctionThatFillsIt();
    void isSetBeforeTheFunctionIsCalled();
    void isUnsetAgainAfterAFailedCall();
    void theAddressOfASetValueThrows();
    void falseAndZeroAreValues();
    void goesThroughContainersAndFutures();
};

void tst_Nullable::startsUnset()
{
    QVERIFY(!Nullable<int>().set());
    QVERIFY(!Nullable<QString>().set());
}

void tst_Nullable::readingAnUnsetValueThrows()
{
    const Nullable<int> number;
    const std::string text = "nullable value is not set.";
    QCOMPARE(thrownBy([&] { (void)number.get(); }), text);
}

void tst_Nullable::anAssignedValueIsSet()
{
    Nullable<int> number;
    number = 7;
    QVERIFY(number.set());
    QCOMPARE(number.get(), 7);
    number = 8;
    QCOMPARE(number.get(), 8);

    Nullable<QString> text;
    text = QStringLiteral("abc");
    QCOMPARE(text.get(), QStringLiteral("abc"));
}

void tst_Nullable::isMadeFromAValue()
{
    const Nullable<double> number = 0.5;
    QVERIFY(number.set());
    QCOMPARE(number.get(), 0.5);
}

void tst_Nullable::takesTheOtherStateInACopy()
{
    Nullable<int> number = 7;
    const Nullable<int> copy = number;
    QCOMPARE(copy.get(), 7);
    number = Nullable<int>();
    QVERIFY(!number.set());
    QVERIFY(copy.set());
}

void tst_Nullable::givesItsAddressToAFunctionThatFillsIt()
{
    Nullable<int> number;
    QCOMPARE(fill(&number, 0), 0);
    QVERIFY(number.set());
    QCOMPARE(number.get(), 42);
}

void tst_Nullable::isSetBeforeTheFunctionIsCalled()
{
    Nullable<int> number;
    const int *address = &number;
    QVERIFY(number.set());
    QCOMPARE(*address, 0);
}

void tst_Nullable::isUnsetAgainAfterAFailedCall()
{
    Nullable<int> number;
    if (fill(&number, -1) != 0)
        number.unset();
    QVERIFY(!number.set());
    QVERIFY(!thrownBy([&] { (void)number.get(); }).empty());
    QCOMPARE(fill(&number, 0), 0);
    QCOMPARE(number.get(), 42);
}

void tst_Nullable::theAddressOfASetValueThrows()
{
    Nullable<int> number = 7;
    QCOMPARE(thrownBy([&] { (void)&number; }),
             std::string("can't use & operator (set by pointer) because nullable value is set."));
    QVERIFY(number.set());
    QCOMPARE(number.get(), 7);
}

void tst_Nullable::falseAndZeroAreValues()
{
    Nullable<bool> flag;
    flag = false;
    QVERIFY(flag.set());
    QVERIFY(!flag.get());
    const Nullable<int> number = 0;
    QVERIFY(number.set());
}

void tst_Nullable::goesThroughContainersAndFutures()
{
    std::vector<Nullable<QString>> texts(2);
    texts[1] = QStringLiteral("b");
    texts.insert(texts.begin(), QStringLiteral("a"));
    QCOMPARE(texts.front().get(), QStringLiteral("a"));
    QVERIFY(!texts[1].set());
    QCOMPARE(texts.back().get(), QStringLiteral("b"));

    QPromise<Nullable<int>> promise;
    promise.start();
    promise.addResult(Nullable<int>(7));
    promise.finish();
    QCOMPARE(promise.future().result().get(), 7);
}

ZVT_TEST(tst_Nullable)
#include "tst_Nullable.moc"
