#include "tests/support/walkers.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QVariantMap>

#include <memory>
#include <vector>

namespace
{

/// A camera, a root and the model that is walked.
struct Walk {
    explicit Walk(const ModelUnderTest &model, bool connected = true) : rig(model.profile, connected)
    {
        model.prepare(rig);
        root.reset(model.makeRoot(rig.controller()));
        subject = model.makeModel(root.get());
        CameraRig::settle();
    }

    CameraRig rig;
    std::unique_ptr<QObject> root;
    QObject *subject = nullptr;
};

/// One call of a read: the n-th of its name.
struct ReadCall {
    QString name;
    int number = 1;

    QString key() const { return number == 1 ? name : QStringLiteral("%1#%2").arg(name).arg(number); }
};

bool isFlag(const QString &property)
{
    return property == QLatin1String("refreshing") || property == QLatin1String("hasRefreshed");
}

/// The values that a page sees; objects are walked by themselves.
QVariantMap valuesOf(const QObject *model)
{
    QVariantMap values;
    const QMetaObject *meta = model->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (!property.metaType().flags().testFlag(QMetaType::PointerToQObject))
            values.insert(QString::fromLatin1(property.name()), property.read(model));
    }
    return values;
}

/// Counts the signals of a model, by name.
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

/// The calls of one read that came from its task, in order.
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

Outcome readWith(const ModelUnderTest &model, const ReadCall *failing)
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

QStringList differing(const QVariantMap &first, const QVariantMap &second)
{
    QStringList names;
    for (auto it = first.cbegin(); it != first.cend(); ++it)
        if (it.value() != second.value(it.key()))
            names << it.key();
    return names;
}

QString described(const QStringList &names)
{
    return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

} // namespace

#define FAIL_WALK(message) QFAIL(qPrintable(message))

void walkFailingReads(const ModelUnderTest &model, const ReadExceptions &exceptions)
{
    const auto calls = callsOfOneRead(model);
    QVERIFY2(!calls.empty(), "the read asks the camera for nothing");
    const Outcome good = readWith(model, nullptr);
    QMap<QString, QString> readerOf;
    QStringList known;
    for (const ReadCall &call : calls) {
        known << call.key();
        const Outcome outcome = readWith(model, &call);
        const QStringList old = differing(good.after, outcome.after);
        if (exceptions.contains(call.key())) {
            QStringList expected = exceptions.value(call.key()).oldProperties;
            expected.sort();
            if (old != expected)
                FAIL_WALK(QStringLiteral("%1 fails: differing are %2, expected are %3 (%4)")
                              .arg(call.key(), described(old), described(expected),
                                   QLatin1String(exceptions.value(call.key()).reason)));
            continue;
        }
        if (old.isEmpty())
            FAIL_WALK(
                QStringLiteral("%1 fails, and every value is as if it had not: no value is its own").arg(call.key()));
        for (const QString &property : old) {
            if (outcome.after.value(property) != good.before.value(property))
                FAIL_WALK(QStringLiteral("%1 fails, and %2 is neither old nor new").arg(call.key(), property));
            if (readerOf.contains(property))
                FAIL_WALK(QStringLiteral("%1 stays old when %2 fails, and when %3 does")
                              .arg(property, call.key(), readerOf.value(property)));
            readerOf.insert(property, call.key());
        }
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
            // A destructor that waits for its read would wait here for ever: the call is let go only behind it.
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
    const size_t heldMark = walk.rig.gate().mark();
    {
        const Signals spies(walk.subject);
        model.read(walk.subject);
        QCOMPARE(spies.emitted(), QStringList());
    }
    QCOMPARE(walk.rig.callsSince(heldMark), QStringList());
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
            walk.root.reset(model.makeRoot({}));
            walk.subject = model.makeModel(walk.root.get());
            CameraRig::settle();
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

namespace
{

QVariant randomValue(const QMetaType &type, QRandomGenerator &random)
{
    if (type.id() == QMetaType::Bool)
        return random.bounded(2) == 1;
    if (type.id() == QMetaType::QString)
        return QString(random.bounded(300), QChar(random.bounded(32, 0x2000)));
    QVariant value(random.bounded(4) == 0 ? random.generate() : static_cast<quint32>(random.bounded(8)));
    value.convert(type);
    return value;
}

void writeRandomProperty(QObject *model, QRandomGenerator &random)
{
    const QMetaObject *meta = model->metaObject();
    const QMetaProperty property = meta->property(random.bounded(meta->propertyCount()));
    if (property.isWritable() && qstrcmp(property.name(), "objectName") != 0)
        property.write(model, randomValue(property.metaType(), random));
}

} // namespace

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
            writeRandomProperty(walk->subject, random);
        }
    }
    CameraRig::settle();
    walk->rig.gate().failNever();
    walk->rig.camera().connect();
    CameraRig::settle();
    const size_t mark = walk->rig.gate().mark();
    model.read(walk->subject);
    CameraRig::settle();
    for (const auto &call : walk->rig.gate().callsSince(mark))
        QVERIFY2(call.status != emulator::Injected, call.name.c_str());
    QVERIFY(valuesOf(walk->subject).value(QStringLiteral("hasRefreshed"), true).toBool());
}
