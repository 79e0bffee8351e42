#include "standalone/desk/StatisticsLog.h"

#include <QDateTime>

void StatisticsLog::add(const StatisticsRow &row)
{
    while (!m_rows.empty() && row.microseconds < m_rows.back().microseconds)
        m_rows.pop_back();
    removeOld(row.microseconds);
    m_rows.push_back(row);
}

void StatisticsLog::removeOld(int64_t now)
{
    while (!m_rows.empty() && now - m_rows.front().microseconds > microseconds)
        m_rows.pop_front();
}

QByteArray StatisticsLog::toCsv() const
{
    const auto number = [](double value) { return QByteArray::number(value, 'f', 3); };
    QByteArray csv = "time,frame,preset,view,mean,spatial noise,temporal noise,lowest,highest\n";
    for (const StatisticsRow &row : m_rows) {
        const auto time = QDateTime::fromMSecsSinceEpoch(row.microseconds / 1000, Qt::UTC);
        const QByteArrayList fields{
            time.toString(Qt::ISODateWithMs).toLatin1(),
            QByteArray::number(qulonglong{row.frame}),
            QByteArray::number(row.preset),
            row.view,
            number(row.mean),
            number(row.spatialNoise),
            row.temporalNoise ? number(*row.temporalNoise) : QByteArray(),
            QByteArray::number(row.lowest),
            QByteArray::number(row.highest),
        };
        csv += fields.join(',') + '\n';
    }
    return csv;
}
