import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// The progress of a download. The page opens and closes it; the button only ends the download.
InformationDialog {
    id: dialog

    required property SsdTabModel model

    readonly property bool _finding: model ? model.findingFrameLimits : false
    readonly property bool _grabbing: model ? model.grabbingDroppedFrames : false

    //: Title of a dialog
    title: qsTr("Downloading")
    fullWidth: 400
    closesByEscape: false
    // Not the button: the camera can start a download while the operator types.
    initialFocus: body

    contentItem: Item {
        id: body

        implicitHeight: column.implicitHeight

        ColumnLayout {
            id: column

            width: body.width
            spacing: 12

            PlainLabel {
                Layout.fillWidth: true
                text: dialog._finding
                      //: What a download does: it looks up the frames of a range of times
                      ? qsTr("Finding frame range from time range...")
                      : dialog._grabbing
                        //: What a download does: it fetches frames again that were lost
                        ? qsTr("Grabbing dropped frames...")
                        //: What a download does
                        : qsTr("Transferring movie...")
                wrapMode: Text.Wrap
            }

            BatchDownloadEntryProgressBar {
                Layout.fillWidth: true
                //: A progress bar
                Accessible.name: qsTr("Download")
                Accessible.description: percentText
                from: 0
                to: 100
                indeterminate: dialog._finding
                value: dialog.model ? dialog.model.progress : 0
            }
        }
    }
    buttons: [
        DialogButton {
            //: Ends a download
            text: qsTr("Abort")
            onClicked: dialog.model.abortDownload()
        }
    ]
}
