#include "benchmarks/page/LoadedPage.h"

#include "hlxui/IControllerModelFactory.h"
#include "platform/hlxcamzvt/makeController.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QQuickItem>

#include <stdexcept>

using hlx::cam::ui::PageHost;

LoadedPage::LoadedPage(Kind kind)
    : m_camera(emulator::Camera::create(QStringLiteral("everything"), QString())),
      m_controller(hlx::cam::makeController(m_camera))
{
    const QString qml = load(kind);
    hlx::cam::ui::PageOptions options;
    options.refreshCameraControllerHotkey = Qt::Key_F5;
    m_engine.setIncubationController(m_window.incubationController());
    m_page = PageHost::load(m_engine, m_model.get(), qml, options);
    if (!m_page->item())
        throw std::runtime_error(m_page->errorText().toStdString());
    m_window.resize(900, 720);
    m_page->item()->setParentItem(m_window.contentItem());
    m_page->item()->setSize(m_window.size());
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
    QObject::connect(&m_window, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    m_window.show();
    loop.exec();
}
