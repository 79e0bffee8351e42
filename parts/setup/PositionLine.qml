import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// Shows "minimum / current / maximum". A click on the current position replaces it by a field; the lens is locked while
// the operator types.
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
    // The lens must not stay locked when the page is destroyed.
    Component.onDestruction: editing = false

    PlainLabel {
        text: line.minimum + " /"
        color: Look.dimTextColor
    }

    WrappingButton {
        id: current

        visible: !line.editing
        enabled: line.unlocked
        // Wide enough for the longest position, so that nothing moves while the lens does.
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

                commitsOnFocusLoss: false
                name: line.name
                from: line.minimum
                to: line.maximum
                modelText: line.position
                Keys.onEscapePressed: event => {
                    event.accepted = true
                    line.editing = false
                }
                // Releases the lock first, since the move that follows locks the lens itself.
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
                //: Tool tip: applies the typed position
                toolTip: qsTr("Apply")
                onClicked: field.accepted()
            }

            GlyphButton {
                glyph: Glyph.cross
                //: Tool tip: discards the typed position
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
