import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The actions of the Correction page that do not belong to a preset.
RowLayout {
    id: actions

    // Whether the page is being read, or a correction is being loaded, saved or unloaded.
    required property bool busy

    signal listRequested
    signal optionsRequested
    signal refreshRequested

    spacing: 8
    Layout.fillWidth: true

    WrappingButton {
        //: Opens the list of the stored corrections
        text: qsTr("Manage NUCs")
        onClicked: actions.listRequested()
    }

    WrappingButton {
        //: Opens the choice of what a load of a correction sets
        text: qsTr("Load NUC Options")
        onClicked: actions.optionsRequested()
    }

    // Keeps its space, so that the button beside it does not move.
    Item {
        Layout.fillWidth: true
        implicitHeight: Look.rowHeight

        Loader {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            active: actions.busy
            sourceComponent: Spinner {
                objectName: "correctionBusy"
            }
        }
    }

    GlyphButton {
        glyph: Glyph.refresh
        //: Tool tip: reads the values of the page again
        toolTip: qsTr("Refresh")
        onClicked: actions.refreshRequested()
    }
}
