import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.rows

// The kind of correction that is made, and what it finds and collects.
RowGroup {
    id: rows

    required property ZvtCameraModel camera
    // Whether the preset has a correction, and whether it has a factory calibration.
    required property bool hasNuc
    required property bool hasCal

    readonly property int _type: camera ? camera.nucProcess.nucType : NucProcessModel.TYPE_TWO_POINT

    // Enter was pressed in a field.
    signal confirmed

    Heading {
        //: A group of choices: one-point, two-point or offset update
        text: qsTr("Correction Type")
    }

    ColumnLayout {
        spacing: 0

        Radio {
            Layout.fillWidth: true
            visible: rows.camera ? rows.camera.manufacturingMode : false
            enabled: !rows.hasCal
            checked: rows._type === NucProcessModel.TYPE_ONE_POINT
            //: A kind of correction
            text: qsTr("One-Point")
            onToggled: rows.camera.nucProcess.nucType = NucProcessModel.TYPE_ONE_POINT
        }

        Radio {
            Layout.fillWidth: true
            enabled: !rows.hasCal
            checked: rows._type === NucProcessModel.TYPE_TWO_POINT
            //: A kind of correction
            text: qsTr("Two-Point")
            onToggled: rows.camera.nucProcess.nucType = NucProcessModel.TYPE_TWO_POINT
        }

        Radio {
            Layout.fillWidth: true
            enabled: rows.hasNuc
            checked: rows._type === NucProcessModel.TYPE_UPDATE_OFFSET
            //: A kind of correction: only the offsets are measured again
            text: qsTr("Offset Update")
            onToggled: rows.camera.nucProcess.nucType = NucProcessModel.TYPE_UPDATE_OFFSET
        }
    }

    ColumnLayout {
        spacing: 0

        WrappingCheckBox {
            Layout.fillWidth: true
            enabled: rows._type === NucProcessModel.TYPE_TWO_POINT
            checked: rows.camera ? rows.camera.nucProcess.detectBadPixels : false
            //: Whether bad pixels are looked for
            text: qsTr("Bad Pixel Correction")
            onToggled: rows.camera.nucProcess.detectBadPixels = checked
        }

        WrappingCheckBox {
            Layout.fillWidth: true
            enabled: rows._type !== NucProcessModel.TYPE_UPDATE_OFFSET
            checked: rows.camera ? rows.camera.nucProcess.useFactoryBadPixels : false
            //: Whether the bad pixels of the factory's list count as bad too
            text: qsTr("Use Factory Bad Pixels")
            onToggled: rows.camera.nucProcess.useFactoryBadPixels = checked
        }
    }

    NucNumberRow {
        //: How many frames are averaged for each source
        heading: qsTr("Number of frames")
        modelText: rows.camera ? rows.camera.nucProcess.numFrames : ""
        onEntered: number => rows.camera.nucProcess.numFrames = number
        onConfirmed: rows.confirmed()
    }
}
