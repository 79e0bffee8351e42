#pragma once

#include "common/Refresh.h"

#include <QObject>
#include <QString>

#include <array>

#include "hlxui/ObjectListModel.h"

/// The names of all filters that the camera knows, for the dialog that edits them. Every read replaces the rows, so a
/// dialog that opens again does not show edits that were not saved. A refused name is not reported. GUI thread only.
class EditFilterNamesModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(ObjectListModel *filterListModel READ filterListModel NOTIFY filterListModelChanged FINAL)

public:
    explicit EditFilterNamesModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the dialog is open.
    void setVisible(bool visible);
    ObjectListModel *filterListModel() { return &m_filters; } ///< 64 FilterNameEditorItemModel objects by ID.

    Q_INVOKABLE void refresh();
    /// Writes the modified names, with one SDK call for each, and refreshes the visible lists that show names.
    Q_INVOKABLE void saveAllModified();
    Q_INVOKABLE bool validateAll(); ///< Whether every name has 1 to 199 UTF-16 units.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void filterListModelChanged();

private:
    using Self = EditFilterNamesModel;

    static constexpr size_t filterCount = 64;

    /// The result of a read. A name that could not be read is empty.
    struct Names {
        std::array<QString, filterCount> defaultNames;
        std::array<QString, filterCount> names;

        static Names read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    void refreshVisibleLists();

    bool m_visible = false;
    ObjectListModel m_filters{true};
    Refresh<Self, Names> m_refresh{this, &Self::finishedWatcher};
};
