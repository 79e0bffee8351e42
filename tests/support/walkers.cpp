#include "tests/support/walkers.h"

#include "tests/support/SignalLog.h"
#include "tests/support/modelProperties.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVariantMap>

#include <memory>
#include <vector>

namespace
{

/// A camera, a root and the model under test.
struct Walk {
    explicit Walk(const ModelUnderTest &model, bool connected = true) : rig(model.profile, connected)
    {
        model.prepare(rig);
        useRoot(model, rig.controller());
    }

    void useRoot(const ModelUnderTest &model, const hlx::TSharedPtr<hlx::cam::IZVTController> &controller)
    {
        root.reset(model.makeRoot(controller));
        // The root's own models must not read at the same time as the model under test.
        for (QTimer *timer : root->findChildren<QTimer *>())
            timer->stop();
        subject = model.makeModel(root.get());
        CameraRig::settle();
    }

    CameraRig rig;
    std::unique_ptr<QObject> root;
    QObject *subject = nullptr;
};

/// One call of a read: the n-th with its name.
struct ReadCall {
    QString name;
    int number = 1;

    QString key() const { return number == 1 ? name : QStringLiteral("%1#%2").arg(name).arg(number); }
};

bool isFlag(const QString &property)
{
    return property == QLatin1String("refreshing") || property == QLatin1String("hasRefreshed");
}

/// The name of a property's change signal.
QString notifierOf(const QObject *model, const QString &property)
{
    const QMetaObject *meta = model->metaObject();
    return QString::fromLatin1(meta->property(meta->indexOfProperty(property.toLatin1())).notifySignal().name());
}

/// Counts the signals of a model by name.
class Signals
{
public:
    explicit Signals(QObject *model)
    {
        const QMetaObject *meta = model->metaObject();
        for (int i = QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i)
            if (meta->method(i).methodType() == QMetaMethod::Signal)
                m_spies.push_back(std::make_unique<QSignalSpy>(model, meta->method(i)));
    }

    QStringList emitted() const
    {
        QStringList names;
        for (const auto &spy : m_spies)
            if (!spy->isEmpty())
                names << QString::fromLatin1(spy->signal()).section(u'(', 0, 0);
        return names;
    }

private:
    std::vector<std::unique_ptr<QSignalSpy>> m_spies;
};

/// The calls that the task of one read makes, in order.
std::vector<ReadCall> callsOfOneRead(const ModelUnderTest &model)
{
    Walk walk(model);
    const size_t mark = walk.rig.gate().mark();
    model.read(walk.subject);
    CameraRig::settle();
    std::vector<ReadCall> calls;
    QMap<QString, int> counts;
    for (const auto &call : walk.rig.gate().callsSince(mark)) {
        if (call.thread == std::this_thread::get_id())
            continue;
        const QString name = QString::fromStdString(call.name);
        calls.push_back({name, ++counts[name]});
    }
    return calls;
}

struct Outcome {
    QVariantMap before;
    QVariantMap after;
};

/// The values before and after the first read of a fresh model; `failing` is a call that fails, or null.
Outcome firstRead(const ModelUnderTest &model, const ReadCall *failing)
{
    Walk walk(model);
    Outcome outcome;
    outcome.before = valuesOf(walk.subject);
    if (failing)
        walk.rig.gate().failNext(failing->name.toStdString(), failing->number);
    model.read(walk.subject);
    CameraRig::settle();
    outcome.after = valuesOf(walk.subject);
    return outcome;
}

QString described(const QStringList &names)
{
    return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

} // namespace

#define FAIL_WALK(message) QFAIL(qPrintable(message))

namespace
{

/// Returns the fault when a call fails in the first read of a model; empty if there is none. Adds the values of the
/// call to `readerOf`.
QString faultOfFirstRead(const ModelUnderTest &model, const ReadCall &call, const Outcome &good,
                         const ReadException *exception, QMap<QString, QString> &readerOf)
{
    const Outcome outcome = firstRead(model, &call);
    const QStringList affected = differing(good.after, outcome.after);
    if (exception) {
        QStringList expected = exception->affected;
        expected.sort();
        return affected == expected
            ? QString()
            : QStringLiteral("affected are %1, expected are %2 (%3)")
                  .arg(described(affected), described(expected), QLatin1String(exception->reason));
    }
    if (affected.isEmpty())
        return QStringLiteral("every value is as if it had not: no value is its own");
    const QStringList changed = differing(good.before, outcome.after);
    for (const QString &property : affected) {
        if (changed.contains(property))
            return property + QStringLiteral(" is neither old nor new");
        if (readerOf.contains(property))
            return QStringLiteral("%1 is missing, as it is when %2 fails").arg(property, readerOf.value(property));
        readerOf.insert(property, call.key());
    }
    return {};
}

/// The same when a call fails in the second read: the affected values must stay as they were, without a signal.
QString faultOfSecondRead(const ModelUnderTest &model, const ReadCall &call, const QStringList &affected,
                          const QStringList &reset)
{
    Walk walk(model);
    model.read(walk.subject);
    CameraRig::settle();
    const QVariantMap read = valuesOf(walk.subject);
    const Signals spies(walk.subject);
    walk.rig.gate().failNext(call.name.toStdString(), call.number);
    model.read(walk.subject);
    CameraRig::settle();
    QStringList changed = differing(read, valuesOf(walk.subject));
    changed.removeIf([&](const QString &property) { return reset.contains(property); });
    if (!changed.isEmpty())
        return QStringLiteral("in a later read %1 do not stay as they were").arg(described(changed));
    const QStringList emitted = spies.emitted();
    for (const QString &property : affected)
        if (!reset.contains(property) && emitted.contains(notifierOf(walk.subject, property)))
            return QStringLiteral("in a later read %1 is signalled though it was not read").arg(property);
    return {};
}

} // namespace

void walkFailingReads(const ModelUnderTest &model, const ReadExceptions &exceptions)
{
    const auto calls = callsOfOneRead(model);
    QVERIFY2(!calls.empty(), "the read asks the camera for nothing");
    const Outcome good = firstRead(model, nullptr);
    QMap<QString, QString> readerOf;
    QStringList known;
    for (const ReadCall &call : calls) {
        known << call.key();
        const auto found = exceptions.constFind(call.key());
        const ReadException *exception = found == exceptions.cend() ? nullptr : &*found;
        QString fault = faultOfFirstRead(model, call, good, exception, readerOf);
        if (fault.isEmpty())
            fault = faultOfSecondRead(model, call, exception ? exception->affected : readerOf.keys(call.key()),
                                      exception ? exception->reset : QStringList());
        if (!fault.isEmpty())
            FAIL_WALK(QStringLiteral("%1 fails, and %2").arg(call.key(), fault));
    }
    for (const QString &key : exceptions.keys())
        if (!known.contains(key))
            FAIL_WALK(QStringLiteral("the exception for %1 stands for a call that is not made").arg(key));
}

void walkHeldDeletion(const ModelUnderTest &model)
{
    const auto calls = callsOfOneRead(model);
    QVERIFY2(!calls.empty(), "the read asks the camera for nothing");
    for (const bool wholeRoot : {false, true}) {
        for (const ReadCall &call : calls) {
            if (call.number > 1)
                continue;
            Walk walk(model);
            walk.rig.gate().hold(call.name.toStdString());
            model.read(walk.subject);
            if (!walk.rig.gate().waitHeld(call.name.toStdString()))
                FAIL_WALK(QStringLiteral("%1 does not arrive").arg(call.name));
            // The call is released only after the deletion, so a destructor that waits for its read would never return.
            if (wholeRoot)
                walk.root.reset();
            else
                delete walk.subject;
            walk.rig.gate().release("*");
            CameraRig::settle();
        }
    }
}

void walkSecondRefresh(const ModelUnderTest &model)
{
    const auto calls = callsOfOneRead(model);
    QVERIFY2(!calls.empty(), "the read asks the camera for nothing");
    Walk walk(model);
    const size_t mark = walk.rig.gate().mark();
    const std::string first = calls.front().name.toStdString();
    walk.rig.gate().hold(first);
    model.read(walk.subject);
    QVERIFY(walk.rig.gate().waitHeld(first));
    {
        const Signals spies(walk.subject);
        model.read(walk.subject);
        QCOMPARE(spies.emitted(), QStringList());
    }
    // The calls are counted at the end, since a read may make some of them at the same time as the held one.
    walk.rig.gate().release("*");
    CameraRig::settle();
    int made = 0;
    for (const auto &call : walk.rig.gate().callsSince(mark))
        made += call.thread != std::this_thread::get_id();
    QCOMPARE(made, static_cast<int>(calls.size()));
}

void walkNoCamera(const ModelUnderTest &model, const QStringList &published)
{
    for (const bool controller : {true, false}) {
        Walk walk(model, false);
        if (!controller) {
            walk.useRoot(model, {});
        }
        const Signals spies(walk.subject);
        const QVariantMap before = valuesOf(walk.subject);
        model.read(walk.subject);
        CameraRig::settle();
        const QVariantMap after = valuesOf(walk.subject);
        if (after.contains(QStringLiteral("refreshing")))
            QCOMPARE(after.value(QStringLiteral("refreshing")), QVariant(false));
        if (after.contains(QStringLiteral("hasRefreshed")))
            QCOMPARE(after.value(QStringLiteral("hasRefreshed")), QVariant(true));
        for (const QString &property : differing(before, after))
            if (!isFlag(property) && !published.contains(property))
                FAIL_WALK(QStringLiteral("%1 changed without a camera").arg(property));
        for (const QString &signal : spies.emitted()) {
            const QString property = signal.chopped(qMin<qsizetype>(signal.size(), 7)); // Without "Changed".
            if (!isFlag(property) && !published.contains(property))
                FAIL_WALK(QStringLiteral("%1 was emitted without a camera").arg(signal));
        }
    }
}

void walkVisibility(const ModelUnderTest &model)
{
    Walk walk(model);
    const QVariantMap before = valuesOf(walk.subject);
    SignalLog log(walk.subject);
    const size_t mark = walk.rig.gate().mark();
    for (int turn = 0; turn < 2; ++turn)
        QVERIFY(walk.subject->setProperty("visible", true));
    CameraRig::settle();
    QCOMPARE(log.take(), QStringList("visibleChanged"));
    QCOMPARE(differing(before, valuesOf(walk.subject)), QStringList("visible"));
    QCOMPARE(walk.rig.callsSince(mark), QStringList());
}

namespace
{

/// The signals of an invokable, and the properties that it changes.
QStringList effectsOf(QObject *model, const char *invokable)
{
    const QVariantMap before = valuesOf(model);
    SignalLog log(model);
    if (!QMetaObject::invokeMethod(model, invokable))
        return {QStringLiteral("there is no invokable %1").arg(QLatin1String(invokable))};
    CameraRig::settle();
    return log.take() + differing(before, valuesOf(model));
}

} // namespace

void walkApply(const ModelUnderTest &model, const char *apply)
{
    Walk walk(model);
    model.read(walk.subject);
    CameraRig::settle();
    const size_t mark = walk.rig.gate().mark();
    QCOMPARE(effectsOf(walk.subject, apply), QStringList());
    QVERIFY2(!walk.rig.callsSince(mark).isEmpty(), "nothing is written");
    for (const auto &call : walk.rig.gate().callsSince(mark))
        if (call.thread != std::this_thread::get_id())
            FAIL_WALK(QStringLiteral("%1 is called on a pool thread").arg(QString::fromStdString(call.name)));
    walk.useRoot(model, {});
    QCOMPARE(effectsOf(walk.subject, apply), QStringList());
    const std::unique_ptr<QObject> withoutRoot(model.makeModel(nullptr));
    QCOMPARE(effectsOf(withoutRoot.get(), apply), QStringList());
}

void walkRandomOperator(const ModelUnderTest &model, uint32_t seed, int steps)
{
    QRandomGenerator random(seed);
    auto walk = std::make_unique<Walk>(model);
    walk->rig.gate().failRandomly(0.2, seed);
    for (int step = 0; step < steps; ++step) {
        switch (random.bounded(12)) {
        case 0:
            walk->rig.camera().disconnect();
            break;
        case 1:
            walk->rig.camera().connect();
            break;
        case 2:
            delete walk->subject;
            walk->subject = model.makeModel(walk->root.get());
            break;
        case 3:
            QCoreApplication::processEvents();
            break;
        case 4:
            emulator::Clock::advance(random.bounded(5000));
            break;
        case 5:
        case 6:
            model.read(walk->subject);
            break;
        default:
            writeRandomProperty({walk->subject}, random);
        }
    }
    CameraRig::settle();
    walk->rig.gate().failNever();
    walk->rig.camera().connect();
    CameraRig::settle();
    const size_t mark = walk->rig.gate().mark();
    model.read(walk->subject);
    CameraRig::settle();
    QVERIFY(!walk->rig.callsSince(mark).isEmpty());
    const QObject *const seasoned = walk->subject;
    QObject *const fresh = model.makeModel(walk->root.get());
    model.read(fresh);
    CameraRig::settle();
    QStringList different = differing(valuesOf(fresh), valuesOf(seasoned));
    different.removeIf([&](const QString &property) { return model.ownState.contains(property); });
    QCOMPARE(different, QStringList());
}
