import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// Chooses between the two fields of view of a lens without continuous zoom.
ChoiceRow {
    id: row

    required property ZvtCameraModel camera
    required property bool connected
    required property bool isShown

    // Each read of the property asks the camera and loads the focus limits, so it is not read in a binding. The model
    // emits no signal if another client changed the field of view, so it is also read after each refresh of the lens,
    // which publishes the list of lens states last. Nothing is read while the page is hidden; showing the page
    // refreshes the lens.
    function _readFieldOfView() {
        if (isShown && connected)
            currentIndex = camera.setupTabModel.selectedDiscontinuousFieldOfViewIndex
    }

    //: Heading of a choice
    heading: qsTr("Field of View:")
    //: Field of view
    model: [qsTr("Narrow"),
            //: Field of view
            qsTr("Wide")]
    currentIndex: -1
    onActivated: index => camera.setupTabModel.selectedDiscontinuousFieldOfViewIndex = index

    Connections {
        target: row.camera ? row.camera.setupTabModel : null
        function onSelectedDiscontinuousFieldOfViewIndexChanged() {
            row._readFieldOfView()
        }
        function onLensStateNamesChanged() {
            row._readFieldOfView()
        }
    }
}
