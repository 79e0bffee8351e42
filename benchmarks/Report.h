#pragma once

#include <QString>

#include <vector>

/// The middle one of the values; of an even number the mean of the two in the middle. 0 of none.
double median(std::vector<double> values);

/// Prints figures as they are measured, each with its limit and whether it keeps it.
class Report
{
public:
    /// `value` in the unit of `limit`; `detail` tells in words what it was made of.
    void figure(const QString &name, double value, double limit, const QString &detail = {});
    /// A line without a limit.
    void note(const QString &text) const;

    /// How many figures missed their limits.
    int missed() const { return m_missed; }

private:
    int m_missed = 0;
};
