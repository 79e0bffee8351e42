#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <initializer_list>

#include "hlx/CDateTime.h"
#include "zvt/zvttypes.h"

// Names, paths and IRIG times, as several models need them. All of it may be called from any thread.

/// True if the name can be a file on every system: it holds none of / \ : * ? " < > |
bool isFileSystemSafe(const QString &name);

/// True if the name is file system safe and has no full stop, so that an extension can follow it.
bool isTagSafe(const QString &name);

/// The part behind the last slash or backslash; the whole path if it has neither.
QString GetFilename(const QString &path);

/// Joins two pieces of a path with exactly one separator between them. A slash or backslash that is there already is
/// kept as it is; an empty piece adds none.
QString MakePath(const QString &first, const QString &second);

/// Joins the pieces from left to right.
QString MakePath(std::initializer_list<QString> pieces);

/// "DDD:hh:mm:ss.mmmuuu", with milliseconds and microseconds behind the point.
QString stringifyIrigTime(zvtSIRIG time);

/// "DDD:hh:mm:ss.mmm" with the day of the year, in the time zone that `time` has.
QString DateTimeToIrigString(const QDateTime &time);

/// Reads "[year:]day:hour:minute:second[.millisecond]", where leading fields may be missing and count as 0. The year is
/// not read: the result lies in a leap year of no meaning, in local time. A field that is no number counts as 0; one
/// out of its range, or a sixth field, makes the result invalid. The part behind the point is a plain number of
/// milliseconds: ".5" are 5 ms.
QDateTime IrigStringToDateTime(const QString &text);

/// The time of a file on the camera, in UTC, from units of 100 ns since the year 1601.
QDateTime dateTimeOfFileTime(uint64_t time100ns);

/// The framework's form of a time of the year, in the framework's year 0, which stands for no year.
hlx::CDateTime IrigTimeToDateTime(const QDateTime &time);
