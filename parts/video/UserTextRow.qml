import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// The switch and the field of the user's text on the video output. After a refusal both show the camera's value again.
RowLayout {
    id: row

    required property ZvtCameraModel camera

    visible: camera ? camera.overlaySettings.userDefinedFieldAvailable : false
    spacing: 8

    Toggle {
        Layout.preferredWidth: 112
        //: Switch: whether the video output shows the text of the user
        text: qsTr("User Text")
        checked: row.camera ? row.camera.overlaySettings.showUserDefinedField : false
        onToggled: row.camera.overlaySettings.showUserDefinedField = checked
    }

    EntryBox {
        Layout.fillWidth: true
        Layout.maximumWidth: 420
        enabled: row.camera ? row.camera.overlaySettings.showUserDefinedField : false
        //: Accessible name of the field for the text of the user
        name: qsTr("Text To Display")
        modelText: row.camera ? row.camera.overlaySettings.userDefinedFieldText : ""
        onTextEntered: text => row.camera.overlaySettings.userDefinedFieldText = text
    }
}
