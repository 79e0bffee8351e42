import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.rows

// Where corrections are used, and the automatic correction.
RowGroup {
    id: rows

    required property ZvtCameraModel camera

    readonly property bool _hasMethods: camera ? camera.cameraCapabilitiesModel.hasBadPixelCorrection : false
    readonly property bool _autoNuc: camera ? camera.correctionTabModel.autoNucEnabled : false
    readonly property real _deltaTemp: camera ? camera.correctionTabModel.autoNucDeltaTemp : 0
    readonly property real _deltaTime: camera ? camera.correctionTabModel.autoNucDeltaTime : 0
    // Both come from one call. Both are 0 until it has succeeded.
    readonly property bool _autoNucWasRead: _deltaTemp !== 0 || _deltaTime !== 0

    // A switch and a field for one reason to correct automatically.
    component DeltaRow: RowLayout {
        id: deltaRow

        property alias text: toggle.text
        property alias checked: toggle.checked
        property alias modelText: box.modelText
        property alias from: box.from
        property alias to: box.to
        property alias decimals: box.decimals

        signal toggled(on: bool)
        signal entered(number: real)

        spacing: 8
        enabled: rows._autoNuc || box.activeFocus
        Layout.fillWidth: true
        Layout.leftMargin: 24

        Toggle {
            id: toggle

            Layout.preferredWidth: 376
            onToggled: deltaRow.toggled(checked)
        }

        NumberBox {
            id: box

            name: toggle.text
            onEntered: number => deltaRow.entered(number)
        }

        Item {
            Layout.fillWidth: true
        }
    }

    // The choice is neither read from the camera nor sent to it.
    ChoiceRow {
        visible: rows._hasMethods
        labelWidth: 190
        //: How bad pixels are replaced
        heading: qsTr("Bad Pixel Correction Method:")
        //: A method that replaces bad pixels
        model: [qsTr("Two Point Gradient"),
                //: A method that replaces bad pixels
                qsTr("Nearest Neighbor"),
                //: No bad pixels are replaced
                qsTr("None")]
    }

    RowLayout {
        spacing: 24
        Layout.fillWidth: true

        Toggle {
            //: A switch: corrects the images of the video outputs
            text: qsTr("NUC Video Output")
            checked: rows.camera ? rows.camera.correctionTabModel.nucAnalogOutput : false
            onToggled: rows.camera.correctionTabModel.nucAnalogOutput = checked
        }

        Toggle {
            //: A switch: corrects the digital images
            text: qsTr("NUC Data Output")
            checked: rows.camera ? rows.camera.correctionTabModel.nucDigitalOutput : false
            onToggled: rows.camera.correctionTabModel.nucDigitalOutput = checked
        }
    }

    Toggle {
        //: A switch
        text: qsTr("Show Bad Pixels")
        checked: rows.camera ? rows.camera.correctionTabModel.showBadPixels : false
        onToggled: rows.camera.correctionTabModel.showBadPixels = checked
    }

    RowLayout {
        spacing: 24
        Layout.fillWidth: true

        Toggle {
            //: A switch of automatic corrections
            text: qsTr("Auto NUC")
            checked: rows._autoNuc
            onToggled: rows.camera.correctionTabModel.autoNucEnabled = checked
        }

        WrappingButton {
            //: Starts an automatic correction
            text: qsTr("Perform NUC Now")
            onClicked: rows.camera.correctionTabModel.autoNucNow()
        }
    }

    DeltaRow {
        //: A switch of automatic corrections
        text: qsTr("If front panel temp changes by this amount in °C")
        checked: rows.camera ? rows.camera.correctionTabModel.autoNucUseDeltaTemp : false
        modelText: rows.camera && rows._autoNucWasRead ? rows.camera.safeConvertFloatToLocaleString(rows._deltaTemp, 2) : ""
        from: 0.1
        to: 2000
        decimals: -1
        onToggled: on => rows.camera.correctionTabModel.autoNucUseDeltaTemp = on
        onEntered: celsius => rows.camera.correctionTabModel.autoNucDeltaTemp = celsius
    }

    DeltaRow {
        //: A switch of automatic corrections
        text: qsTr("Periodically, in minutes")
        checked: rows.camera ? rows.camera.correctionTabModel.autoNucUseDeltaTime : false
        modelText: rows._autoNucWasRead ? rows._deltaTime : ""
        from: 1
        to: 604800
        onToggled: on => rows.camera.correctionTabModel.autoNucUseDeltaTime = on
        onEntered: minutes => rows.camera.correctionTabModel.autoNucDeltaTime = minutes
    }
}
