import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The list of the corrections in the camera, the free space, the progress of a transfer, a field for a name, and
// buttons. The modes are those of NucListCtrl. It reports the buttons and changes only the selection and the name.
ColumnLayout {
    id: chooser

    required property ZvtCameraModel camera
    required property string mode
    // The text of the field for the name.
    property string nucName
    property alias currentIndex: table.currentIndex
    property alias wantedName: table.wantedName

    readonly property alias list: table.list
    readonly property alias selected: table.selected
    readonly property bool refreshing: camera ? camera.nucList.refreshing : false
    readonly property bool _transferring: camera ? camera.nucList.transferring : false
    readonly property bool _canUseSelection: selected !== "" && !_transferring
    readonly property bool _isNew: mode === "new"
    readonly property bool _manages: mode === "manage"
    readonly property bool _updatesOffsets: camera ? camera.nucProcess.nucType === NucProcessModel.TYPE_UPDATE_OFFSET
                                                   : false

    // Enter was pressed, a row double-clicked, or the button clicked.
    signal confirmed
    signal infoRequested(row: int)
    signal renameRequested
    signal deleteRequested
    signal uploadRequested
    signal downloadRequested
    signal rejected

    // Selects the row with this name. Returns false, and selects no row, if there is none.
    function select(name: string): bool {
        return table.select(name)
    }

    // Narrower than other buttons of dialogs, since there are five of them.
    component ActionButton: DialogButton {
        implicitWidth: Math.max(76, implicitContentWidth + leftPadding + rightPadding)
    }

    spacing: Look.rowSpacing

    NucTable {
        id: table

        Layout.fillWidth: true
        Layout.fillHeight: true
        camera: chooser.camera
        onChosen: chooser.nucName = selected
        onConfirmed: chooser.confirmed()
        onInfoRequested: row => chooser.infoRequested(row)
    }

    RowLayout {
        spacing: 12

        PlainLabel {
            //: %1 is a number of bytes with its unit
            text: qsTr("Camera Free Space: %1").arg(chooser.camera ? chooser.camera.nucList.freeSpaceString : "")
        }

        // Keeps its space while hidden, so that nothing moves under the pointer when a transfer starts or ends.
        Item {
            Layout.fillWidth: true
            implicitHeight: 8

            ProgressLine {
                objectName: "nucTransferProgress"
                anchors.fill: parent
                visible: chooser._transferring
                //: A progress bar
                Accessible.name: qsTr("Transfer")
                from: 0
                to: 100
                value: chooser.camera ? chooser.camera.nucList.progress : 0
            }
        }
    }

    // Without a layout, which would miss that an item becomes visible while the dialog is closed.
    Item {
        Layout.fillWidth: true
        implicitHeight: Look.rowHeight

        PlainLabel {
            id: nameLabel

            anchors.verticalCenter: parent.verticalCenter
            visible: !chooser._manages
            opacity: nameBox.enabled ? 1 : Look.disabledOpacity
            Accessible.ignored: true
            //: The name of a correction
            text: qsTr("Name:")
        }

        TextBox {
            id: nameBox

            anchors.left: nameLabel.right
            anchors.leftMargin: 8
            anchors.right: parent.right
            anchors.rightMargin: chooser._isNew ? 0 : verbButton.width + 8
            visible: !chooser._manages
            enabled: !chooser._updatesOffsets && !chooser.refreshing
            readOnly: chooser.mode === "load"
            name: nameLabel.text.replace(/:$/, "")
            maximumBytes: Fields.longestNucName
            modelText: chooser.nucName
            onTextEdited: {
                chooser.nucName = text
                revert()
                chooser.currentIndex = -1
            }
            onAccepted: chooser.confirmed()
            // While the list is read, the list has the focus.
            onEnabledChanged: {
                if (enabled && chooser.mode === "save" && table.list.activeFocus)
                    forceActiveFocus(Qt.TabFocusReason)
            }
        }

        DialogButton {
            id: verbButton

            anchors.right: parent.right
            visible: !chooser._isNew
            enabled: chooser.nucName !== "" && !chooser.refreshing
            primary: !chooser._manages
            //: Stores a correction under a name
            text: chooser.mode === "save" ? qsTr("Save")
                                          //: Loads a stored correction
                                          : qsTr("Load")
            onClicked: chooser.confirmed()
        }
    }

    RowLayout {
        visible: !chooser._isNew
        spacing: 8
        Layout.alignment: Qt.AlignRight

        ActionButton {
            enabled: chooser._canUseSelection
            //: Changes the name of a correction
            text: qsTr("Rename")
            onClicked: chooser.renameRequested()
        }

        ActionButton {
            enabled: chooser._canUseSelection
            destructive: true
            //: Deletes a correction
            text: qsTr("Delete")
            onClicked: chooser.deleteRequested()
        }

        ActionButton {
            enabled: !chooser._transferring
            //: Copies a correction to the camera
            text: qsTr("Upload")
            onClicked: chooser.uploadRequested()
        }

        ActionButton {
            enabled: chooser._canUseSelection
            //: Copies a correction from the camera
            text: qsTr("Download")
            onClicked: chooser.downloadRequested()
        }

        ActionButton {
            enabled: !chooser._transferring
            //: Closes a dialog after its work is done
            text: chooser._manages ? qsTr("Done")
                                            //: Closes a dialog and changes nothing
                                            : qsTr("Cancel")
            onClicked: chooser.rejected()
        }
    }
}
