#include "platform/emulator/control.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <array>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>

using namespace emulator;

namespace
{

/// A harmless value of an argument, with the memory that it points to.
template <class T> struct Argument {
    T value{};
    T get() { return value; }
    static constexpr bool canBeNull = false;
};

template <> struct Argument<const char *> {
    const char *get() const { return "name"; }
    static constexpr bool canBeNull = true;
};

template <class T> struct Argument<T *> {
    // A pointer may point to a buffer. The largest one of the SDK has 768 bytes.
    std::array<T, std::is_arithmetic_v<T> ? 1024 : 1> values{};
    Argument()
    {
        // Not 0, which a call that fails might write.
        if constexpr (std::is_arithmetic_v<T>)
            values.fill(std::is_same_v<T, bool> ? T(true) : T(77));
    }
    T *get() { return values.data(); }
    static constexpr bool canBeNull = true;
};

template <class Signature> struct Argument<hlx::delegate<Signature> *> {
    hlx::delegate<Signature> *get() const { return nullptr; }
    static constexpr bool canBeNull = false;
};

template <class T> T nullOr(Argument<T> &argument)
{
    if constexpr (Argument<T>::canBeNull)
        return nullptr;
    else
        return argument.get();
}

/// Calls a function of the SDK with generated arguments.
struct Function {
    const char *name;
    bool takesHandle;
    bool takesPointers;
    std::function<int(uint64_t)> call;
    std::function<int(uint64_t)> callWithNulls;
    std::function<bool(uint64_t)> leavesOutputsAlone;
};

/// Returns whether the memory of an argument still has its first values.
template <class T> bool untouched(Argument<T> &argument)
{
    if constexpr (
        std::is_pointer_v<
            T> && std::is_arithmetic_v<std::remove_pointer_t<T>> && !std::is_const_v<std::remove_pointer_t<T>>)
        return argument.values == Argument<T>().values;
    else
        return true;
}

template <class... Args> Function describe(const char *name, int (*function)(uint64_t, Args...))
{
    const auto call = [function](uint64_t handle) {
        std::tuple<Argument<Args>...> arguments;
        return std::apply([&](auto &...argument) { return function(handle, argument.get()...); }, arguments);
    };
    const auto callWithNulls = [function](uint64_t handle) {
        std::tuple<Argument<Args>...> arguments;
        return std::apply([&](auto &...argument) { return function(handle, nullOr<Args>(argument)...); }, arguments);
    };
    const auto leavesOutputsAlone = [function](uint64_t handle) {
        std::tuple<Argument<Args>...> arguments;
        return std::apply(
            [&](auto &...argument) {
                return function(handle, argument.get()...) == Ok || (untouched<Args>(argument) && ...);
            },
            arguments);
    };
    return {name, true, (Argument<Args>::canBeNull || ...), call, callWithNulls, leavesOutputsAlone};
}

template <class Result, class... Args> Function describe(const char *name, Result (*function)(Args...))
{
    const auto call = [function](uint64_t) {
        std::tuple<Argument<Args>...> arguments;
        std::apply([&](auto &...argument) { function(argument.get()...); }, arguments);
        return 0;
    };
    const auto callWithNulls = [function](uint64_t) {
        std::tuple<Argument<Args>...> arguments;
        if constexpr (std::is_same_v<Result, int>)
            return std::apply([&](auto &...argument) { return function(nullOr<Args>(argument)...); }, arguments);
        else
            return 0;
    };
    return {name, false, (Argument<Args>::canBeNull || ...), call, callWithNulls, [](uint64_t) { return true; }};
}

const std::vector<Function> &functions()
{
    static const std::vector<Function> table = {
#define SDK_FUNCTION(name) describe(#name, &name),
#include "tests/platform/sdkFunctions.inc"
#undef SDK_FUNCTION
    };
    return table;
}

/// Returns the names of the functions that the SDK's header declares.
std::set<std::string> declaredNames()
{
    QFile header(QStringLiteral(ZVT_SOURCE_DIR "/common/boundary/zvt/zvtsdk.h"));
    if (!header.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression declaration(
        QStringLiteral("^(?:int|const char\\*|const void\\*) (zvt\\w+)\\(.*\\);$"),
        QRegularExpression::MultilineOption);
    std::set<std::string> names;
    for (auto match = declaration.globalMatch(QString::fromUtf8(header.readAll())); match.hasNext();)
        names.insert(match.next().captured(1).toStdString());
    return names;
}

} // namespace

class tst_sdkFunctions : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        // A manual clock, so that slow functions take no time, and a working folder for the file "name" that some of
        // them write.
        Clock::manual();
        QDir::setCurrent(m_folder.path());
    }

    void cleanup()
    {
        Clock::automatic();
        QDir::setCurrent(m_workingDirectory);
    }

    void theHeaderDeclaresThemAll()
    {
        std::set<std::string> known;
        for (const Function &function : functions())
            known.insert(function.name);
        QCOMPARE(known.size(), size_t(502));
        QVERIFY(declaredNames() == known);
    }

    void everyDeclarationIsDocumented()
    {
        QFile header(QStringLiteral(ZVT_SOURCE_DIR "/common/boundary/zvt/zvtsdk.h"));
        QVERIFY(header.open(QIODevice::ReadOnly));
        QByteArray before;
        while (!header.atEnd()) {
            const QByteArray line = header.readLine();
            if (line.contains(" zvt") && line.endsWith(");\n") && !line.startsWith("//"))
                QVERIFY2(before.startsWith("/// ") || line.contains("///< "), line);
            before = line;
        }
    }

    void noCameraNoSuccess_data()
    {
        QTest::addColumn<bool>("stale");
        QTest::newRow("handle 0") << false;
        QTest::newRow("stale handle") << true;
    }

    void noCameraNoSuccess()
    {
        QFETCH(bool, stale);
        const uint64_t handle = stale ? staleHandle() : 0;
        for (const Function &function : functions()) {
            const size_t mark = Sdk::gate().mark();
            const int status = function.call(handle);
            const auto calls = Sdk::gate().callsSince(mark);
            QVERIFY2(calls.size() == 1, function.name);
            QCOMPARE(calls.front().name, std::string(function.name));
            if (function.takesHandle) {
                QVERIFY2(status == InvalidHandle, function.name);
                QCOMPARE(calls.front().status, int(InvalidHandle));
            }
        }
    }

    void everythingFailsOnADisconnectedCamera()
    {
        const auto camera = Camera::create(QStringLiteral("everything"), m_folder.path());
        for (const Function &function : functions()) {
            if (!function.takesHandle)
                continue;
            const size_t mark = camera->gate().mark();
            QVERIFY2(function.call(camera->handle()) == NotConnected, function.name);
            const auto calls = camera->gate().callsSince(mark);
            QVERIFY2(calls.size() == 1, function.name);
            QCOMPARE(calls.front().name, std::string(function.name));
            QCOMPARE(calls.front().status, int(NotConnected));
        }
    }

    void everythingCanBeMadeToFail()
    {
        const auto camera = connected(QStringLiteral("everything"));
        camera->gate().failAlways("*");
        for (const Function &function : functions())
            if (function.takesHandle)
                QVERIFY2(function.call(camera->handle()) == Injected, function.name);
    }

    void nullPointersFail_data() { profiles(); }

    void nullPointersFail()
    {
        QFETCH(QString, profile);
        const auto camera = connected(profile);
        for (const Function &function : functions())
            if (function.takesPointers)
                QVERIFY2(function.callWithNulls(camera->handle()) != Ok, function.name);
    }

    void failuresLeaveOutputsAlone_data() { profiles(); }

    void failuresLeaveOutputsAlone()
    {
        QFETCH(QString, profile);
        const auto camera = connected(profile);
        for (const Function &function : functions())
            QVERIFY2(function.leavesOutputsAlone(camera->handle()), function.name);
    }

    void whatIsAbsentIsLoggedWithItsArguments()
    {
        const auto camera = connected(QStringLiteral("bare"));
        QCOMPARE(zvtSetFilterInfoName(camera->handle(), 7, "Ünder"), int(Absent));
        const auto calls = camera->gate().calls();
        QCOMPARE(calls.size(), size_t(1));
        QCOMPARE(calls.front().name, std::string("zvtSetFilterInfoName"));
        QCOMPARE(calls.front().arguments, std::string("7, \"Ünder\""));
        QCOMPARE(calls.front().status, int(Absent));
    }

private:
    static void profiles()
    {
        QTest::addColumn<QString>("profile");
        for (const QString &name : Profile::names())
            QTest::newRow(qPrintable(name)) << name;
    }

    std::shared_ptr<Camera> connected(const QString &profile) const
    {
        auto camera = Camera::create(profile, m_folder.path());
        camera->connect();
        return camera;
    }

    uint64_t staleHandle() const { return Camera::create(QStringLiteral("bare"), m_folder.path())->handle(); }

    QTemporaryDir m_folder;
    const QString m_workingDirectory = QDir::currentPath();
};

ZVT_TEST(tst_sdkFunctions)
#include "tst_sdkFunctions.moc"
