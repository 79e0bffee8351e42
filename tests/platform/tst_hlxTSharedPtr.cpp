#include "hlx/TSharedPtr.h"

#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

#include "tests/support/Test.h"

using hlx::TSharedPtr;

namespace
{

struct Base {
    Base() { ++alive; }
    Base(const Base &) = delete;
    virtual ~Base() { --alive; }

    static inline std::atomic<int> alive = 0;
};

struct Other {
    virtual ~Other() = default;
    int padding = 0;
};

// Two base classes: the pointer to the second one differs from the pointer to the object.
struct Derived : Other, Base {
    explicit Derived(int n = 0) : number(n) { }
    int number;
};

// No virtual destructor: it must be destroyed as the type with which it was made.
struct PlainBase {
    int x = 0;
};
struct PlainDerived : PlainBase {
    Base member;
};

} // namespace

class tst_hlxTSharedPtr : public Test
{
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(Base::alive.load(), 0); }

    void isThreeWords();
    void anEmptyPointerHoldsNothing();
    void theLastCopyDestroysTheObject();
    void movesWithoutCounting();
    void convertsToABase();
    void castsDownAndSharesTheCount();
    void aFailingCastIsEmpty();
    void destroysAsTheTypeItWasMadeWith();
    void pointsToAPartOfAnObject();
    void comparesObjects();
    void makesAnObjectInPlace();
    void countsAcrossThreads();
    void theCounterDestroysOnce();
};

void tst_hlxTSharedPtr::isThreeWords()
{
    static_assert(sizeof(TSharedPtr<Base>) == 3 * sizeof(void *));
    const TSharedPtr<Base> pointer(new Base);
    void *first = nullptr;
    std::memcpy(&first, static_cast<const void *>(&pointer), sizeof first);
    QCOMPARE(first, static_cast<void *>(pointer.get()));
}

void tst_hlxTSharedPtr::anEmptyPointerHoldsNothing()
{
    Base *nothing = nullptr;
    for (const TSharedPtr<Base> &pointer : {TSharedPtr<Base>(), TSharedPtr<Base>(nullptr), TSharedPtr<Base>(nothing)}) {
        QVERIFY(!pointer);
        QVERIFY(pointer == nullptr);
        QVERIFY(pointer.get() == nullptr);
        const TSharedPtr<Base> copy(pointer);
        QVERIFY(!copy.dynamicCast<Derived>());
    }
}

void tst_hlxTSharedPtr::theLastCopyDestroysTheObject()
{
    TSharedPtr<Derived> first(new Derived(5));
    {
        const TSharedPtr<Derived> second(first);
        TSharedPtr<Derived> third;
        third = second;
        const TSharedPtr<Derived> &self = third;
        third = self;
        first.reset();
        QCOMPARE(third->number, 5);
        QCOMPARE((*third).number, 5);
        QCOMPARE(Base::alive.load(), 1);
    }
    QCOMPARE(Base::alive.load(), 0);
}

void tst_hlxTSharedPtr::movesWithoutCounting()
{
    TSharedPtr<Base> first(new Base);
    Base *object = first.get();
    TSharedPtr<Base> second(std::move(first));
    QVERIFY(!first); // NOLINT(bugprone-use-after-move): the state is promised
    QCOMPARE(second.get(), object);
    first = std::move(second);
    QCOMPARE(first.get(), object);
    first = nullptr;
    QCOMPARE(Base::alive.load(), 0);
}

void tst_hlxTSharedPtr::convertsToABase()
{
    TSharedPtr<Derived> derived(new Derived(3));
    TSharedPtr<Base> base = derived;
    QCOMPARE(base.get(), static_cast<Base *>(derived.get()));
    QVERIFY(static_cast<void *>(base.get()) != static_cast<void *>(derived.get()));
    derived.reset();
    QCOMPARE(Base::alive.load(), 1);
    base.reset();
    QCOMPARE(Base::alive.load(), 0);
}

void tst_hlxTSharedPtr::castsDownAndSharesTheCount()
{
    TSharedPtr<Base> base(new Derived(3));
    TSharedPtr<Derived> derived = base.dynamicCast<Derived>();
    base.reset();
    QCOMPARE(derived->number, 3);
    const TSharedPtr<Other> other = derived.dynamicCast<Other>();
    derived.reset();
    QVERIFY(other);
    QCOMPARE(Base::alive.load(), 1);
}

void tst_hlxTSharedPtr::aFailingCastIsEmpty()
{
    const TSharedPtr<Base> base(new Base);
    QVERIFY(!base.dynamicCast<Derived>());
}

void tst_hlxTSharedPtr::destroysAsTheTypeItWasMadeWith()
{
    TSharedPtr<PlainBase> pointer(new PlainDerived);
    QCOMPARE(Base::alive.load(), 1);
    pointer.reset();
    QCOMPARE(Base::alive.load(), 0);
}

void tst_hlxTSharedPtr::pointsToAPartOfAnObject()
{
    TSharedPtr<Derived> whole(new Derived(9));
    const TSharedPtr<int> part(whole, &whole->number);
    whole.reset();
    QCOMPARE(*part, 9);
    QCOMPARE(Base::alive.load(), 1);
}

void tst_hlxTSharedPtr::comparesObjects()
{
    const TSharedPtr<Derived> first(new Derived);
    const TSharedPtr<Derived> second(new Derived);
    const TSharedPtr<Base> base = first;
    QVERIFY(first == base);
    QVERIFY(first != second);
    QVERIFY(first != nullptr);
}

void tst_hlxTSharedPtr::makesAnObjectInPlace() { QCOMPARE(TSharedPtr<Derived>::make(4)->number, 4); }

void tst_hlxTSharedPtr::countsAcrossThreads()
{
    TSharedPtr<Base> shared(new Derived);
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t)
        threads.emplace_back([copy = shared] {
            for (int i = 0; i < 20000; ++i) {
                TSharedPtr<Base> mine(copy);
                const TSharedPtr<Derived> cast = mine.dynamicCast<Derived>();
                mine.reset();
                if (!cast)
                    qFatal("the cast failed");
            }
        });
    shared.reset();
    for (std::thread &thread : threads)
        thread.join();
    threads.clear();
    QCOMPARE(Base::alive.load(), 0);
}

void tst_hlxTSharedPtr::theCounterDestroysOnce()
{
    int destroyed = 0;
    auto *counter = new hlx::CReferenceCounter(&destroyed, [](void *object) { ++*static_cast<int *>(object); });
    counter->AddRef();
    counter->Release();
    QCOMPARE(destroyed, 0);
    counter->Release();
    QCOMPARE(destroyed, 1);
}

ZVT_TEST(tst_hlxTSharedPtr)
#include "tst_hlxTSharedPtr.moc"
