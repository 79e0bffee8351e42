#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QObject>

#include <cstdint>

/// The polarity of the integration output, the moment at which the IRIG time of a frame is taken, and what the frames
/// of each digital interface carry. An index is the camera's own number; a setter sends its lowest 8 bits. A refresh of
/// a camera without these settings reads nothing and leaves refreshing() true and hasRefreshed() false. GUI thread
/// only.
class AdvancedMiscSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)

    Q_PROPERTY(int selectedIntegrateActivePolarityIndex READ selectedIntegrateActivePolarityIndex WRITE
                   setSelectedIntegrateActivePolarityIndex NOTIFY selectedIntegrateActivePolarityIndexChanged FINAL)
    Q_PROPERTY(int selectedIrigLatchIndex READ selectedIrigLatchIndex WRITE setSelectedIrigLatchIndex NOTIFY
                   selectedIrigLatchIndexChanged FINAL)

    Q_PROPERTY(bool gigeHeaderModeAvailable READ gigeHeaderModeAvailable NOTIFY gigeHeaderModeAvailableChanged FINAL)
    Q_PROPERTY(bool clHeaderModeAvailable READ clHeaderModeAvailable NOTIFY clHeaderModeAvailableChanged FINAL)
    Q_PROPERTY(bool cxpHeaderModeAvailable READ cxpHeaderModeAvailable NOTIFY cxpHeaderModeAvailableChanged FINAL)
    Q_PROPERTY(int gigeHeaderModeIndex READ gigeHeaderModeIndex WRITE setGigeHeaderModeIndex NOTIFY
                   gigeHeaderModeIndexChanged FINAL)
    Q_PROPERTY(
        int clHeaderModeIndex READ clHeaderModeIndex WRITE setClHeaderModeIndex NOTIFY clHeaderModeIndexChanged FINAL)
    Q_PROPERTY(int cxpHeaderModeIndex READ cxpHeaderModeIndex WRITE setCxpHeaderModeIndex NOTIFY
                   cxpHeaderModeIndexChanged FINAL)

public:
    explicit AdvancedMiscSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);

    // These two setters signal also after a refusal, so that the box returns to the stored value.
    int selectedIntegrateActivePolarityIndex() const { return m_integratePolarity; } ///< 0 active low, 1 active high.
    void setSelectedIntegrateActivePolarityIndex(int index);
    /// 0 at the start of a frame, 1 at the start and 2 at the end of integration.
    int selectedIrigLatchIndex() const { return m_irigLatch; }
    void setSelectedIrigLatchIndex(int index);

    // Whether the header mode of an interface can be set. One that cannot be set is not read.
    bool gigeHeaderModeAvailable() const { return m_gigeAvailable; }
    bool clHeaderModeAvailable() const { return m_clAvailable; }
    bool cxpHeaderModeAvailable() const { return m_cxpAvailable; }
    // What the frames of an interface carry. The setters ignore -1, and store and signal only what the camera accepted.
    // Without a video source the mode is written at once. Else the transport is read; if it cannot be read, nothing is
    // written. If it is GigE, the source is stopped for the write and then started, whether it streamed before or not;
    // in between the controller's listeners are called if the mode was accepted. An exception of the start is
    // only logged; the next change of a mode starts the source again.
    int gigeHeaderModeIndex() const { return m_gigeMode; } ///< 0 header and image, 1 header only, 2 image only.
    void setGigeHeaderModeIndex(int index);
    int clHeaderModeIndex() const { return m_clMode; } ///< CameraLink: 0 header and image, 1 image only.
    void setClHeaderModeIndex(int index);
    int cxpHeaderModeIndex() const { return m_cxpMode; } ///< CoaXPress: 0 header and image, 1 image only.
    void setCxpHeaderModeIndex(int index);

    Q_INVOKABLE void refresh();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void selectedIntegrateActivePolarityIndexChanged();
    void selectedIrigLatchIndexChanged();
    void gigeHeaderModeAvailableChanged();
    void clHeaderModeAvailableChanged();
    void cxpHeaderModeAvailableChanged();
    void gigeHeaderModeIndexChanged();
    void clHeaderModeIndexChanged();
    void cxpHeaderModeIndexChanged();

private:
    using Self = AdvancedMiscSettingsModel;

    /// The result of a read.
    struct Settings {
        Nullable<int> integratePolarity;
        Nullable<int> irigLatch;
        Nullable<bool> gigeAvailable;
        Nullable<int> gigeMode;
        Nullable<bool> clAvailable;
        Nullable<int> clMode;
        Nullable<bool> cxpAvailable;
        Nullable<int> cxpMode;

        static Settings read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    void setHeaderMode(int mode, int &member, void (Self::*changed)(), int (*set)(uint64_t handle, uint8_t mode));

    bool m_visible = false;
    int m_integratePolarity = 0;
    int m_irigLatch = 0;
    bool m_gigeAvailable = false;
    bool m_clAvailable = false;
    bool m_cxpAvailable = false;
    int m_gigeMode = 0;
    int m_clMode = 0;
    int m_cxpMode = 0;
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher};
};
