import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import "../hlxcamui/controls"
import zvt.look
import zvt.recording
import zvt.rows

// The SSD page: the recorder of the camera and its playback.
Page {
    id: page

    // The banner over the tool bar, which shows that the images come from a recording.
    required property Item banner

    readonly property SsdTabModel _recorder: camera ? camera.ssdTabModel : null
    // The name of a file for the recording.
    readonly property string _fileName: {
        if (!_recorder)
            return ""
        return _recorder.movieLoaded ? _recorder.loadedMovieNumber + "-" + _recorder.loadedMovieName
                                     : _recorder.filename
    }
    readonly property int _state: _recorder ? _recorder.state : SsdTabModel.UNKNOWN_STATE_QML_ONLY_NOT_SDK

    function refreshAllVisible() {
        if (_recorder)
            _recorder.refresh()
    }

    onRefresh: refreshAllVisible()

    Binding {
        target: page._recorder
        property: "visible"
        value: page.isShown
    }

    Binding {
        target: page.banner
        property: "visible"
        value: page._state === SsdTabModel.PLAYING || page._state === SsdTabModel.PAUSED
    }

    BodyLoader {
        id: contents

        body: "qrc:/qt-project.org/imports/zvt/recording/RecorderSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        width: parent ? parent.width : 0
    }

    Connections {
        target: contents.item
        function onFolderRequested() {
            folderDialog.open()
        }
        function onMoviesRequested() {
            dialogs.listMovies()
        }
        function onDownloadRequested() {
            dialogs.download()
        }
        function onBatchDownloadRequested() {
            dialogs.downloadBatch()
        }
    }

    MovieDialogs {
        id: dialogs

        model: page._recorder
        connected: page.connected
        onFileRequested: fileDialog.open()
    }

    LazyLoader {
        id: fileDialog

        WidgetFileDialog {
            //: Title of a file dialog
            title: qsTr("Select Movie File")
            selectExisting: false
            folder: shortcuts.documents
            defaultName: page._fileName
            //: File types
            nameFilters: [qsTr("RQS Files (*.rqs)"),
                          //: File types
                          qsTr("All Files (*.*)")]
            onAccepted: dialogs.saveTo(String(fileUrl))
        }
    }

    LazyLoader {
        id: folderDialog

        WidgetFileDialog {
            //: Title of a dialog: the folder for automatic downloads of recordings
            title: qsTr("Select Folder")
            selectFolder: true
            folder: page._recorder ? page._recorder.autoDownloadDirectoryUrl : ""
            onAccepted: {
                if (page._recorder)
                    page._recorder.autoDownloadDirectoryUrl = fileUrl
            }
        }
    }
}
