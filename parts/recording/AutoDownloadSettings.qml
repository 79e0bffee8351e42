import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.rows

// Where automatic downloads are saved on this computer, and the number in the name of the next file. Neither is a value
// of the camera.
RowGroup {
    id: settings

    required property SsdTabModel model

    readonly property bool _enabled: model ? model.autoDownload : false

    // The operator wants to choose the folder.
    signal folderRequested

    Heading {
        //: Heading of a group of settings
        text: qsTr("Auto download settings")
    }

    SettingRow {
        id: folderRow

        enabled: settings._enabled
        //: The folder for automatic downloads of recordings
        heading: qsTr("Directory:")

        TextBox {
            Layout.fillWidth: true
            Layout.maximumWidth: 360
            name: folderRow.name
            readOnly: true
            modelText: settings.model ? settings.model.autoDownloadDirectory : ""
            toolTip: modelText
        }

        WrappingButton {
            //: Accessible name of a button
            Accessible.name: qsTr("Choose Directory")
            text: "..."
            onClicked: settings.folderRequested()
        }
    }

    SettingRow {
        id: countRow

        enabled: settings._enabled
        //: The number in the file name of the next automatic download
        heading: qsTr("Count:")

        NumberBox {
            name: countRow.name
            to: 4294967295
            modelText: settings.model ? settings.model.autoDownloadCount : ""
            onEntered: count => settings.model.autoDownloadCount = count
        }
    }
}
