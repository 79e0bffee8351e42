#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

/// Whether this process has the locale `name`, such as "de_DE.UTF-8". If not, runs the present test function with its
/// present row again in a process that has it, and fails if that process fails: a program reads the system's locale
/// only at its start. A test function returns at once if this returns false.
inline bool hasLocale(const QObject &test, const QByteArray &name)
{
    if (qgetenv("LC_ALL") == name)
        return true;
    QString function = QString::fromLatin1(QTest::currentTestFunction());
    if (QTest::currentDataTag())
        function += u':' + QString::fromUtf8(QTest::currentDataTag());
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QString::fromLatin1(name));
    QProcess other;
    other.setProcessEnvironment(environment);
    other.start(QCoreApplication::applicationFilePath(),
                {QString::fromLatin1(test.metaObject()->className()), function});
    const bool passed = other.waitForFinished() && other.exitStatus() == QProcess::NormalExit && other.exitCode() == 0;
    QTest::qVerify(passed, "the test in the other locale", other.readAllStandardOutput().constData(), __FILE__,
                   __LINE__);
    return false;
}
