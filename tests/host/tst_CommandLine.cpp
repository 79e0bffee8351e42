#include "tests/host/Program.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

class tst_CommandLine : public Test
{
    Q_OBJECT

private slots:
    void initTestCase();
    void badInputEndsWithOneLineAndStatus2_data();
    void badInputEndsWithOneLineAndStatus2();
    void helpTellsEveryOption();
    void versionIsPrinted();
    void profilesAreListed();
    void optionsOfTheLineAreTaken();
    void aSessionIsRecordedAndRepeated();
    void aReplayWritesNothingBelowTheUsersData();
    void aRecordingThatCannotBeContinuedIsReportedOnce();
    void profileMayBeAFile();
    void connectOpensTheCameraAndTellsWhyItFails();
    void withoutADisplayTheWindowIsRefused();

private:
    QString write(const QString &name, const QByteArray &content) const;
    QString in(const QString &name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

void tst_CommandLine::initTestCase() { QVERIFY(m_folder.isValid()); }

QString tst_CommandLine::write(const QString &name, const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(in(name)).path());
    QFile file(in(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return {};
    return file.fileName();
}

void tst_CommandLine::badInputEndsWithOneLineAndStatus2_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QStringList &arguments, const QString &message) {
        QTest::newRow(name) << arguments << message;
    };
    row("unknown option", {"--bogus"}, "Unknown option 'bogus'");
    row("unknown argument", {"bogus"}, "unknown argument \"bogus\"");
    row("missing value", {"--latency"}, "Missing value after '--latency'");
    row("empty value", {"--profile", ""}, "--profile is empty");
    row("unknown profile", {"--profile", "bogus"}, "\"bogus\"");
    row("profile that is no JSON", {"--profile", write("broken.json", "{ \"title\"")}, "broken.json");
    row("profile with an unknown key", {"--profile", write("key.json", "{ \"colour\": \"red\" }")}, "colour");
    row("profile that is a folder", {"--profile", m_folder.path()}, m_folder.path());

    row("missing plug-in", {"--plugin", in("missing.so")}, "missing.so\" does not exist");
    row("plug-in that is a folder", {"--plugin", m_folder.path()}, "does not exist");
    row("plug-in that is no library", {"--plugin", write("text.so", "no library\n")}, "text.so\" is not a plug-in");
    row("plug-in without the entry point", {"--plugin", Program::folder() + "/libhlx.so"}, "it has no hlxInitPlugin");

    row("storage that is a file", {"--storage", write("file", "")}, in("file"));
    write("corrupt/cameras/everything/camera.json", "{ \"magic\": 1 ");
    row("corrupt storage", {"--storage", in("corrupt")}, "corrupt");
    write("kinds/cameras/everything/camera.json",
          R"({ "magic": "zvt-emulated-camera", "version": 1, "values": { "clock": { "irigOffset": null } } })");
    row("storage with a value of another kind", {"--storage", in("kinds")}, "clock.irigOffset: must be a number");
    row("screenshots into a file", {"--screenshots", write("picture", "")}, "picture");

    row("negative latency", {"--latency", "-1"}, "--latency takes");
    row("latency in words", {"--latency", "long"}, "not \"long\"");
    row("latency out of range", {"--latency", "99999999999"}, "--latency takes");
    row("fail rate above 1", {"--fail-rate", "1.01"}, "--fail-rate takes");
    row("negative fail rate", {"--fail-rate", "-0.1"}, "--fail-rate takes");
    row("fail rate that is no number", {"--fail-rate", "nan"}, "--fail-rate takes");
    row("fail rate in words", {"--fail-rate", "often"}, "--fail-rate takes");
    row("seed in words", {"--fail-rate", "0.5", "--seed", "x"}, "--seed takes");
    row("negative seed", {"--seed", "-1"}, "--seed takes");

    row("missing recording", {"--replay", in("missing.jsonl")}, "missing.jsonl: cannot be read: No such file");
    row("recording that is a folder", {"--replay", m_folder.path()}, "cannot be read: it is not a file");
    row("empty recording", {"--replay", write("empty.jsonl", "")}, "empty.jsonl: line 1: cut off");
    row("recording that is no JSON", {"--replay", write("text.jsonl", "hello\n")}, "text.jsonl: line 1: not JSON");
    row("recording of another kind", {"--replay", write("kind.jsonl", "{}\n")}, "line 1: not the start of a recording");
    row("recording with a wrong line",
        {"--replay",
         write("line.jsonl",
               R"({"format":"zvt-calls","version":1,"profileName":"x","profile":{},"settings":{}})"
               "\n{}\n")},
        "line.jsonl: line 2: kind: must be a text");
    row("recording into a folder", {"--record", m_folder.path()}, "cannot be written: ");
    row("recording on a full disk", {"--record", "/dev/full"}, "/dev/full: cannot be written: No space left on device");
    row("replay with a profile", {"--replay", in("x"), "--profile", "bare"}, "cannot be combined");
    row("replay of the file that is written", {"--replay", in("file"), "--record", in("file")}, "name the same file");

    row("two tasks", {"--self-test", "--dump-interface"}, "cannot be combined");
    row("desk with a list", {"--desk", "--list-profiles"}, "--desk and --list-profiles cannot be combined");
    row("desk with a dump", {"--desk", "--dump-interface"}, "--desk and --dump-interface cannot be combined");
    row("host with a task", {"--host", "--self-test"}, "cannot be combined");
    row("other client with a task", {"--other-client", "--self-test"}, "cannot be combined");
}

void tst_CommandLine::badInputEndsWithOneLineAndStatus2()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    // A fault of the input is reported before a window is shown.
    const auto result = Program::run(arguments);
    QCOMPARE(result.status, 2);
    QCOMPARE(result.output, QString());
    QVERIFY2(result.errors.startsWith(QLatin1String("zvtcontroller: ")), qPrintable(result.errors));
    QVERIFY2(result.errors.contains(message), qPrintable(result.errors));
    QCOMPARE(result.errors.count(u'\n'), 1);
    QVERIFY(result.errors.endsWith(u'\n'));
}

void tst_CommandLine::helpTellsEveryOption()
{
    const auto result = Program::run({"--help"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.errors, QString());
    for (const char *option :
         {"--plugin <FILE>", "--profile <NAME>", "--list-profiles", "--connect", "--host", "--desk", "--latency <MS>",
          "--fail-rate <P>", "--seed <N>", "--storage <DIR>", "--record <FILE>", "--replay <FILE>",
          "--screenshots <DIR>", "--other-client", "--self-test", "--dump-interface", "--help", "--version"})
        QVERIFY2(result.output.contains(QLatin1String(option)), option);
}

void tst_CommandLine::versionIsPrinted()
{
    const auto result = Program::run({"--version"});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.output.startsWith("zvtcontroller 1."), qPrintable(result.output));
}

void tst_CommandLine::profilesAreListed()
{
    const auto result = Program::run({"--list-profiles"});
    QCOMPARE(result.status, 0);
    const QStringList lines = result.output.split(u'\n', Qt::SkipEmptyParts);
    QStringList names;
    for (const QString &line : lines)
        names.append(line.section(u' ', 0, 0));
    for (const char *name :
         {"everything", "discrete-fov", "te-cooler", "low-cost", "board-6", "bare", "edge-values", "two-color"})
        QVERIFY2(names.contains(QLatin1String(name)), name);
    QVERIFY(std::is_sorted(names.cbegin(), names.cend()));
}

void tst_CommandLine::optionsOfTheLineAreTaken()
{
    const auto result = Program::run({"--self-test", "--profile", "bare", "--latency", "2", "--fail-rate", "0",
                                      "--seed", "7", "--storage", in("storage")});
    QVERIFY2(result.status == 0, qPrintable(result.output + result.errors));
    QVERIFY(QFileInfo(in("storage/cameras/bare")).isDir());
}

void tst_CommandLine::aSessionIsRecordedAndRepeated()
{
    const QString profile = write("own.json", R"({"extends": "bare", "identity": {"serial": "A-1"}})");
    const QString recording = in("session.jsonl");
    const auto recorded
        = Program::run({"--self-test", "--profile", profile, "--storage", in("storage"), "--record", recording});
    QVERIFY2(recorded.status == 0, qPrintable(recorded.output + recorded.errors));
    QVERIFY(QFile::remove(profile));
    const QString again = in("again.jsonl");
    const auto repeated = Program::run({"--self-test", "--replay", recording, "--record", again});
    QVERIFY2(repeated.status == 0, qPrintable(repeated.output + repeated.errors));
    QFile file(again);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("\"results\":[\"A-1\"]"));
}

void tst_CommandLine::aReplayWritesNothingBelowTheUsersData()
{
    const QString recording = in("bare.jsonl");
    QCOMPARE(
        Program::run({"--self-test", "--profile", "bare", "--storage", in("storage"), "--record", recording}).status,
        0);
    const auto writesAfter = [this](const QString &data, const QStringList &arguments) {
        const QStringList start{"XDG_DATA_HOME=" + in(data), Program::file(), "--self-test"};
        const auto result = Program::run(start + arguments, "env");
        return result.status == 0 ? QDir(in(data)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot)
                                  : QStringList{"-"};
    };
    QCOMPARE(writesAfter("first", {"--profile", "bare"}), QStringList{"zvt"});
    QCOMPARE(writesAfter("second", {"--replay", recording}), QStringList());
}

void tst_CommandLine::aRecordingThatCannotBeContinuedIsReportedOnce()
{
    // A pipe whose reader ends after the first line, in place of a disk that becomes full.
    const QString recording = in("pipe");
    const auto result = Program::run({"-c",
                                      "trap '' PIPE; mkfifo \"$1\"; head -n 1 \"$1\" > /dev/null & "
                                      "exec \"$0\" --self-test --profile bare --storage \"$2\" --record \"$1\"",
                                      Program::file(), recording, in("storage")},
                                     "bash");
    QCOMPARE(result.errors, "zvtcontroller: recording " + recording + ": cannot be written: Broken pipe\n");
    QVERIFY2(result.status == 0, qPrintable(result.output));
}

void tst_CommandLine::profileMayBeAFile()
{
    const QString profile = write("own.json", R"({ "title": "My own", "extends": "bare" })");
    const auto result = Program::run({"--self-test", "--profile", profile, "--storage", in("own")});
    QVERIFY2(result.status == 0, qPrintable(result.output + result.errors));
    QVERIFY(QFileInfo(in("own/cameras/own")).isDir());
}

void tst_CommandLine::connectOpensTheCameraAndTellsWhyItFails()
{
    QProcess process;
    process.start(Program::file(), {"--connect", "--fail-rate", "1", "--storage", in("failing")});
    QByteArray errors;
    QTRY_VERIFY_WITH_TIMEOUT(
        (errors += process.readAllStandardError()).contains('\n') || process.state() == QProcess::NotRunning, 60'000);
    QCOMPARE(errors, "zvtcontroller: the camera does not answer\n");
    QCOMPARE(process.state(), QProcess::Running);
    process.kill();
    QVERIFY(process.waitForFinished());
}

void tst_CommandLine::withoutADisplayTheWindowIsRefused()
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        environment.remove(QLatin1String(variable));
    process.setProcessEnvironment(environment);
    process.start(Program::file(), QStringList());
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    const QString errors = QString::fromUtf8(process.readAllStandardError());
    QVERIFY2(errors.startsWith("zvtcontroller: there is no display"), qPrintable(errors));
}

ZVT_TEST(tst_CommandLine)
#include "tst_CommandLine.moc"
