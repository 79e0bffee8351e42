#pragma once

#include <QObject>
#include <QTest>

#include <functional>
#include <memory>

/// The base of every test class: a test function fails on any Qt warning that it has not announced by
/// QTest::ignoreMessage(). A class with an init() of its own calls Test::init() from it. The poll of
/// SsdTabModel does not start by itself: a test that needs it emits `timeout` of the model's child "updateTimer".
///
/// A test file holds one class named like the file and ends with
///
///     ZVT_TEST(tst_Something)
///     #include "tst_Something.moc"
class Test : public QObject
{
    Q_OBJECT

protected slots:
    void init();
};

/// The test classes of this program, by name. The program runs the class named by its first argument, with the
/// remaining arguments for Qt Test; without a name it runs all of them.
class TestRegistry
{
public:
    using Factory = std::function<std::unique_ptr<QObject>()>;

    static int add(const char *name, Factory factory);
};

// The class is not in an anonymous namespace, since moc needs it in the enclosing one.
#define ZVT_TEST(Class)                                                                                                \
    static const int registered_##Class = TestRegistry::add(#Class, [] { return std::make_unique<Class>(); });
