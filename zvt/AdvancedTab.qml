import QtQuick
import zvt.rows

// The Advanced page: settings that are rarely needed. When it is shown, of its own sections only the first one is read.
// The operator reads the others by their headers.
Page {
    id: page

    property bool digitalSettingsExpanded: true

    readonly property bool _analogExpanded: camera ? camera.advancedAnalogSettingsModel.visible : false
    readonly property bool _saturationExpanded: camera ? camera.advancedSaturationSettingsModel.visible : false
    readonly property bool _lockinExpanded: camera ? camera.advancedLockinSettingsModel.visible : false
    readonly property bool _miscExpanded: camera ? camera.advancedMiscSettingsModel.visible : false
    // Whether the operator can see the number of saturated pixels.
    readonly property bool _inView: isShown && connected && Window.visibility !== Window.Minimized

    function refreshAllVisible() {
        if (digitalSettingsExpanded)
            _refreshDigital()
        // Two sections of the Video page.
        if (camera && camera.agcRoiSettings.visible)
            camera.agcRoiSettings.refresh()
        if (camera && camera.overlaySettings.visible)
            camera.overlaySettings.refresh()
    }

    function _refreshDigital() {
        if (camera)
            camera.advancedTabModel.refresh()
    }

    function _refreshAnalog() {
        if (camera)
            camera.advancedAnalogSettingsModel.refresh()
    }

    function _refreshSaturation() {
        if (!camera)
            return
        camera.advancedSaturationSettingsModel.refresh()
        camera.advancedSaturationSettingsModel.updateAllSaturatedPixels()
    }

    function _refreshLockin() {
        if (camera)
            camera.advancedLockinSettingsModel.refresh()
    }

    function _refreshMisc() {
        if (camera)
            camera.advancedMiscSettingsModel.refresh()
    }

    // The saturated pixels are counted only while the operator can see their number.
    function _countPixels(active: bool) {
        if (camera)
            camera.advancedSaturationSettingsModel.saturatedPixelsUpdateActiveIfVisible(active)
    }

    function _toggleSaturation() {
        if (!camera)
            return
        camera.advancedSaturationSettingsModel.visible = !_saturationExpanded
        // The model counts whenever the section is expanded, also while no camera is connected.
        _countPixels(_inView)
    }

    on_InViewChanged: _countPixels(_inView)
    onRefresh: {
        refreshAllVisible()
        _countPixels(_inView)
    }
    onRest: _countPixels(false)
    // A page that is shown takes the focus itself.
    onConnectedChanged: {
        if (connected && isShown)
            takeFocus()
    }

    Section {
        //: Title of a section: what the camera does with the counts of the detector
        title: qsTr("Digital Settings")
        body: "qrc:/qt-project.org/imports/zvt/advanced/DigitalSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page.digitalSettingsExpanded
        loading: page.camera ? page.camera.advancedTabModel.refreshing : false
        usable: page.camera ? page.camera.advancedTabModel.hasRefreshed : false
        onRefresh: page._refreshDigital()
        onToggle: page.digitalSettingsExpanded = !page.digitalSettingsExpanded
    }

    Section {
        //: Title of a section: voltages of the detector
        title: qsTr("Analog Settings")
        body: "qrc:/qt-project.org/imports/zvt/advanced/AnalogSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page._analogExpanded
        loading: page.camera ? page.camera.advancedAnalogSettingsModel.refreshing : false
        usable: page.camera ? page.camera.advancedAnalogSettingsModel.hasRefreshed : false
        onRefresh: page._refreshAnalog()
        onToggle: {
            if (page.camera)
                page.camera.advancedAnalogSettingsModel.visible = !page._analogExpanded
        }
    }

    Section {
        //: Title of a section: when a pixel counts as saturated
        title: qsTr("Saturation Settings")
        body: "qrc:/qt-project.org/imports/zvt/advanced/SaturationSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page._saturationExpanded
        loading: page.camera ? page.camera.advancedSaturationSettingsModel.refreshing : false
        usable: page.camera ? page.camera.advancedSaturationSettingsModel.hasRefreshed : false
        onRefresh: page._refreshSaturation()
        onToggle: page._toggleSaturation()
    }

    Section {
        visible: page.camera ? page.camera.cameraCapabilitiesModel.hasLockin : false
        //: Title of a section: lock-in, the measurement of what follows a periodic signal
        title: qsTr("Lockin Settings")
        body: "qrc:/qt-project.org/imports/zvt/advanced/LockinSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page._lockinExpanded
        loading: page.camera ? page.camera.advancedLockinSettingsModel.refreshing : false
        usable: page.camera ? page.camera.advancedLockinSettingsModel.hasRefreshed : false
        onRefresh: page._refreshLockin()
        onToggle: {
            if (page.camera)
                page.camera.advancedLockinSettingsModel.visible = !page._lockinExpanded
        }
    }

    Section {
        visible: page.camera ? page.camera.cameraCapabilitiesModel.hasAdvancedMiscSettings : false
        //: Title of a section: the integrate output, the timestamp, and what the digital interfaces send
        title: qsTr("Miscellaneous Settings")
        body: "qrc:/qt-project.org/imports/zvt/advanced/MiscSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        expanded: page._miscExpanded
        loading: page.camera ? page.camera.advancedMiscSettingsModel.refreshing : false
        usable: page.camera ? page.camera.advancedMiscSettingsModel.hasRefreshed : false
        onRefresh: page._refreshMisc()
        onToggle: {
            if (page.camera)
                page.camera.advancedMiscSettingsModel.visible = !page._miscExpanded
        }
    }
}
