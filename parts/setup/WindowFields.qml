import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// Number fields of the edited window, the button that sends it to the camera, and the warning if it breaks a rule.
ColumnLayout {
    id: fields

    required property WindowRules rules
    required property rect window
    required property bool unsaved
    required property string warning
    // The `fieldName` of each field that is shown as wrong.
    required property var markedFields

    readonly property alias typedWidth: widthField.number
    readonly property alias typedHeight: heightField.number
    readonly property bool _acceptable: widthField.acceptable && heightField.acceptable
                                        && xField.acceptable && yField.acceptable

    signal edited(window: rect)
    signal apply
    signal scrollTo(item: Item)

    component Field: WindowNumber {
        required property string fieldName
        required property int value

        modelText: value
        marked: fields.markedFields.includes(fieldName)
        // Refuses only numbers that are far out of range; WindowRules checks the limits.
        to: 10000
    }

    spacing: Look.rowSpacing
    Layout.fillWidth: true

    Field {
        id: widthField

        //: Of the image window
        heading: qsTr("Width:")
        fieldName: "width"
        toolTip: fields.rules.widthRule
        value: fields.window.width
        onTyped: number => fields.edited(fields.rules.resized(fields.window, number, fields.window.height))
    }

    Field {
        id: heightField

        //: Of the image window
        heading: qsTr("Height:")
        fieldName: "height"
        toolTip: fields.rules.heightRule
        value: fields.window.height
        onTyped: number => fields.edited(fields.rules.resized(fields.window, fields.window.width, number))
    }

    Field {
        id: xField

        visible: fields.rules.hasOffsets
        //: Of the image window
        heading: qsTr("X Offset:")
        fieldName: "x"
        toolTip: fields.rules.xRule
        value: fields.window.x
        onTyped: number => fields.edited(Qt.rect(number, fields.window.y, fields.window.width, fields.window.height))
    }

    Field {
        id: yField

        visible: fields.rules.hasOffsets
        //: Of the image window
        heading: qsTr("Y Offset:")
        fieldName: "y"
        toolTip: fields.rules.yRule
        value: fields.window.y
        onTyped: number => fields.edited(Qt.rect(fields.window.x, number, fields.window.width, fields.window.height))
    }

    WrappingButton {
        Layout.preferredWidth: 150
        primary: fields.unsaved
        enabled: fields._acceptable && fields.unsaved
        //: Sends the edited window to the camera
        text: qsTr("Apply Settings")
        onClicked: fields.apply()
    }

    PlainLabel {
        id: warningLabel

        visible: text !== ""
        Layout.fillWidth: true
        onHeightChanged: fields.scrollTo(warningLabel)
        onYChanged: fields.scrollTo(warningLabel)
        //: Accessible name
        Accessible.name: qsTr("Window Warning")
        Accessible.description: text
        text: fields.warning
        color: Look.errorTextColor
        wrapMode: Text.Wrap
    }
}
