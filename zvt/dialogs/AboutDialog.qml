import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "../../hlxcamui/controls"
import "../controls"

// What the camera says about itself, to be read or saved as a text file.
InformationDialog {
    id: dialog

    required property var aboutModel

    readonly property bool _refreshing: aboutModel?.refreshing ?? false
    readonly property bool _hasRefreshed: aboutModel?.hasRefreshed ?? false

    //: Title of a dialog
    title: qsTr("About")
    fullWidth: 500
    initialFocus: closeButton
    onOpened: aboutModel.refresh()

    contentItem: ScrollView {
        contentWidth: availableWidth
        contentHeight: rows.implicitHeight
        ScrollBar.vertical.policy: contentHeight > availableHeight ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff

        ColumnLayout {
            id: rows

            width: parent.width
            spacing: root.rowSpacing

            BusyIndicator {
                objectName: "aboutBusy"
                Layout.alignment: Qt.AlignHCenter
                visible: dialog._refreshing
                running: dialog._refreshing
            }

            Label {
                Layout.fillWidth: true
                Layout.bottomMargin: 4
                visible: dialog._hasRefreshed
                //: %1 is the model of the camera
                text: qsTr("%1 Camera Controller").arg(cameraModel?.model ?? "")
                textFormat: Text.PlainText
                font.pixelSize: root.titleSize
                color: root.strongTextColor
                wrapMode: Text.Wrap
            }

            Repeater {
                model: dialog._hasRefreshed ? dialog.aboutModel.nameValueListModel : null

                delegate: RowLayout {
                    id: row

                    required property var item

                    spacing: 12

                    Label {
                        Layout.preferredWidth: 130
                        Layout.alignment: Qt.AlignTop
                        Accessible.ignored: true
                        text: row.item?.name ?? ""
                        textFormat: Text.PlainText
                        color: root.headerTextColor
                        horizontalAlignment: Text.AlignRight
                        wrapMode: Text.Wrap
                    }

                    Label {
                        Layout.fillWidth: true
                        Layout.rightMargin: 12
                        Layout.alignment: Qt.AlignTop
                        Accessible.name: row.item?.name ?? ""
                        Accessible.description: text
                        text: row.item?.value ?? ""
                        textFormat: Text.PlainText
                        color: root.strongTextColor
                        wrapMode: Text.Wrap
                    }
                }
            }
        }
    }
    buttons: [
        WrappingButton {
            width: Math.max(88, implicitWidth)
            //: Saves what is shown as a file
            text: qsTr("Save...")
            onClicked: fileDialog.open()
        },
        WrappingButton {
            id: closeButton

            width: Math.max(88, implicitWidth)
            text: dialog.buttonText
            onClicked: dialog.accept()
        }
    ]

    WidgetFileDialog {
        id: fileDialog

        //: Title of a file dialog
        title: qsTr("Select File")
        selectExisting: false
        folder: dialog.aboutModel?.lastDirectory ?? ""
        //: File types
        nameFilters: [qsTr("Text Files (*.txt)"), qsTr("All Files (*)")]
        onAccepted: {
            dialog.aboutModel.lastDirectory = folder
            dialog.aboutModel.saveTextFile(String(fileUrl))
        }
    }
}
