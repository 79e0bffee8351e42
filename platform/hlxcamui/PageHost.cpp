#include "platform/hlxcamui/PageHost.h"

#include "platform/hlxcamui/IconFont.h"
#include "platform/hlxcamui/hostModules.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>

namespace hlx::cam::ui
{

std::unique_ptr<PageHost> PageHost::load(QQmlEngine &engine, QObject *model, const QString &qml,
                                         const PageOptions &options)
{
    registerHostModules();
    std::unique_ptr<PageHost> page(new PageHost(engine, model, options));
    page->create(resourceUrl(qml));
    return page;
}

PageHost::PageHost(QQmlEngine &engine, QObject *model, const PageOptions &options)
    : m_context(std::make_unique<QQmlContext>(&engine))
{
    QQmlContext *context = m_context.get();
    context->setContextProperty(QStringLiteral("fontAwesome"), new IconFont(context));
    const QString cameraModel = QStringLiteral("cameraModel");
    context->setContextProperty(cameraModel, model);
    // A context does not reset a property when its object is destroyed.
    if (model)
        QObject::connect(model, &QObject::destroyed, context, [context, cameraModel] {
            context->setContextProperty(cameraModel, static_cast<QObject *>(nullptr));
        });
    if (options.standaloneModel)
        context->setContextProperty(QStringLiteral("standaloneModel"), options.standaloneModel);
    if (options.refreshCameraControllerHotkey)
        context->setContextProperty(QStringLiteral("refreshCameraControllerHotkey"),
                                    *options.refreshCameraControllerHotkey);
}

PageHost::~PageHost() = default;

void PageHost::create(const QUrl &url)
{
    QQmlComponent component(m_context->engine(), url, QQmlComponent::PreferSynchronous);
    std::unique_ptr<QObject> object(component.isReady() ? component.create(m_context.get()) : nullptr);
    m_item.reset(qobject_cast<QQuickItem *>(object.get()));
    if (m_item) {
        static_cast<void>(object.release());
        return;
    }
    QStringList lines;
    for (const auto &error : component.errors())
        lines += error.toString();
    if (lines.isEmpty())
        lines += QStringLiteral("%1: the page's root object is not an item").arg(url.toString());
    m_errorText = lines.join(QLatin1Char('\n'));
}

QUrl PageHost::resourceUrl(const QString &qml)
{
    const QUrl url(qml);
    return url.isRelative() ? QUrl(QStringLiteral("qrc:/")).resolved(url) : url;
}

} // namespace hlx::cam::ui
