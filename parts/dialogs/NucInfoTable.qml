import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The description of a correction as rows of a name and a value.
ColumnLayout {
    id: table

    required property NucInfoModel infoModel

    readonly property bool _refreshing: infoModel ? infoModel.refreshing : false
    readonly property bool _failed: infoModel ? !_refreshing && !infoModel.status : false
    readonly property real _nameWidth: width * 0.45

    component ColumnHeading: PlainLabel {
        color: Look.headerTextColor
        font.weight: Font.DemiBold
    }

    spacing: 4

    RowLayout {
        spacing: 12

        ColumnHeading {
            Layout.preferredWidth: table._nameWidth - 12
            //: Heading of a column
            text: qsTr("Name")
            horizontalAlignment: Text.AlignRight
        }

        ColumnHeading {
            Layout.fillWidth: true
            //: Heading of a column
            text: qsTr("Value")
        }
    }

    FramedList {
        id: frame

        Layout.fillWidth: true
        Layout.fillHeight: true
        //: A list
        name: qsTr("NUC Information")
        model: table.infoModel
        busy: table._refreshing
        spinnerName: "nucInfoBusy"
        wasRead: table._failed
        //: Shown in place of the description of a correction
        emptyText: qsTr("Failed to query information")
        onStepped: rows => list.contentY = Math.max(0, Math.min(list.contentHeight - list.height,
                                                                list.contentY + rows * Look.rowHeight))

        delegate: Rectangle {
            id: row

            required property int index
            required property string name
            required property string value

            width: ListView.view.width
            implicitHeight: Math.max(nameLabel.implicitHeight, valueLabel.implicitHeight) + 10
            color: index % 2 === 0 ? "transparent" : Look.rowHoverColor

            PlainLabel {
                id: nameLabel

                y: 5
                width: table._nameWidth - 12
                Accessible.ignored: true
                text: row.name
                color: Look.headerTextColor
                horizontalAlignment: Text.AlignRight
                wrapMode: Text.Wrap
            }

            PlainLabel {
                id: valueLabel

                x: table._nameWidth
                y: 5
                width: row.width - x - 12
                Accessible.name: row.name
                Accessible.description: text
                text: row.value
                color: Look.strongTextColor
                wrapMode: Text.Wrap
            }
        }
    }
}
