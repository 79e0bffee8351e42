#include "platform/emulator/Profile.h"
#include "tests/host/Program.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

class tst_SelfTest : public Test
{
    Q_OBJECT

private slots:
    void passesOnEveryProfile_data();
    void passesOnEveryProfile();
    void passesWithTheDesk();
    void failsOnAWarningFromThePage();
    void failsOnACameraThatDoesNotAnswer();
    void survivesAFlakyCamera();
    void screenshotsShowEveryTabInBothSizes();
    void screenshotsShowEveryCardOfTheDesk();

private:
    Program::Result selfTest(const QStringList &arguments) const
    {
        return Program::run(QStringList{"--self-test", "--storage", m_folder.path()} + arguments);
    }

    QTemporaryDir m_folder;
};

void tst_SelfTest::passesOnEveryProfile_data()
{
    QTest::addColumn<QString>("profile");
    for (const QString &name : emulator::Profile::names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_SelfTest::passesOnEveryProfile()
{
    QFETCH(QString, profile);
    const auto result = selfTest({"--profile", profile});
    QVERIFY2(result.status == 0, qPrintable(result.output + result.errors));
    const QStringList lines = result.output.split(u'\n', Qt::SkipEmptyParts);
    QVERIFY(lines.size() >= 7);
    QCOMPARE(lines.mid(0, 3), QStringList({"load: ok", "connect: ok", "tab Status: ok"}));
    QCOMPARE(lines.mid(lines.size() - 4), QStringList({"refresh: ok", "disconnect: ok", "reconnect: ok", "quit: ok"}));
    for (const QString &line : lines)
        QVERIFY2(line.endsWith(QLatin1String(": ok")), qPrintable(line));
    QCOMPARE(result.errors, QString());
}

void tst_SelfTest::passesWithTheDesk()
{
    const auto result = selfTest({"--desk"});
    QVERIFY2(result.status == 0, qPrintable(result.output + result.errors));
    QCOMPARE(result.errors, QString());
}

void tst_SelfTest::failsOnAWarningFromThePage()
{
    const auto result = selfTest({"--plugin", Program::folder() + "/libzvtfaultyplugin.so"});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.output.contains("tab Sound: ok\ntab Faulty: FAILED, 1 warning(s) from QML\n"),
             qPrintable(result.output));
    QVERIFY(result.errors.contains("a fault in the page"));
}

void tst_SelfTest::failsOnACameraThatDoesNotAnswer()
{
    const auto result = selfTest({"--fail-rate", "1"});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.output.contains("connect: FAILED, the camera does not answer\n"), qPrintable(result.output));
}

void tst_SelfTest::survivesAFlakyCamera()
{
    // Connecting may fail, but a failing read must not cause a warning of the page.
    const auto result = selfTest({"--fail-rate", "0.3", "--seed", "5"});
    QVERIFY2(result.status == 0 || result.status == 1, qPrintable(result.errors));
    QVERIFY2(!result.output.contains("from QML"), qPrintable(result.output + result.errors));
}

void tst_SelfTest::screenshotsShowEveryTabInBothSizes()
{
    const QDir folder(m_folder.filePath("pictures"));
    const auto result = Program::run({"--screenshots", folder.path(), "--storage", m_folder.path()});
    QVERIFY2(result.status == 0, qPrintable(result.errors));
    QCOMPARE(result.output, folder.path() + u'\n');
    for (const QSize size : {QSize(900, 720), QSize(640, 480)})
        for (const char *name : {"Status", "Configuration"})
            for (const char *suffix : {"", "-not-connected"}) {
                const auto file = QStringLiteral("%1-%2x%3%4.png")
                                      .arg(QLatin1String(name))
                                      .arg(size.width())
                                      .arg(size.height())
                                      .arg(QLatin1String(suffix));
                const QImage image(folder.filePath(file));
                QVERIFY2(!image.isNull(), qPrintable(file));
                QCOMPARE(image.size(), size);
            }
}

void tst_SelfTest::screenshotsShowEveryCardOfTheDesk()
{
    const QDir folder(m_folder.filePath("desk"));
    const auto result = Program::run({"--screenshots", folder.path(), "--desk", "--storage", m_folder.path()});
    QVERIFY2(result.status == 0, qPrintable(result.errors));
    QCOMPARE(result.errors, QString());
    QStringList expected;
    for (const char *card : {"Calls", "Line", "Other-client", "Picture", "World"})
        for (const QSize size : {QSize(1100, 720), QSize(1280, 1024), QSize(1280, 800), QSize(988, 480)}) {
            expected << QStringLiteral("%1-%2x%3.png").arg(card).arg(size.width()).arg(size.height());
            QCOMPARE(QImage(folder.filePath(expected.last())).size(), size);
        }
    expected.sort();
    QCOMPARE(folder.entryList(QDir::Files, QDir::Name), expected);
}

ZVT_TEST(tst_SelfTest)
#include "tst_SelfTest.moc"
