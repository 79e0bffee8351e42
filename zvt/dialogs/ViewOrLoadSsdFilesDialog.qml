import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import com.kestrin.hlxcamui 1.0
import zvt.dialogs
import zvt.look
import zvt.rows

// The movies on the drive of the camera, to choose one or, with `selectMultiple`, several of them. Without record modes
// the camera cannot load movies, and the list can only be viewed. Every opening reads the movies again. When the dialog
// is accepted, `selectedMovies` are the chosen movies, from the top, and `selectedMovie` is the first of them.
InformationDialog {
    id: dialog

    required property SsdTabModel ssdTabModel
    property bool selectMultiple
    // Whether movies can be chosen. The dialog stays open when this changes, but cannot be accepted.
    property bool usable: true
    property SsdMovieFileInfoModel selectedMovie
    property var selectedMovies: []
    property alias lastSelected: table.lastSelected
    property alias numSelected: table.numSelected

    readonly property bool _loads: ssdTabModel ? ssdTabModel.recordModeAvailable : false
    readonly property bool _hasChoice: usable && numSelected !== 0
    readonly property int _fullHeight: parent ? Math.max(parent.height - 64, 400) : 400

    function _choose() {
        if (!_loads || !_hasChoice)
            return
        selectedMovies = table.selectedMovies()
        selectedMovie = selectedMovies[0]
        accept()
    }

    function _title(): string {
        if (selectMultiple)
            //: Title of a dialog
            return qsTr("Add Movies")
        //: Title of a dialog
        return _loads ? qsTr("Load Movie")
                      //: Title of a dialog
                      : qsTr("Movies List")
    }

    function _verb(): string {
        if (!selectMultiple)
            //: Loads a movie from the drive into the camera's memory
            return qsTr("Load Movie")
        if (numSelected === 0)
            //: Adds the selected movies to a list; none is selected
            return qsTr("Add Movie")
        //: Adds the selected movie to a list
        return numSelected === 1 ? qsTr("Add 1 Movie")
                                 //: Adds the selected movies to a list; %1 is their number
                                 : qsTr("Add %1 Movies").arg(numSelected)
    }

    title: _title()
    fullWidth: 760
    height: parent ? Math.min(_fullHeight, parent.height - 32) : _fullHeight
    closesByEscape: false
    initialFocus: table.list
    onAboutToShow: {
        selectedMovie = null
        selectedMovies = []
        table.clearSelection()
        ssdTabModel.loadAndViewFiles()
        DialogWindowResizer.pushMinSize(Qt.size(fullWidth + 32, _fullHeight + 32))
    }
    onAboutToHide: DialogWindowResizer.popMinSize()

    component SpaceLabel: PlainLabel {
        Layout.fillWidth: true
        Layout.preferredWidth: 1
        elide: Text.ElideRight
    }

    contentItem: ColumnLayout {
        spacing: Look.rowSpacing

        MovieTable {
            id: table

            Layout.fillWidth: true
            Layout.fillHeight: true
            ssdTabModel: dialog.ssdTabModel
            selectMultiple: dialog.selectMultiple
            onConfirmed: dialog._choose()
        }

        RowLayout {
            spacing: 12

            SpaceLabel {
                //: The size of the drive; %1 is a number of bytes with its unit
                text: qsTr("Capacity: %1").arg(dialog.ssdTabModel ? dialog.ssdTabModel.totalSpace : "")
            }

            SpaceLabel {
                //: The free space of the drive; %1 is a number of bytes with its unit
                text: qsTr("Free: %1").arg(dialog.ssdTabModel ? dialog.ssdTabModel.freeSpace : "")
            }

            SpaceLabel {
                //: The used space of the drive; %1 is a number of bytes with its unit
                text: qsTr("Used: %1").arg(dialog.ssdTabModel ? dialog.ssdTabModel.usedSpace : "")
            }
        }
    }
    buttons: [
        DialogButton {
            visible: dialog._loads
            enabled: dialog._hasChoice
            primary: true
            text: dialog._verb()
            onClicked: dialog._choose()
        },
        DialogButton {
            //: Closes a dialog and changes nothing
            text: qsTr("Close")
            onClicked: dialog.reject()
        }
    ]
}
