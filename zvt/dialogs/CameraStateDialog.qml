import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "../../hlxcamui/controls"
import "../controls"

// The states that the camera keeps. It saves into one or loads one, as `mode` says, which is set before it opens; in
// each mode it renames, deletes and copies them too.
InformationDialog {
    id: dialog

    required property var stateModel
    // "save", "load" or "manage".
    property string mode: "manage"

    readonly property bool _saves: mode === "save"
    readonly property bool _manages: mode === "manage"
    readonly property bool _refreshing: stateModel?.refreshing ?? false
    readonly property bool _transferring: stateModel?.transferring ?? false
    readonly property bool _isEmpty: (stateModel?.hasRefreshed ?? false) && !_refreshing && list.count === 0
    // The selection is a name, so that it stays what it is when the list is read anew. Empty for none. The dialogs below
    // take it when they open.
    property string _selected

    function _rowOf(name: string): int {
        let row = stateModel.entries.size - 1
        while (row >= 0 && stateModel.entries.at(row).name !== name)
            --row
        return row
    }

    function _select(name: string) {
        _selected = name
        nameField.text = name
    }

    function _selectRow(row: int) {
        _select(stateModel.entries.at(row)?.name ?? "")
        list.positionViewAtIndex(row, ListView.Contain)
    }

    function _step(rows: int) {
        _selectRow(Math.max(0, Math.min(_rowOf(_selected) + rows, list.count - 1)))
    }

    function _saveOrLoad() {
        const name = nameField.text
        if (_manages || name === "")
            return
        if (!_saves) {
            stateModel.loadState(name)
            accept()
        } else if (!stateModel.stateNameValid(name)) {
            invalidNameDialog.open()
        } else if (stateModel.stateExists(name)) {
            overwriteDialog.ask("save")
        } else {
            _save()
        }
    }

    function _save() {
        stateModel.saveStateAs(nameField.text)
        accept()
    }

    function _upload() {
        stateModel.uploadState(String(uploadFileDialog.fileUrl))
    }

    // The camera names an uploaded state by its file.
    function _stemOf(file: url): string {
        const encoded = String(file)
        return decodeURIComponent(encoded.slice(encoded.lastIndexOf("/") + 1)).replace(/\.[^.]*$/, "")
    }

    //: Title of a dialog
    title: _saves ? qsTr("Save State") : _manages ? qsTr("Manage States") : qsTr("Load State")
    fullWidth: 500
    initialFocus: _saves ? nameField : list
    onAboutToShow: _select("")

    component Field: TextField {
        id: field

        implicitHeight: root.rowHeight
        selectByMouse: true

        background: Rectangle {
            radius: 2
            color: field.readOnly ? "transparent" : root.fieldColor
            border.color: field.activeFocus ? root.kestrinAccentBlue : root.fieldFrameColor
        }
    }

    component DialogButton: WrappingButton {
        implicitWidth: Math.max(84, implicitContentWidth + leftPadding + rightPadding)
    }

    component StateRow: ItemDelegate {
        id: row

        required property var item

        readonly property string name: item?.name ?? ""
        readonly property color textColor: highlighted ? palette.highlightedText : root.textColor

        width: ListView.view.width
        height: root.rowHeight
        highlighted: name !== "" && name === dialog._selected
        focusPolicy: Qt.NoFocus
        onClicked: {
            dialog._select(name)
            list.forceActiveFocus(Qt.MouseFocusReason)
        }

        Accessible.name: name

        contentItem: RowLayout {
            spacing: 12

            Label {
                id: nameLabel

                Layout.fillWidth: true
                Accessible.ignored: true
                text: row.name
                textFormat: Text.PlainText
                color: row.textColor
                elide: Text.ElideRight
            }

            Label {
                Layout.rightMargin: 8
                Accessible.ignored: true
                text: Qt.formatDateTime(row.item?.date, "yyyy-MM-dd HH:mm")
                color: row.textColor
            }
        }
        background: Rectangle {
            color: row.highlighted ? root.kestrinAccentBlue : row.hovered ? root.hoverColor : "transparent"
        }

        ToolTip {
            visible: nameLabel.truncated && row.hovered
            delay: 600
            text: row.name
            palette: root.palette
            font.pixelSize: root.hintSize
        }
    }

    component StateFileDialog: WidgetFileDialog {
        //: Title of a file dialog
        title: qsTr("Select State File")
        //: File types
        nameFilters: [qsTr("State files (*.qsf)"), qsTr("All files (*)")]
        folder: shortcuts.documents
    }

    contentItem: ColumnLayout {
        spacing: root.rowSpacing

        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            implicitHeight: 240
            radius: 2
            color: root.fieldColor
            border.color: list.activeFocus ? root.kestrinAccentBlue : root.fieldFrameColor

            ListView {
                id: list

                anchors.fill: parent
                anchors.margins: 1
                clip: true
                reuseItems: true
                boundsBehavior: Flickable.StopAtBounds
                activeFocusOnTab: true
                // The selection is the dialog's own.
                currentIndex: -1
                model: dialog.stateModel?.entries ?? null
                delegate: StateRow { }

                //: A list
                Accessible.name: qsTr("States")
                Accessible.role: Accessible.List
                Keys.onUpPressed: dialog._step(-1)
                Keys.onDownPressed: dialog._step(1)
                Keys.onReturnPressed: dialog._saveOrLoad()
                Keys.onEnterPressed: dialog._saveOrLoad()
                // There may be a thousand of them.
                Keys.onPressed: event => {
                    const page = Math.max(1, Math.floor(height / root.rowHeight))
                    const rows = {
                        [Qt.Key_PageUp]: -page,
                        [Qt.Key_PageDown]: page,
                        [Qt.Key_Home]: -count,
                        [Qt.Key_End]: count
                    }[event.key] ?? 0
                    event.accepted = rows !== 0
                    if (event.accepted)
                        dialog._step(rows)
                }

                ScrollBar.vertical: ScrollBar {
                    policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
                }
            }

            Label {
                anchors.fill: parent
                anchors.margins: 12
                visible: dialog._isEmpty
                //: In place of a list
                text: qsTr("The camera holds no states.")
                color: root.dimTextColor
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                wrapMode: Text.Wrap
            }

            BusyIndicator {
                objectName: "stateListBusy"
                anchors.centerIn: parent
                visible: dialog._refreshing
                running: dialog._refreshing
            }
        }

        // It keeps its place, so that nothing moves under the pointer when a transfer begins or ends.
        Item {
            Layout.fillWidth: true
            implicitHeight: 8

            ProgressBar {
                objectName: "transferProgress"
                anchors.fill: parent
                visible: dialog._transferring
                //: A progress bar
                Accessible.name: qsTr("Transfer")
                from: 0
                to: 100
                value: dialog.stateModel?.progress ?? 0
            }
        }

        RowLayout {
            visible: !dialog._manages
            spacing: 8

            Field {
                id: nameField

                Layout.fillWidth: true
                //: A text field
                Accessible.name: qsTr("State Name")
                placeholderText: dialog._saves ? qsTr("State Name") : ""
                readOnly: !dialog._saves
                onTextEdited: dialog._selected = ""
                onAccepted: dialog._saveOrLoad()
            }

            DialogButton {
                text: dialog._saves ? qsTr("Save") : qsTr("Load")
                enabled: nameField.text !== ""
                onClicked: dialog._saveOrLoad()
            }
        }
    }
    buttons: [
        DialogButton {
            text: qsTr("Rename")
            enabled: dialog._selected !== ""
            onClicked: renameDialog.open()
        },
        DialogButton {
            text: qsTr("Delete")
            enabled: dialog._selected !== ""
            onClicked: deleteDialog.open()
        },
        DialogButton {
            //: Copies a state to the camera
            text: qsTr("Upload")
            onClicked: uploadFileDialog.open()
        },
        DialogButton {
            //: Copies a state from the camera
            text: qsTr("Download")
            enabled: dialog._selected !== ""
            onClicked: {
                downloadFileDialog.stateName = dialog._selected
                downloadFileDialog.open()
            }
        },
        DialogButton {
            text: dialog._manages ? qsTr("Done") : qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]

    Connections {
        target: dialog.stateModel

        function onRefreshingChanged() {
            if (!dialog._refreshing && dialog._selected !== "" && dialog._rowOf(dialog._selected) < 0)
                dialog._select("")
        }

        // A transfer may outlive the dialog: it is told then too.
        function onTransferringChanged() {
            if (!dialog.stateModel.transferring && !dialog.stateModel.transferOk)
                transferFailedDialog.open()
        }
    }

    StateFileDialog {
        id: uploadFileDialog

        onAccepted: {
            if (dialog.stateModel.stateExists(dialog._stemOf(fileUrl)))
                overwriteDialog.ask("upload")
            else
                dialog._upload()
        }
    }

    StateFileDialog {
        id: downloadFileDialog

        property string stateName

        selectExisting: false
        defaultName: stateName + ".qsf"
        onAccepted: dialog.stateModel.downloadState(stateName, String(fileUrl))
    }

    InformationDialog {
        id: renameDialog

        property string stateName

        function _rename() {
            if (!dialog.stateModel.stateNameValid(newName.text)) {
                invalidNameDialog.open()
                return
            }
            dialog.stateModel.renameState(stateName, newName.text)
            accept()
            // The renamed one has moved to the end.
            dialog._selectRow(0)
        }

        //: Title of a dialog
        title: qsTr("Rename State")
        fullWidth: 400
        initialFocus: newName
        onAboutToShow: {
            stateName = dialog._selected
            newName.text = ""
        }

        contentItem: GridLayout {
            columns: 2
            columnSpacing: 12
            rowSpacing: root.rowSpacing

            Label {
                id: oldNameLabel

                Layout.alignment: Qt.AlignRight
                Accessible.ignored: true
                text: qsTr("Old Name")
                color: root.textColor
            }

            Field {
                Layout.fillWidth: true
                Accessible.name: oldNameLabel.text
                readOnly: true
                text: renameDialog.stateName
            }

            Label {
                id: newNameLabel

                Layout.alignment: Qt.AlignRight
                Accessible.ignored: true
                text: qsTr("New Name")
                color: root.textColor
            }

            Field {
                id: newName

                Layout.fillWidth: true
                Accessible.name: newNameLabel.text
                onAccepted: renameDialog._rename()
            }
        }
        buttons: [
            DialogButton {
                text: qsTr("Rename")
                onClicked: renameDialog._rename()
            },
            DialogButton {
                text: qsTr("Cancel")
                onClicked: renameDialog.reject()
            }
        ]
    }

    ConfirmationDialog {
        id: deleteDialog

        property string stateName

        //: Title of a question
        title: qsTr("Delete State")
        //: %1 is the name of a state
        text: qsTr("Are you sure you want to delete %1?").arg(stateName)
        confirmButtonText: qsTr("Delete")
        denyButtonText: qsTr("Cancel")
        destructive: true
        onAboutToShow: stateName = dialog._selected
        onAccepted: {
            dialog.stateModel.deleteState(stateName)
            dialog._select("")
        }
    }

    ConfirmationDialog {
        id: overwriteDialog

        // "save" or "upload".
        property string mode

        function ask(what: string) {
            mode = what
            open()
        }

        //: Title of a question
        title: qsTr("Warning")
        text: qsTr("That state already exists.\n\nDo you want to overwrite it?")
        destructive: true
        onAccepted: {
            if (mode === "save")
                dialog._save()
            else
                dialog._upload()
        }
    }

    GenericMessageDialog {
        id: invalidNameDialog

        //: Title of a message
        title: qsTr("Error")
        text: qsTr("State name is not valid. They cannot contain these characters:\n\n / \\ : \" * ? < > | \n\n"
                   + "They must have at least one nonspace character and cannot start with a space character.")
    }

    GenericMessageDialog {
        id: transferFailedDialog

        //: Title of a message
        title: qsTr("Error")
        text: dialog.stateModel?.transferUpload ? qsTr("Failed to upload file.") : qsTr("Failed to download file.")
    }
}
