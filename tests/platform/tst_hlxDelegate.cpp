#include "hlx/delegate.h"

#include <QFutureWatcher>
#include <QPromise>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "hlx/CString.h"
#include "tests/support/Test.h"

namespace
{

using Progress = hlx::delegate<int(unsigned int, unsigned int)>;

struct Model {
    int progress(unsigned int done, unsigned int total)
    {
        sum += done;
        return static_cast<int>(total);
    }
    int other(unsigned int, unsigned int) { return 0; }
    int constant(unsigned int done, unsigned int) const { return static_cast<int>(done); }
    void take(hlx::CString name) { last = std::move(name); }
    void fill(std::unique_ptr<int> value, int &out) { out = *value; }

    unsigned int sum = 0;
    hlx::CString last;
};

struct DerivedModel : Model {
};

} // namespace

class tst_hlxDelegate : public Test
{
    Q_OBJECT

private slots:
    void isThreeWords();
    void isEmptyByDefault();
    void callsAMember();
    void passesArgumentsOn();
    void isEqualByFunctionAndObject();
    void callsAFunctor();
    void copiesShareTheFunctor();
    void freesItsFunctorWithoutACall();
    void takesFunctorsThatCanOnlyMove();
    void copiesAndDropsOnThreads();
    void goesThroughAFuture();
};

void tst_hlxDelegate::isThreeWords()
{
    static_assert(sizeof(hlx::delegate<void()>) == 3 * sizeof(void *));
    static_assert(sizeof(Progress) == 3 * sizeof(void *));
    QVERIFY(std::is_nothrow_move_constructible_v<Progress>);
}

void tst_hlxDelegate::isEmptyByDefault()
{
    const Progress nothing;
    QVERIFY(nothing.empty());
    QVERIFY(!nothing);
    QVERIFY(nothing == Progress());
    QCOMPARE(nothing(1, 2), 0);
    hlx::delegate<void()>()();
}

void tst_hlxDelegate::callsAMember()
{
    DerivedModel model;
    const auto progress = Progress::FromMember<Model, &Model::progress>(&model);
    QVERIFY(progress);
    QVERIFY(!progress.empty());
    QCOMPARE(progress(3, 10), 10);
    QCOMPARE(model.sum, 3U);
    const auto derived = Progress::FromMember<DerivedModel, &Model::progress>(&model);
    QCOMPARE(derived(4, 11), 11);
    const Model constant;
    QCOMPARE((Progress::FromMember<const Model, &Model::constant>(&constant)(7, 0)), 7);
}

void tst_hlxDelegate::passesArgumentsOn()
{
    Model model;
    hlx::delegate<void(hlx::CString)>::FromMember<Model, &Model::take> (&model)("Connected");
    QCOMPARE(model.last.c_str(), "Connected");
    int out = 0;
    using Fill = hlx::delegate<void(std::unique_ptr<int>, int &)>;
    Fill::FromMember<Model, &Model::fill> (&model)(std::make_unique<int>(6), out);
    QCOMPARE(out, 6);
}

void tst_hlxDelegate::isEqualByFunctionAndObject()
{
    Model first;
    Model second;
    const auto delegate = Progress::FromMember<Model, &Model::progress>(&first);
    QVERIFY((delegate == Progress::FromMember<Model, &Model::progress>(&first)));
    QVERIFY((delegate != Progress::FromMember<Model, &Model::progress>(&second)));
    QVERIFY((delegate != Progress::FromMember<Model, &Model::other>(&first)));
    QVERIFY(delegate != Progress());
    const auto functor = [](unsigned int, unsigned int) { return 0; };
    const auto lambda = Progress::FromLamda(functor);
    QVERIFY(lambda == Progress(lambda));
    QVERIFY(lambda != Progress::FromLamda(functor));
}

void tst_hlxDelegate::callsAFunctor()
{
    int calls = 0;
    const auto count = hlx::delegate<void()>::FromLamda([&calls] { ++calls; });
    count();
    count();
    QCOMPARE(calls, 2);
    // A result that the delegate does not return is dropped.
    hlx::delegate<void()>::FromLamda([&calls] { return ++calls; })();
    QCOMPARE(calls, 3);
}

void tst_hlxDelegate::copiesShareTheFunctor()
{
    const auto next = hlx::delegate<int()>::FromLamda([n = 0]() mutable { return ++n; });
    hlx::delegate<int()> copy;
    copy = next;
    QCOMPARE(next(), 1);
    QCOMPARE(copy(), 2);
}

void tst_hlxDelegate::freesItsFunctorWithoutACall()
{
    const auto token = std::make_shared<int>(1);
    auto delegate = hlx::delegate<void()>::FromLamda([token] {});
    QCOMPARE(token.use_count(), 2L);
    hlx::delegate<void()> copy(delegate);
    hlx::delegate<void()> moved(std::move(delegate));
    copy = hlx::delegate<void()>();
    QCOMPARE(token.use_count(), 2L);
    moved = copy;
    QCOMPARE(token.use_count(), 1L);
}

void tst_hlxDelegate::takesFunctorsThatCanOnlyMove()
{
    auto value = std::make_unique<int>(8);
    const auto delegate = hlx::delegate<int()>::FromLamda([value = std::move(value)] { return *value; });
    const hlx::delegate<int()> copy(delegate);
    QCOMPARE(copy(), 8);
}

void tst_hlxDelegate::copiesAndDropsOnThreads()
{
    std::atomic<int> calls = 0;
    const auto token = std::make_shared<int>(1);
    auto shared = hlx::delegate<void()>::FromLamda([token, &calls] { ++calls; });
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t)
        threads.emplace_back([copy = shared] {
            for (int i = 0; i < 20000; ++i) {
                hlx::delegate<void()> mine(copy);
                mine();
                mine = hlx::delegate<void()>();
            }
        });
    shared = hlx::delegate<void()>();
    for (std::thread &thread : threads)
        thread.join();
    threads.clear();
    QCOMPARE(calls.load(), 160000);
    QCOMPARE(token.use_count(), 1L);
}

void tst_hlxDelegate::goesThroughAFuture()
{
    int called = 0;
    QPromise<hlx::delegate<void()>> promise;
    promise.start();
    QFutureWatcher<hlx::delegate<void()>> watcher;
    watcher.setFuture(promise.future());
    std::thread worker([&promise, &called] {
        promise.addResult(hlx::delegate<void()>::FromLamda([&called] { ++called; }));
        promise.finish();
    });
    worker.join();
    QTRY_VERIFY(watcher.isFinished());
    QCOMPARE(called, 0);
    watcher.result()();
    QCOMPARE(called, 1);
}

ZVT_TEST(tst_hlxDelegate)
#include "tst_hlxDelegate.moc"
