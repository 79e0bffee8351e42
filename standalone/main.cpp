#include "platform/emulator/Profile.h"
#include "standalone/BadInput.h"
#include "standalone/DeskSplit.h"
#include "standalone/InterfaceDump.h"
#include "standalone/Options.h"
#include "standalone/OtherClient.h"
#include "standalone/PageWindow.h"
#include "standalone/Screenshots.h"
#include "standalone/SelfTest.h"
#include "standalone/Session.h"
#include "standalone/desk/Desk.h"

#include <QApplication>
#include <QQuickStyle>
#include <QSettings>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include <unistd.h>

namespace
{

/// Selects the offscreen platform of Qt if there is no display, and returns whether it did. All modes but the
/// interactive one work without a display.
bool goOffscreenWithoutDisplay()
{
    for (const char *variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        if (!qEnvironmentVariableIsEmpty(variable))
            return false;
    return qputenv("QT_QPA_PLATFORM", "offscreen");
}

/// The arguments with "--plugin FILE" joined to "--plugin=FILE", since Qt would take "--plugin FILE" as its own option.
std::vector<std::string> joinPluginOption(int argc, char *argv[])
{
    std::vector<std::string> arguments;
    for (int i = 0; i < argc; ++i)
        if (i > 1 && arguments.back() == "--plugin")
            arguments.back() += std::string("=") + argv[i];
        else
            arguments.emplace_back(argv[i]);
    return arguments;
}

int runWindow(const Options &options)
{
    Session session(options);
    StandaloneModel &model = session.standaloneModel();
    QObject::connect(&model, &StandaloneModel::connectFailed,
                     [](const QString &reason) { std::fprintf(stderr, "zvtcontroller: %s\n", qPrintable(reason)); });
    std::optional<OtherClient> otherClient;
    if (options.otherClient)
        otherClient.emplace(model, STDIN_FILENO);
    QSettings settings;
    PageWindow window(session, options.asHost, &settings);
    if (otherClient)
        QObject::connect(&*otherClient, &OtherClient::changed, window.desk()->world(), &WorldModel::readFaults);
    window.split()->setShown(options.desk || window.desk()->settings()->shown());
    if (options.connectAtStart && !options.asHost)
        // The page is shown before the camera begins to answer.
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &model, [&] { model.connect(session.firstCamera()); },
            Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    window.show();
    return QApplication::exec();
}

int dumpInterface(const Options &options)
{
    Session session(options);
    for (const QString &line : InterfaceDump::lines(session.cameraModel(), "com.kestrin.hlx.cam.ui.zvt"))
        std::printf("%s\n", qPrintable(line));
    return 0;
}

int listProfiles()
{
    for (const QString &name : emulator::Profile::names())
        std::printf("%-16s %s\n", qPrintable(name), qPrintable(emulator::Profile::load(name).title()));
    return 0;
}

int run(const Options &options, bool withoutDisplay)
{
    switch (options.mode) {
    case Options::Mode::Answer:
        std::printf("%s", qPrintable(options.answer));
        return 0;
    case Options::Mode::ListProfiles:
        return listProfiles();
    case Options::Mode::Screenshots:
        return Screenshots::run(options);
    case Options::Mode::SelfTest:
        return SelfTest::run(options);
    case Options::Mode::DumpInterface:
        return dumpInterface(options);
    case Options::Mode::Interactive:
        if (withoutDisplay)
            throw BadInput(QStringLiteral("there is no display; try --screenshots DIR or --self-test"));
        return runWindow(options);
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const bool withoutDisplay = goOffscreenWithoutDisplay();
    std::vector<std::string> arguments = joinPluginOption(argc, argv);
    std::vector<char *> pointers;
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    int count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    QApplication application(count, pointers.data());
    QApplication::setOrganizationName(QStringLiteral("zvt"));
    QApplication::setApplicationName(QStringLiteral("zvtcontroller"));
    QApplication::setApplicationVersion(QStringLiteral(ZVT_VERSION));
    QQuickStyle::setStyle(QStringLiteral("Fusion"));
    try {
        return run(Options::parse(QApplication::arguments()), withoutDisplay);
    } catch (const std::runtime_error &error) {
        std::fprintf(stderr, "zvtcontroller: %s\n", qPrintable(QString::fromUtf8(error.what()).simplified()));
        return 2;
    }
}
