#include "common/conversions.h"

#include "common/formatting.h"

#include <QStringList>

#include <algorithm>

namespace
{

bool isSeparator(QChar character) { return character == u'/' || character == u'\\'; }

constexpr uint64_t fileTimeUnitsPerMillisecond = 10'000;
QDateTime fileTimeEpoch() { return {QDate(1601, 1, 1), QTime(0, 0), Qt::UTC}; }

// Removes and returns the first field if exactly `count` are left; else the text is too short to have it: returns 0.
int takeLeadingField(QStringList &fields, int count) { return fields.size() == count ? fields.takeFirst().toInt() : 0; }

} // namespace

bool isFileSystemSafe(const QString &name)
{
    static const QString forbidden = QStringLiteral("/\\:*?\"<>|");
    return std::none_of(name.begin(), name.end(), [](QChar character) { return forbidden.contains(character); });
}

bool isTagSafe(const QString &name) { return isFileSystemSafe(name) && !name.contains(u'.'); }

QString GetFilename(const QString &path)
{
    return path.mid(std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1);
}

QString MakePath(const QString &first, const QString &second)
{
    const bool begins = !second.isEmpty() && isSeparator(second.front());
    if (!first.isEmpty() && isSeparator(first.back()))
        return first + (begins ? second.mid(1) : second);
    if (begins || first.isEmpty() || second.isEmpty())
        return first + second;
    return first + u'/' + second;
}

QString MakePath(std::initializer_list<QString> pieces)
{
    QString path;
    for (const QString &piece : pieces)
        path = MakePath(path, piece);
    return path;
}

QString stringifyIrigTime(zvtSIRIG time)
{
    return QStringLiteral("%1:%2:%3:%4.%5%6")
        .arg(zeroPadded(time.day, 3), zeroPadded(time.hour, 2), zeroPadded(time.minute, 2), zeroPadded(time.second, 2),
             zeroPadded(time.millisecond, 3), zeroPadded(time.microsecond, 3));
}

QString DateTimeToIrigString(const QDateTime &time)
{
    const QTime clock = time.time();
    return QStringLiteral("%1:%2:%3:%4.%5")
        .arg(zeroPadded(time.date().dayOfYear(), 3), zeroPadded(clock.hour(), 2), zeroPadded(clock.minute(), 2),
             zeroPadded(clock.second(), 2), zeroPadded(clock.msec(), 3));
}

QDateTime IrigStringToDateTime(const QString &text)
{
    QStringList fields = text.split(u':');
    if (fields.size() > 5)
        return {};
    if (fields.size() == 5)
        fields.removeFirst(); // the year
    const int dayOfYear = takeLeadingField(fields, 4);
    const int hour = takeLeadingField(fields, 3);
    const int minute = takeLeadingField(fields, 2);
    const QStringList seconds = fields.first().split(u'.');
    const QTime clock(hour, minute, seconds.first().toInt(), seconds.value(1).left(3).toInt());
    // Checked here: QDateTime turns an invalid time into midnight, and the framework turns a day above 366 into the end
    // of the year.
    constexpr int daysInLeapYear = 366;
    if (!clock.isValid() || dayOfYear < 0 || dayOfYear > daysInLeapYear)
        return {};

    // The framework's year 0 and year -1 of QDate are both leap years, so that day 366 exists.
    int month = 0;
    int day = 0;
    hlx::CDateTime::GetDayInMonth(month, day, 0, dayOfYear);
    return QDateTime(QDate(-1, month, day), clock);
}

QDateTime dateTimeOfFileTime(uint64_t time100ns)
{
    return fileTimeEpoch().addMSecs(static_cast<qint64>(time100ns / fileTimeUnitsPerMillisecond));
}

uint64_t fileTimeOfDateTime(const QDateTime &time)
{
    return static_cast<uint64_t>(fileTimeEpoch().msecsTo(time)) * fileTimeUnitsPerMillisecond;
}

hlx::CString toCString(const QString &text) { return {text.toUtf8().constData()}; }

hlx::CDateTime IrigTimeToDateTime(const QDateTime &time)
{
    const QTime clock = time.time();
    return hlx::CDateTime::NewYYDHMS(0, time.date().dayOfYear(), clock.hour(), clock.minute(), clock.second(),
                                     clock.msec(), 0);
}
