#pragma once

#include <QLocale>
#include <QString>

// How numbers are written for the operator. Any thread.

/// A whole number with zeros in front up to this width.
inline QString zeroPadded(int number, int width)
{
    return QStringLiteral("%1").arg(number, width, 10, QLatin1Char('0'));
}

/// The user's decimal notation, without a thousands separator.
inline QLocale plainLocale()
{
    QLocale locale = QLocale::system();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}
