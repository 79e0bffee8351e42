import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// The focus position, and the controls that move the focus.
RowGroup {
    id: rows

    required property ZvtCameraModel camera
    required property bool connected
    required property bool unlocked
    required property bool isShown
    required property bool hasDiscreteZoom
    required property bool hasZoom
    // Whether the pointer or a key holds a control that moves the lens.
    property bool controlHeld

    readonly property alias editing: line.editing
    readonly property bool _movesByPercent: camera ? camera.cameraCapabilitiesModel.hasFocusMovePercent : false
    readonly property bool _ascending: camera ? camera.setupTabModel.focusEncoderHasAscendingValuesNearToFar : true
    readonly property real _minimum: camera ? camera.setupTabModel.minimumFocusPosition : 0
    readonly property real _maximum: camera ? camera.setupTabModel.maximumFocusPosition : 0
    readonly property real _position: camera ? camera.setupTabModel.selectedFocusPosition : 0

    //: End of the focus range
    readonly property string _near: _movesByPercent ? qsTr("Near Focus")
                                                    //: End of the focus range
                                                    : qsTr("Nearest")
    //: End of the focus range
    readonly property string _far: _movesByPercent ? qsTr("Far Focus")
                                                   //: End of the focus range
                                                   : qsTr("Farthest")

    SettingRow {
        id: positionRow

        enabled: rows.unlocked || line.editing
        //: Heading of a position
        heading: qsTr("Focus:")

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
            onEntered: position => rows.camera.setupTabModel.selectedFocusPosition = position
        }

        Loader {
            active: rows.hasDiscreteZoom
            visible: active
            sourceComponent: GlyphButton {
                enabled: rows.unlocked
                glyph: Glyph.pencil
                //: Tool tip
                toolTip: qsTr("Edit Nearest/Farthest Positions")
                onClicked: nearFarDialog.open()
            }
        }

        LazyLoader {
            id: nearFarDialog

            file: "qrc:/zvt/dialogs/EditNearFarPositions.qml"
            initialProperties: ({ tabModel: rows.camera ? rows.camera.setupTabModel : null })
        }
    }

    SettingRow {
        Loader {
            sourceComponent: rows.hasZoom ? positionSlider : positionIndicator
            Layout.fillWidth: true
        }
    }

    SettingRow {
        LensEnd {
            unlocked: rows.unlocked
            nameOnly: rows._movesByPercent && !rows.hasZoom
            name: rows._ascending ? rows._near : rows._far
            onChosen: rows.camera.setupTabModel.focusMinimum()
        }

        Loader {
            sourceComponent: rows._movesByPercent ? speedSlider : moveButtons
            Layout.fillWidth: true
        }

        LensEnd {
            unlocked: rows.unlocked
            nameOnly: rows._movesByPercent && !rows.hasZoom
            name: rows._ascending ? rows._far : rows._near
            onChosen: rows.camera.setupTabModel.focusMaximum()
        }
    }

    Component {
        id: positionSlider

        LensSlider {
            enabled: rows.unlocked
            //: Accessible name
            Accessible.name: qsTr("Focus Position")
            from: rows._minimum
            to: rows._maximum
            lensPosition: rows._position
            onPressedChanged: rows.controlHeld = pressed
            onMoveTo: position => rows.camera.setupTabModel.focusMoveTo(position)
        }
    }

    Component {
        id: positionIndicator

        FocusIndicator {
            from: rows._minimum
            to: rows._maximum
            value: rows._position
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
                //: Tool tip of a button that moves the focus
                qsTr("Focus Closer Quickly"),
                //: Tool tip of a button that moves the focus
                qsTr("Focus Closer with Medium Speed"),
                //: Tool tip of a button that moves the focus
                qsTr("Focus Closer Slowly"),
                //: Tool tip of a button that moves the focus
                qsTr("Focus Farther Slowly"),
                //: Tool tip of a button that moves the focus
                qsTr("Focus Farther with Medium Speed"),
                //: Tool tip of a button that moves the focus
                qsTr("Focus Farther Quickly")
            ]
            onControlHeldChanged: rows.controlHeld = controlHeld
            onMove: speed => {
                if (rows.camera)
                    rows.camera.setupTabModel.attemptMoveFocus(speed)
            }
        }
    }

    Component {
        id: speedSlider

        PercentSlider {
            enabled: rows.unlocked
            //: Tool tip
            toolTip: qsTr("Focus Speed")
            onValueChanged: {
                if (rows.camera)
                    rows.camera.setupTabModel.attemptMoveFocusPercent(value * 100)
            }
        }
    }
}
