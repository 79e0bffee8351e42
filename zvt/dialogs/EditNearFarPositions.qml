import QtQuick
import QtQuick.Layouts
import zvt.dialogs
import zvt.look
import zvt.rows

// Edits the nearest and farthest focus positions of the two fields of view, which the camera keeps.
InformationDialog {
    id: dialog

    required property var tabModel

    readonly property bool _ascending: tabModel ? tabModel.focusEncoderHasAscendingValuesNearToFar : true
    readonly property int _minimum: tabModel ? tabModel.fullRangeFocusMinimum : 0
    readonly property int _maximum: tabModel ? tabModel.fullRangeFocusMaximum : 0
    readonly property bool _inRange: narrow.inRange && wide.inRange
    readonly property bool _acceptable: _inRange && narrow.ordered && wide.ordered

    function _faultText(): string {
        if (!_inRange)
            //: The numbers are positions of the focus
            return qsTr("Positions lie between %1 and %2.").arg(_minimum).arg(_maximum)
        //: Positions of the focus
        return _acceptable ? "" : qsTr("Nearest may not lie beyond farthest.")
    }

    function _confirm() {
        if (_acceptable)
            accept()
    }

    //: Title of a dialog
    title: qsTr("Edit Nearest/Farthest Positions")
    fullWidth: 400
    initialFocus: narrow.firstField
    onAboutToShow: {
        narrow.show(tabModel.narrowNearFocusPosition, tabModel.narrowFarFocusPosition)
        wide.show(tabModel.wideNearFocusPosition, tabModel.wideFarFocusPosition)
        narrow.firstField.selectAll()
    }
    onAccepted: tabModel.setNarrowWideNearFarPositions(narrow.near, narrow.far, wide.near, wide.far)

    component Limits: PositionLimits {
        Layout.topMargin: 4
        minimum: dialog._minimum
        maximum: dialog._maximum
        ascending: dialog._ascending
        onConfirmed: dialog._confirm()
    }

    contentItem: ColumnLayout {
        spacing: Look.rowSpacing

        FactRow {
            headingWidth: 176
            //: The current position of the focus
            heading: qsTr("Current Position:")
            value: dialog.tabModel ? dialog.tabModel.selectedFocusPosition : ""
        }

        FactRow {
            headingWidth: 176
            //: The positions that the focus can take
            heading: qsTr("Full Range (Near to Far):")
            value: dialog._ascending ? dialog._minimum + " -> " + dialog._maximum
                                     : dialog._maximum + " -> " + dialog._minimum
        }

        Limits {
            id: narrow

            //: Heading of a group of fields
            fieldOfView: qsTr("Narrow Field Of View")
        }

        Limits {
            id: wide

            //: Heading of a group of fields
            fieldOfView: qsTr("Wide Field Of View")
        }

        // Has the same height without a text, so that the dialog keeps its size.
        PlainLabel {
            Layout.fillWidth: true
            Layout.preferredHeight: implicitHeight
            text: dialog._faultText()
            font.pixelSize: Look.hintSize
            color: Look.errorTextColor
        }
    }
    buttons: [
        DialogButton {
            enabled: dialog._acceptable
            primary: true
            //: Saves the entered positions
            text: qsTr("OK")
            onClicked: dialog.accept()
        },
        DialogButton {
            //: Closes a dialog and changes nothing
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]
}
