import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows

// The body of the Saturation Settings section: the thresholds of each preset, and the number of its saturated pixels.
ModelBody {
    id: settings

    component ThresholdBox: ModelNumberBox {
        Layout.preferredWidth: Look.numberColumnWidth
        section: settings
        decimals: 0
        shownDecimals: 0
    }

    component PresetRow: SettingRow {
        id: row

        required property int counts
        required property var countsNotifier
        required property int pixels
        required property var pixelsNotifier
        required property int saturated
        required property var saturatedNotifier

        signal countsSent(counts: int)
        signal pixelsSent(pixels: int)

        ThresholdBox {
            name: row.name + " " + countTitle.text
            from: settings.camera ? settings.camera.advancedSaturationSettingsModel.countThresholdMinValue : 0
            to: settings.camera ? settings.camera.advancedSaturationSettingsModel.countThresholdMaxValue : 0
            value: row.counts
            notifier: row.countsNotifier
            onSent: counts => row.countsSent(counts)
        }

        ThresholdBox {
            name: row.name + " " + pixelTitle.text
            from: settings.camera ? settings.camera.advancedSaturationSettingsModel.pixelThresholdMinValue : 0
            to: settings.camera ? settings.camera.advancedSaturationSettingsModel.pixelThresholdMaxValue : 0
            value: row.pixels
            notifier: row.pixelsNotifier
            onSent: pixels => row.pixelsSent(pixels)
        }

        PlainLabel {
            Layout.preferredWidth: Look.numberColumnWidth
            Accessible.name: row.name + " " + saturatedTitle.text
            Accessible.description: text
            rightPadding: 8
            opacity: enabled ? 1 : Look.disabledOpacity
            text: saturatedFact.wasRead ? settings.text(row.saturated, 0) : ""
            horizontalAlignment: Text.AlignRight

            ReadFact {
                id: saturatedFact

                notifier: row.saturatedNotifier
                differs: row.saturated !== 0
            }
        }
    }

    refreshing: camera ? camera.advancedSaturationSettingsModel.refreshing : false

    RowGroup {
        SettingRow {
            ColumnTitle {
                id: countTitle

                //: Title of a column: from this number of counts on, a pixel is saturated
                text: qsTr("Count Threshold")
            }

            ColumnTitle {
                id: pixelTitle

                //: Title of a column: how many saturated pixels are allowed
                text: qsTr("Pixel Threshold")
            }

            ColumnTitle {
                id: saturatedTitle

                //: Title of a column: the number of saturated pixels
                text: qsTr("Saturated Pixels")
            }
        }

        PresetRow {
            //: Heading of a row: a preset of the camera
            heading: qsTr("Preset 0:")
            counts: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetZeroCountThreshold : 0
            countsNotifier: settings.camera
                            ? settings.camera.advancedSaturationSettingsModel.presetZeroCountThresholdChanged : null
            onCountsSent: counts => settings.camera.advancedSaturationSettingsModel.presetZeroCountThreshold = counts
            pixels: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetZeroPixelThreshold : 0
            pixelsNotifier: settings.camera
                            ? settings.camera.advancedSaturationSettingsModel.presetZeroPixelThresholdChanged : null
            onPixelsSent: pixels => settings.camera.advancedSaturationSettingsModel.presetZeroPixelThreshold = pixels
            saturated: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetZeroSaturatedPixels : 0
            saturatedNotifier: settings.camera
                               ? settings.camera.advancedSaturationSettingsModel.presetZeroSaturatedPixelsChanged : null
        }

        PresetRow {
            //: Heading of a row: a preset of the camera
            heading: qsTr("Preset 1:")
            counts: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetOneCountThreshold : 0
            countsNotifier: settings.camera
                            ? settings.camera.advancedSaturationSettingsModel.presetOneCountThresholdChanged : null
            onCountsSent: counts => settings.camera.advancedSaturationSettingsModel.presetOneCountThreshold = counts
            pixels: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetOnePixelThreshold : 0
            pixelsNotifier: settings.camera
                            ? settings.camera.advancedSaturationSettingsModel.presetOnePixelThresholdChanged : null
            onPixelsSent: pixels => settings.camera.advancedSaturationSettingsModel.presetOnePixelThreshold = pixels
            saturated: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetOneSaturatedPixels : 0
            saturatedNotifier: settings.camera
                               ? settings.camera.advancedSaturationSettingsModel.presetOneSaturatedPixelsChanged : null
        }

        PresetRow {
            //: Heading of a row: a preset of the camera
            heading: qsTr("Preset 2:")
            counts: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetTwoCountThreshold : 0
            countsNotifier: settings.camera
                            ? settings.camera.advancedSaturationSettingsModel.presetTwoCountThresholdChanged : null
            onCountsSent: counts => settings.camera.advancedSaturationSettingsModel.presetTwoCountThreshold = counts
            pixels: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetTwoPixelThreshold : 0
            pixelsNotifier: settings.camera
                            ? settings.camera.advancedSaturationSettingsModel.presetTwoPixelThresholdChanged : null
            onPixelsSent: pixels => settings.camera.advancedSaturationSettingsModel.presetTwoPixelThreshold = pixels
            saturated: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetTwoSaturatedPixels : 0
            saturatedNotifier: settings.camera
                               ? settings.camera.advancedSaturationSettingsModel.presetTwoSaturatedPixelsChanged : null
        }

        PresetRow {
            //: Heading of a row: a preset of the camera
            heading: qsTr("Preset 3:")
            counts: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetThreeCountThreshold : 0
            countsNotifier: settings.camera
                            ? settings.camera.advancedSaturationSettingsModel.presetThreeCountThresholdChanged : null
            onCountsSent: counts => settings.camera.advancedSaturationSettingsModel.presetThreeCountThreshold = counts
            pixels: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetThreePixelThreshold : 0
            pixelsNotifier: settings.camera
                            ? settings.camera.advancedSaturationSettingsModel.presetThreePixelThresholdChanged : null
            onPixelsSent: pixels => settings.camera.advancedSaturationSettingsModel.presetThreePixelThreshold = pixels
            saturated: settings.camera ? settings.camera.advancedSaturationSettingsModel.presetThreeSaturatedPixels : 0
            saturatedNotifier: settings.camera
                               ? settings.camera.advancedSaturationSettingsModel.presetThreeSaturatedPixelsChanged
                               : null
        }
    }
}
