#include "standalone/desk/SettingRow.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using emulator::SettingInfo;

namespace
{

/// A fraction has as many digits as distinguish it from other numbers of the type float.
QString numberText(double number)
{
    constexpr double longestWhole = 1e16;
    if (std::trunc(number) == number && std::abs(number) < longestWhole)
        return QString::number(number, 'f', 0);
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.begin(), text.end(), static_cast<float>(number)).ptr;
    return QString::fromLatin1(text.data(), end - text.data());
}

/// Empty for the whole range of float or double.
QString rangeText(emulator::Between range)
{
    if (range.maximum >= std::numeric_limits<float>::max())
        return {};
    return u"%1 to %2"_s.arg(numberText(range.minimum), numberText(range.maximum));
}

QString hintFor(const SettingInfo &setting)
{
    switch (setting.kind) {
    case SettingInfo::WholeNumber:
    case SettingInfo::Number:
        return rangeText(setting.range);
    case SettingInfo::Numbers: {
        const QString range = rangeText(setting.range);
        return range.isEmpty() ? u"numbers with commas between them"_s : u"each "_s + range;
    }
    case SettingInfo::Texts:
        return u"texts in \"\" with commas between them"_s;
    default:
        return {};
    }
}

QString entryText(const QJsonValue &value)
{
    if (value.isDouble())
        return numberText(value.toDouble());
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.sliced(1, list.size() - 2));
}

} // namespace

SettingRow SettingRow::of(const SettingInfo &setting)
{
    SettingRow row;
    row.setting = setting.name;
    row.name = setting.name;
    row.group = setting.name.section(u'.', 0, 0);
    row.label = setting.name.section(u'.', 1);
    row.kind = setting.kind;
    row.value = setting.value;
    row.usable = setting.changeable;
    row.hint = hintFor(setting);
    row.control = setting.kind == SettingInfo::Flag ? Switch : Field;
    if (!setting.choices.isEmpty()) {
        row.control = Choice;
        for (const double number : setting.choices) {
            row.choices.append(numberText(number));
            row.choiceValues.append(number);
        }
        row.completeChoices();
    }
    return row;
}

QString SettingRow::text() const
{
    if (value.isString())
        return value.toString();
    if (!value.isArray())
        return entryText(value);
    QStringList entries;
    for (const auto &item : value.toArray())
        entries.append(entryText(item));
    return entries.join(u", ");
}

QVariant SettingRow::valueOf(const QString &text) const
{
    switch (kind) {
    case SettingInfo::WholeNumber:
    case SettingInfo::Number: {
        bool isNumber = false;
        const double number = text.toDouble(&isNumber);
        return isNumber ? QVariant(number) : QVariant(text);
    }
    case SettingInfo::Numbers:
    case SettingInfo::Texts: {
        const QJsonDocument list = QJsonDocument::fromJson('[' + text.toUtf8() + ']');
        return list.isArray() ? QVariant(list.array().toVariantList()) : QVariant(text);
    }
    default:
        return text;
    }
}

void SettingRow::completeChoices()
{
    if (choice() >= 0)
        return;
    choices.append(text());
    choiceValues.append(value);
}
