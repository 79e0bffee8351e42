#include "hlx/TArray.h"

#include <array>
#include <cstring>
#include <numeric>
#include <vector>

#include "common/Nullable.h"
#include "hlx/CString.h"
#include "tests/support/Test.h"

using hlx::TArray;

namespace
{

// Counts its objects, and detects when its bytes were moved without its constructor.
struct Item {
    Item(int n) : number(n), self(this) { ++alive; }
    Item(const Item &other) : number(other.number), self(this)
    {
        if (copiesUntilThrow == 0)
            throw std::runtime_error("copy refused");
        --copiesUntilThrow;
        ++alive;
    }
    Item(Item &&other) noexcept : number(other.number), self(this) { ++alive; }
    Item &operator=(const Item &other) = default;
    Item &operator=(Item &&other) noexcept
    {
        number = other.number;
        return *this;
    }
    ~Item()
    {
        if (self == this)
            --alive;
    }

    int number;
    Item *self;

    static inline int alive = 0;
    static inline int copiesUntilThrow = -1;
};

bool refuse(std::size_t) { return false; }

struct FailingAllocations {
    FailingAllocations() { hlx::SetAllocationHook(&refuse); }
    ~FailingAllocations() { hlx::SetAllocationHook(nullptr); }
};

std::vector<int> numbers(const TArray<Item> &items)
{
    std::vector<int> result;
    for (const Item &item : items)
        result.push_back(item.number);
    return result;
}

} // namespace

class tst_hlxTArray : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        Item::alive = 0;
        Item::copiesUntilThrow = -1;
    }

    void isCapacityDataSize();
    void doublesItsCapacityFromOne();
    void addsUnderThreeNames();
    void movesElementsByTheirConstructors();
    void addsAnElementOfItself();
    void copiesAreDeep();
    void movingLeavesAnEmptyArray();
    void removeShiftsDownTheRest();
    void removeRefusesABadIndex();
    void checksTheIndexOfAnElement();
    void destroyReleasesEverything();
    void clearKeepsTheMemory();
    void aFailingAllocationThrowsAndChangesNothing();
    void aThrowingCopyLeavesNothingBehind();
    void holdsTypesThatHideTheirAddress();
    void memoryFunctionsWorkAndFail();
};

void tst_hlxTArray::isCapacityDataSize()
{
    static_assert(sizeof(TArray<double>) == 3 * sizeof(void *));
    TArray<int> array{1, 2, 3};
    std::array<std::size_t, 3> words{};
    std::memcpy(words.data(), static_cast<const void *>(std::addressof(array)), sizeof words);
    QCOMPARE(words[0], array.capacity());
    QCOMPARE(words[1], reinterpret_cast<std::size_t>(array.data()));
    QCOMPARE(words[2], array.size());
}

void tst_hlxTArray::doublesItsCapacityFromOne()
{
    TArray<int> array;
    QVERIFY(array.empty());
    QCOMPARE(array.capacity(), std::size_t{0});
    std::vector<std::size_t> capacities;
    for (int i = 0; i < 9; ++i) {
        array.add(i);
        capacities.push_back(array.capacity());
        QCOMPARE(array[static_cast<std::size_t>(i)], i);
    }
    QCOMPARE(capacities, (std::vector<std::size_t>{1, 2, 4, 4, 8, 8, 8, 8, 16}));
    QCOMPARE(std::accumulate(array.begin(), array.end(), 0), 36);
}

void tst_hlxTArray::addsUnderThreeNames()
{
    TArray<hlx::CString> array;
    array.add("a");
    array.Add("b");
    array.push_back("c");
    QCOMPARE(array.size(), std::size_t{3});
    QCOMPARE(array[2].c_str(), "c");
}

void tst_hlxTArray::movesElementsByTheirConstructors()
{
    {
        TArray<Item> array;
        for (int i = 0; i < 100; ++i)
            array.add(i);
        QCOMPARE(Item::alive, 100);
        for (const Item &item : array)
            QCOMPARE(item.self, &item);
    }
    QCOMPARE(Item::alive, 0);
}

void tst_hlxTArray::addsAnElementOfItself()
{
    TArray<hlx::CString> array{"a text that is long enough to lie on the heap"};
    for (int i = 0; i < 5; ++i)
        array.add(array[0]);
    QCOMPARE(array[5].c_str(), "a text that is long enough to lie on the heap");
}

void tst_hlxTArray::copiesAreDeep()
{
    TArray<Item> array;
    for (int i = 0; i < 5; ++i)
        array.add(i);
    TArray<Item> copy(array);
    QVERIFY(copy.data() != array.data());
    copy[0].number = 77;
    QCOMPARE(array[0].number, 0);
    array = copy;
    QCOMPARE(numbers(array), (std::vector<int>{77, 1, 2, 3, 4}));
    const TArray<Item> &self = array;
    array = self;
    QCOMPARE(array.size(), std::size_t{5});
    QCOMPARE(Item::alive, 10);
}

void tst_hlxTArray::movingLeavesAnEmptyArray()
{
    TArray<hlx::CString> array{"a", "b"};
    const hlx::CString *data = array.data();
    TArray<hlx::CString> taken(std::move(array));
    QCOMPARE(taken.data(), data);
    QVERIFY(array.empty()); // NOLINT(bugprone-use-after-move): the state is promised
    array = std::move(taken);
    QCOMPARE(array[1].c_str(), "b");
}

void tst_hlxTArray::removeShiftsDownTheRest()
{
    TArray<Item> array;
    for (int i = 0; i < 4; ++i)
        array.add(i);
    array.remove(1);
    QCOMPARE(numbers(array), (std::vector<int>{0, 2, 3}));
    array.remove(2);
    array.remove(0);
    QCOMPARE(numbers(array), (std::vector<int>{2}));
    QCOMPARE(Item::alive, 1);
    array.remove(0);
    QVERIFY(array.empty());
    QCOMPARE(Item::alive, 0);
}

void tst_hlxTArray::removeRefusesABadIndex()
{
    TArray<int> array{1, 2};
    for (const int index : {2, 100, -1}) {
        try {
            array.remove(static_cast<std::size_t>(index));
            QFAIL("no exception");
        } catch (const std::out_of_range &error) {
            QCOMPARE(error.what(), "TArray::remove: index out of range.");
        }
    }
    QCOMPARE(array.size(), std::size_t{2});
    TArray<int> nothing;
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, nothing.remove(0));
}

void tst_hlxTArray::checksTheIndexOfAnElement()
{
    TArray<int> array{1};
    const TArray<int> &constant = array;
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, array[1] = 2);
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, (void)constant[static_cast<std::size_t>(-1)]);
}

void tst_hlxTArray::destroyReleasesEverything()
{
    TArray<Item> array;
    array.add(1);
    array.Destroy();
    QCOMPARE(Item::alive, 0);
    QCOMPARE(array.size(), std::size_t{0});
    QCOMPARE(array.capacity(), std::size_t{0});
    QVERIFY(array.data() == nullptr);
    array.add(2);
    QCOMPARE(array[0].number, 2);
}

void tst_hlxTArray::clearKeepsTheMemory()
{
    TArray<int> array{1, 2, 3};
    const std::size_t capacity = array.capacity();
    array.clear();
    QVERIFY(array.empty());
    QCOMPARE(array.capacity(), capacity);
}

void tst_hlxTArray::aFailingAllocationThrowsAndChangesNothing()
{
    TArray<int> plain{1};
    TArray<Item> items;
    items.add(1);
    {
        const FailingAllocations failing;
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, plain.add(2));
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, items.add(2));
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, TArray<Item>(items).clear());
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, TArray<int>().add(1));
    }
    QCOMPARE(plain.size(), std::size_t{1});
    QCOMPARE(plain[0], 1);
    QCOMPARE(numbers(items), (std::vector<int>{1}));
    QCOMPARE(Item::alive, 1);
}

void tst_hlxTArray::aThrowingCopyLeavesNothingBehind()
{
    TArray<Item> array;
    for (int i = 0; i < 4; ++i)
        array.add(i);
    Item::copiesUntilThrow = 2;
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, TArray<Item>(array).clear());
    Item::copiesUntilThrow = -1;
    QCOMPARE(Item::alive, 4);
}

void tst_hlxTArray::holdsTypesThatHideTheirAddress()
{
    TArray<Nullable<int>> array;
    for (int i = 0; i < 5; ++i)
        array.add(Nullable<int>(i));
    array.add(Nullable<int>());
    array.remove(0);
    const TArray<Nullable<int>> copy(array);
    QCOMPARE(copy[0].get(), 1);
    QVERIFY(!copy[4].set());
}

void tst_hlxTArray::memoryFunctionsWorkAndFail()
{
    void *block = hlx::Realloc(nullptr, 16);
    QVERIFY(block != nullptr);
    std::memset(block, 7, 16);
    block = hlx::Realloc(block, 100000);
    QCOMPARE(static_cast<char *>(block)[15], char{7});
    {
        const FailingAllocations failing;
        QVERIFY(hlx::Alloc(1) == nullptr);
        QVERIFY(hlx::Realloc(block, 200000) == nullptr);
    }
    QCOMPARE(static_cast<char *>(block)[0], char{7});
    hlx::Free(block);
    hlx::Free(nullptr);
    QVERIFY_THROWS_EXCEPTION(std::bad_alloc, hlx::ThrowBadAllocException());
    try {
        hlx::ThrowOutOfRangeException("%s: %d of %d", "list", 5, 3);
    } catch (const std::out_of_range &error) {
        QCOMPARE(error.what(), "list: 5 of 3");
    }
}

ZVT_TEST(tst_hlxTArray)
#include "tst_hlxTArray.moc"
