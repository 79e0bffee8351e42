import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.rows

// Starts the auto focus, and sets its region of interest.
RowGroup {
    id: rows

    required property ZvtCameraModel camera
    required property bool unlocked

    SettingRow {
        WrappingButton {
            Layout.preferredWidth: 140
            enabled: rows.unlocked
            //: Finds the focus once
            text: qsTr("Auto Focus")
            onClicked: rows.camera.setupTabModel.autoFocus()
        }
    }

    Heading {
        //: Heading of the rows for the region that the auto focus uses
        text: qsTr("Auto Focus ROI Settings")
    }

    ChoiceRow {
        //: Side of the auto focus region
        heading: qsTr("Size (Pixels):")
        //: Side of the auto focus region
        model: [qsTr("XS (16x16)"),
                //: Side of the auto focus region
                qsTr("S (32x32)"),
                //: Side of the auto focus region
                qsTr("M (64x64)"),
                //: Side of the auto focus region
                qsTr("L (128x128)"),
                //: Side of the auto focus region
                qsTr("XL (256x256)"),
                //: Side of the auto focus region
                qsTr("XXL (512x512)")]
        currentIndex: rows.camera ? rows.camera.setupTabModel.selectedAFRoiSizeIndex : -1
        onActivated: index => rows.camera.setupTabModel.selectedAFRoiSizeIndex = index
    }

    ChoiceRow {
        //: Place of the auto focus region
        heading: qsTr("Position:")
        //: Place of the auto focus region
        model: [qsTr("Center"),
                //: Place of the auto focus region
                qsTr("Top Left"),
                //: Place of the auto focus region
                qsTr("Top Right"),
                //: Place of the auto focus region
                qsTr("Bottom Left"),
                //: Place of the auto focus region
                qsTr("Bottom Right")]
        currentIndex: rows.camera ? rows.camera.setupTabModel.selectedAFRoiPositionIndex : -1
        onActivated: index => rows.camera.setupTabModel.selectedAFRoiPositionIndex = index
    }

    ChoiceRow {
        //: Whether the auto focus region is drawn into the image
        heading: qsTr("Show on Video Output:")
        //: When the auto focus region is drawn into the image
        model: [qsTr("Always"),
                //: When the auto focus region is drawn into the image
                qsTr("Only When Focusing"),
                //: When the auto focus region is drawn into the image
                qsTr("Never")]
        currentIndex: rows.camera ? rows.camera.setupTabModel.selectedAFRoiShowWhenIndex : -1
        onActivated: index => rows.camera.setupTabModel.selectedAFRoiShowWhenIndex = index
    }
}
