#include "benchmarks/page/Census.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QQmlContext>
#include <QQuickItem>

#include <algorithm>

namespace
{

struct StockType {
    const char *className;
    const char *qmlName;
};

// A type must come before its base types.
constexpr StockType layoutTypes[]
    = {{"QQuickRowLayout", "RowLayout"}, {"QQuickColumnLayout", "ColumnLayout"}, {"QQuickGridLayout", "GridLayout"}};
constexpr StockType containerTypes[] = {{"QQuickTabBar", "TabBar"},
                                        {"QQuickToolBar", "ToolBar"},
                                        {"QQuickScrollView", "ScrollView"},
                                        {"QQuickGroupBox", "GroupBox"},
                                        {"QQuickFrame", "Frame"},
                                        {"QQuickPage", "Page"},
                                        {"QQuickPane", "Pane"},
                                        {"QQuickStackLayout", "StackLayout"}};
constexpr StockType textTypes[] = {{"QQuickTextField", "TextField"},
                                   {"QQuickTextInput", "TextField"},
                                   {"QQuickTextArea", "TextArea"},
                                   {"QQuickTextEdit", "TextArea"},
                                   {"QQuickText", "Label"}};
constexpr StockType controlTypes[] = {{"QQuickTabButton", "TabButton"},     {"QQuickToolButton", "ToolButton"},
                                      {"QQuickRoundButton", "RoundButton"}, {"QQuickCheckBox", "CheckBox"},
                                      {"QQuickRadioButton", "RadioButton"}, {"QQuickSwitch", "Switch"},
                                      {"QQuickMenuItem", "MenuItem"},       {"QQuickItemDelegate", "ItemDelegate"},
                                      {"QQuickAbstractButton", "Button"},   {"QQuickComboBox", "ComboBox"},
                                      {"QQuickSpinBox", "SpinBox"},         {"QQuickSlider", "Slider"},
                                      {"QQuickProgressBar", "ProgressBar"}, {"QQuickBusyIndicator", "BusyIndicator"},
                                      {"QQuickScrollBar", "ScrollBar"}};

template <size_t count> const char *stockName(const QObject &object, const StockType (&types)[count])
{
    for (const StockType &type : types)
        if (object.inherits(type.className))
            return type.qmlName;
    return nullptr;
}

/// Whether the object is declared in a QML file of the page, of its parts or of the host's controls.
bool isDeclaredByPage(const QObject &object)
{
    const QQmlContext *context = qmlContext(&object);
    const QString file = context ? context->baseUrl().path() : QString();
    return std::ranges::any_of(
        std::initializer_list<const char *>{"/zvt/", "/qt-project.org/imports/zvt/", "/hlxcamui/"},
        [&file](const char *folder) { return file.startsWith(QLatin1String(folder)); });
}

/// QML source of a stock control with the text of `control`.
QString declaration(const char *type, const QObject &control)
{
    QString text = control.property("text").toString();
    if (text.isEmpty() || control.inherits("QQuickComboBox"))
        return QStringLiteral("%1 { }").arg(QLatin1String(type));
    // Without the icon font Qt would search for the glyphs in all fonts.
    for (QChar &character : text)
        if (character.category() == QChar::Other_PrivateUse)
            character = u'x';
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QStringLiteral("%1 { text: %2 }").arg(QLatin1String(type), QString::fromUtf8(list.mid(1).chopped(1)));
}

} // namespace

Census::Census(QQuickItem &page) { visit(page, Place::Page); }

QString Census::flatPage() const
{
    return QStringLiteral("import QtQuick\nimport QtQuick.Controls\nimport QtQuick.Layouts\n\n"
                          "// Written by zvtbenchpage.\nItem {\n")
        + written(m_visible, QStringLiteral("Item {")) + written(m_hidden, QStringLiteral("Item { visible: false"))
        + QStringLiteral("}\n");
}

QString Census::summary() const
{
    return QStringLiteral("%1 controls (%2 visible), %3 layouts (%4 visible)")
        .arg(controls())
        .arg(m_visible.controls.size())
        .arg(m_visible.layouts.size() + m_hidden.layouts.size())
        .arg(m_visible.layouts.size());
}

void Census::visit(QObject &object, Place place)
{
    if (m_visited.contains(&object))
        return;
    m_visited.insert(&object);
    const Place inside = count(object, place);
    if (const auto *item = qobject_cast<QQuickItem *>(&object))
        for (QQuickItem *child : item->childItems())
            visit(*child, inside);
    for (QObject *child : object.children())
        visit(*child, inside);
}

Census::Place Census::count(const QObject &object, Place place)
{
    if (place == Place::Popup || object.inherits("QQuickPopup"))
        return Place::Popup;
    if (!isDeclaredByPage(object))
        return place;
    const auto *item = qobject_cast<const QQuickItem *>(&object);
    Group &group = item && item->isVisible() ? m_visible : m_hidden;
    if (const char *layout = stockName(object, layoutTypes)) {
        group.layouts << QLatin1String(layout);
    } else if (const char *container = stockName(object, containerTypes)) {
        group.controls << declaration(container, object);
    } else if (const char *control = stockName(object, controlTypes)) {
        group.controls << declaration(control, object);
        return Place::Control;
    } else if (const char *text = stockName(object, textTypes); text && place == Place::Page) {
        group.controls << declaration(text, object);
        return Place::Control;
    }
    return place;
}

/// QML source of the layouts, one beside the other, with the controls distributed among them.
QString Census::written(const Group &group, const QString &opening)
{
    QString text = QStringLiteral("    %1\n").arg(opening);
    qsizetype dealt = 0;
    for (qsizetype i = 0; i < group.layouts.size(); ++i) {
        const QString &layout = group.layouts[i];
        text += QStringLiteral("        %1 {\n            y: %2\n").arg(layout).arg(40 * i);
        if (layout == QLatin1String("GridLayout"))
            text += QStringLiteral("            columns: 2\n");
        for (const auto end = group.controls.size() * (i + 1) / group.layouts.size(); dealt < end; ++dealt)
            text += QStringLiteral("            %1\n").arg(group.controls[dealt]);
        text += QStringLiteral("        }\n");
    }
    for (; dealt < group.controls.size(); ++dealt)
        text += QStringLiteral("        %1\n").arg(group.controls[dealt]);
    return text + QStringLiteral("    }\n");
}
