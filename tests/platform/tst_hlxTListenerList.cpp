#include "hlx/TListenerList.h"

#include "tests/support/Test.h"

#include <future>
#include <thread>

using List = hlx::TListenerList<int, int>;

namespace
{

/// Records calls, and may change the list during a call.
struct Ear {
    QList<int> heard;
    std::function<void()> more;

    static void hear(void *context, int a, int b)
    {
        auto *const ear = static_cast<Ear *>(context);
        ear->heard << a << b;
        if (ear->more)
            ear->more();
    }

    List::SListener listener() { return {&hear, this}; }
};

} // namespace

class tst_hlxTListenerList : public Test
{
    Q_OBJECT

private slots:
    void callsInOrderWithTheContext()
    {
        List list;
        Ear first, second;
        QList<int> order;
        first.more = [&] { order << 1; };
        second.more = [&] { order << 2; };
        list.Add(first.listener());
        list.Add(second.listener());
        list.Call(3, 4);
        QCOMPARE(first.heard, (QList<int>{3, 4}));
        QCOMPARE(second.heard, (QList<int>{3, 4}));
        QCOMPARE(order, (QList<int>{1, 2}));
    }

    void takesEachListenerOnce()
    {
        List list;
        Ear ear, other;
        for (int n = 0; n < 2; ++n)
            list.Add(ear.listener());
        list.Add({});
        QCOMPARE(list.Listeners().size(), size_t(1));
        list.Remove(other.listener());
        QCOMPARE(list.Listeners().size(), size_t(1));
        list.Remove(ear.listener());
        list.Call(1, 2);
        QVERIFY(list.Listeners().empty());
        QVERIFY(ear.heard.empty());
    }

    void aListenerMayRemoveItselfAndTheNext()
    {
        List list;
        Ear first, second, third;
        first.more = [&] {
            list.Remove(first.listener());
            list.Remove(second.listener());
            list.Add(third.listener());
        };
        list.Add(first.listener());
        list.Add(second.listener());
        list.Call(1, 2);
        QCOMPARE(first.heard.size(), 2);
        QVERIFY(second.heard.empty());
        // A listener that was added during a call is called from the next call on.
        QVERIFY(third.heard.empty());
        list.Call(5, 6);
        QCOMPARE(third.heard, (QList<int>{5, 6}));
    }

    void aRemovalWaitsForTheCallInFlight()
    {
        List list;
        Ear ear;
        std::promise<void> inside, leave;
        bool left = false;
        ear.more = [&] {
            inside.set_value();
            leave.get_future().wait();
            left = true;
        };
        list.Add(ear.listener());
        std::thread calling([&] { list.Call(1, 2); });
        inside.get_future().wait();
        std::promise<void> started;
        bool leftAtRemoval = false;
        std::thread removing([&] {
            started.set_value();
            list.Remove(ear.listener());
            leftAtRemoval = left;
        });
        started.get_future().wait();
        leave.set_value();
        removing.join();
        calling.join();
        QVERIFY(leftAtRemoval);
        QVERIFY(list.Listeners().empty());
    }
};

ZVT_TEST(tst_hlxTListenerList)
#include "tst_hlxTListenerList.moc"
