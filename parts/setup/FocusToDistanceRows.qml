import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// Focuses the lens to a distance in metres.
RowGroup {
    id: rows

    required property ZvtCameraModel camera
    required property bool unlocked

    readonly property real _nearest: camera ? camera.setupTabModel.distanceMinimum : 0
    readonly property real _farthest: camera ? camera.setupTabModel.distanceMaximum : 0

    function _rounded(metres: real): real {
        return Math.round(metres * 100) / 100
    }

    function _text(metres: real): string {
        return camera ? camera.safeConvertFloatToLocaleString(metres, 2) : ""
    }

    SettingRow {
        id: distanceRow

        enabled: rows.unlocked
        //: The distance to focus to
        heading: qsTr("Distance:")

        NumberBox {
            id: distance

            Layout.preferredWidth: 88
            name: distanceRow.name
            from: rows._rounded(rows._nearest)
            to: rows._rounded(rows._farthest)
            decimals: 2
            modelText: rows.camera ? rows._text(rows.camera.setupTabModel.distanceToFocus) : ""
            onEntered: metres => rows.camera.setupTabModel.distanceToFocus = metres
            onConfirmed: rows.camera.setupTabModel.focusToDistance()
        }

        Unit {
            //: Metres
            text: qsTr("m")
        }

        WrappingButton {
            Layout.preferredWidth: 140
            enabled: distance.acceptable
            //: Focuses the lens to the distance in the field
            text: qsTr("Focus To Distance")
            onClicked: rows.camera.setupTabModel.focusToDistance()
        }
    }

    SettingRow {
        id: rangeRow

        //: The distances that the lens can focus to
        heading: qsTr("Range:")

        PlainLabel {
            opacity: enabled ? 1 : Look.disabledOpacity
            leftPadding: 6
            rightPadding: 6
            topPadding: 2
            bottomPadding: 2
            Accessible.name: rangeRow.name
            Accessible.description: text
            //: A range of distances in metres
            text: qsTr("%1m - %2m").arg(rows._text(rows._nearest)).arg(rows._text(rows._farthest))
            color: Look.strongTextColor

            background: Rectangle {
                color: distance.acceptable ? "transparent" : Look.outOfRangeColor
            }
        }
    }
}
