#include "platform/emulator/Section.h"

#include "platform/emulator/SetupError.h"

#include <QJsonArray>

#include <utility>

namespace emulator
{

Section::Section(QJsonObject values, QString source, QString path)
    : m_values(std::move(values)), m_source(std::move(source)), m_path(std::move(path))
{
}

bool Section::isNull(const QString &key) { return value(key).isNull(); }

QJsonObject Section::object(const QString &key)
{
    const QJsonValue json = value(key);
    if (!json.isUndefined() && !json.isObject())
        refuse(key, QStringLiteral("must be an object"));
    return json.toObject();
}

Section Section::section(const QString &key) { return {object(key), m_source, pathOf(key)}; }

std::vector<Section> Section::sections(const QString &key)
{
    const QJsonValue json = value(key);
    if (!json.isUndefined() && !json.isArray())
        refuse(key, QStringLiteral("must be a list"));
    std::vector<Section> sections;
    for (const QJsonValue &entry : json.toArray()) {
        if (!entry.isObject())
            refuse(key, QStringLiteral("must be a list of objects"));
        sections.push_back(
            {entry.toObject(), m_source, QStringLiteral("%1[%2]").arg(pathOf(key)).arg(sections.size())});
    }
    return sections;
}

void Section::requireTypesOf(const QJsonObject &reference)
{
    for (auto entry = reference.begin(); entry != reference.end(); ++entry) {
        const QString &key = entry.key();
        if (!contains(key))
            continue;
        switch (entry->type()) {
        case QJsonValue::Bool:
            flag(key, false);
            break;
        case QJsonValue::Double:
            read<double>(key, 0);
            break;
        case QJsonValue::String:
            text(key, {});
            break;
        case QJsonValue::Array:
            if (entry->toArray().first().isString())
                texts(key, {});
            else
                numbers(key, {});
            break;
        default:
            section(key).requireTypesOf(entry->toObject());
            break;
        }
    }
}

void Section::finish() const
{
    for (const auto &key : m_values.keys())
        if (!m_knownKeys.contains(key))
            refuse(key, QStringLiteral("unknown key"));
}

void Section::refuse(const QString &key, const QString &why) const
{
    throw SetupError(QStringLiteral("%1: %2: %3").arg(m_source, pathOf(key), why).toStdString());
}

QString Section::pathOf(const QString &key) const { return m_path.isEmpty() ? key : m_path + QLatin1Char('.') + key; }

QJsonValue Section::value(const QString &key)
{
    m_knownKeys.insert(key);
    return m_values.value(key);
}

} // namespace emulator
