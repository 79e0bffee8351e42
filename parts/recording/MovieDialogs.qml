import QtQuick
import QtQuick.Templates as T
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The dialogs of the SSD page for movies and downloads, and what follows when they are accepted. The camera can ask for
// a download at any time, so the progress is shown also while the page is hidden.
Item {
    id: dialogs

    required property SsdTabModel model
    required property bool connected

    // Whether the progress is shown. A dialog needs a window.
    readonly property bool _downloading: model && Window.window ? model.downloading : false

    // The operator wants to choose the file for a download, which saveTo() starts then.
    signal fileRequested

    function listMovies() {
        list.open()
    }

    function download() {
        settings.open()
    }

    function downloadBatch() {
        batch.open()
    }

    // Downloads the chosen part of the recording to the file with this URL.
    function saveTo(file: string) {
        settings.instance().saveTo(file)
    }

    // The progress is closed first: its end returns the keyboard focus to the page.
    on_DownloadingChanged: {
        if (_downloading) {
            progress.open()
            return
        }
        if (progress.item)
            (progress.item as T.Popup).close()
        if (model && !model.downloading && !model.downloadOk)
            failure.open()
    }

    RecorderStatus {
        id: status

        model: dialogs.model
        connected: dialogs.connected
    }

    LazyLoader {
        id: list

        file: "qrc:/zvt/dialogs/ViewOrLoadSsdFilesDialog.qml"
        initialProperties: ({
            ssdTabModel: Qt.binding(() => dialogs.model),
            usable: Qt.binding(() => status.connected && status.mayList)
        })
    }

    Connections {
        target: list.item
        function onAccepted() {
            dialogs.model.loadMovie(list.instance().selectedMovie)
        }
    }

    LazyLoader {
        id: settings

        file: Qt.resolvedUrl("DownloadSettingsDialog.qml")
        initialProperties: ({
            model: Qt.binding(() => dialogs.model),
            usable: Qt.binding(() => status.connected && status.mayDownload)
        })
    }

    Connections {
        target: settings.item
        function onAccepted() {
            dialogs.fileRequested()
        }
    }

    LazyLoader {
        id: progress

        file: Qt.resolvedUrl("DownloadProgressDialog.qml")
        initialProperties: ({ model: Qt.binding(() => dialogs.model) })
    }

    LazyLoader {
        id: failure

        file: "qrc:/zvt/dialogs/GenericMessageDialog.qml"
        initialProperties: ({
            //: Title of a message
            title: qsTr("Error"),
            //: A message
            text: qsTr("Failed to download movie.")
        })
    }

    LazyLoader {
        id: batch

        file: "qrc:/zvt/dialogs/BatchDownloadDialog.qml"
        initialProperties: ({ ssdTabModel: Qt.binding(() => dialogs.model) })
    }
}
