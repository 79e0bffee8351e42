#include "common/FPASizeIntValidator.h"

FPASizeIntValidator::FPASizeIntValidator(QObject *parent) : QValidator(parent) { }

void FPASizeIntValidator::setMinSize(int size)
{
    if (size == m_minSize)
        return;
    m_minSize = size;
    emit minSizeChanged();
}

void FPASizeIntValidator::setMaxSize(int size)
{
    if (size == m_maxSize)
        return;
    m_maxSize = size;
    emit maxSizeChanged();
}

void FPASizeIntValidator::setRequiredIncrement(int increment)
{
    if (increment == m_requiredIncrement)
        return;
    m_requiredIncrement = increment;
    emit requiredIncrementChanged();
}

QValidator::State FPASizeIntValidator::validate(QString &input, int & /*pos*/) const
{
    if (input.isEmpty())
        return Intermediate;
    bool isNumber = false;
    const int number = input.toInt(&isNumber);
    if (!isNumber || number > m_maxSize || number < m_minSize)
        return Invalid;
    constexpr int increment = 4;
    return number % increment == 0 ? Acceptable : Intermediate;
}
