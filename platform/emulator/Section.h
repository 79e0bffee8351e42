#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace emulator
{

/// One object of a profile, read key by key. A reader asks for every key that it knows and calls finish() at the end,
/// so that a key nobody asked for is found. All errors are SetupErrors that name the place.
class Section
{
public:
    /// Messages name the source and the path of the key in it, as in "profile te-cooler: devices.cooler.setpoint".
    Section(QJsonObject values, QString source, QString path = {});

    bool contains(const QString &key) const { return m_values.contains(key); }
    /// A key that is there and null, which is known by that.
    bool isNull(const QString &key);

    // Each gives the fallback where the key is missing, and throws where the value is of another kind or out of range.
    bool flag(const QString &key, bool fallback);
    int integer(const QString &key, int fallback, int minimum, int maximum);
    double number(const QString &key, double fallback, double minimum, double maximum);
    QString text(const QString &key, const QString &fallback);
    QStringList texts(const QString &key, const QStringList &fallback);
    QList<double> numbers(const QString &key, const QList<double> &fallback);
    QJsonObject object(const QString &key);
    Section section(const QString &key);

    /// Throws for the first value, here or below, that is of another kind than the one of the same key in `model`,
    /// whose lists are lists of numbers. Keys that the model lacks are passed over.
    void requireKindsOf(const QJsonObject &model);

    /// Throws for the first key that nobody asked for.
    void finish() const;

    /// Throws a SetupError about one key of this section.
    [[noreturn]] void refuse(const QString &key, const QString &why) const;

private:
    QJsonValue take(const QString &key);
    QJsonArray list(const QString &key, QJsonValue::Type kind, const char *whyNot);
    QString pathOf(const QString &key) const;

    QJsonObject m_values;
    QString m_source;
    QString m_path;
    QSet<QString> m_known;
};

} // namespace emulator
