import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The filters of the picture over time: of the gain control (filter rate and dampening) and of the pixels.
RowGroup {
    id: rows

    required property ZvtCameraModel camera
    // Whether the values are being read.
    required property bool busy
    // The number of reads. Controls show the values of the model again after each read.
    required property int reads

    readonly property VideoTabModel video: camera ? camera.videoTabModel : null
    // What has not been read is shown as off.
    readonly property bool _wasRead: video !== null && reads > 0
    readonly property bool _useRate: _wasRead && video.useFilterRate
    readonly property bool _useDampening: _wasRead && video.useFilterDampening
    readonly property bool _locked: _wasRead && video.lockFilterDampening
    readonly property bool _hasTemporalFilter: camera ? camera.cameraCapabilitiesModel.hasTemporalFilter : false

    function _text(number: real, decimals: int): string {
        return camera && reads > 0 ? camera.safeConvertFloatToLocaleString(number, decimals) : ""
    }

    SettingRow {
        id: rateRow

        //: Heading of a switch and a field: limits how fast the automatic gain control changes
        heading: qsTr("Filter Rate:")

        Toggle {
            Accessible.name: rateRow.name
            enabled: !rows.busy
            // Depends on `reads`, so that a refused choice is replaced after the next read.
            checked: rows.reads > 0 && rows._useRate
            onToggled: rows.video.useFilterRate = checked
        }

        NumberBox {
            enabled: rows._useRate && (!rows.busy || activeFocus)
            //: Accessible name of a field: see "Filter Rate"
            name: qsTr("Filter Rate Value")
            to: 20
            decimals: 1
            modelText: rows._text(rows.video ? rows.video.filterRate : 0, 1)
            onEntered: rate => rows.video.filterRate = rate
        }
    }

    SettingRow {
        id: dampeningRow

        //: Heading of a switch and its settings: dampens changes of the automatic gain control
        heading: qsTr("Dampening:")

        Toggle {
            Accessible.name: dampeningRow.name
            enabled: !rows.busy
            // As above.
            checked: rows.reads > 0 && rows._useDampening
            onToggled: rows.video.useFilterDampening = checked
        }

        Radio {
            enabled: rows._useDampening && !rows.busy
            //: Dampening: the gain does not change
            text: qsTr("Locked")
            // As above.
            checked: rows.reads > 0 && rows._locked
            onToggled: rows.video.lockFilterDampening = true
        }

        Radio {
            enabled: rows._useDampening && !rows.busy
            //: Dampening: by the number in the field beside
            text: qsTr("User Defined")
            // As above.
            checked: rows.reads > 0 && !rows._locked
            onToggled: rows.video.lockFilterDampening = false
        }

        NumberBox {
            enabled: rows._useDampening && !rows._locked && (!rows.busy || activeFocus)
            //: Accessible name of a field: see "Dampening"
            name: qsTr("Dampening Value")
            to: 1
            decimals: 2
            modelText: rows._text(rows.video ? rows.video.filterDampening : 0, 2)
            onEntered: dampening => rows.video.filterDampening = dampening
        }
    }

    SettingRow {
        id: temporalRow

        visible: rows._hasTemporalFilter
        //: A filter of the pixels over several frames
        heading: qsTr("Temporal Filter:")

        Choice {
            id: temporalBox

            Layout.preferredWidth: 180
            Accessible.name: temporalRow.name
            enabled: !rows.busy || listOpen
            //: Temporal filter
            model: [qsTr("None"),
                    //: Temporal filter: over four frames
                    qsTr("4-Tap"),
                    //: Temporal filter: over four frames, where the pixel is close to their mean
                    qsTr("4-Tap Adaptive")]
            currentIndex: rows._wasRead ? rows.video.selectedTemporalFilterIndex : -1
            onActivated: index => rows.video.selectedTemporalFilterIndex = index
        }

        PlainLabel {
            Accessible.ignored: true
            opacity: thresholdBox.enabled ? 1 : Look.disabledOpacity
            //: Of the temporal filter
            text: qsTr("Threshold:")
        }

        NumberBox {
            id: thresholdBox

            enabled: (temporalBox.currentIndex === 1 || temporalBox.currentIndex === 2) && (!rows.busy || activeFocus)
            //: Accessible name of a field: of the temporal filter
            name: qsTr("Threshold")
            to: 65535
            modelText: rows._wasRead ? rows.video.temporalFilterThreshold : ""
            onEntered: counts => rows.video.temporalFilterThreshold = counts
        }
    }
}
