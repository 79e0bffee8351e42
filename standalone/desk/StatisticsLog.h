#pragma once

#include <QByteArray>

#include <cstdint>
#include <deque>
#include <optional>

/// The statistics of one frame in the log, without its histogram. Values in counts.
struct StatisticsRow {
    int64_t microseconds = 0; ///< The beginning of the frame, since 1970.
    uint64_t frame = 0; ///< Its number.
    int preset = 0;
    const char *view = ""; ///< A static text.
    double mean = 0;
    double spatialNoise = 0;
    std::optional<double> temporalNoise;
    uint16_t lowest = 0;
    uint16_t highest = 0;
};

/// The statistics of the frames of the last minute. Used by one thread.
class StatisticsLog
{
public:
    static constexpr int64_t microseconds = 60'000'000;

    /// Adds a row. Removes those that are more than a minute older, and later ones, which exist if the clock has been
    /// set back.
    void add(const StatisticsRow &row);

    /// Removes the rows that are more than a minute older than `now`, in microseconds since 1970.
    void removeOld(int64_t now);

    const std::deque<StatisticsRow> &rows() const { return m_rows; }

    /// The rows as comma-separated values with a line of headings: the time in UTC, frame, preset, view, mean, spatial
    /// noise, temporal noise (empty if there is none), lowest and highest count.
    QByteArray toCsv() const;

private:
    std::deque<StatisticsRow> m_rows;
};
