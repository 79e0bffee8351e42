#include "tests/support/Test.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace
{

const QString buildDir = QStringLiteral(ZVT_BINARY_DIR);

/// The value of a variable in the configuration of the running build; empty if it is not set.
QString cached(const QString &variable)
{
    QFile file(buildDir + "/CMakeCache.txt");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n'))
        if (line.startsWith(variable + u':'))
            return line.section(u'=', 1);
    return {};
}

struct Output {
    bool good = false;
    QString text; ///< Standard output and standard error together.
};

Output run(const QString &program, const QStringList &arguments)
{
    constexpr int limit = 25 * 60 * 1000;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    Output output;
    output.good
        = process.waitForFinished(limit) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    output.text = QString::fromUtf8(process.readAll());
    return output;
}

Output cmake(const QStringList &arguments) { return run(cached("CMAKE_COMMAND"), arguments); }

} // namespace

#define VERIFY_RUN(call)                                                                                               \
    do {                                                                                                               \
        const Output output = call;                                                                                    \
        QVERIFY2(output.good, qPrintable(output.text));                                                                \
    } while (false)

/// Installs the platform as a real installation would be, and builds the plug-in against it alone.
class tst_InstalledPlatform : public Test
{
    Q_OBJECT

private slots:
    void initTestCase();

    void programRunsFromWhereItIsInstalled();
    void headersStayBehind();
    void plugInIsBuiltAgainstIt();
    void anotherWordForThePlatformIsRefused();

private:
    QStringList configure(const QString &platform, const QString &folder) const;

    QTemporaryDir m_prefix;
};

void tst_InstalledPlatform::initTestCase() { VERIFY_RUN(cmake({"--install", buildDir, "--prefix", m_prefix.path()})); }

/// The command that configures a build like the running one, except for the platform. Values from an earlier build in
/// the same folder are discarded.
QStringList tst_InstalledPlatform::configure(const QString &platform, const QString &folder) const
{
    QStringList arguments{"--fresh", "-G", "Ninja", "-S", ZVT_SOURCE_DIR, "-B", folder, "-DZVT_PLATFORM=" + platform};
    const QString prefixes = cached("CMAKE_PREFIX_PATH");
    arguments << "-DCMAKE_PREFIX_PATH=" + m_prefix.path() + (prefixes.isEmpty() ? QString() : u';' + prefixes);
    for (const char *variable :
         {"CMAKE_BUILD_TYPE", "CMAKE_C_COMPILER", "CMAKE_CXX_COMPILER", "ZVT_SANITIZE", "ZVT_WARNINGS_AS_ERRORS"})
        arguments << QStringLiteral("-D%1=%2").arg(variable, cached(variable));
    // What is built must only be linked, and the optimization would take most of the time.
    return arguments << QStringLiteral("-DCMAKE_CXX_FLAGS_RELEASE=-O0 -DNDEBUG");
}

void tst_InstalledPlatform::programRunsFromWhereItIsInstalled()
{
    const Output output = run(m_prefix.filePath("bin/zvtcontroller"), {"--list-profiles"});
    QVERIFY2(output.good && output.text.contains("everything"), qPrintable(output.text));
    QVERIFY(QFile::exists(m_prefix.filePath("bin/libhlxcamuiZVT.so")));
}

// The boundary headers belong to the plug-in. An installation with its own headers could be of another version.
void tst_InstalledPlatform::headersStayBehind() { QVERIFY(!QFile::exists(m_prefix.filePath("include"))); }

void tst_InstalledPlatform::plugInIsBuiltAgainstIt()
{
    // The build folder is kept, so that the next run builds only changed files.
    const QString folder = buildDir + "/installed-platform";
    VERIFY_RUN(cmake(configure("installed", folder)));
    VERIFY_RUN(cmake({"--build", folder, "--target", "hlxcamuiZVT", "--parallel", "2"}));
    QVERIFY2(!QFile::exists(folder + "/bin/libhlx.so"), "the bundled platform was built too");

    const Output symbols = run("nm", {"-D", "--defined-only", "-C", folder + "/bin/libhlxcamuiZVT.so"});
    QVERIFY2(symbols.good, qPrintable(symbols.text));
    for (const char *name : {" hlxInitPlugin", " CreateModelForController(", " initResources("})
        QVERIFY2(symbols.text.contains(name), qPrintable(symbols.text));

    const Output libraries = run("ldd", {folder + "/bin/libhlxcamuiZVT.so"});
    QVERIFY2(libraries.text.contains(QDir(m_prefix.path()).canonicalPath()), qPrintable(libraries.text));
    QVERIFY2(!libraries.text.contains(buildDir + "/bin/"), qPrintable(libraries.text));
}

void tst_InstalledPlatform::anotherWordForThePlatformIsRefused()
{
    QTemporaryDir folder;
    const Output output = cmake(configure("elsewhere", folder.path()));
    QVERIFY(!output.good);
    QVERIFY2(output.text.contains("ZVT_PLATFORM is \"elsewhere\""), qPrintable(output.text));
}

ZVT_TEST(tst_InstalledPlatform)
#include "tst_InstalledPlatform.moc"
