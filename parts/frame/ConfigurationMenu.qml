import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The menu of actions on the whole camera. It opens below its button. It returns the focus to the button when it
// closes, which is before an action runs.
T.Popup {
    id: menu

    required property ZvtCameraModel camera
    required property bool connected
    // Null when a host application shows the page.
    property var standaloneModel: null

    readonly property bool _manufacturing: camera ? camera.manufacturingMode : false
    readonly property bool _hasControllerChoice: standaloneModel ? standaloneModel.canSelectController : false
    readonly property bool _canSave: camera ? camera.cameraState.canSaveState : false
    readonly property string _stateName: camera ? camera.cameraState.currentStateName : ""
    readonly property bool _stateNameKnown: _stateName !== "" && (camera ? !camera.cameraState.refreshing : false)
    // Whether the button had the focus by keyboard or by mouse when the menu opened.
    property int _focusReason: Qt.MouseFocusReason

    signal statesRequested(mode: string)
    signal timeRequested
    signal filterNamesRequested
    signal aboutRequested

    component Line: Rectangle {
        implicitHeight: 1
        Layout.fillWidth: true
        Layout.topMargin: 4
        Layout.bottomMargin: 4
        color: Look.rectangleOutlineColor
    }

    // Closes the menu and then emits `chosen`.
    component Action: MenuRow {
        signal chosen

        enabled: menu.connected
        onClicked: {
            menu.close()
            chosen()
        }
    }

    function _step(forward: bool) {
        const next = contentItem.Window.activeFocusItem.nextItemInFocusChain(forward)
        next.forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason)
    }

    y: parent ? parent.height : 0
    margins: 8
    width: 248
    height: Math.min(implicitHeight, parent ? parent.Window.height - parent.height - 16 : implicitHeight)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    modal: true
    dim: false
    focus: true
    leftPadding: 1
    rightPadding: 1
    topPadding: 6
    bottomPadding: 6
    font.pixelSize: Look.textSize
    onAboutToShow: _focusReason = (parent as BarButton).visualFocus ? Qt.TabFocusReason : Qt.MouseFocusReason
    onOpened: {
        if (_focusReason === Qt.TabFocusReason)
            contentItem.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    }
    onClosed: parent.forceActiveFocus(_focusReason)

    background: Rectangle {
        radius: 4
        color: Look.panelColor
        border.color: Look.fieldFrameColor
    }
    contentItem: ColumnLayout {
        spacing: 0

        Keys.onUpPressed: menu._step(false)
        Keys.onDownPressed: menu._step(true)

        Choice {
            visible: menu._hasControllerChoice
            enabled: menu.standaloneModel ? !menu.standaloneModel.connected : false
            Layout.fillWidth: true
            Layout.margins: 11
            //: The kind of camera controller to use
            Accessible.name: qsTr("Controller")
            model: menu.standaloneModel ? menu.standaloneModel.controllerDisplayNames : []
            currentIndex: menu.standaloneModel ? menu.standaloneModel.controllerIndex : -1
            onActivated: menu.standaloneModel.controllerIndex = currentIndex
        }

        Action {
            glyph: Glyph.save
            //: Saves the camera's settings; %1 is a name
            text: menu._stateNameKnown ? qsTr("Save State (%1)").arg(menu._stateName)
                                       //: Saves the camera's settings
                                       : qsTr("Save State")
            enabled: menu.connected && menu._canSave
            onChosen: menu.camera.cameraState.saveState()
        }

        Action {
            glyph: Glyph.save
            //: Saves the camera's settings under a name
            text: qsTr("Save State As")
            onChosen: menu.statesRequested("save")
        }

        Action {
            glyph: Glyph.load
            //: Loads settings that the camera has saved
            text: qsTr("Load State")
            onChosen: menu.statesRequested("load")
        }

        Action {
            glyph: Glyph.list
            //: Renames, deletes and copies saved settings
            text: qsTr("Manage States")
            onChosen: menu.statesRequested("manage")
        }

        Line {}

        Action {
            glyph: Glyph.undo
            //: Loads the manufacturer's settings
            text: qsTr("Load Factory Defaults")
            onChosen: menu.camera.cameraState.loadFactoryDefaults()
        }

        // The next two actions are for the manufacturer's staff only, and therefore not translated.
        Action {
            visible: menu._manufacturing
            glyph: Glyph.save
            text: "Save Factory Defaults"
            onChosen: menu.camera.cameraState.saveFactoryDefaults()
        }

        Action {
            visible: menu._manufacturing
            glyph: Glyph.undo
            text: "Load Hard Defaults"
            onChosen: menu.camera.cameraState.loadHardDefaults()
        }

        Line {}

        Action {
            glyph: Glyph.clock
            //: Opens the dialog of the camera's clock
            text: qsTr("Adjust Time")
            onChosen: menu.timeRequested()
        }

        Action {
            visible: menu.camera ? menu.camera.cameraCapabilitiesModel.hasFilterWheel : false
            glyph: Glyph.pencil
            //: Opens the dialog of the filters' names
            text: qsTr("Edit Filter Names")
            onChosen: menu.filterNamesRequested()
        }

        Action {
            glyph: Glyph.info
            //: Opens the dialog with information about the camera
            text: qsTr("About")
            onChosen: menu.aboutRequested()
        }
    }
}
