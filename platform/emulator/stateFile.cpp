#include "platform/emulator/stateFile.h"

#include "hlx/CString.h"
#include "platform/hlx/ByteStream.h"

#include <QCryptographicHash>
#include <QJsonDocument>

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace emulator
{

namespace
{

constexpr std::string_view magic = "HLX-QSF\n";
constexpr uint32_t version = 1;
constexpr qsizetype checksumSize = 32;

QByteArray checksumOf(const QByteArray &bytes) { return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256); }

hlx::CString textOf(const QByteArray &bytes) { return {bytes.constData(), static_cast<int>(bytes.size())}; }

} // namespace

QByteArray toStateFile(const QString &profile, const QJsonObject &settings)
{
    hlx::ByteWriter writer;
    writer.raw(magic.data(), magic.size());
    writer.number(version);
    writer.text(textOf(profile.toUtf8()));
    writer.text(textOf(QJsonDocument(settings).toJson(QJsonDocument::Compact)));
    const auto &bytes = writer.bytes();
    const QByteArray content(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    return content + checksumOf(content);
}

std::optional<QJsonObject> fromStateFile(const QByteArray &content, const QString &profile)
{
    if (content.size() < checksumSize || content.size() > maximumStateFileSize
        || checksumOf(content.chopped(checksumSize)) != content.last(checksumSize))
        return std::nullopt;
    hlx::ByteReader reader(reinterpret_cast<const uint8_t *>(content.constData()),
                           static_cast<size_t>(content.size() - checksumSize));
    reader.expect(magic);
    if (reader.number<uint32_t>() != version)
        return std::nullopt;
    const hlx::CString storedProfile = reader.text();
    const hlx::CString json = reader.text();
    const auto document = QJsonDocument::fromJson({json.c_str(), json.length()});
    if (!reader.complete() || storedProfile != textOf(profile.toUtf8()) || !document.isObject())
        return std::nullopt;
    const QJsonObject settings = document.object();
    const auto isObject = [](const QJsonValue &device) { return device.isObject(); };
    return std::all_of(settings.begin(), settings.end(), isObject) ? std::optional(settings) : std::nullopt;
}

} // namespace emulator
