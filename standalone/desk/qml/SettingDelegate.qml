import QtQuick
import QtQuick.Controls
import zvt.controller.desk

// A row of a list of settings: the heading of its group if it is the first of them, its label with the control for its
// kind, a note, and why the last change was refused. Esc removes the reason.
Column {
    id: row

    required property int index
    required property string label
    required property string heading
    required property string name
    required property int control
    required property bool on
    required property string text
    required property string unit
    required property string hint
    required property string note
    required property var choices
    required property int choice
    required property bool usable
    required property string refusal

    property int labelWidth: DeskLook.labelWidth

    // The model of the list.
    required property SettingRows settings

    // Whether the control has the focus, and the pointer is elsewhere.
    readonly property bool isUsedByKeyboard: place.activeFocus && !hover.hovered

    //: Below a control. %1: the reason, such as "must lie between 60 and 120"
    readonly property string _error: refusal ? qsTr("Refused: %1").arg(refusal) : ""
    readonly property list<Component> _controls: [toggle, combo, field, pulse]

    bottomPadding: 4
    width: ListView.view ? ListView.view.width : parent ? parent.width : 0

    Keys.onEscapePressed: event => {
        event.accepted = refusal !== ""
        settings.dismiss(index)
    }

    Text {
        width: parent.width
        height: DeskLook.rowHeight
        visible: row.heading !== ""
        verticalAlignment: Text.AlignVCenter
        text: row.heading
        color: DeskLook.dimTextColor
        font.pixelSize: DeskLook.hintSize
        font.weight: Font.DemiBold

        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Loader {
        id: place

        width: parent.width
        enabled: row.usable
        sourceComponent: row._controls[row.control]

        ToolTip.visible: row.hint !== "" && (hover.hovered || activeFocus)
        ToolTip.text: row.hint
        ToolTip.delay: 600

        HoverHandler {
            id: hover
        }
    }

    // A field shows it itself.
    CardNote {
        visible: row._error !== "" && place.sourceComponent !== field
        isError: true
        text: row._error
    }

    CardNote {
        visible: row.note !== ""
        text: row.note
    }

    Component {
        id: toggle

        CardSwitch {
            label: row.label
            name: row.name
            labelWidth: width - 60
            value: row.on
            onToggled: value => row.settings.turn(row.index, value)
        }
    }

    Component {
        id: combo

        CardCombo {
            label: row.label
            name: row.name
            labelWidth: row.labelWidth
            choices: row.choices
            index: row.choice
            onChosen: index => row.settings.choose(row.index, index)
        }
    }

    Component {
        id: field

        CardField {
            label: row.label
            name: row.name
            labelWidth: row.labelWidth
            value: row.text
            unit: row.unit
            hint: row.hint
            error: row._error
            onEdited: text => row.settings.enter(row.index, text)
            onDropped: row.settings.dismiss(row.index)
        }
    }

    Component {
        id: pulse

        CardRow {
            label: row.label
            labelWidth: row.labelWidth

            CardButton {
                //: Button: sends a single pulse to an input of the camera
                text: qsTr("Send")
                onClicked: row.settings.pulse(row.index)

                Accessible.name: row.name
            }
        }
    }
}
