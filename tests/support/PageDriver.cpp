#include "tests/support/PageDriver.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlProperty>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <stdexcept>

#include "hlxui/IControllerModelFactory.h"

namespace
{

/// Loads the plug-in as a host does, once for the process. The library stays loaded. Throws std::runtime_error.
void loadPlugin()
{
    static bool loaded = false;
    if (loaded)
        return;
    QLibrary library(QCoreApplication::applicationDirPath() + QStringLiteral("/libhlxcamuiZVT.so"));
    const auto init = reinterpret_cast<int (*)()>(library.resolve("hlxInitPlugin"));
    if (init == nullptr)
        throw std::runtime_error(library.errorString().toStdString());
    init();
    loaded = true;
}

using Condition = std::function<bool(const QQuickItem &)>;

QQuickItem *findBelow(const QQuickItem &item, const Condition &condition)
{
    // The item drawn last is on top, so a dialog is found before the page.
    const auto children = item.childItems();
    for (auto child = children.crbegin(); child != children.crend(); ++child) {
        if (!(*child)->isVisible())
            continue;
        if (condition(**child))
            return *child;
        if (auto *found = findBelow(**child, condition))
            return found;
    }
    return nullptr;
}

} // namespace

PageDriver::PageDriver(const PageSetup &setup) : m_rig(setup.profile, false)
{
    loadPlugin();
    setup.prepare(m_rig.camera());
    if (setup.connected)
        m_rig.camera().connect();
    QObject *model = nullptr;
    QString qml;
    if (!hlx::cam::ui::controllerModelFactory()->CreateModel(m_rig.controller(), nullptr, model, qml))
        throw std::runtime_error("no plug-in takes the camera");
    m_model.reset(model);
    QQmlEngine::setObjectOwnership(model, QQmlEngine::CppOwnership);
    m_host = hlx::cam::ui::PageHost::load(m_engine, model, qml, setup.options);
    if (page() == nullptr)
        throw std::runtime_error(m_host->errorText().toStdString());
    m_window.resize(setup.size);
    page()->setParentItem(m_window.contentItem());
    page()->setSize(setup.size);
    m_window.show();
    m_window.requestActivate();
    if (!QTest::qWaitForWindowExposed(&m_window) || !QTest::qWaitForWindowActive(&m_window))
        throw std::runtime_error("the window does not show");
    page()->forceActiveFocus();
    settle();
}

PageDriver::~PageDriver()
{
    m_rig.gate().release("*");
    CameraRig::settle();
}

QObject *PageDriver::tabModel(const char *property) const { return m_model->property(property).value<QObject *>(); }

QQuickItem *PageDriver::find(const QString &name, const QQuickItem *below) const
{
    return findBelow(below != nullptr ? *below : *m_window.contentItem(),
                     [&name](const QQuickItem &item) { return nameOf(item) == name; });
}

QQuickItem &PageDriver::item(const QString &name) const
{
    QQuickItem *found = find(name);
    if (found == nullptr)
        qFatal("\"%s\" is not shown", qPrintable(name));
    return *found;
}

QString PageDriver::nameOf(const QQuickItem &item)
{
    QQmlContext *context = qmlContext(&item);
    if (context == nullptr)
        return {};
    const QString name = QQmlProperty::read(&item, QStringLiteral("Accessible.name"), context).toString();
    // Qt makes the text of a button its accessible name only for a program that reads the names.
    return name.isEmpty() && item.inherits("QQuickAbstractButton") ? item.property("text").toString() : name;
}

QQuickItem *PageDriver::findText(const QString &text) const
{
    return findBelow(*m_window.contentItem(),
                     [&text](const QQuickItem &item) { return item.property("text").toString() == text; });
}

QString PageDriver::text(const QString &name) const
{
    const QQuickItem *item = find(name);
    return item == nullptr ? QStringLiteral("(not shown)") : item->property("text").toString();
}

QString PageDriver::hint() const
{
    const QQuickItem *shown
        = findBelow(*m_window.contentItem(), [](const QQuickItem &item) { return item.objectName() == "hintText"; });
    return shown == nullptr ? QString() : shown->property("text").toString();
}

QObject *PageDriver::object(const QString &objectName) const { return page()->findChild<QObject *>(objectName); }

QList<QQuickItem *> PageDriver::shownTexts(const QQuickItem &below)
{
    QList<QQuickItem *> texts = below.findChildren<QQuickItem *>();
    texts.removeIf([](const QQuickItem *item) {
        return item->window() == nullptr || !item->isVisible() || !item->inherits("QQuickText")
            || item->property("text").toString().isEmpty();
    });
    return texts;
}

bool PageDriver::isShaded() const
{
    return findBelow(*m_window.contentItem(),
                     [](const QQuickItem &item) { return item.objectName() == QStringLiteral("dialogShade"); })
        != nullptr;
}

bool PageDriver::fits(const QQuickItem &text, const QRectF &place)
{
    constexpr double rounding = 0.5;
    return !text.property("truncated").toBool() && place.contains(text.mapRectToScene(text.boundingRect()))
        && text.width() + rounding >= text.property("contentWidth").toDouble();
}

void PageDriver::click(QQuickItem *item)
{
    QVERIFY(item);
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(&m_window, Qt::LeftButton, Qt::NoModifier, middle.toPoint());
}

void PageDriver::click(const QString &name)
{
    QQuickItem *item = find(name);
    QVERIFY2(item, qPrintable(QStringLiteral("\"%1\" is not shown").arg(name)));
    click(item);
}

void PageDriver::use(QQuickItem &item, bool byKeyboard)
{
    if (byKeyboard) {
        item.forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_Space);
    } else {
        click(&item);
    }
}

void PageDriver::enter(QQuickItem &field, const QString &text, Qt::Key leave)
{
    field.forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_A, Qt::ControlModifier);
    type(text);
    press(leave);
}

QStringList PageDriver::commands(size_t mark)
{
    static const QRegularExpression reads(
        "^(controller\\.|zvt)(Mfg)?(Get|Is|Has|List|Read|Query|Clocks|NUCExists|capabilities)");
    QStringList list;
    for (const auto &call : rig().gate().callsSince(mark)) {
        const QString name = QString::fromStdString(call.name);
        if (!reads.match(name).hasMatch())
            list << (name + u' ' + QString::fromStdString(call.arguments)).trimmed();
    }
    return list;
}

void PageDriver::press(Qt::Key key, Qt::KeyboardModifiers modifiers) { QTest::keyClick(&m_window, key, modifiers); }

void PageDriver::type(const QString &text)
{
    for (const QChar character : text)
        QTest::keyClick(&m_window, character.toLatin1());
}

void PageDriver::choose(const QString &action)
{
    click(QStringLiteral("Configuration"));
    QVERIFY(QTest::qWaitFor([&] { return find(action) != nullptr; }));
    awaitFrame();
    click(action);
}

QObject *PageDriver::create(const QString &qml, const QVariantMap &properties)
{
    const QString imports = QStringLiteral(
        "import QtQuick\nimport QtQuick.Templates as T\nimport zvt\nimport zvt.look\nimport zvt.rows\n");
    QQmlComponent component(&m_engine);
    component.setData((imports + qml).toUtf8(), QUrl(QStringLiteral("qrc:/zvt/created.qml")));
    // The context of the page, as for its own parts.
    QQuickItem *pane = page()->childItems().constFirst();
    QObject *object = component.beginCreate(qmlContext(pane));
    if (object == nullptr)
        throw std::runtime_error(component.errorString().toStdString());
    component.setInitialProperties(object, properties);
    object->setParent(page());
    if (auto *item = qobject_cast<QQuickItem *>(object))
        item->setParentItem(pane->property("contentItem").value<QQuickItem *>());
    component.completeCreate();
    return object;
}

void PageDriver::poll()
{
    QObject *model = tabModel("statusTabModel");
    for (QObject *timer : model->findChildren<QTimer *>())
        QMetaObject::invokeMethod(timer, "timeout");
    settle();
}

void PageDriver::settle()
{
    CameraRig::settle();
    awaitFrame();
    // A message that fades out still blocks the page.
    const auto fades = [this] {
        const QList<QObject *> objects = page()->findChildren<QObject *>();
        return std::any_of(objects.cbegin(), objects.cend(), [](const QObject *object) {
            return object->inherits("QQuickPopup") && object->property("visible").toBool()
                && !object->property("opened").toBool();
        });
    };
    QVERIFY(QTest::qWaitFor([&] { return !fades(); }));
}

void PageDriver::awaitFrame()
{
    // Layouts are done with the next frame.
    QSignalSpy frames(&m_window, &QQuickWindow::frameSwapped);
    m_window.update();
    frames.wait();
}

void PageDriver::saveScreenshot(const QString &suffix, const QSize &size)
{
    const QString folder = qEnvironmentVariable("ZVT_SCREENSHOTS");
    if (folder.isEmpty())
        return;
    QStringList words{QTest::testObject()->metaObject()->className(), QTest::currentTestFunction()};
    for (const QString &word : {QString::fromLatin1(QTest::currentDataTag()), suffix})
        if (!word.isEmpty())
            words << word;
    const QImage image = grab();
    const QString file = QDir(folder).filePath(words.join(u'-').replace(u' ', u'_') + ".png");
    if (!image.copy({{}, size.isEmpty() ? image.size() : size}).save(file))
        throw std::runtime_error("cannot write " + file.toStdString());
}
