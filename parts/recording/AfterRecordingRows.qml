import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// What follows a recording.
RowGroup {
    id: rows

    required property SsdTabModel model
    required property RecorderStatus status

    // Not for the switches: these must follow the signal after a refusal, which changes no value.
    readonly property bool _saves: model ? model.autoSave : false
    readonly property bool _downloads: model ? model.autoDownload : false

    Heading {
        //: Heading of switches, such as "Begin playback"
        text: qsTr("After recording is complete...")
    }

    Toggle {
        enabled: !rows.status.toDisk
        //: A switch: what follows a recording
        text: qsTr("Begin playback")
        checked: rows.model ? rows.model.autoPlay : false
        onToggled: rows.model.autoPlay = checked
    }

    Toggle {
        enabled: rows.status.hasDrive && !rows.status.toDisk
        //: A switch: what follows a recording; SSD is the solid-state drive of the camera
        text: qsTr("Save it to the SSD")
        checked: rows.model ? rows.model.autoSave : false
        onToggled: rows.model.autoSave = checked
    }

    Toggle {
        visible: rows.status.hasModes
        enabled: rows.status.hasDrive && (rows.status.toDisk || rows._saves || rows._downloads)
        //: A switch: what follows a recording
        text: qsTr("Arm for the next recording")
        checked: rows.model ? rows.model.autoRearm : false
        onToggled: rows.model.autoRearm = checked
    }

    Toggle {
        visible: rows.status.hasModes
        //: A switch: what follows a recording
        text: qsTr("Download the recording")
        checked: rows.model ? rows.model.autoDownload : false
        onToggled: rows.model.autoDownload = checked
    }
}
