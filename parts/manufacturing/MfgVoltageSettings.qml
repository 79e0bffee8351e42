pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// The body of the Voltage Settings section. A voltage is written when it has been entered.
ModelBody {
    id: settings

    readonly property int _nameWidth: 176
    readonly property bool _empty: camera ? camera.mfgVoltageSettingsModel.voltageListModel.size === 0 : true

    component Cell: PlainLabel {
        Layout.minimumHeight: Look.rowHeight
        opacity: enabled ? 1 : Look.disabledOpacity
        verticalAlignment: Text.AlignVCenter
    }

    refreshing: camera ? camera.mfgVoltageSettingsModel.refreshing : false
    hasRefreshed: camera ? camera.mfgVoltageSettingsModel.hasRefreshed : false

    RowGroup {
        PlainLabel {
            visible: settings._empty
            opacity: enabled ? 1 : Look.disabledOpacity
            text: "No voltages available."
        }

        RowLayout {
            spacing: 8

            GlyphLabel {
                text: Glyph.warning
                color: Look.kestrinSecondaryGold
            }

            PlainLabel {
                Layout.fillWidth: true
                text: "Warning: Setting voltages improperly can damage the camera."
                wrapMode: Text.Wrap
            }
        }

        RowLayout {
            visible: !settings._empty
            spacing: 12

            Cell {
                Layout.preferredWidth: settings._nameWidth
                text: "Name"
                color: Look.headerTextColor
            }

            Cell {
                Layout.preferredWidth: 92
                rightPadding: 8
                text: "Value"
                color: Look.headerTextColor
                horizontalAlignment: Text.AlignRight
            }

            GlyphButton {
                glyph: Glyph.refresh
                toolTip: "Refresh Voltages"
                onClicked: settings.camera.mfgVoltageSettingsModel.refresh()
            }
        }

        Rectangle {
            visible: !settings._empty
            implicitHeight: 1
            Layout.preferredWidth: settings._nameWidth + 12 + 92 + 12 + Look.rowHeight
            color: Look.rectangleOutlineColor
        }

        Repeater {
            model: settings.camera ? settings.camera.mfgVoltageSettingsModel.voltageListModel : null

            RowLayout {
                id: row

                // A VoltageItemModel.
                required property var item

                readonly property string _name: item ? item.displayName : ""
                readonly property bool _editable: item ? item.editable : false
                readonly property real _least: item ? item.minVolts : NaN
                readonly property real _most: item ? item.maxVolts : NaN
                readonly property string _text: settings.text(item ? item.volts : NaN, 3)

                spacing: 12

                Cell {
                    Layout.preferredWidth: settings._nameWidth
                    text: row._name
                    elide: Text.ElideRight
                }

                NumberBox {
                    visible: row._editable
                    Layout.preferredWidth: 92
                    name: row._name
                    toolTip: isFinite(row._least) && isFinite(row._most)
                             ? row._least.toFixed(3) + " to " + row._most.toFixed(3) : ""
                    from: Numbers.ofFloat(row._least)
                    to: Numbers.ofFloat(row._most)
                    decimals: 3
                    modelText: row._text
                    onEntered: volts => row.item.volts = volts
                }

                Cell {
                    visible: !row._editable
                    Layout.preferredWidth: 92
                    rightPadding: 8
                    Accessible.name: row._name
                    Accessible.description: text
                    text: row._text
                    horizontalAlignment: Text.AlignRight
                }
            }
        }
    }
}
