import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The edited window in numbers, and the way to the camera.
ColumnLayout {
    id: fields

    required property WindowRules rules
    required property rect window
    required property bool unsaved
    required property string warning
    required property var marks

    readonly property alias typedWidth: widthField.number
    readonly property alias typedHeight: heightField.number
    readonly property bool _acceptable: widthField.acceptable && heightField.acceptable
                                        && xField.acceptable && yField.acceptable

    signal edited(window: rect)
    signal apply
    signal seek(item: Item)

    component Field: RowLayout {
        id: field

        required property string heading
        required property string mark
        required property int value
        property alias toolTip: box.toolTip
        readonly property alias acceptable: box.acceptable
        readonly property alias number: box.number

        signal entered(number: int)

        spacing: 8

        PlainLabel {
            Layout.preferredWidth: 70
            Accessible.ignored: true
            opacity: enabled ? 1 : Look.disabledOpacity
            text: field.heading
            horizontalAlignment: Text.AlignRight
        }

        NumberBox {
            id: box

            Layout.preferredWidth: 72
            name: field.heading.slice(0, -1)
            shown: field.value
            marked: fields.marks.includes(field.mark)
            // Refuses numbers far out of range; the rules check the rest.
            to: 10000
            onTyped: number => field.entered(number)
        }
    }

    spacing: Look.rowSpacing
    Layout.fillWidth: true

    Field {
        id: widthField

        //: Of the image window
        heading: qsTr("Width:")
        mark: "width"
        toolTip: fields.rules.width
        value: fields.window.width
        onEntered: number => fields.edited(fields.rules.resized(fields.window, number, fields.window.height))
    }

    Field {
        id: heightField

        //: Of the image window
        heading: qsTr("Height:")
        mark: "height"
        toolTip: fields.rules.height
        value: fields.window.height
        onEntered: number => fields.edited(fields.rules.resized(fields.window, fields.window.width, number))
    }

    Field {
        id: xField

        visible: fields.rules.offsets
        //: Of the image window
        heading: qsTr("X Offset:")
        mark: "x"
        toolTip: fields.rules.x
        value: fields.window.x
        onEntered: number => fields.edited(Qt.rect(number, fields.window.y, fields.window.width, fields.window.height))
    }

    Field {
        id: yField

        visible: fields.rules.offsets
        //: Of the image window
        heading: qsTr("Y Offset:")
        mark: "y"
        toolTip: fields.rules.y
        value: fields.window.y
        onEntered: number => fields.edited(Qt.rect(fields.window.x, number, fields.window.width, fields.window.height))
    }

    WrappingButton {
        Layout.preferredWidth: 150
        primary: fields.unsaved
        enabled: fields._acceptable && fields.unsaved
        //: Gives the edited window to the camera
        text: qsTr("Apply Settings")
        onClicked: fields.apply()
    }

    PlainLabel {
        id: warningLabel

        visible: text !== ""
        Layout.fillWidth: true
        onHeightChanged: fields.seek(warningLabel)
        onYChanged: fields.seek(warningLabel)
        //: Accessible name
        Accessible.name: qsTr("Window Warning")
        Accessible.description: text
        text: fields.warning
        color: Look.errorTextColor
        wrapMode: Text.Wrap
    }
}
