import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// Shows where the images of the camera come from and where they go in the present state of the recorder. Its parts
// pulse also while it is disabled, but not while it is invisible or the camera is disconnected: the state on show is
// then no longer followed.
Item {
    id: diagram

    required property SsdTabModel model
    required property bool connected
    // Model and serial number of the camera, in one line.
    property string cameraName
    // The path of the images after the command that the operator points at: a FlowLights.Path.
    property int hoveredPath: FlowLights.NoPath
    // Whether the state has been read. Nothing is lit before.
    property bool wasRead: true

    readonly property int _state: model && wasRead ? model.state : SsdTabModel.UNKNOWN_STATE_QML_ONLY_NOT_SDK
    readonly property bool _isShown: visible && Window.visibility !== Window.Hidden
                                     && Window.visibility !== Window.Minimized

    // Asks the page to read the recorder.
    signal refreshRequested

    implicitWidth: grid.implicitWidth
    implicitHeight: grid.implicitHeight

    FlowLights {
        id: flowLights

        recorderState: diagram._state
        toDisk: diagram.model ? diagram.model.recordMode === SsdTabModel.MODE_TO_DISK : false
        fromDisk: diagram.model ? diagram.model.fromDisk : false
        animated: diagram._isShown && diagram.connected
        hoveredPath: diagram.hoveredPath
    }

    FlowPicture {
        id: grid

        anchors.horizontalCenter: parent.horizontalCenter
        opacity: diagram.connected ? 1 : Look.disabledOpacity
        lights: flowLights

        GlyphButton {
            glyph: Glyph.refresh
            // The grid is already dimmed while the camera is disconnected.
            opacity: enabled || !diagram.connected ? 1 : Look.disabledOpacity
            //: Tool tip of a button: reads the recorder of the camera again
            toolTip: qsTr("Refresh")
            onClicked: diagram.refreshRequested()
            Layout.row: 0
            Layout.column: 0
        }

        // The same width as the button, so that the picture is in the middle.
        Item {
            Layout.row: 0
            Layout.column: 8
            Layout.preferredWidth: Look.rowHeight
        }

        FlowCaption {
            cameraName: diagram.cameraName
            recorderState: diagram._state
            wasRead: diagram.wasRead
            Layout.row: 4
            Layout.column: 3
            Layout.columnSpan: 5
            Layout.fillWidth: true
        }
    }
}
