#pragma once

#include "platform/emulator/values.h"

#include <QJsonObject>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

namespace emulator
{

/// One object of a profile, which is read key by key. A reader reads every key that it supports and then calls
/// finish(), which throws for unknown keys. All errors are SetupErrors with the path of the key.
class Section
{
public:
    /// Messages contain the source and the path of the key in it, as in "profile te-cooler: devices.cooler.setpoint".
    Section(QJsonObject values, QString source, QString path = {});

    bool contains(const QString &key) const { return m_values.contains(key); }
    /// True if the key exists and its value is null.
    bool isNull(const QString &key);

    // These return the fallback if the key is missing. They throw if the value has another type or is outside the
    // range, whose ends are included. object() and section() have an empty object as their fallback.
    bool flag(const QString &key, bool fallback) { return read(key, fallback); }
    int integer(const QString &key, int fallback, int minimum, int maximum)
    {
        return read(key, fallback, Between{double(minimum), double(maximum)});
    }
    double number(const QString &key, double fallback, double minimum, double maximum)
    {
        return read(key, fallback, Between{minimum, maximum});
    }
    QString text(const QString &key, const QString &fallback) { return read(key, fallback); }
    QStringList texts(const QString &key, const QStringList &fallback) { return read(key, fallback); }
    QList<double> numbers(const QString &key, const QList<double> &fallback) { return read(key, fallback); }
    QJsonObject object(const QString &key);
    Section section(const QString &key);
    /// Returns the objects of a list, none if the key is missing. The path of the first one ends with "[0]".
    std::vector<Section> sections(const QString &key);

    /// Returns the unchecked value, undefined if the key is missing.
    QJsonValue value(const QString &key);

    /// Throws for the first value, also in nested objects, whose type differs from that of the same key in `reference`.
    /// A list in `reference` has numbers, or texts if its first entry is a text. Ignores keys that `reference` does not
    /// contain.
    void requireTypesOf(const QJsonObject &reference);

    /// Throws for the first key that has not been read.
    void finish() const;

    /// Throws a SetupError about one key of this section.
    [[noreturn]] void refuse(const QString &key, const QString &why) const;

private:
    template <class T, class... Range> T read(const QString &key, T value, Range... range)
    {
        if (const QJsonValue json = this->value(key); !json.isUndefined())
            if (const Refusal refusal = parse(json, value, range...); !refusal.isEmpty())
                refuse(key, refusal);
        return value;
    }

    QString pathOf(const QString &key) const;

    QJsonObject m_values;
    QString m_source;
    QString m_path;
    QSet<QString> m_knownKeys;
};

} // namespace emulator
