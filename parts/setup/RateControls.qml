import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look
import zvt.rows

// A box in which a rate in hertz is typed or chosen, and a button that sets the highest rate.
RowLayout {
    id: controls

    required property ZvtCameraModel camera
    required property string name
    required property var rates
    required property int rateIndex
    required property real rate
    property int boxWidth: 112
    property alias toolTip: box.toolTip
    property alias showMaxOnFirstIndexText: box.showMaxOnFirstIndexText

    signal indexChosen(index: int)
    signal rateTyped(rate: real)

    function _text(rate: real): string {
        return camera ? camera.safeConvertFloatToLocaleString(rate, 2) : ""
    }

    spacing: 8

    FrameRateComboBox {
        id: box

        Layout.preferredWidth: controls.boxWidth
        Accessible.name: controls.name
        model: controls.rates.map(rate => controls._text(rate))
        currentIndex: controls.rateIndex
        editable: true
        editText: controls.rate === 0 ? "" : controls._text(controls.rate)
        onActivated: index => controls.indexChosen(index)
        onAccepted: {
            const rate = Numbers.parse(currentText, -1)
            if (isNaN(rate)) {
                refuse()
                return
            }
            expectAnswer()
            controls.rateTyped(rate)
        }
    }

    Unit {
        //: Hertz
        text: qsTr("Hz")
    }

    MaxFrameRateButton {
        enabled: controls.rates.length > 0
        highlighted: controls.rateIndex === 0
        //: Accessible name; %1 is the name of a rate
        Accessible.name: qsTr("Maximum %1").arg(controls.name)
        onClicked: controls.indexChosen(0)
    }
}
