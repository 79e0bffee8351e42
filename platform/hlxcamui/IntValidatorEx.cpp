#include "platform/hlxcamui/IntValidatorEx.h"

#include "platform/hlxcamui/snapping.h"

namespace hlx::cam::ui
{

IntValidatorEx::IntValidatorEx(QObject *parent) : QIntValidator(parent)
{
    // Numbers for the camera have neither thousands separators nor digits of the locale.
    QLocale plain = QLocale::c();
    plain.setNumberOptions(QLocale::RejectGroupSeparator | QLocale::OmitGroupSeparator);
    setLocale(plain);
}

void IntValidatorEx::setIncrement(int increment)
{
    if (m_increment == increment)
        return;
    m_increment = increment;
    emit incrementChanged();
    emit changed();
}

QValidator::State IntValidatorEx::validate(QString &input, int &position) const
{
    const State state = QIntValidator::validate(input, position);
    if (state == Acceptable && m_increment > 1 && locale().toInt(input) % m_increment != 0)
        return Intermediate;
    return state;
}

void IntValidatorEx::fixup(QString &input) const
{
    bool isNumber = false;
    const int number = locale().toInt(input, &isNumber);
    if (isNumber)
        input = locale().toString(snapped(number, bottom(), top(), m_increment));
}

} // namespace hlx::cam::ui
