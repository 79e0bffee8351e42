import QtQuick
import QtQuick.Layouts
import com.kestrin.hlxui 1.0
import zvt
import zvt.look
import zvt.rows

// The body of the Video Output Settings section: the place of the image on the raster of the video output. An edited
// offset stays until it is applied or the section is read again.
SectionBody {
    id: settings

    readonly property int _labelWidth: 96
    // The increments of the offsets in X and Y, in pixels of the raster.
    readonly property var _increment: Qt.point(4, 4)
    readonly property bool _hasRefreshed: camera ? camera.videoOutputSettings.hasRefreshed : false
    // Whether the chosen position uses the offsets, also if the camera has not accepted it.
    readonly property bool _offsetIsUsed: positionRow.currentIndex === 2

    component OffsetRow: SettingRow {
        id: row

        required property bool hasBeenRead
        required property int value
        required property int least
        required property int most
        required property int increment

        signal typed(number: int)

        IncrementBox {
            name: row.name
            //: Tool tip of an offset; %1 and %2 are numbers of pixels, %3 is the number of pixels between allowed values
            toolTip: qsTr("Between %1 and %2 in increments of %3").arg(row.least).arg(row.most).arg(row.increment)
            modelText: row.hasBeenRead ? row.value : ""
            from: row.least
            to: row.most
            increment: row.increment
            // An offset may have become invalid by another window, format or zoom factor.
            marked: enabled && row.hasBeenRead && !acceptable
            onTyped: number => row.typed(number)
            // Another offset, from the editor or the camera, replaces a typed text.
            onModelTextChanged: {
                if (number !== row.value)
                    revert()
            }
        }
    }

    RowLayout {
        spacing: 2 * Look.margin
        Layout.fillWidth: true

        DisplayEditor {
            id: editor

            // With the mouse as reason, the page does not scroll the editor while the operator drags in it.
            readonly property int focusReason: editorHover.hovered ? Qt.MouseFocusReason : Qt.TabFocusReason

            Layout.preferredWidth: 208
            Layout.preferredHeight: 168
            Layout.alignment: Qt.AlignTop
            opacity: enabled ? 1 : Look.disabledOpacity
            hFlip: settings.camera ? settings.camera.setupTabModel.hflipImage : false
            vFlip: settings.camera ? settings.camera.setupTabModel.vflipImage : false
            window: settings.camera ? settings.camera.setupGeneralModel.window : Qt.rect(0, 0, 0, 0)
            fpaSize: settings.camera ? settings.camera.setupGeneralModel.windowMaxSize : Qt.size(0, 0)
            displaySize: settings.camera ? settings.camera.videoOutputSettings.displaySize : Qt.size(0, 0)
            offset: settings.camera ? settings.camera.videoOutputSettings.videoOutputOffset : Qt.point(0, 0)
            offsetType: settings.camera ? settings.camera.videoOutputSettings.selectedVideoOutputPositionIndex : 0
            zoom: settings.camera ? settings.camera.videoOutputSettings.zoomScale : 1
            increment: settings._increment
            showNtscLines: false
            onOffsetChanged: {
                if (settings.camera)
                    settings.camera.videoOutputSettings.videoOutputOffset = offset
            }

            HoverHandler {
                id: editorHover
            }
        }

        RowGroup {
            Layout.alignment: Qt.AlignTop

            ChoiceRow {
                id: positionRow

                labelWidth: settings._labelWidth
                enabled: settings.camera ? settings.camera.videoOutputSettings.canChangePosition : false
                //: Of the image in the video output
                heading: qsTr("Position:")
                model: [
                    //: Position of the image in the video output: where its window is on the detector
                    qsTr("Same As FPA"),
                    //: Position of the image in the video output
                    qsTr("Centered"),
                    //: Position of the image in the video output: at the offsets that the operator sets
                    qsTr("Offset")
                ]
                currentIndex: settings._hasRefreshed
                              ? settings.camera.videoOutputSettings.selectedVideoOutputPositionIndex : -1
                onActivated: index => settings.camera.videoOutputSettings.selectedVideoOutputPositionIndex = index
            }

            ChoiceRow {
                labelWidth: settings._labelWidth
                //: Of the image in the video output
                heading: qsTr("Zoom Factor:")
                model: settings._hasRefreshed ? settings.camera.videoOutputSettings.zoomFactorListModel.strings : []
                currentIndex: settings._hasRefreshed ? settings.camera.videoOutputSettings.selectedZoomFactorIndex : -1
                onActivated: index => settings.camera.videoOutputSettings.selectedZoomFactorIndex = index
            }

            OffsetRow {
                //: Of the image in the video output
                heading: qsTr("X Offset:")
                labelWidth: settings._labelWidth
                enabled: settings._offsetIsUsed
                hasBeenRead: settings._hasRefreshed
                value: settings.camera ? settings.camera.videoOutputSettings.videoOutputXOffset : 0
                least: editor.offsetMin.x
                most: editor.offsetMax.x
                increment: editor.increment.x
                onTyped: number => settings.camera.videoOutputSettings.videoOutputXOffset = number
            }

            OffsetRow {
                //: Of the image in the video output
                heading: qsTr("Y Offset:")
                labelWidth: settings._labelWidth
                enabled: settings._offsetIsUsed
                hasBeenRead: settings._hasRefreshed
                value: settings.camera ? settings.camera.videoOutputSettings.videoOutputYOffset : 0
                least: editor.offsetMin.y
                most: editor.offsetMax.y
                increment: editor.increment.y
                onTyped: number => settings.camera.videoOutputSettings.videoOutputYOffset = number
            }

            SettingRow {
                labelWidth: settings._labelWidth

                WrappingButton {
                    Layout.preferredWidth: 150
                    enabled: settings._offsetIsUsed && editor.isValid
                    //: Sends the offsets of the image in the video output to the camera
                    text: qsTr("Apply Offset")
                    onClicked: settings.camera.videoOutputSettings.applyVideoOffsetSettings()
                }
            }
        }

        // Takes the rest of the width.
        Item {
            Layout.fillWidth: true
        }
    }
}
