#include "platform/emulator/values.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

bool holdsOnly(const QJsonValue &json, QJsonValue::Type type)
{
    const QJsonArray entries = json.toArray();
    return json.isArray() && std::all_of(entries.begin(), entries.end(), [type](const QJsonValue &entry) {
               return entry.type() == type;
           });
}

/// Whether a number is in a range after it has been rounded to its type.
bool isInRange(double number, const values::NumberFormat &format, Between range)
{
    return format.own.holds(number) && range.holds(format.single ? double(static_cast<float>(number)) : number);
}

bool isFraction(double number) { return std::trunc(number) != number; }

} // namespace

namespace values
{

QString toText(double number)
{
    constexpr double longest = 1e17;
    return !isFraction(number) && std::abs(number) < longest ? QString::number(number, 'f', 0)
                                                             : QString::number(number);
}

Refusal parseNumber(const QJsonValue &json, double &number, const NumberFormat &format, Between range)
{
    if (!json.isDouble())
        return u"must be a number"_s;
    if (!isInRange(json.toDouble(), format, range))
        return u"must lie between %1 and %2"_s.arg(toText(std::max(range.minimum, format.own.minimum)),
                                                   toText(std::min(range.maximum, format.own.maximum)));
    if (format.whole && isFraction(json.toDouble()))
        return u"must be a whole number"_s;
    number = json.toDouble();
    return {};
}

Refusal parseNumbers(const QJsonValue &json, QList<double> &numbers, const NumberFormat &format, Between range)
{
    if (!holdsOnly(json, QJsonValue::Double))
        return u"must be a list of numbers"_s;
    QList<double> read;
    for (const auto &entry : json.toArray()) {
        if (!isInRange(entry.toDouble(), format, range) || (format.whole && isFraction(entry.toDouble())))
            return format.whole ? u"must hold whole numbers in the range"_s : u"must hold numbers in the range"_s;
        read.append(entry.toDouble());
    }
    numbers = read;
    return {};
}

Refusal checkSize(qsizetype size, qsizetype wanted)
{
    return size == wanted ? Refusal() : u"must have %1 entries"_s.arg(wanted);
}

QJsonValue fromNumbers(const QList<double> &numbers)
{
    QJsonArray entries;
    for (const double number : numbers)
        entries.append(number);
    return entries;
}

} // namespace values

Refusal parse(const QJsonValue &json, bool &value)
{
    if (!json.isBool())
        return u"must be true or false"_s;
    value = json.toBool();
    return {};
}

Refusal parse(const QJsonValue &json, QString &value)
{
    if (!json.isString())
        return u"must be a text"_s;
    value = json.toString();
    return {};
}

Refusal parse(const QJsonValue &json, std::string &value)
{
    QString text;
    Refusal refusal = parse(json, text);
    if (refusal.isEmpty())
        value = text.toStdString();
    return refusal;
}

Refusal parse(const QJsonValue &json, QStringList &value)
{
    if (!holdsOnly(json, QJsonValue::String))
        return u"must be a list of texts"_s;
    value.clear();
    for (const auto &entry : json.toArray())
        value.append(entry.toString());
    return {};
}

QJsonValue toJson(const std::string &value)
{
    const QString text = QString::fromStdString(value);
    return text.toStdString() == value ? QJsonValue(text) : QJsonValue();
}

QJsonValue toJson(const QStringList &value) { return QJsonArray::fromStringList(value); }

QJsonValue fromVariant(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::QString:
        return value.toString();
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
        return value.toDouble();
    case QMetaType::QByteArray:
        return {};
    default:
        QJsonArray entries;
        if (!value.canConvert<QVariantList>())
            return {};
        for (const QVariant &entry : value.toList())
            entries.append(fromVariant(entry));
        return entries;
    }
}

} // namespace emulator
