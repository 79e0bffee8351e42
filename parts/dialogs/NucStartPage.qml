import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The first page of the correction wizard: what kind of correction is made, and from which source.
DialogScroller {
    id: page

    required property ZvtCameraModel camera
    // Whether the preset has a correction, and whether it has a factory calibration.
    required property bool hasNuc
    required property bool hasCal

    readonly property bool _refreshing: camera ? camera.nucProcess.refreshing : false

    // Enter was pressed in a field.
    signal confirmed

    // A preset with a correction starts with the update of its offsets, whatever the camera last made.
    on_RefreshingChanged: {
        if (hasNuc && camera)
            camera.nucProcess.nucType = NucProcessModel.TYPE_UPDATE_OFFSET
    }

    Columns {
        twoColumnWidth: 540
        enabled: !page._refreshing

        NucTypeRows {
            Layout.alignment: Qt.AlignTop
            Layout.preferredWidth: 1
            camera: page.camera
            hasNuc: page.hasNuc
            hasCal: page.hasCal
            onConfirmed: page.confirmed()
        }

        NucSourceRows {
            Layout.alignment: Qt.AlignTop
            Layout.preferredWidth: 1
            camera: page.camera
            onConfirmed: page.confirmed()
        }
    }

    Loader {
        parent: page
        anchors.centerIn: parent
        active: page._refreshing && page.visible
        sourceComponent: Spinner {
            objectName: "nucSettingsBusy"
            size: 32
        }
    }
}
