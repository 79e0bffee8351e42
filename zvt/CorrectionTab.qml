import QtQuick
import zvt.rows

// The Correction page: the non-uniformity correction (NUC) of each preset.
Page {
    id: page

    // Emitted when the main page must be blocked (true) or released (false): it is blocked while the wizard is open and
    // the camera connected.
    signal pageBlocked(blocked: bool)

    function refreshAllVisible() {
        if (camera)
            camera.correctionTabModel.refresh()
    }

    onRefresh: refreshAllVisible()

    BodyLoader {
        body: "qrc:/qt-project.org/imports/zvt/correction/CorrectionSettings.qml"
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
        width: parent ? parent.width : 0
        onLoaded: {
            item.pageSize = Qt.binding(() => Qt.size(page.width, page.height))
            item.pageBlocked.connect(page.pageBlocked)
        }
    }
}
