import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// The Video page: the picture of the video outputs.
Page {
    id: page

    property bool generalSettingsExpanded: true

    readonly property VideoTabModel _video: camera ? camera.videoTabModel : null
    readonly property bool _hasAgcRegion: camera ? camera.cameraCapabilitiesModel.hasVideoAgcRoi
                                                   || camera.manufacturingMode : false
    readonly property bool _agcRegionExpanded: camera ? camera.agcRoiSettings.visible : false
    readonly property bool _overlayExpanded: camera ? camera.overlaySettings.visible : false

    function refreshAllVisible() {
        if (generalSettingsExpanded)
            _refreshGeneralSettings()
        if (_agcRegionExpanded)
            _refreshAgcRegion()
        if (_overlayExpanded)
            _refreshOverlay()
    }

    function _refreshGeneralSettings() {
        if (_video)
            _video.refresh()
    }

    function _refreshAgcRegion() {
        if (camera)
            camera.agcRoiSettings.refresh()
    }

    function _refreshOverlay() {
        if (camera)
            camera.overlaySettings.refresh()
    }

    onRefresh: refreshAllVisible()

    Section {
        //: Title of a section
        title: qsTr("General Video Settings")
        body: "qrc:/qt-project.org/imports/zvt/video/GeneralVideoSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page.generalSettingsExpanded
        loading: page._video ? page._video.refreshing : false
        usable: page._video ? page._video.hasRefreshed : false
        onRefresh: page._refreshGeneralSettings()
        onToggle: page.generalSettingsExpanded = !page.generalSettingsExpanded
    }

    Section {
        visible: page._hasAgcRegion
        //: Title of a section; AGC is the automatic gain control, ROI a region of interest
        title: qsTr("AGC ROI Settings")
        body: "qrc:/qt-project.org/imports/zvt/video/AgcRegionSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page._agcRegionExpanded
        loading: page.camera ? page.camera.agcRoiSettings.refreshing : false
        usable: page.camera ? page.camera.agcRoiSettings.hasRefreshed : false
        onRefresh: page._refreshAgcRegion()
        onToggle: {
            if (page.camera)
                page.camera.agcRoiSettings.visible = !page._agcRegionExpanded
        }
    }

    Section {
        //: Title of a section: the texts and frames on the picture of the video outputs
        title: qsTr("Overlay Settings")
        body: "qrc:/qt-project.org/imports/zvt/video/OverlaySettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page._overlayExpanded
        loading: page.camera ? page.camera.overlaySettings.refreshing : false
        usable: page.camera ? page.camera.overlaySettings.hasRefreshed : false
        onRefresh: page._refreshOverlay()
        onToggle: {
            if (page.camera)
                page.camera.overlaySettings.visible = !page._overlayExpanded
        }
    }
}
