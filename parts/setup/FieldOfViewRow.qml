import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// Chooses between the two fields of view of a lens that has no others.
ChoiceRow {
    id: row

    required property ZvtCameraModel camera
    required property bool connected
    required property bool isShown

    // Reading the property asks the camera and loads the focus limits, so it is read only when there is a reason to. The
    // model sends no signal when the field of view was changed elsewhere; the list of lens states is published last in a
    // read of the lens, so that is the time to ask. What is missed while the page is hidden is read when it is shown.
    function _ask() {
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
            row._ask()
        }
        function onLensStateNamesChanged() {
            row._ask()
        }
    }
}
