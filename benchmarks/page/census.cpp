#include "benchmarks/page/modes.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QQmlContext>
#include <QQuickItem>
#include <QSet>

#include <cstdio>
#include <deque>

namespace
{

struct StockType {
    const char *className;
    const char *qmlName;
};

// A type stands before those that it derives from.
constexpr StockType popupTypes[]
    = {{"QQuickToolTip", "ToolTip"}, {"QQuickMenu", "Menu"}, {"QQuickDialog", "Dialog"}, {"QQuickPopup", "Popup"}};
constexpr StockType layoutTypes[]
    = {{"QQuickRowLayout", "RowLayout"}, {"QQuickColumnLayout", "ColumnLayout"}, {"QQuickGridLayout", "GridLayout"}};
constexpr StockType controlTypes[] = {{"QQuickTabButton", "TabButton"},
                                      {"QQuickToolButton", "ToolButton"},
                                      {"QQuickRoundButton", "RoundButton"},
                                      {"QQuickButton", "Button"},
                                      {"QQuickCheckBox", "CheckBox"},
                                      {"QQuickRadioButton", "RadioButton"},
                                      {"QQuickSwitch", "Switch"},
                                      {"QQuickMenuItem", "MenuItem"},
                                      {"QQuickItemDelegate", "ItemDelegate"},
                                      {"QQuickComboBox", "ComboBox"},
                                      {"QQuickSpinBox", "SpinBox"},
                                      {"QQuickSlider", "Slider"},
                                      {"QQuickProgressBar", "ProgressBar"},
                                      {"QQuickBusyIndicator", "BusyIndicator"},
                                      {"QQuickScrollBar", "ScrollBar"},
                                      {"QQuickTextField", "TextField"},
                                      {"QQuickTextArea", "TextArea"},
                                      {"QQuickLabel", "Label"},
                                      {"QQuickTabBar", "TabBar"},
                                      {"QQuickToolBar", "ToolBar"},
                                      {"QQuickScrollView", "ScrollView"},
                                      {"QQuickGroupBox", "GroupBox"},
                                      {"QQuickFrame", "Frame"},
                                      {"QQuickPage", "Page"},
                                      {"QQuickPane", "Pane"},
                                      {"QQuickStackLayout", "StackLayout"}};

template <size_t count> const char *stockName(const QObject &object, const StockType (&types)[count])
{
    for (const StockType &type : types)
        if (object.inherits(type.className))
            return type.qmlName;
    return nullptr;
}

/// Controls and layouts that are seen or unseen together.
struct Group {
    QString opening; ///< The first line of what holds them.
    QStringList controls{};
    QStringList layouts{};
};

/// Counts the stock controls and layouts that the files of a page declare, and not what those consist of themselves.
class Census
{
public:
    explicit Census(QQuickItem &page) { visit(page, nullptr); }

    QString flatPage() const
    {
        QString text = QStringLiteral("import QtQuick\nimport QtQuick.Controls\nimport QtQuick.Layouts\n\n"
                                      "// Written by zvtbenchpage.\nItem {\n");
        text += written(m_visible) + written(m_hidden);
        for (const Group &popup : m_popups)
            text += written(popup);
        return text + QStringLiteral("}\n");
    }

    QString summary() const
    {
        qsizetype controls = m_visible.controls.size() + m_hidden.controls.size();
        qsizetype layouts = m_visible.layouts.size() + m_hidden.layouts.size();
        for (const Group &popup : m_popups) {
            controls += popup.controls.size();
            layouts += popup.layouts.size();
        }
        return QStringLiteral("%1 controls (%2 visible), %3 layouts (%4 visible), %5 closed popups")
            .arg(controls)
            .arg(m_visible.controls.size())
            .arg(layouts)
            .arg(m_visible.layouts.size())
            .arg(m_popups.size());
    }

private:
    static bool isDeclaredByPage(const QObject &object)
    {
        const QQmlContext *context = qmlContext(&object);
        const QString file = context ? context->baseUrl().path() : QString();
        return file.startsWith(QLatin1String("/zvt/")) || file.startsWith(QLatin1String("/hlxcamui/"));
    }

    /// `popup`: the one that holds the object, null for what lies on the page itself.
    void visit(QObject &object, Group *popup)
    {
        if (m_visited.contains(&object))
            return;
        m_visited.insert(&object);
        auto *item = qobject_cast<QQuickItem *>(&object);
        if (isDeclaredByPage(object)) {
            Group &group = popup ? *popup : item && item->isVisible() ? m_visible : m_hidden;
            if (const char *name = stockName(object, popupTypes))
                popup = &m_popups.emplace_back(Group{QLatin1String(name) + QLatin1String(" {")});
            else if (const char *layout = stockName(object, layoutTypes))
                group.layouts << QLatin1String(layout);
            else if (const char *control = stockName(object, controlTypes))
                group.controls << written(control, object);
        }
        if (item)
            for (QQuickItem *child : item->childItems())
                visit(*child, popup);
        for (QObject *child : object.children())
            visit(*child, popup);
    }

    static QString written(const char *type, const QObject &control)
    {
        const QString text = control.property("text").toString();
        if (text.isEmpty() || control.inherits("QQuickComboBox"))
            return QStringLiteral("%1 { }").arg(QLatin1String(type));
        const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
        return QStringLiteral("%1 { text: %2 }").arg(QLatin1String(type), QString::fromUtf8(list.mid(1).chopped(1)));
    }

    /// The layouts side by side, with the controls dealt out among them.
    static QString written(const Group &group)
    {
        QString text = QStringLiteral("    %1\n").arg(group.opening);
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

    QSet<const QObject *> m_visited;
    Group m_visible{QStringLiteral("Item {")};
    Group m_hidden{QStringLiteral("Item { visible: false")};
    std::deque<Group> m_popups; // The walk keeps the addresses of groups.
};

} // namespace

int writeFlatPage(const QString &fileName)
{
    LoadedPage page(LoadedPage::Kind::Plugin);
    page.show();
    const Census census(page.item());
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(census.flatPage().toUtf8()) < 0) {
        std::fprintf(stderr, "zvtbenchpage: %s: %s\n", qPrintable(fileName), qPrintable(file.errorString()));
        return 2;
    }
    std::printf("%s\n", qPrintable(census.summary()));
    return 0;
}
