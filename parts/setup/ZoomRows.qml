import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.rows

// The position of a continuous optical zoom, and the controls that move it.
RowGroup {
    id: rows

    required property ZvtCameraModel camera
    required property bool connected
    required property bool unlocked
    required property bool isShown
    // Whether the pointer or a key holds a control that moves the lens.
    property bool controlHeld

    readonly property alias editing: line.editing
    readonly property bool _movesByPercent: camera ? camera.cameraCapabilitiesModel.hasFovMovePercent : false
    readonly property real _minimum: camera ? camera.setupTabModel.fullRangeZoomMinimum : 0
    readonly property real _maximum: camera ? camera.setupTabModel.fullRangeZoomMaximum : 0
    readonly property real _position: camera ? camera.setupTabModel.selectedZoomPosition : 0

    SettingRow {
        id: positionRow

        enabled: rows.unlocked || line.editing
        //: Heading of a position
        heading: qsTr("Optical Zoom:")

        PositionLine {
            id: line

            name: positionRow.name
            camera: rows.camera
            connected: rows.connected
            unlocked: rows.unlocked
            isShown: rows.isShown
            minimum: rows._minimum
            maximum: rows._maximum
            value: rows._position
            onEntered: position => rows.camera.setupTabModel.selectedZoomPosition = position
        }
    }

    SettingRow {
        LensSlider {
            Layout.fillWidth: true
            enabled: rows.unlocked
            //: Accessible name
            Accessible.name: qsTr("Zoom Position")
            from: rows._minimum
            to: rows._maximum
            lensPosition: rows._position
            onPressedChanged: rows.controlHeld = pressed
            onMoveTo: position => rows.camera.setupTabModel.zoomMoveTo(position)
        }
    }

    SettingRow {
        LensEnd {
            unlocked: rows.unlocked
            //: The widest field of view
            name: qsTr("Wide")
            onChosen: rows.camera.setupTabModel.zoomWidest()
        }

        Loader {
            sourceComponent: rows._movesByPercent ? speedSlider : moveButtons
            Layout.fillWidth: true
        }

        LensEnd {
            unlocked: rows.unlocked
            //: The narrowest field of view
            name: qsTr("Narrow")
            onChosen: rows.camera.setupTabModel.zoomNarrowest()
        }
    }

    Component {
        id: moveButtons

        MoveButtons {
            camera: rows.camera
            connected: rows.connected
            unlocked: rows.unlocked
            isShown: rows.isShown
            names: [
                //: Tool tip of a button that moves the zoom
                qsTr("Zoom Out Quickly"),
                //: Tool tip of a button that moves the zoom
                qsTr("Zoom Out with Medium Speed"),
                //: Tool tip of a button that moves the zoom
                qsTr("Zoom Out Slowly"),
                //: Tool tip of a button that moves the zoom
                qsTr("Zoom In Slowly"),
                //: Tool tip of a button that moves the zoom
                qsTr("Zoom In with Medium Speed"),
                //: Tool tip of a button that moves the zoom
                qsTr("Zoom In Quickly")
            ]
            onControlHeldChanged: rows.controlHeld = controlHeld
            onMove: speed => {
                if (rows.camera)
                    rows.camera.setupTabModel.attemptMoveZoom(speed)
            }
        }
    }

    Component {
        id: speedSlider

        PercentSlider {
            enabled: rows.unlocked
            //: Tool tip
            toolTip: qsTr("Zoom Speed")
            onValueChanged: {
                if (rows.camera)
                    rows.camera.setupTabModel.attemptMoveZoomPercent(value * 100)
            }
        }
    }
}
