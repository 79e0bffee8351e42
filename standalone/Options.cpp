#include "standalone/Options.h"

#include "standalone/BadInput.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <initializer_list>
#include <utility>

namespace
{

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("Drives an emulated infrared camera through the camera plug-in."));
    const QCommandLineOption help(QStringLiteral("help"), QStringLiteral("Prints this help."));
    const QCommandLineOption version(QStringLiteral("version"), QStringLiteral("Prints the version."));
    const auto option = [&parser](const char *name, const char *text, const char *value = "",
                                  const QString &fallback = {}) {
        parser.addOption({QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value), fallback});
    };
    parser.addOptions({help, version});
    option("plugin", "The plug-in to load (default: libhlxcamuiZVT.so beside the program).", "FILE",
           QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("libhlxcamuiZVT.so")));
    option("profile", "The first camera: the name of a profile, or a file.", "NAME", QStringLiteral("everything"));
    option("list-profiles", "Lists the built-in profiles.");
    option("connect", "Connects the first camera at once.");
    option("host", "Shows the page as a host application does; the camera is connected, and F5 refreshes.");
    option("desk", "Shows the desk beside the page: live picture, faults, surroundings and calls of the camera.");
    option("other-client",
           "Changes the camera by lines \"device.setting value\" on the standard input, as another client would.");
    option("latency", "Each call to the camera takes this much longer.", "MS", QStringLiteral("0"));
    option("fail-rate", "Each call to the camera fails with this probability, from 0 to 1.", "P", QStringLiteral("0"));
    option("seed", "Starts the random numbers of --fail-rate.", "N", QStringLiteral("1"));
    option("record", "Writes the calls to the first camera into this file.", "FILE");
    option("replay", "The first camera repeats the answers in a file of --record.", "FILE");
    option("storage", "The folder of the cameras' files (default: the user's application data).", "DIR");
    option("screenshots", "Writes a picture of every tab into this folder, and ends.", "DIR");
    option("self-test", "Connects, walks through every tab, refreshes, disconnects, reconnects, and ends.");
    option("dump-interface", "Prints everything of the plug-in that QML can see, and ends.");
}

[[noreturn]] void refuse(const QCommandLineParser &parser, const QString &option, const char *expected)
{
    throw BadInput(
        QStringLiteral("--%1 takes %2, not \"%3\"").arg(option, QString::fromLatin1(expected), parser.value(option)));
}

QString text(const QCommandLineParser &parser, const QString &option)
{
    QString value = parser.value(option);
    if (parser.isSet(option) && value.isEmpty())
        throw BadInput(QStringLiteral("--%1 is empty").arg(option));
    return value;
}

void readGate(const QCommandLineParser &parser, Options &options)
{
    bool valid = false;
    const QString latency = QStringLiteral("latency");
    options.latency = parser.value(latency).toInt(&valid);
    if (!valid || options.latency < 0)
        refuse(parser, latency, "a whole number of milliseconds from 0");
    const QString failRate = QStringLiteral("fail-rate");
    options.failRate = parser.value(failRate).toDouble(&valid);
    // Negated, so that NaN is refused too.
    if (!valid || !(options.failRate >= 0 && options.failRate <= 1))
        refuse(parser, failRate, "a probability from 0 to 1");
    const QString seed = QStringLiteral("seed");
    options.seed = parser.value(seed).toUInt(&valid);
    if (!valid)
        refuse(parser, seed, "a whole number from 0");
}

void readRecordings(const QCommandLineParser &parser, Options &options)
{
    options.record = text(parser, QStringLiteral("record"));
    options.replay = text(parser, QStringLiteral("replay"));
    if (!options.replay.isEmpty() && parser.isSet(QStringLiteral("profile")))
        throw BadInput(QStringLiteral("--profile and --replay cannot be combined"));
    const QString replayed = QFileInfo(options.replay).canonicalFilePath();
    if (!replayed.isEmpty() && QFileInfo(options.record).canonicalFilePath() == replayed)
        throw BadInput(QStringLiteral("--record and --replay name the same file"));
}

Options::Mode readMode(const QCommandLineParser &parser)
{
    using Mode = Options::Mode;
    Mode mode = Mode::Interactive;
    QString chosen;
    for (const auto &[name, candidate] : {std::pair{"list-profiles", Mode::ListProfiles},
                                          {"screenshots", Mode::Screenshots},
                                          {"self-test", Mode::SelfTest},
                                          {"dump-interface", Mode::DumpInterface}}) {
        const QString option = QString::fromLatin1(name);
        if (!parser.isSet(option))
            continue;
        if (!chosen.isEmpty())
            throw BadInput(QStringLiteral("--%1 and --%2 cannot be combined").arg(chosen, option));
        for (const QString &interactive : {QStringLiteral("host"), QStringLiteral("other-client")})
            if (parser.isSet(interactive))
                throw BadInput(QStringLiteral("--%1 and --%2 cannot be combined").arg(interactive, option));
        chosen = option;
        mode = candidate;
    }
    const bool hasWindow = mode != Mode::ListProfiles && mode != Mode::DumpInterface;
    if (!hasWindow && parser.isSet(QStringLiteral("desk")))
        throw BadInput(QStringLiteral("--desk and --%1 cannot be combined").arg(chosen));
    return mode;
}

Options answer(const QString &text)
{
    Options options;
    options.mode = Options::Mode::Answer;
    options.answer = text;
    return options;
}

} // namespace

Options Options::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments))
        throw BadInput(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        return ::answer(parser.helpText());
    if (parser.isSet(QStringLiteral("version")))
        return ::answer(QCoreApplication::applicationName() + u' ' + QCoreApplication::applicationVersion() + u'\n');
    if (!parser.positionalArguments().isEmpty())
        throw BadInput(QStringLiteral("unknown argument \"%1\"").arg(parser.positionalArguments().constFirst()));

    Options options;
    options.mode = readMode(parser);
    options.plugin = text(parser, QStringLiteral("plugin"));
    options.profile = text(parser, QStringLiteral("profile"));
    options.storage = text(parser, QStringLiteral("storage"));
    options.screenshots = text(parser, QStringLiteral("screenshots"));
    options.connectAtStart = parser.isSet(QStringLiteral("connect"));
    options.otherClient = parser.isSet(QStringLiteral("other-client"));
    options.desk = parser.isSet(QStringLiteral("desk"));
    options.asHost = parser.isSet(QStringLiteral("host"));
    readGate(parser, options);
    readRecordings(parser, options);
    return options;
}
