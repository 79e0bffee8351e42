import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import "../../hlxcamui/controls"
import zvt.dialogs
import zvt.look
import zvt.rows

// Shows information about the camera, which the operator can save as a text file.
InformationDialog {
    id: dialog

    required property ZvtCameraModel camera
    required property var aboutModel

    readonly property bool _refreshing: aboutModel ? aboutModel.refreshing : false
    readonly property bool _hasRefreshed: aboutModel ? aboutModel.hasRefreshed : false

    //: Title of a dialog
    title: qsTr("About")
    fullWidth: 500
    initialFocus: closeButton
    onOpened: aboutModel.refresh()

    contentItem: DialogScroller {
        Loader {
            Layout.alignment: Qt.AlignHCenter
            active: dialog._refreshing && dialog.visible
            visible: active
            sourceComponent: Spinner {
                objectName: "aboutBusy"
            }
        }

        PlainLabel {
            // Each read of `camera.model` asks the camera, so it is read only while the dialog is visible.
            readonly property string model: dialog.visible && dialog.camera ? dialog.camera.model : ""

            Layout.fillWidth: true
            Layout.bottomMargin: 4
            visible: dialog._hasRefreshed
            //: %1 is the model of the camera
            text: qsTr("%1 Camera Controller").arg(model)
            font.weight: Font.DemiBold
            color: Look.strongTextColor
            wrapMode: Text.Wrap
        }

        Repeater {
            model: dialog._hasRefreshed ? dialog.aboutModel.nameValueListModel : null

            delegate: FactRow {
                required property var item

                heading: item ? item.name : ""
                value: item ? item.value : ""
            }
        }
    }
    buttons: [
        DialogButton {
            //: Saves the shown information as a file
            text: qsTr("Save...")
            onClicked: fileDialog.open()
        },
        DialogButton {
            id: closeButton

            text: dialog.buttonText
            onClicked: dialog.accept()
        }
    ]

    LazyLoader {
        id: fileDialog

        WidgetFileDialog {
            //: Title of a file dialog
            title: qsTr("Select File")
            selectExisting: false
            folder: dialog.aboutModel ? dialog.aboutModel.lastDirectory : ""
            //: File types
            nameFilters: [qsTr("Text Files (*.txt)"),
                          //: File types
                          qsTr("All Files (*)")]
            onAccepted: {
                dialog.aboutModel.lastDirectory = folder
                dialog.aboutModel.saveTextFile(String(fileUrl))
            }
        }
    }
}
