#include "benchmarks/page/LoadedPage.h"

#include "hlxui/IControllerModelFactory.h"
#include "platform/hlxcamui/hostModules.h"
#include "platform/hlxcamzvt/makeController.h"
#include "standalone/PageUser.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QQuickItem>

#include <algorithm>
#include <stdexcept>

using hlx::cam::ui::PageHost;

LoadedPage::LoadedPage(Kind kind, const QString &profile)
    : m_camera(emulator::Camera::create(profile, QString())), m_controller(hlx::cam::makeController(m_camera))
{
    // Page and host add fonts. Qt would lay out all texts again if a font were added after the window was created.
    hlx::cam::ui::registerHostModules();
    const QString qml = load(kind);
    m_window = std::make_unique<QQuickWindow>();
    hlx::cam::ui::PageOptions options;
    options.refreshCameraControllerHotkey = Qt::Key_F5;
    m_engine.setIncubationController(m_window->incubationController());
    m_page = PageHost::load(m_engine, m_model.get(), qml, options);
    if (!m_page->item())
        throw std::runtime_error(m_page->errorText().toStdString());
    m_window->resize(900, 720);
    m_page->item()->setParentItem(m_window->contentItem());
    m_page->item()->setSize(m_window->size());
    m_page->item()->setFocus(true);
}

QString LoadedPage::load(Kind kind)
{
    const QString folder = QCoreApplication::applicationDirPath();
    if (kind != Kind::Plugin) {
        m_flatPages.setFileName(folder + QStringLiteral("/libzvtbenchflat.so"));
        if (!m_flatPages.load())
            throw std::runtime_error(m_flatPages.errorString().toStdString());
        return kind == Kind::Flat ? QStringLiteral("zvtbench/Flat.qml") : QStringLiteral("zvtbench/Empty.qml");
    }
    m_plugin.emplace(folder + QStringLiteral("/libhlxcamuiZVT.so"));
    QObject *model = nullptr;
    QString qml;
    if (!hlx::cam::ui::controllerModelFactory()->CreateModel(m_controller, nullptr, model, qml))
        throw std::runtime_error("the plug-in does not serve the emulated camera");
    m_model.reset(model);
    return qml;
}

void LoadedPage::show()
{
    QEventLoop loop;
    QObject::connect(m_window.get(), &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    m_window->show();
    loop.exec();
}

void LoadedPage::awaitContents()
{
    constexpr int tooLong = 120'000; // Milliseconds; valgrind slows everything down.
    constexpr int loading = 2; // Loader.Loading

    const auto made = [this] {
        const auto objects = item().findChildren<QObject *>();
        const auto isLoader = [](const QObject *object) { return object->inherits("QQuickLoader"); };
        return item().property("_preload").toBool()
            && std::none_of(objects.begin(), objects.end(), [&](QObject *object) {
                   return isLoader(object) && object->property("status").toInt() == loading;
               });
    };
    if (!PageUser::waitFor(made, tooLong))
        throw std::runtime_error("the contents of the page are not made");
}
