import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// The Setup page: how the camera takes its images.
Page {
    id: page

    property bool generalSetupExpanded: true

    readonly property SetupGeneralModel _general: camera ? camera.setupGeneralModel : null
    readonly property bool _hasRefreshed: camera ? camera.setupTabModel.hasRefreshed : false
    readonly property bool _refreshing: camera ? camera.setupTabModel.refreshing : false

    function refreshAllVisible() {
        if (generalSetupExpanded)
            _refreshGeneralSetup()
        generalSection.clearWarnings()
    }

    function _refreshGeneralSetup() {
        if (camera) {
            camera.setupTabModel.refresh()
            camera.setupGeneralModel.refresh()
        }
        generalSection.clearWarnings()
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
}
