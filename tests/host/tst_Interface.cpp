#include "tests/host/Program.h"
#include "tests/support/Test.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

/// Checks the interface that pages and hosts rely on: every name that QML sees, as committed in interface.tsv.
class tst_Interface : public Test
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isTheCommittedOne();
    void isSortedAndHasSixFields();
    void holdsTheRootAndTheRegisteredTypes();
    void everyClassIsDescribedToTheQmlCompiler();

private:
    QStringList m_lines;
};

void tst_Interface::initTestCase()
{
    const QTemporaryDir storage;
    const auto result = Program::run({"--dump-interface", "--storage", storage.path()});
    QVERIFY2(result.status == 0, qPrintable(result.errors));
    m_lines = result.output.split(u'\n', Qt::SkipEmptyParts);
}

void tst_Interface::isTheCommittedOne()
{
    QFile file(QStringLiteral(ZVT_SOURCE_DIR "/tests/host/interface.tsv"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList committed = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    QString difference;
    const auto list = [&difference](const QString &sign, const QStringList &lines, const QStringList &others) {
        for (const QString &line : lines)
            if (!others.contains(line))
                difference += sign + line + u'\n';
    };
    list(QStringLiteral("-"), committed, m_lines);
    list(QStringLiteral("+"), m_lines, committed);
    QVERIFY2(
        committed == m_lines,
        qPrintable(QStringLiteral("The interface differs from the committed one:\n%1If that is meant, run from the "
                                  "root of the sources: BUILD/bin/zvtcontroller --dump-interface > "
                                  "tests/host/interface.tsv")
                       .arg(difference)));
}

void tst_Interface::isSortedAndHasSixFields()
{
    QVERIFY(std::is_sorted(m_lines.cbegin(), m_lines.cend()));
    QVERIFY(std::adjacent_find(m_lines.cbegin(), m_lines.cend()) == m_lines.cend());
    for (const QString &line : std::as_const(m_lines)) {
        const QStringList fields = line.split(u'\t');
        QVERIFY2(fields.size() == 6 && !fields.contains(QString()), qPrintable(line));
    }
}

void tst_Interface::holdsTheRootAndTheRegisteredTypes()
{
    const auto holds = [this](const char *start) {
        return std::any_of(m_lines.cbegin(), m_lines.cend(),
                           [start](const QString &line) { return line.startsWith(QLatin1String(start)); });
    };
    for (const char *start : {"ZvtCameraModel\tproperty\tconnected\tbool\tread final\tconnectedChanged",
                              "ZvtCameraModel\tinvokable\trefreshAllVisible\tvoid()\tpublic\t-",
                              "ZvtCameraModel\tsignal\tconnectedChanged\tvoid()\tpublic\t-",
                              "ZvtCameraModel\tenum\tSHOW_MFG_TAB\tQSettingMfgTabVisibility=1\tpublic\t-",
                              // From a base class.
                              "ZvtCameraModel\tproperty\thasNucMask\t",
                              // Reached by a property, and by its registration alone.
                              "StatusTabModel\tproperty\t", "FPASizeIntValidator\t", "ZvtModelTable\t"})
        QVERIFY2(holds(start), start);
}

// The QML compiler leaves every binding on a class that it does not know to the interpreter.
void tst_Interface::everyClassIsDescribedToTheQmlCompiler()
{
    QFile file(QStringLiteral(ZVT_BINARY_DIR "/imports/com/kestrin/hlx/cam/ui/zvt/zvt.qmltypes"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString types = QString::fromUtf8(file.readAll());
    for (const QString &line : std::as_const(m_lines)) {
        const QString name = line.section(u'\t', 0, 0);
        QVERIFY2(types.contains(QStringLiteral("name: \"%1\"\n").arg(name)),
                 qPrintable(name + " is missing in plugin/qmlTypes.h"));
    }
}

ZVT_TEST(tst_Interface)
#include "tst_Interface.moc"
