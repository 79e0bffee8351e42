#include "benchmarks/Report.h"

#include <algorithm>
#include <cstdio>

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::ranges::sort(values);
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void Report::figure(const QString &name, double value, double limit, const QString &detail)
{
    const bool kept = value <= limit;
    m_missed += kept ? 0 : 1;
    std::printf("%-54s %8.3f  limit %6.2f  %s  %s\n", qPrintable(name), value, limit, kept ? "PASS" : "MISS",
                qPrintable(detail));
    std::fflush(stdout);
}

void Report::note(const QString &text) const
{
    std::printf("    %s\n", qPrintable(text));
    std::fflush(stdout);
}
