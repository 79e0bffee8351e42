import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// The automatic gain control (AGC): its mode, and the settings of that mode.
RowGroup {
    id: rows

    required property VideoTabModel video
    // Whether the values are being read.
    required property bool busy
    // The number of reads. Controls show the values of the model again after each read.
    required property int reads

    readonly property int _mode: video ? video.agcMode : -1
    readonly property bool _hasPlateau: _mode === VideoTabModel.AGC_PLATEAU || _mode === VideoTabModel.AGC_DDE
    // Plateau and sharpness are at least 1 once they have been read.
    readonly property int _plateau: video ? video.plateauP : 0
    readonly property int _sharpness: video ? video.ddeSharpness : 0

    readonly property int _low: video ? video.manualLow : 0
    readonly property int _high: video ? video.manualHigh : 0
    readonly property int _mostCounts: 16383

    // A field for a number of counts of the detector.
    component CountsBox: NumberBox {
        enabled: !rows.busy || activeFocus
        to: rows._mostCounts
    }

    Heading {
        //: Heading of a group of settings: the automatic gain control
        text: qsTr("AGC")
    }

    ChoiceRow {
        enabled: !rows.busy || listOpen
        //: Mode of the automatic gain control
        heading: qsTr("AGC Mode:")
        model: rows.video ? rows.video.agcModeStrings : []
        // Depends on `model`, since a new list selects its first row.
        currentIndex: model && rows.video && rows.reads > 0 ? rows.video.agcModeIndex : -1
        onActivated: index => rows.video.agcModeIndex = index
    }

    SettingRow {
        id: plateauRow

        visible: rows._hasPlateau
        //: Of the automatic gain control: the number of pixels to which the bins of the histogram are limited
        heading: qsTr("Plateau P Variable:")

        ValueSlider {
            Accessible.name: plateauRow.name
            Layout.fillWidth: true
            Layout.maximumWidth: 300
            enabled: !rows.busy
            from: 1
            to: rows._mostCounts
            modelValue: rows._plateau
            reads: rows.reads
            onMoveTo: plateau => rows.video.plateauP = plateau
        }

        CountsBox {
            //: Accessible name of a field: see "Plateau P Variable"
            name: qsTr("Plateau P Value")
            from: 1
            modelText: rows._plateau > 0 ? rows._plateau : ""
            onEntered: plateau => rows.video.plateauP = plateau
        }
    }

    SettingRow {
        id: sharpnessRow

        visible: rows._mode === VideoTabModel.AGC_DDE
        //: The strength of the detail enhancement (DDE)
        heading: qsTr("DDE Sharpness:")

        ValueSlider {
            Accessible.name: sharpnessRow.name
            Layout.fillWidth: true
            Layout.maximumWidth: 300
            enabled: !rows.busy
            from: 1
            to: 7
            modelValue: rows._sharpness
            reads: rows.reads
            onMoveTo: sharpness => rows.video.ddeSharpness = sharpness
        }

        Choice {
            Layout.preferredWidth: 92
            enabled: !rows.busy || listOpen
            //: Accessible name of a list of numbers: see "DDE Sharpness"
            Accessible.name: qsTr("DDE Sharpness Value")
            model: ["1", "2", "3", "4", "5", "6", "7"]
            currentIndex: rows.reads > 0 ? rows._sharpness - 1 : -1
            onActivated: index => rows.video.ddeSharpness = index + 1
        }
    }

    SettingRow {
        visible: rows._mode === VideoTabModel.AGC_MANUAL
        //: The range of counts that the picture shows from black to white
        heading: qsTr("Manual Range:")

        CountsBox {
            //: Accessible name of a field: the counts that the picture shows as black
            name: qsTr("Manual Low Value")
            modelText: rows.reads > 0 ? rows._low : ""
            onEntered: counts => rows.video.manualLow = counts
        }

        SpanSlider {
            Layout.fillWidth: true
            Layout.maximumWidth: 300
            enabled: !rows.busy
            to: rows._mostCounts
            low: rows._low
            high: rows._high
            reads: rows.reads
            //: Accessible name of a handle: the counts that the picture shows as black
            lowName: qsTr("Manual Low")
            //: Accessible name of a handle: the counts that the picture shows as white
            highName: qsTr("Manual High")
            onMoveLowTo: counts => rows.video.manualLow = counts
            onMoveHighTo: counts => rows.video.manualHigh = counts
        }

        CountsBox {
            //: Accessible name of a field: the counts that the picture shows as white
            name: qsTr("Manual High Value")
            modelText: rows.reads > 0 ? rows._high : ""
            onEntered: counts => rows.video.manualHigh = counts
        }
    }
}
