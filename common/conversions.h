#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <initializer_list>

#include "hlx/CDateTime.h"
#include "hlx/CString.h"
#include "zvt/zvttypes.h"

// Names, paths and IRIG times, for use by several models. Any thread.

/// True if the name can be a file name on every system: it contains none of / \ : * ? " < > |
bool isFileSystemSafe(const QString &name);

/// True if the name is file system safe and has no full stop, so that an extension can be appended.
bool isTagSafe(const QString &name);

/// The part after the last slash or backslash; the whole path if it has neither.
QString GetFilename(const QString &path);

/// Joins two pieces of a path with one separator between them: the slash or backslash that a piece already has there,
/// else a slash. If one piece is empty, the result is the other.
QString MakePath(const QString &first, const QString &second);

/// Joins the pieces from left to right.
QString MakePath(std::initializer_list<QString> pieces);

/// "DDD:hh:mm:ss.mmmuuu": the day of the year, the time, milliseconds and microseconds.
QString stringifyIrigTime(zvtSIRIG time);

/// "DDD:hh:mm:ss.mmm" with the day of the year, in the time zone that `time` has.
QString DateTimeToIrigString(const QDateTime &time);

/// Parses "[year:]day:hour:minute:second[.millisecond]". Missing leading fields and fields that are not numbers count
/// as 0. The year is ignored: the result is in the leap year -1, in local time. The result is invalid if a field is out
/// of its range or there are more than five. The part after the point is a number of milliseconds: ".5" means 5 ms.
QDateTime IrigStringToDateTime(const QString &text);

/// The time of a file on the camera, in UTC, from the number of 100 ns since the start of 1601 in UTC.
QDateTime dateTimeOfFileTime(uint64_t time100ns);

/// The reverse: the number of 100 ns since the start of 1601 in UTC. `time` must not be earlier.
uint64_t fileTimeOfDateTime(const QDateTime &time);

/// The text in UTF-8, up to its first zero character.
hlx::CString toCString(const QString &text);

/// The framework's form of the day of the year and the time of `time`, in year 0, which means no year.
hlx::CDateTime IrigTimeToDateTime(const QDateTime &time);
