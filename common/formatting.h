#pragma once

#include <QLocale>
#include <QString>

// The notation of numbers that the operator sees. Any thread.

/// A whole number, padded with leading zeros to this width.
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
