import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import "../controls"

// Edits the limits of the focus that the camera keeps for its two fields of view.
InformationDialog {
    id: dialog

    required property var tabModel

    readonly property Content _content: Content {}
    readonly property Limits _narrow: _content.narrow
    readonly property Limits _wide: _content.wide
    readonly property bool _ascending: tabModel?.focusEncoderHasAscendingValuesNearToFar ?? true
    readonly property int _minimum: tabModel?.fullRangeFocusMinimum ?? 0
    readonly property int _maximum: tabModel?.fullRangeFocusMaximum ?? 0
    readonly property bool _inRange: _narrow.inRange && _wide.inRange
    readonly property bool _acceptable: _inRange && _narrow.ordered && _wide.ordered

    function _faultText(): string {
        if (!_inRange)
            //: The numbers are positions of the focus
            return qsTr("Positions lie between %1 and %2.").arg(_minimum).arg(_maximum)
        //: Positions of the focus
        return _acceptable ? "" : qsTr("Nearest may not lie beyond farthest.")
    }

    //: Title of a dialog
    title: qsTr("Edit Nearest/Farthest Positions")
    fullWidth: 400
    initialFocus: _narrow.firstField
    onAboutToShow: {
        _narrow.show(tabModel.narrowNearFocusPosition, tabModel.narrowFarFocusPosition)
        _wide.show(tabModel.wideNearFocusPosition, tabModel.wideFarFocusPosition)
        _narrow.firstField.selectAll()
    }
    onAccepted: tabModel.setNarrowWideNearFarPositions(_narrow.near, _narrow.far, _wide.near, _wide.far)

    component Fact: RowLayout {
        property alias heading: headingLabel.text
        property alias text: valueLabel.text

        spacing: 12

        Label {
            id: headingLabel

            Layout.preferredWidth: 176
            Accessible.ignored: true
            color: root.textColor
            horizontalAlignment: Text.AlignRight
        }

        Label {
            id: valueLabel

            Layout.fillWidth: true
            Accessible.name: headingLabel.text.replace(":", "")
            Accessible.description: text
            color: root.strongTextColor
        }
    }

    component PositionField: TextField {
        id: field

        required property bool ordered

        // Of a text in range; what else is typed counts for nothing.
        readonly property int position: acceptableInput ? Number.fromLocaleString(Qt.locale("C"), text) : 0
        readonly property bool faulty: !acceptableInput || !ordered

        Layout.fillWidth: true
        implicitWidth: 80
        implicitHeight: root.rowHeight
        selectByMouse: true
        onActiveFocusChanged: {
            if (activeFocus && focusReason !== Qt.MouseFocusReason)
                selectAll()
        }
        onAccepted: {
            if (dialog._acceptable)
                dialog.accept()
        }

        validator: IntValidator {
            locale: "C"
            bottom: dialog._minimum
            top: dialog._maximum
        }
        background: Rectangle {
            radius: 2
            color: field.faulty ? root.errorBackColor : root.fieldColor
            border.color: field.activeFocus ? root.kestrinAccentBlue
                                            : field.faulty ? root.errorFrameColor : root.fieldFrameColor
        }
    }

    component Limits: ColumnLayout {
        id: limits

        required property string fieldOfView

        readonly property alias firstField: nearField
        readonly property alias near: nearField.position
        readonly property alias far: farField.position
        readonly property bool inRange: nearField.acceptableInput && farField.acceptableInput
        // Whether the two fit the way the encoder counts. Of what is out of range nothing can be said.
        readonly property bool ordered: !inRange || (dialog._ascending ? near <= far : near >= far)

        function show(nearPosition: int, farPosition: int) {
            nearField.text = nearPosition
            farField.text = farPosition
        }

        spacing: root.rowSpacing

        SubsectionHeaderLabel {
            Layout.fillWidth: true
            text: limits.fieldOfView
        }

        RowLayout {
            spacing: 12

            Label {
                id: nearLabel

                Accessible.ignored: true
                //: The nearest position of the focus
                text: qsTr("Nearest:")
                color: root.textColor
            }

            PositionField {
                id: nearField

                Accessible.name: limits.fieldOfView + " " + nearLabel.text.replace(":", "")
                ordered: limits.ordered
            }

            Label {
                id: farLabel

                Accessible.ignored: true
                //: The farthest position of the focus
                text: qsTr("Farthest:")
                color: root.textColor
            }

            PositionField {
                id: farField

                Accessible.name: limits.fieldOfView + " " + farLabel.text.replace(":", "")
                ordered: limits.ordered
            }
        }
    }

    component Content: ColumnLayout {
        readonly property alias narrow: narrowLimits
        readonly property alias wide: wideLimits

        spacing: root.rowSpacing

        Fact {
            //: Where the focus is now
            heading: qsTr("Current Position:")
            text: dialog.tabModel?.selectedFocusPosition ?? ""
        }

        Fact {
            //: The positions that the focus can take
            heading: qsTr("Full Range (Near to Far):")
            text: dialog._ascending ? dialog._minimum + " -> " + dialog._maximum
                                    : dialog._maximum + " -> " + dialog._minimum
        }

        Limits {
            id: narrowLimits

            Layout.topMargin: 4
            //: Heads a group of fields
            fieldOfView: qsTr("Narrow Field Of View")
        }

        Limits {
            id: wideLimits

            Layout.topMargin: 4
            //: Heads a group of fields
            fieldOfView: qsTr("Wide Field Of View")
        }

        // Keeps its place while there is nothing to tell.
        Label {
            Layout.fillWidth: true
            Layout.preferredHeight: implicitHeight
            text: dialog._faultText()
            font.pixelSize: root.hintSize
            color: root.errorTextColor
        }
    }
    contentItem: _content
    buttons: [
        WrappingButton {
            width: Math.max(88, implicitWidth)
            enabled: dialog._acceptable
            //: Keeps what was entered
            text: qsTr("OK")
            onClicked: dialog.accept()
        },
        WrappingButton {
            width: Math.max(88, implicitWidth)
            //: Closes a dialog and changes nothing
            text: qsTr("Cancel")
            onClicked: dialog.reject()
        }
    ]
}
