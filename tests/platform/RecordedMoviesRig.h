#pragma once

#include "tests/platform/RecorderRig.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <cstdint>
#include <vector>

/// A movie of the camera's list.
struct MovieEntry {
    QByteArray name;
    uint32_t number;
    int width;
    int height; ///< With the line of the header.
    uint32_t frames;

    bool operator==(const MovieEntry &) const = default;

    QByteArray text() const
    {
        return QByteArray::number(number) + ' ' + name + ' ' + QByteArray::number(width) + 'x'
            + QByteArray::number(height) + " x " + QByteArray::number(frames);
    }
};

/// Expects a report of files that cannot be used.
inline void expectReport(const QByteArray &pattern)
{
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QString::fromLatin1(pattern)));
}

/// A camera with a recorder, the list of its movies, and their files.
class RecordedMoviesRig : public RecorderRig
{
public:
    std::vector<zvtSSsdMovieInfo> list() const
    {
        std::vector<zvtSSsdMovieInfo> list(movies());
        for (uint32_t place = 0; place < list.size(); ++place)
            if (zvtGetSsdMovieInfo(handle(), place, &list[place]) != 0)
                return {};
        return list;
    }
    std::vector<MovieEntry> entries() const
    {
        std::vector<MovieEntry> entries;
        for (const zvtSSsdMovieInfo &info : list())
            entries.push_back({QByteArray(info.name), info.number, info.width, info.height, info.numFrames});
        return entries;
    }
    std::vector<uint32_t> movieNumbers() const
    {
        std::vector<uint32_t> numbers;
        for (const MovieEntry &entry : entries())
            numbers.push_back(entry.number);
        return numbers;
    }
    QByteArray names() const
    {
        QByteArrayList names;
        for (const MovieEntry &entry : entries())
            names << entry.name;
        return names.join(", ");
    }
    int64_t space(int (*get)(uint64_t, int64_t *)) const { return number<int64_t>(get); }

    bool setWindow(int width, int height) { return set("sensor.window", QVariantList{0, 0, width, height}); }
    /// Loads the movie of a place in a window of its size.
    bool loadMovie(uint32_t place)
    {
        const MovieEntry entry = entries().at(place);
        return setWindow(entry.width, entry.height - 1) && load(place);
    }
    /// The checksums of some frames of the memory.
    std::vector<uint32_t> checksums()
    {
        std::vector<uint32_t> checksums;
        for (const uint64_t frame : {0U, 1U, 7U, 19U})
            if (const auto played = recorder().frame(frame))
                checksums.push_back(played->checksum);
        return checksums;
    }
    void format()
    {
        call(zvtSsdFormatDrive);
        wait(3000);
    }

    QString path(const QString &file) { return camera().folder() + "/movies/" + file; }
    QStringList files(const QString &folder = {})
    {
        flush();
        return QDir(path(folder)).entryList(QDir::Files, QDir::Name);
    }
    /// Writes what has changed until now.
    void flush()
    {
        state();
        camera().flushMemory();
    }
    QByteArray contentOf(const QString &name)
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool write(const QString &name, const QByteArray &content)
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }
};
