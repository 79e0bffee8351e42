#include "platform/emulator/devices/StoredCorrection.h"

#include <QCryptographicHash>

#include <cstdint>
#include <span>
#include <utility>

namespace emulator
{

void RecentTables::add(std::shared_ptr<const image::CorrectionTable> table)
{
    const std::lock_guard lock(m_mutex);
    m_tables[m_oldest++ % m_tables.size()] = std::move(table);
}

QString StoredCorrection::hashOf(QByteArrayView content)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(content);
    return QString::fromLatin1(hash.result().toHex());
}

QString StoredCorrection::error()
{
    const std::lock_guard lock(m_mutex);
    const QString why = open() ? QString() : m_file.errorString();
    close();
    return why;
}

std::optional<Correction> StoredCorrection::read()
{
    std::unique_lock lock(m_mutex);
    const QByteArray content = open() ? m_file.readAll() : QByteArray();
    close();
    lock.unlock();
    if (hashOf(content) != m_hash) {
        if (!m_reported.exchange(true))
            qInfo("storage %s: damaged", qUtf8Printable(m_file.fileName()));
        return std::nullopt;
    }
    auto correction = fromCorrectionFile(
        std::span(reinterpret_cast<const uint8_t *>(content.constData()), static_cast<size_t>(content.size())));
    if (correction)
        m_recent->add(correction->table);
    return correction;
}

void StoredCorrection::keepOpen()
{
    const std::lock_guard lock(m_mutex);
    m_staysOpen = open();
}

void StoredCorrection::close()
{
    if (!m_staysOpen)
        m_file.close();
}

} // namespace emulator
