import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// The Setup page: how the camera takes its images.
Page {
    id: page

    property bool generalSetupExpanded: true
    property bool syncSettingsExpanded: false

    readonly property SetupGeneralModel _general: camera ? camera.setupGeneralModel : null
    readonly property bool _hasRefreshed: camera ? camera.setupTabModel.hasRefreshed : false
    readonly property bool _refreshing: camera ? camera.setupTabModel.refreshing : false
    readonly property bool _hasVideoOutputSettings: camera ? camera.cameraCapabilitiesModel.hasVideoOutputSettings
                                                             || camera.manufacturingMode : false
    readonly property bool _videoOutputExpanded: camera ? camera.videoOutputSettings.visible : false
    readonly property bool _filterWheelExpanded: camera ? camera.setupFilterWheelSettingsModel.visible : false
    readonly property bool _coolerExpanded: camera ? camera.setupCoolerSettingsModel.visible : false
    readonly property bool _flagExpanded: camera ? camera.flagSettings.visible : false

    function refreshAllVisible() {
        if (generalSetupExpanded)
            _refreshGeneralSetup()
        if (syncSettingsExpanded)
            _refreshSyncSettings()
        if (_videoOutputExpanded)
            _refreshVideoOutput()
        if (_filterWheelExpanded)
            _refreshFilterWheel()
        if (_coolerExpanded)
            _refreshCooler()
        if (_flagExpanded)
            _refreshFlag()
        generalSection.clearWarnings()
    }

    function _refreshGeneralSetup() {
        if (camera) {
            camera.setupTabModel.refresh()
            camera.setupGeneralModel.refresh()
        }
        generalSection.clearWarnings()
    }

    function _refreshSyncSettings() {
        if (camera)
            camera.syncSettings.refresh()
    }

    function _refreshVideoOutput() {
        if (camera)
            camera.videoOutputSettings.refresh()
    }

    function _refreshFilterWheel() {
        if (camera)
            camera.setupFilterWheelSettingsModel.refresh()
    }

    function _refreshCooler() {
        if (camera)
            camera.setupCoolerSettingsModel.refresh()
    }

    function _refreshFlag() {
        if (camera)
            camera.flagSettings.refresh()
    }

    // Scrolling would move a held control of the lens away from the pointer.
    interactive: !generalSection.controlHeld
    onRefresh: refreshAllVisible()

    Binding {
        target: page.camera ? page.camera.setupTabModel : null
        property: "visible"
        value: page.isShown
    }

    Section {
        id: generalSection

        //: Title of a section
        title: qsTr("General Setup")
        body: "qrc:/qt-project.org/imports/zvt/setup/GeneralSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page.generalSetupExpanded
        loading: page._refreshing || (page._general ? page._general.refreshing : false)
        usable: page._hasRefreshed
        onRefresh: page._refreshGeneralSetup()
        onToggle: page.generalSetupExpanded = !page.generalSetupExpanded
        onScrollTo: item => page.bringIntoView(item)
    }

    Section {
        visible: page._general ? !page._general.isLowCost : true
        //: Title of a section
        title: qsTr("Sync Settings")
        body: "qrc:/qt-project.org/imports/zvt/setup/SyncSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page.syncSettingsExpanded
        loading: page.camera ? page.camera.syncSettings.refreshing : false
        usable: page.camera ? page.camera.syncSettings.hasRefreshed : false
        onRefresh: page._refreshSyncSettings()
        onToggle: page.syncSettingsExpanded = !page.syncSettingsExpanded
    }

    Section {
        visible: page._hasVideoOutputSettings
        //: Title of a section
        title: qsTr("Video Output Settings")
        body: "qrc:/qt-project.org/imports/zvt/setup/VideoOutputSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page._videoOutputExpanded
        usable: page.camera ? page.camera.videoOutputSettings.hasRefreshed : false
        onRefresh: page._refreshVideoOutput()
        onToggle: {
            if (page.camera)
                page.camera.videoOutputSettings.visible = !page._videoOutputExpanded
        }
    }

    Section {
        visible: page.camera ? page.camera.cameraCapabilitiesModel.hasFilterWheel : false
        //: Title of a section
        title: qsTr("Filter Wheel Settings")
        body: "qrc:/qt-project.org/imports/zvt/setup/FilterWheelSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page._filterWheelExpanded
        loading: page.camera ? page.camera.setupFilterWheelSettingsModel.refreshing : false
        usable: page.camera ? page.camera.setupFilterWheelSettingsModel.hasRefreshed : false
        onRefresh: page._refreshFilterWheel()
        onToggle: {
            if (page.camera)
                page.camera.setupFilterWheelSettingsModel.visible = !page._filterWheelExpanded
        }
    }

    Section {
        visible: page.camera ? page.camera.cameraCapabilitiesModel.hasTeCooler : false
        //: Title of a section
        title: qsTr("Cooler Settings")
        body: "qrc:/qt-project.org/imports/zvt/setup/CoolerSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page._coolerExpanded
        loading: page.camera ? page.camera.setupCoolerSettingsModel.refreshing : false
        usable: page.camera ? page.camera.setupCoolerSettingsModel.hasRefreshed : false
        onRefresh: page._refreshCooler()
        onToggle: {
            if (page.camera)
                page.camera.setupCoolerSettingsModel.visible = !page._coolerExpanded
        }
    }

    Section {
        visible: page.camera ? page.camera.cameraCapabilitiesModel.hasFlag : false
        //: Title of a section
        title: qsTr("Flag Settings")
        body: "qrc:/qt-project.org/imports/zvt/setup/FlagSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page._flagExpanded
        loading: page.camera ? page.camera.flagSettings.refreshing : false
        usable: page.camera ? page.camera.flagSettings.hasRefreshed : false
        onRefresh: page._refreshFlag()
        onToggle: {
            if (page.camera)
                page.camera.flagSettings.visible = !page._flagExpanded
        }
    }
}
