#include "tests/support/Test.h"

#include <QApplication>
#include <QEvent>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThreadPool>

#include <cstdio>
#include <map>

namespace
{

std::map<std::string, TestRegistry::Factory> &registry()
{
    static std::map<std::string, TestRegistry::Factory> tests;
    return tests;
}

/// Lets the poll of the recorder never start by itself. It would run each second for the life of every root, and its
/// calls would be among those that a test compares.
class NoRecorderPoll : public QObject
{
public:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        return event->type() == QEvent::Timer && object->objectName() == u"updateTimer" && object->parent()
            && object->parent()->inherits("SsdTabModel");
    }
};

} // namespace

void Test::init()
{
    // The offscreen platform warns for every minimum size and every raised window that it does not support them. These
    // warnings are no faults of the code under test.
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support )")));
}

int TestRegistry::add(const char *name, Factory factory)
{
    registry().emplace(name, std::move(factory));
    return static_cast<int>(registry().size());
}

int main(int argc, char *argv[])
{
    // The tests do not read or write the files of the user who runs them, and need no display.
    const QTemporaryDir home;
    for (const char *variable : {"XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "HOME"})
        qputenv(variable, home.path().toUtf8());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_CONTROLS_STYLE", "Fusion");
    QApplication application(argc, argv);
    NoRecorderPoll noRecorderPoll;
    application.installEventFilter(&noRecorderPoll);
    QCoreApplication::setOrganizationName(QStringLiteral("zvt-tests"));
    QCoreApplication::setApplicationName(QStringLiteral("zvt-tests"));
    // Held calls occupy threads of the pool. On a machine with two cores, two held calls must not stall all other
    // reads.
    QThreadPool::globalInstance()->setMaxThreadCount(16);

    QStringList arguments = QCoreApplication::arguments();
    std::vector<std::string> names;
    if (arguments.size() > 1 && registry().contains(arguments.at(1).toStdString()))
        names.push_back(arguments.takeAt(1).toStdString());
    else
        for (const auto &[name, factory] : registry())
            names.push_back(name);
    int failures = 0;
    for (const auto &name : names)
        failures += QTest::qExec(registry().at(name)().get(), arguments);
    QThreadPool::globalInstance()->waitForDone();
    return failures == 0 ? 0 : 1;
}
