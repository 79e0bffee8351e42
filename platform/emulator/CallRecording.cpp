#include "platform/emulator/CallRecording.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/SetupError.h"
#include "platform/emulator/resultValues.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <chrono>
#include <optional>

namespace emulator
{

namespace
{

const auto formatName = QStringLiteral("zvt-calls");
constexpr int formatVersion = 1;
// In bytes. The longest lines are those with lists of files, about 100 bytes for each.
constexpr qint64 maximumLine = qint64{4} * 1024 * 1024;

constexpr auto formatKey = "format";
constexpr auto versionKey = "version";
constexpr auto profileNameKey = "profileName";
constexpr auto profileKey = "profile";
constexpr auto settingsKey = "settings";
constexpr auto startKey = "start";
constexpr auto kindKey = "kind";
constexpr auto numberKey = "number";
constexpr auto timeKey = "time";
constexpr auto nameKey = "name";
constexpr auto argumentsKey = "arguments";
constexpr auto threadKey = "thread";
constexpr auto statusKey = "status";
constexpr auto durationKey = "duration";
constexpr auto resultsKey = "results";
constexpr auto capabilitiesKey = "capabilities";
constexpr auto connectedKey = "connected";
constexpr auto callKind = "call";
constexpr auto connectionKind = "connection";

QString text(const char *latin1) { return QString::fromLatin1(latin1); }

QByteArray lineOf(const QJsonObject &object) { return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n'; }

QJsonObject entry(const char *kind, int64_t time, size_t number)
{
    return {{text(kindKey), text(kind)}, {text(timeKey), qint64{time}}, {text(numberKey), static_cast<qint64>(number)}};
}

/// One line of a file that is read.
class Line
{
public:
    /// Takes the next line of the file.
    Line(QFile &file, int number) : m_source(file.fileName()), m_number(number)
    {
        const QByteArray content = file.readLine(maximumLine);
        if (!content.endsWith('\n'))
            refuse(file.atEnd() ? QStringLiteral("cut off") : QStringLiteral("too long"));
        QJsonParseError error;
        const auto document = QJsonDocument::fromJson(content, &error);
        if (error.error != QJsonParseError::NoError)
            refuse(QStringLiteral("not JSON at byte %1: %2").arg(error.offset).arg(error.errorString()));
        if (!document.isObject())
            refuse(QStringLiteral("must be an object"));
        m_values = document.object();
    }

    [[noreturn]] void refuse(const QString &why) const
    {
        throw SetupError(
            QStringLiteral("recording %1: line %2: %3").arg(m_source).arg(m_number).arg(why).toStdString());
    }

    int number() const { return m_number; }

    QJsonValue value(const char *key) const { return m_values.value(QLatin1String(key)); }

    QJsonObject object(const char *key) const
    {
        if (!value(key).isObject())
            refuse(key, QStringLiteral("must be an object"));
        return value(key).toObject();
    }

    /// Reads a value whose type has a parse().
    template <class T, class... Range> T read(const char *key, Range... range) const
    {
        T result{};
        if (const Refusal why = parse(value(key), result, range...); !why.isEmpty())
            refuse(key, why);
        return result;
    }

    std::string bytes(const char *key) const
    {
        std::string result;
        if (const Refusal why = results::parseText(value(key), result); !why.isEmpty())
            refuse(key, why);
        return result;
    }

    [[noreturn]] void refuse(const char *key, const QString &why) const
    {
        refuse(QStringLiteral("%1: %2").arg(text(key), why));
    }

private:
    QString m_source;
    int m_number;
    QJsonObject m_values;
};

void readHeader(const Line &line, CallRecording &recording)
{
    if (line.value(formatKey) != formatName)
        line.refuse(QStringLiteral("not the start of a recording of calls"));
    if (line.read<int>(versionKey) != formatVersion)
        line.refuse(versionKey, QStringLiteral("must be %1").arg(formatVersion));
    recording.profileName = line.read<QString>(profileNameKey);
    // It becomes the name of a file and of a folder.
    constexpr qsizetype longestName = 200;
    if (recording.profileName.isEmpty() || recording.profileName.toUtf8().size() > longestName
        || recording.profileName.startsWith(u'.') || recording.profileName.contains(u'/')
        || recording.profileName.contains(QChar::Null))
        line.refuse(profileNameKey, QStringLiteral("must be a file name"));
    recording.profile = line.object(profileKey);
    if (recording.profile.contains(QLatin1String("extends")))
        line.refuse(profileKey, QStringLiteral("must not extend another one"));
    recording.settings = line.object(settingsKey);
}

/// The call of a line, nothing if the camera did not answer it: it was not connected, or the framework answers. Of the
/// calls of the framework only those without outputs matter, which would be repeated as commands.
std::optional<CallRecording::RecordedCall> readCall(const Line &line)
{
    CallRecording::RecordedCall call;
    call.name = line.bytes(nameKey);
    call.arguments = line.bytes(argumentsKey);
    call.status = line.read<int>(statusKey);
    call.results = line.value(resultsKey);
    const bool succeeded = call.status == Ok;
    if (!call.results.isUndefined() && !(succeeded ? call.results.isArray() : call.results.isNull()))
        line.refuse(resultsKey,
                    succeeded ? QStringLiteral("must be a list") : QStringLiteral("must be null after a failure"));
    if (call.name.starts_with("controller.properties.") || call.status == NotConnected || call.status == InvalidHandle
        || call.status == Pending)
        return {};
    return call;
}

void readEntry(const Line &line, CallRecording &recording)
{
    const auto add = [&](auto what) {
        recording.entries.push_back({line.read<uint64_t>(numberKey), line.number(), std::move(what)});
    };
    const auto kind = line.read<QString>(kindKey);
    if (kind == QLatin1String(callKind)) {
        if (auto call = readCall(line))
            add(*std::move(call));
    } else if (kind == QLatin1String(capabilitiesKey)) {
        add(CallRecording::Capabilities{line.object(capabilitiesKey)});
    } else if (kind == QLatin1String(connectionKind)) {
        if (!line.read<bool>(connectedKey))
            add(CallRecording::Disconnection{});
    } else {
        line.refuse(kindKey, QStringLiteral("there is no \"%1\"").arg(kind));
    }
    // No answer depends on the time, but a wrong one shows that the line is damaged.
    line.read<int64_t>(timeKey);
}

} // namespace

CallRecording CallRecording::read(const QString &name)
{
    QFile file(name);
    const bool otherThanFile = file.exists() && !QFileInfo(name).isFile();
    if (otherThanFile || !file.open(QIODevice::ReadOnly)) {
        const QString why = otherThanFile ? QStringLiteral("it is not a file") : file.errorString();
        throw SetupError(QStringLiteral("recording %1: cannot be read: %2").arg(name, why).toStdString());
    }
    CallRecording recording;
    recording.source = QFileInfo(name).fileName();
    int number = 0;
    do {
        const Line line(file, ++number);
        if (number == 1)
            readHeader(line, recording);
        else
            readEntry(line, recording);
    } while (!file.atEnd());
    // The lines are in the order in which the calls ended.
    std::ranges::stable_sort(recording.entries, {}, &Entry::number);
    return recording;
}

QByteArray headerLine(const Camera &camera, int64_t start)
{
    const Profile &profile = camera.profile();
    const QJsonObject profileContent{
        {QStringLiteral("title"), profile.title()},
        {QStringLiteral("clock"), profile.hasRealTimeClock() ? QStringLiteral("rtc") : QStringLiteral("irig")},
        {QStringLiteral("identity"), profile.identity()},
        {QStringLiteral("capabilities"), camera.capabilities()},
        {QStringLiteral("devices"), profile.devices()}};
    return lineOf({{text(formatKey), formatName},
                   {text(versionKey), formatVersion},
                   {text(startKey), qint64{start}},
                   {text(profileNameKey), profile.name()},
                   {text(profileKey), profileContent},
                   {text(settingsKey), camera.snapshot()},
                   {text(connectedKey), camera.connected()}});
}

QByteArray callLine(const CallEvent &event, int64_t start, int thread)
{
    const Call &call = event.call;
    QJsonObject object = entry(callKind, event.time - start, event.number);
    object[text(nameKey)] = results::fromText(call.name);
    object[text(argumentsKey)] = results::fromText(call.arguments);
    object[text(threadKey)] = thread;
    object[text(statusKey)] = call.status;
    object[text(durationKey)] = qint64{std::chrono::duration_cast<std::chrono::microseconds>(call.duration).count()};
    if (!event.results.isUndefined())
        object[text(resultsKey)] = event.results;
    return lineOf(object);
}

QByteArray capabilitiesLine(const QJsonObject &capabilities, int64_t time, size_t number)
{
    QJsonObject object = entry(capabilitiesKey, time, number);
    object[text(capabilitiesKey)] = capabilities;
    return lineOf(object);
}

QByteArray connectionLine(bool connected, int64_t time, size_t number)
{
    QJsonObject object = entry(connectionKind, time, number);
    object[text(connectedKey)] = connected;
    return lineOf(object);
}

} // namespace emulator
