#pragma once

#include "common/Refresh.h"

#include <QObject>
#include <QUrl>

#include <cstdint>

/// Operations of the factory: the factory's default state, the factory's list of bad pixels, and the export of such
/// lists. Each operation blocks until the camera has carried it out; failures are not reported. GUI thread only.
class MfgToolsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(int selectedSaveBplIndex READ selectedSaveBplIndex WRITE setSelectedSaveBplIndex NOTIFY
                   selectedSaveBplIndexChanged FINAL)

public:
    explicit MfgToolsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);
    /// The lists of the export: 0 to 3 that of a preset, 4 those of all presets, 5 the factory's, 6 all of these. Any
    /// other index means none.
    int selectedSaveBplIndex() const { return m_selectedSaveBplIndex; }
    void setSelectedSaveBplIndex(int index);

    Q_INVOKABLE void refresh(); ///< Reads nothing from the camera; enables the section.
    Q_INVOKABLE void downloadFactoryState(const QUrl &url); ///< Copies the factory's default state into a local file.
    Q_INVOKABLE void uploadFactoryState(const QUrl &url); ///< Replaces the factory's default state by a local file.
    // For the factory's list of bad pixels, and the corrections that are loaded in the presets.
    Q_INVOKABLE void createFactoryBplForAllLoadedNucs(); ///< Makes the list from their bad pixels.
    Q_INVOKABLE void appendToFactoryBplForAllLoadedNucs(); ///< Adds their bad pixels to the list.
    Q_INVOKABLE void applyFactoryBplForAllLoadedNucs(); ///< Marks the pixels of the list as bad in them.
    Q_INVOKABLE void saveAllLoadedNucs(); ///< Saves the corrections of all presets under their names.
    /// Exports the selected lists of bad pixels into a local folder, see BadPixelExport. Does nothing if the URL is not
    /// that of a local folder.
    Q_INVOKABLE void saveBplForSelectedIndexAction(const QUrl &folder);
    Q_INVOKABLE void tk2950AutoFocusFull(); ///< Focuses once over the whole range of the lens.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void selectedSaveBplIndexChanged();

private:
    using Self = MfgToolsModel;

    /// The result of a read, which has no values.
    struct Nothing {
    };

    static constexpr uint32_t allPresets = 0xFFFFFFFF;

private slots:
    void finishedWatcher();

private:
    bool m_visible = false;
    int m_selectedSaveBplIndex = 6;
    Refresh<Self, Nothing> m_refresh{this, &Self::finishedWatcher};
};
