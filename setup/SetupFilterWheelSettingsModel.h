#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"
#include "setup/FilterWheelItemModel.h"

#include <QObject>
#include <QString>

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

#include "hlxui/ObjectListModel.h"

/// The filters in the camera's filter wheel: shows them, turns the wheel to one of them, and lets the operator replace
/// one. Turning takes seconds and runs on a pool thread. The selected row changes before the wheel turns, and a failed
/// turn is not reported: the next refresh shows the filter that is in the optical path. The page prevents a second turn
/// while one runs; the model does not. GUI thread only.
class SetupFilterWheelSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(ObjectListModel *filterListModel READ filterListModel CONSTANT FINAL)
    Q_PROPERTY(int selectedFilterIndex READ selectedFilterIndex WRITE setSelectedFilterIndex NOTIFY
                   selectedFilterIndexChanged FINAL)
    Q_PROPERTY(
        bool filterSelectionInProgress READ filterSelectionInProgress NOTIFY filterSelectionInProgressChanged FINAL)
    Q_PROPERTY(bool filterReplacementSelectionInProgress READ filterReplacementSelectionInProgress NOTIFY
                   filterReplacementSelectionInProgressChanged FINAL)

public:
    explicit SetupFilterWheelSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section of the filter wheel is expanded.
    void setVisible(bool visible);
    /// FilterWheelItemModel objects in the order of the slots: four if the camera returns the count 4, three for any
    /// other count, none if a read failed or the count is 0.
    ObjectListModel *filterListModel() { return &m_filters; }
    int selectedFilterIndex() const { return m_selectedFilterIndex; } ///< A row; -1 until a read has found one.
    void setSelectedFilterIndex(int row); ///< Marks a row; does not turn the wheel.
    bool filterSelectionInProgress() const { return m_selectionInProgress; }
    bool filterReplacementSelectionInProgress() const { return m_replacementInProgress; }

    Q_INVOKABLE void refresh();
    /// Lets the camera read the filters in the wheel again, which takes seconds, and then refreshes. While a refresh
    /// runs, the scan is left to the next one. A changed number of filters is shown by the refresh after that.
    Q_INVOKABLE void forceScan();
    // The arguments of these two are rows of the list.
    Q_INVOKABLE void selectFilter(int filterID); ///< Turns the wheel to a filter.
    /// Turns the wheel to a filter unless it is the selected one, so that the operator can reach it.
    Q_INVOKABLE void replaceFilter(int filterID);

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void selectedFilterIndexChanged();
    void filterSelectionInProgressChanged();
    void filterReplacementSelectionInProgressChanged();

private:
    using Self = SetupFilterWheelSettingsModel;

    static constexpr size_t slotCount = FilterWheelItemModel::slotCount;

    /// The result of a read.
    struct Filters {
        Nullable<uint8_t> count;
        Nullable<std::array<uint8_t, slotCount>> ids;
        std::array<QString, slotCount> names;
        Nullable<uint8_t> currentID;

        static Filters read(const CameraAccess &camera, std::atomic<bool> &forceScan);
    };

private slots:
    void finishedWatcher();
    void finishedFilterSelection();
    void finishedFilterReplacementSelection();

private:
    void showFilters(const Filters &filters);
    /// Starts a task that turns the wheel to a filter. Without an ID the task does nothing, but its finished slot is
    /// called.
    static void turn(Refresh<Self, int> &move, std::optional<uint8_t> id);

    bool m_visible = false;
    ObjectListModel m_filters{true};
    int m_selectedFilterIndex = -1;
    bool m_selectionInProgress = false;
    bool m_replacementInProgress = false;
    /// Whether the next read starts with a scan. Shared with the read, which clears it.
    const std::shared_ptr<std::atomic<bool>> m_forceScan = std::make_shared<std::atomic<bool>>(false);
    Refresh<Self, Filters> m_refresh{this, &Self::finishedWatcher, RefreshForm::Swapped};
    Refresh<Self, int> m_selection{this, &Self::finishedFilterSelection, RefreshForm::NewestOnly};
    Refresh<Self, int> m_replacement{this, &Self::finishedFilterReplacementSelection, RefreshForm::NewestOnly};
};
