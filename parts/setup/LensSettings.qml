import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// Settings and controls of the lens. Rows for equipment that the lens lacks are hidden.
RowGroup {
    id: lens

    required property ZvtCameraModel camera
    required property bool connected
    required property bool isShown

    // Whether the pointer or a key holds a control that moves the lens.
    readonly property bool controlHeld: zoom.controlHeld || focusRows.controlHeld

    // Whether the operator types a position, which also locks the lens.
    readonly property bool _typing: zoom.editing || focusRows.editing
    readonly property bool unlocked: connected && (camera ? camera.setupTabModel.lensBasedControlsEnabled : false)
    readonly property bool hasCover: camera ? camera.cameraCapabilitiesModel.hasLensCover : false
    readonly property bool hasStates: camera ? camera.cameraCapabilitiesModel.hasLensStatesFunctionality : false
    readonly property bool hasFocus: camera ? camera.cameraCapabilitiesModel.hasFocus : false
    readonly property bool hasFocusToDistance: camera ? camera.cameraCapabilitiesModel.hasFocusToDistance : false
    readonly property bool hasContinuousZoom: camera ? camera.cameraCapabilitiesModel.hasContinuousOpticalZoom : false
    readonly property bool hasDiscreteZoom: camera ? camera.cameraCapabilitiesModel.hasDiscontinuousOpticalZoom : false
    readonly property bool hasAthermalization: camera ? camera.setupTabModel.athermalizationEnabledAvailable : false

    LensCoverRow {
        visible: lens.hasCover
        enabled: lens.unlocked
        camera: lens.camera
    }

    Heading {
        visible: lens.hasStates || lens.hasDiscreteZoom || lens.hasContinuousZoom || lens.hasFocus
        //: Heading of the rows for the lens
        text: qsTr("Lens Control")

        LockMark {
            locked: lens.connected && !lens.unlocked && !lens._typing && lens.isShown
        }
    }

    LensStatesRow {
        visible: lens.hasStates
        enabled: lens.unlocked
        camera: lens.camera
    }

    FieldOfViewRow {
        visible: lens.hasDiscreteZoom
        enabled: lens.unlocked
        camera: lens.camera
        connected: lens.connected
        isShown: lens.isShown && lens.hasDiscreteZoom
    }

    SettingRow {
        visible: lens.hasFocus && lens.hasAthermalization

        Toggle {
            //: The lens keeps its focus while the temperature changes
            text: qsTr("Enable Athermalization")
            checked: lens.camera ? lens.camera.setupTabModel.athermalizationEnabled : false
            onToggled: lens.camera.setupTabModel.athermalizationEnabled = checked
        }
    }

    ZoomRows {
        id: zoom

        visible: lens.hasContinuousZoom
        camera: lens.camera
        connected: lens.connected
        unlocked: lens.unlocked
        isShown: lens.isShown
    }

    FocusRows {
        id: focusRows

        visible: lens.hasFocus
        camera: lens.camera
        connected: lens.connected
        unlocked: lens.unlocked
        isShown: lens.isShown
        hasDiscreteZoom: lens.hasDiscreteZoom
        hasZoom: lens.hasDiscreteZoom || lens.hasContinuousZoom
    }

    AutoFocusRows {
        visible: lens.hasFocus
        camera: lens.camera
        unlocked: lens.unlocked
    }

    FocusToDistanceRows {
        visible: lens.hasFocusToDistance
        camera: lens.camera
        unlocked: lens.unlocked
    }
}
