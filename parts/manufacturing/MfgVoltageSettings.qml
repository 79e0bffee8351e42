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
                enabled: !settings.refreshing
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
                    id: nameCell

                    Layout.preferredWidth: settings._nameWidth
                    text: row._name
                    elide: Text.ElideRight

                    HoverHandler {
                        onHoveredChanged: Hint.show(nameCell, hovered && nameCell.truncated, row._name)
                    }
                }

                NumberBox {
                    id: voltsBox

                    visible: row._editable
                    enabled: !settings.refreshing || activeFocus
                    Layout.preferredWidth: 92
                    name: row._name
                    // Required: with a decimal point in every locale.
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

                // Each read replaces the rows. A field loses the focus then, but its text was not entered. The body's
                // loader, a focus scope, gives the focus away before: otherwise it would take the focus over from the
                // row, which disables the loader in the middle of the change.
                Connections {
                    target: settings.camera ? settings.camera.mfgVoltageSettingsModel.voltageListModel : null
                    function onModelAboutToBeReset() {
                        voltsBox.revert()
                        if (voltsBox.activeFocus)
                            settings.parent.focus = false
                    }
                }
            }
        }
    }
}
