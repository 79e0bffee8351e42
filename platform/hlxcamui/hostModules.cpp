#include "platform/hlxcamui/hostModules.h"

#include "platform/hlxcamui/DialogWindowResizer.h"
#include "platform/hlxcamui/DisplayEditor.h"
#include "platform/hlxcamui/IconFont.h"
#include "platform/hlxcamui/IntValidatorEx.h"
#include "platform/hlxcamui/WidgetFileDialog.h"
#include "platform/hlxcamui/WindowEditor.h"

#include <QFontDatabase>
#include <QQmlEngine>
#include <QUrl>

#include <utility>

namespace hlx::cam::ui
{

void registerHostModules()
{
    static bool registered = false;
    if (std::exchange(registered, true))
        return;

    // Before there is a window, since adding a font then makes Qt lay out all texts again. The system's fonts are
    // loaded first, so that an installed font of the same family does not replace ours.
    static_cast<void>(QFontDatabase::hasFamily(QString()));
    IconFont().name();

    // Base types for the controls' QML files; not for pages. The version is that of the Qt Quick types they derive
    // from: with version 1.0 the engine would hide newer inherited properties, including the `palette` group that pages
    // use.
    constexpr auto templates = "com.kestrin.hlxcamui.templates";
    qmlRegisterType<DisplayEditor>(templates, 6, 4, "DisplayEditor");
    qmlRegisterType<WidgetFileDialog>(templates, 6, 4, "WidgetFileDialog");
    qmlRegisterType<WindowEditor>(templates, 6, 4, "WindowEditor");

    constexpr auto cameraControls = "com.kestrin.hlxcamui";
    const auto file
        = [](const char *name) { return QUrl(QStringLiteral("qrc:/hlxcamui/types/") + QLatin1String(name)); };
    qmlRegisterType(file("CameraFinderPopup.qml"), cameraControls, 1, 0, "CameraFinderPopup");
    qmlRegisterType(file("WindowEditor.qml"), cameraControls, 1, 0, "WindowEditor");
    qmlRegisterUncreatableType<DialogWindowResizer>(cameraControls, 1, 0, "DialogWindowResizer",
                                                    QStringLiteral("Can only be used attached to an object"));

    constexpr auto controls = "com.kestrin.hlxui";
    qmlRegisterType(file("DisplayEditor.qml"), controls, 1, 0, "DisplayEditor");
    qmlRegisterType<IntValidatorEx>(controls, 1, 0, "IntValidatorEx");
}

} // namespace hlx::cam::ui
