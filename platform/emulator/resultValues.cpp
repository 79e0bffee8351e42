#include "platform/emulator/resultValues.h"

#include <QJsonObject>

#include <cmath>
#include <limits>

namespace emulator::results
{

namespace
{

const auto base64Key = QStringLiteral("base64");
constexpr auto decoding = QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors;

/// Returns whether the JSON is {"base64": ...} with a valid text, and decodes it.
bool decode(const QJsonValue &json, QByteArray &bytes)
{
    const QJsonValue text = json.toObject().value(base64Key);
    const auto decoded = QByteArray::fromBase64Encoding(text.toString().toLatin1(), decoding);
    bytes = decoded.decoded;
    return text.isString() && decoded.decodingStatus == QByteArray::Base64DecodingStatus::Ok;
}

QJsonValue encode(const QByteArray &bytes) { return QJsonObject{{base64Key, QString::fromLatin1(bytes.toBase64())}}; }

} // namespace

QJsonValue fromText(std::string_view text)
{
    const QByteArray bytes(text.data(), static_cast<qsizetype>(text.size()));
    const QString decoded = QString::fromUtf8(bytes);
    if (decoded.toUtf8() == bytes)
        return decoded;
    return encode(bytes);
}

Refusal parseText(const QJsonValue &json, std::string &text)
{
    QByteArray bytes;
    if (json.isString())
        text = json.toString().toStdString();
    else if (decode(json, bytes))
        text = bytes.toStdString();
    else
        return QStringLiteral("must be a text");
    return {};
}

QJsonValue fromBytes(const void *bytes, size_t size)
{
    return encode(QByteArray(static_cast<const char *>(bytes), static_cast<qsizetype>(size)));
}

Refusal parseBytes(const QJsonValue &json, size_t size, QByteArray &bytes)
{
    if (decode(json, bytes) && bytes.size() == static_cast<qsizetype>(size))
        return {};
    return QStringLiteral("must be %1 bytes in base64").arg(size);
}

QJsonValue fromReal(double number)
{
    if (std::isfinite(number))
        return number;
    if (std::isnan(number))
        return QStringLiteral("nan");
    return number > 0 ? QStringLiteral("inf") : QStringLiteral("-inf");
}

Refusal parseSpecialReal(const QJsonValue &json, double &number)
{
    const QString text = json.toString();
    if (text == QLatin1String("nan"))
        number = std::numeric_limits<double>::quiet_NaN();
    else if (text == QLatin1String("inf"))
        number = std::numeric_limits<double>::infinity();
    else if (text == QLatin1String("-inf"))
        number = -std::numeric_limits<double>::infinity();
    else
        return QStringLiteral("must be a number");
    return {};
}

Refusal checkCount(qsizetype count, qsizetype wanted)
{
    return count == wanted ? Refusal() : QStringLiteral("must have %1 values, not %2").arg(wanted).arg(count);
}

} // namespace emulator::results
