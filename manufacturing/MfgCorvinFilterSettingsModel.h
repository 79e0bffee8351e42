#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"
#include "setup/FilterWheelItemModel.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>

#include "hlxui/ObjectListModel.h"

/// The table by which the camera knows the filter in each slot of its filter wheel. The operator edits the IDs in the
/// rows and writes them all together; a refresh discards edits that were not written. The wheel can also be turned to a
/// slot, as by SetupFilterWheelSettingsModel: the selected row changes before the wheel turns, and a failed turn is not
/// reported. GUI thread only.
class MfgCorvinFilterSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(ObjectListModel *filterListModel READ filterListModel NOTIFY filterListModelChanged FINAL)
    Q_PROPERTY(int selectedFilterIndex READ selectedFilterIndex WRITE setSelectedFilterIndex NOTIFY
                   selectedFilterIndexChanged FINAL)
    Q_PROPERTY(
        bool filterSelectionInProgress READ filterSelectionInProgress NOTIFY filterSelectionInProgressChanged FINAL)
    Q_PROPERTY(QStringList filterIDNameStringListModel READ filterIDNameStringListModel NOTIFY
                   filterIDNameStringListModelChanged FINAL)

public:
    explicit MfgCorvinFilterSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);
    /// FilterWheelItemModel objects in the order of the slots, with the built-in names: four if the camera returns the
    /// count 4, three for any other count. A read that fails or returns the count 0 leaves them as they are. The name
    /// of a row stays when its ID is edited.
    ObjectListModel *filterListModel() { return &m_filters; }
    int selectedFilterIndex() const { return m_selectedFilterIndex; } ///< A row; -1 until a read has found one.
    void setSelectedFilterIndex(int row); ///< Marks a row; does not turn the wheel.
    bool filterSelectionInProgress() const { return m_selectionInProgress; }
    /// The camera's names of the IDs 0 to 63, empty where one could not be read. Without entries before the first read.
    QStringList filterIDNameStringListModel() const { return m_filterNames; }

    Q_INVOKABLE void refresh();
    /// Turns the wheel to a filter. The argument is a row of the list; the ID in the row counts, also an edited one.
    Q_INVOKABLE void selectFilter(int filterID);
    Q_INVOKABLE void applyFilterIDs(); ///< Writes the ID of each row, changed or not. Ignores all statuses.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void filterListModelChanged();
    void selectedFilterIndexChanged();
    void filterSelectionInProgressChanged();
    void filterIDNameStringListModelChanged();

private:
    using Self = MfgCorvinFilterSettingsModel;
    using FilterIDs = std::array<uint8_t, FilterWheelItemModel::slotCount>;

    /// The result of a read.
    struct FilterTable {
        Nullable<uint8_t> numFilters;
        Nullable<FilterIDs> filterIDs;
        std::array<QString, FilterWheelItemModel::slotCount> filterNames;
        Nullable<uint8_t> currentFilterID;
        QStringList namesOfIDs;

        static FilterTable read(const CameraAccess &camera);
        void readSlots(uint64_t handle);
        void readNames(uint64_t handle);
    };

private slots:
    void finishedWatcher();
    void finishedFilterSelection();

private:
    void showFilters(const FilterTable &table);

    bool m_visible = false;
    ObjectListModel m_filters{true};
    int m_selectedFilterIndex = -1;
    bool m_selectionInProgress = false;
    int m_numFilters = 0; ///< As the camera returned it with the rows.
    QStringList m_filterNames;
    Refresh<Self, FilterTable> m_refresh{this, &Self::finishedWatcher};
    Refresh<Self, int> m_selection{this, &Self::finishedFilterSelection, RefreshForm::NewestOnly};
};
