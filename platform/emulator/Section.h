#pragma once

#include "platform/emulator/values.h"

#include <QJsonObject>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace emulator
{

/// One object of a profile, read key by key. A reader asks for every key that it knows and calls finish() at the end,
/// which finds unknown keys. All errors are SetupErrors that name the place.
class Section
{
public:
    /// Messages name the source and the path of the key in it, as in "profile te-cooler: devices.cooler.setpoint".
    Section(QJsonObject values, QString source, QString path = {});

    bool contains(const QString &key) const { return m_values.contains(key); }
    /// True for a key that is there and is null.
    bool isNull(const QString &key);

    // Each returns the fallback if the key is missing, and throws if the value is of another kind or out of range.
    bool flag(const QString &key, bool fallback) { return read(key, fallback); }
    int integer(const QString &key, int fallback, int minimum, int maximum)
    {
        return read(key, fallback, {double(minimum), double(maximum)});
    }
    double number(const QString &key, double fallback, double minimum, double maximum)
    {
        return read(key, fallback, {minimum, maximum});
    }
    QString text(const QString &key, const QString &fallback) { return read(key, fallback); }
    QStringList texts(const QString &key, const QStringList &fallback) { return read(key, fallback); }
    QList<double> numbers(const QString &key, const QList<double> &fallback) { return read(key, fallback); }
    QJsonObject object(const QString &key);
    Section section(const QString &key);

    /// The value as it is, undefined if the key is missing.
    QJsonValue value(const QString &key);

    /// Throws for the first value, here or below, that is of another kind than the one of the same key in `model`,
    /// whose lists are lists of numbers. Ignores keys that the model lacks.
    void requireKindsOf(const QJsonObject &model);

    /// Throws for the first unknown key.
    void finish() const;

    /// Throws a SetupError about one key of this section.
    [[noreturn]] void refuse(const QString &key, const QString &why) const;

private:
    template <class T> T read(const QString &key, T value, Between range = rangeOf<T>())
    {
        if (const QJsonValue json = this->value(key); !json.isUndefined())
            if (const Refusal refusal = parse(json, value, range); !refusal.isEmpty())
                refuse(key, refusal);
        return value;
    }

    QString pathOf(const QString &key) const;

    QJsonObject m_values;
    QString m_source;
    QString m_path;
    QSet<QString> m_known;
};

} // namespace emulator
