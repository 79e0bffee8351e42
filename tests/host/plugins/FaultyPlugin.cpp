#include "hlx/IZVTController.h"
#include "hlxui/IControllerModelFactory.h"

#include <QObject>
#include <QString>

namespace
{

/// A root model with only the members that a host uses.
class FaultyModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool connected READ connected CONSTANT)
    Q_PROPERTY(bool allowedToCloseController READ allowedToCloseController CONSTANT)

public:
    FaultyModel(hlx::TSharedPtr<hlx::cam::IZVTController> controller, QObject *parent)
        : QObject(parent), m_controller(std::move(controller))
    {
    }

    bool connected() const { return m_controller->IsConnected(); }
    bool allowedToCloseController() const { return false; }

    Q_INVOKABLE void refreshAllVisible() { }

private:
    hlx::TSharedPtr<hlx::cam::IZVTController> m_controller;
};

bool createFaultyModel(hlx::TSharedPtr<hlx::cam::IController> controller, QObject *parent, QObject *&model,
                       QString &qml)
{
    model = new FaultyModel(controller.dynamicCast<hlx::cam::IZVTController>(), parent);
    qml = QStringLiteral("faulty/FaultyPage.qml");
    return true;
}

} // namespace

extern "C" Q_DECL_EXPORT int hlxInitPlugin()
{
    hlx::cam::ui::controllerModelFactory()->RegisterModelCreator(&createFaultyModel);
    return 1;
}

#include "FaultyPlugin.moc"
