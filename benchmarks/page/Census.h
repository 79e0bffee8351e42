#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

class QObject;
class QQuickItem;

/// Counts the controls and layouts that the files of a page declare, without the items that these consist of. Popups
/// and tool tips are left out with all their contents. A control with its own background and content counts as the
/// stock control that it derives from, and a plain Text or TextInput as a label or a text field. GUI thread only.
class Census
{
public:
    explicit Census(QQuickItem &page);

    /// The number of controls of the page, visible and hidden.
    qsizetype controls() const { return m_visible.controls.size() + m_hidden.controls.size(); }

    /// The number of all objects below the page, including those of popups.
    qsizetype objects() const { return m_visited.size(); }

    /// QML source of a page with the same number of stock controls and layouts and the same texts. Hidden ones stay
    /// hidden.
    QString flatPage() const;

    /// The counts as text.
    QString summary() const;

private:
    /// Controls and layouts that are all visible or all hidden, with their source for the flat page.
    struct Group {
        QStringList controls;
        QStringList layouts;
    };

    /// The kind of object that contains an object.
    enum class Place {
        Page,
        Control, ///< Texts in a control are part of its looks and do not count.
        Popup, ///< Only objects are counted in a popup, no controls.
    };

    void visit(QObject &object, Place place);
    /// Counts the object if it is a control or layout of the page. Returns the place of its children.
    Place count(const QObject &object, Place place);
    static QString written(const Group &group, const QString &opening);

    QSet<const QObject *> m_visited;
    Group m_visible;
    Group m_hidden;
};
