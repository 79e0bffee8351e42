#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QString>
#include <QStringList>

#include <utility>

/// The name of the signal of a property, for comparison with a SignalLog.
inline QString changedSignal(const QString &property) { return property + QStringLiteral("Changed"); }

/// The names of the signals of properties, in order.
inline QStringList changedSignals(const QStringList &properties)
{
    QStringList names;
    for (const QString &property : properties)
        names << changedSignal(property);
    return names;
}

/// Records the signals of one or more objects by name, in the order in which they were emitted.
class SignalLog : public QObject
{
public:
    SignalLog() = default;
    explicit SignalLog(QObject *subject) { watch(subject); }

    /// Records every signal of `subject` from now on, with `prefix` before its name.
    void watch(QObject *subject, const QString &prefix = {})
    {
        const QMetaObject *meta = subject->metaObject();
        for (int i = QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
            if (meta->method(i).methodType() != QMetaMethod::Signal)
                continue;
            const int slot = QObject::staticMetaObject.methodCount() + static_cast<int>(m_names.size());
            m_names << prefix + QString::fromLatin1(meta->method(i).name());
            QMetaObject::connect(subject, i, this, slot, Qt::DirectConnection);
        }
    }

    /// Returns the signals since the last call.
    QStringList take() { return std::exchange(m_order, {}); }

    // Each signal has a slot without a name, found by its number.
    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        const int slot = QObject::qt_metacall(call, id, arguments);
        if (slot < 0 || call != QMetaObject::InvokeMetaMethod)
            return slot;
        m_order << m_names.at(slot);
        return -1;
    }

private:
    QStringList m_names;
    QStringList m_order;
};
