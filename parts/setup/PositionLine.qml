import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// "minimum / current / maximum". A click on the current position lets it be typed; the lens is locked meanwhile.
RowLayout {
    id: line

    required property string name
    required property ZvtCameraModel camera
    required property bool connected
    required property bool unlocked
    required property bool isShown
    required property real minimum
    required property real maximum
    required property real position
    property bool editing

    readonly property bool _mayEdit: visible && isShown && connected

    signal entered(position: int)

    spacing: 6
    on_MayEditChanged: {
        if (!_mayEdit)
            editing = false
    }
    onEditingChanged: {
        if (camera)
            camera.setupTabModel.lensBasedControlsEnabled = !editing
    }
    // The lens outlives the page.
    Component.onDestruction: editing = false

    PlainLabel {
        text: line.minimum + " /"
        color: Look.dimTextColor
    }

    WrappingButton {
        id: current

        visible: !line.editing
        enabled: line.unlocked
        // Room for the longest, so that nothing jumps while the lens moves.
        implicitWidth: Math.ceil(Math.max(longest.advanceWidth, implicitContentWidth)) + leftPadding + rightPadding
        text: line.position
        textColor: Look.fieldTextColor
        //: Tool tip of a position
        toolTip: qsTr("Click to enter a position")
        Accessible.name: line.name
        onClicked: line.editing = true

        TextMetrics {
            id: longest

            font: current.font
            text: line.maximum
        }

        background: Rectangle {
            radius: Look.controlRadius
            color: current.hovered ? Look.rowHoverColor : Look.fieldColor
            border.color: Look.fieldFrameColor
        }
    }

    Loader {
        active: line.editing
        visible: active
        sourceComponent: RowLayout {
            spacing: 6

            NumberBox {
                id: field

                takenOnLeaving: false
                name: line.name
                from: line.minimum
                to: line.maximum
                shown: line.position
                Keys.onEscapePressed: event => {
                    event.accepted = true
                    line.editing = false
                }
                // The lock is released first, since the move that follows takes it.
                onEntered: position => {
                    line.editing = false
                    line.entered(position)
                }
                onConfirmed: line.editing = false
                Component.onCompleted: {
                    forceActiveFocus(Qt.OtherFocusReason)
                    selectAll()
                }
            }

            GlyphButton {
                enabled: field.acceptable
                glyph: Glyph.apply
                //: Tool tip: takes what was typed
                toolTip: qsTr("Apply")
                onClicked: field.accepted()
            }

            GlyphButton {
                glyph: Glyph.cross
                //: Tool tip: forgets what was typed
                toolTip: qsTr("Cancel")
                onClicked: line.editing = false
            }
        }
    }

    PlainLabel {
        text: "/ " + line.maximum
        color: Look.dimTextColor
    }
}
