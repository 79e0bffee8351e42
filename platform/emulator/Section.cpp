#include "platform/emulator/Section.h"

#include "platform/emulator/Profile.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace emulator
{

Section::Section(QJsonObject values, QString source, QString path)
    : m_values(std::move(values)), m_source(std::move(source)), m_path(std::move(path))
{
}

bool Section::isNull(const QString &key) { return take(key).isNull(); }

bool Section::flag(const QString &key, bool fallback)
{
    const auto value = take(key);
    if (!value.isUndefined() && !value.isBool())
        refuse(key, QStringLiteral("must be true or false"));
    return value.toBool(fallback);
}

int Section::integer(const QString &key, int fallback, int minimum, int maximum)
{
    const double value = number(key, fallback, minimum, maximum);
    if (std::trunc(value) != value)
        refuse(key, QStringLiteral("must be a whole number"));
    return static_cast<int>(value);
}

double Section::number(const QString &key, double fallback, double minimum, double maximum)
{
    const auto value = take(key);
    if (value.isUndefined())
        return fallback;
    if (!value.isDouble())
        refuse(key, QStringLiteral("must be a number"));
    if (value.toDouble() < minimum || value.toDouble() > maximum)
        refuse(key, QStringLiteral("must lie between %1 and %2").arg(minimum).arg(maximum));
    return value.toDouble();
}

QString Section::text(const QString &key, const QString &fallback)
{
    const auto value = take(key);
    if (!value.isUndefined() && !value.isString())
        refuse(key, QStringLiteral("must be a text"));
    return value.toString(fallback);
}

QStringList Section::texts(const QString &key, const QStringList &fallback)
{
    if (!contains(key))
        return fallback;
    QStringList result;
    for (const auto &entry : list(key, QJsonValue::String, "must be a list of texts"))
        result.append(entry.toString());
    return result;
}

QList<double> Section::numbers(const QString &key, const QList<double> &fallback)
{
    if (!contains(key))
        return fallback;
    QList<double> result;
    for (const auto &entry : list(key, QJsonValue::Double, "must be a list of numbers"))
        result.append(entry.toDouble());
    return result;
}

QJsonObject Section::object(const QString &key)
{
    const auto value = take(key);
    if (!value.isUndefined() && !value.isObject())
        refuse(key, QStringLiteral("must be an object"));
    return value.toObject();
}

Section Section::section(const QString &key) { return {object(key), m_source, pathOf(key)}; }

void Section::requireKindsOf(const QJsonObject &model)
{
    for (auto known = model.begin(); known != model.end(); ++known) {
        const QString &key = known.key();
        if (!contains(key))
            continue;
        switch (known->type()) {
        case QJsonValue::Bool:
            flag(key, false);
            break;
        case QJsonValue::Double:
            number(key, 0, std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max());
            break;
        case QJsonValue::String:
            text(key, {});
            break;
        case QJsonValue::Array:
            numbers(key, {});
            break;
        default:
            section(key).requireKindsOf(known->toObject());
            break;
        }
    }
}

void Section::finish() const
{
    for (const auto &key : m_values.keys())
        if (!m_known.contains(key))
            refuse(key, QStringLiteral("unknown key"));
}

void Section::refuse(const QString &key, const QString &why) const
{
    throw SetupError(QStringLiteral("%1: %2: %3").arg(m_source, pathOf(key), why).toStdString());
}

QString Section::pathOf(const QString &key) const { return m_path.isEmpty() ? key : m_path + QLatin1Char('.') + key; }

QJsonArray Section::list(const QString &key, QJsonValue::Type kind, const char *whyNot)
{
    const auto value = take(key);
    const auto isKind = [kind](const QJsonValue &entry) { return entry.type() == kind; };
    const QJsonArray entries = value.toArray();
    if (!value.isArray() || !std::all_of(entries.begin(), entries.end(), isKind))
        refuse(key, QLatin1String(whyNot));
    return entries;
}

QJsonValue Section::take(const QString &key)
{
    m_known.insert(key);
    return m_values.value(key);
}

} // namespace emulator
