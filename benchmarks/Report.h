#pragma once

#include <QString>

#include <vector>

/// The median of the values; 0 if there are none.
double median(std::vector<double> values);

/// Prints each measured figure, its limit, and whether it is within the limit.
class Report
{
public:
    /// Prints a figure. `value` has the unit of `limit`; `detail` describes how it was measured.
    void figure(const QString &name, double value, double limit, const QString &detail = {});
    /// Prints a line without a limit.
    void note(const QString &text) const;

    /// The number of figures above their limits.
    int missed() const { return m_missed; }

private:
    int m_missed = 0;
};
