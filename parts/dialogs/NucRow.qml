import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// A row of the list of corrections: a button that shows the description of the correction, its name, the size of its
// window, its integration time, and when it was made.
OptionRow {
    id: row

    required property ZvtCameraModel camera
    required property int index
    required property string name
    required property double intTime
    required property date date
    required property bool infoOk
    // For the roles that have the names of properties of every item.
    required property var model

    signal infoRequested

    function _time(): string {
        //: %1 is a number of milliseconds
        return infoOk && camera ? qsTr("%1 ms").arg(camera.safeConvertFloatToLocaleString(intTime, 6)) : ""
    }

    component Cell: PlainLabel {
        Accessible.ignored: true
        color: row.current ? Look.strongTextColor : Look.dimTextColor
    }

    height: Look.rowHeight
    rightPadding: 18
    current: highlighted

    Accessible.name: name

    contentItem: RowLayout {
        spacing: 12

        GlyphButton {
            implicitHeight: Look.rowHeight - 4
            enabled: row.infoOk
            focusPolicy: Qt.NoFocus
            glyph: Glyph.info
            //: Tool tip
            toolTip: qsTr("Show NUC Info")
            //: Accessible name; %1 is the name of a correction
            Accessible.name: qsTr("Show NUC Info of %1").arg(row.name)
            onClicked: row.infoRequested()
        }

        PlainLabel {
            id: nameLabel

            Layout.fillWidth: true
            Accessible.ignored: true
            text: row.name
            color: row.current ? Look.strongTextColor : Look.textColor
            font.weight: row.current ? Font.DemiBold : Font.Normal
            elide: Text.ElideRight

            HoverHandler {
                onHoveredChanged: Hint.show(row, hovered && nameLabel.truncated, row.name)
            }
        }

        Cell {
            Layout.preferredWidth: 72
            text: row.infoOk ? row.model.width + "x" + row.model.height : ""
        }

        Cell {
            Layout.preferredWidth: 96
            text: row._time()
            horizontalAlignment: Text.AlignRight
        }

        Cell {
            Layout.preferredWidth: 120
            text: Qt.formatDateTime(row.date, "yyyy-MM-dd HH:mm")
        }
    }
}
