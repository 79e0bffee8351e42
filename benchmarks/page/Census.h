#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

class QObject;
class QQuickItem;

/// Counts the controls and layouts that the files of a page declare, and not what those consist of themselves. Popups,
/// tool tips among them, are left out with everything inside them. A control with faces of its own counts as the stock
/// control that it is derived from, and a bare text or text input as a label or a text field. GUI thread only.
class Census
{
public:
    explicit Census(QQuickItem &page);

    /// The controls of the page, on show or hidden.
    qsizetype controls() const { return m_visible.controls.size() + m_hidden.controls.size(); }

    /// Everything below the page: items and other objects, those of popups too.
    qsizetype objects() const { return m_visited.size(); }

    /// The source of a page of the same stock controls and layouts, with the same texts. What is hidden stays so.
    QString flatPage() const;

    /// The counts in words.
    QString summary() const;

private:
    /// Controls and layouts that are seen or unseen together, as they are declared in the flat page.
    struct Group {
        QStringList controls;
        QStringList layouts;
    };

    /// What an object lies in.
    enum class Place {
        Page,
        Control, ///< Texts are part of the control's face here.
        Popup, ///< Nothing counts here but the objects.
    };

    void visit(QObject &object, Place place);
    /// Counts the object if it is to be counted. Returns what its children lie in.
    Place count(const QObject &object, Place place);
    static QString written(const Group &group, const QString &opening);

    QSet<const QObject *> m_visited;
    Group m_visible;
    Group m_hidden;
};
