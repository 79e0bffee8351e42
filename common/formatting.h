#pragma once

#include <QLocale>
#include <QString>

#include <cstdint>

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

/// A size in bytes, in the largest unit up to GB of which it holds at least one, with two decimals; below 1024 bytes a
/// whole number of bytes. Not localised.
inline QString sizeText(uint64_t bytes)
{
    constexpr uint64_t kilo = 1ULL << 10U;
    constexpr uint64_t mega = 1ULL << 20U;
    constexpr uint64_t giga = 1ULL << 30U;
    const auto inUnits = [bytes](uint64_t unit) {
        return QStringLiteral("%1").arg(static_cast<double>(bytes) / static_cast<double>(unit), 0, 'f', 2);
    };
    if (bytes >= giga)
        return QStringLiteral("%1 GB").arg(inUnits(giga));
    if (bytes >= mega)
        return QStringLiteral("%1 MB").arg(inUnits(mega));
    return bytes < kilo ? QStringLiteral("%1 B").arg(bytes) : QStringLiteral("%1 KB").arg(inUnits(kilo));
}
