#include "common/StringIntDisplaySanityModel.h"

StringIntDisplaySanityModel::StringIntDisplaySanityModel(QObject *parent) : QObject(parent) { }

void StringIntDisplaySanityModel::append(const QString &string, int value)
{
    m_strings.append(string);
    m_values.append(value);
    everythingChanged();
}

void StringIntDisplaySanityModel::remove(int index)
{
    m_strings.removeAt(index);
    m_values.removeAt(index);
    everythingChanged();
}

void StringIntDisplaySanityModel::removeAll()
{
    m_strings.clear();
    m_values.clear();
    everythingChanged();
}

void StringIntDisplaySanityModel::everythingChanged()
{
    emit stringsChanged();
    emit valuesChanged();
    emit sizeChanged();
}
