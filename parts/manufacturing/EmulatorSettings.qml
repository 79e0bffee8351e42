import QtQuick
import zvt.look
import zvt.rows

// The body of the Emulator Settings section: what an emulated camera sees, and its inputs. No model keeps these values:
// the root asks the emulator at each access, and the section asks again when it is shown or refreshed.
SectionBody {
    id: settings

    readonly property int _labelWidth: 120
    // The number of reads, on which all values depend.
    property int _reads: 1

    function readAgain() {
        _reads += 1
    }

    function _text(celsius: real): string {
        return camera && isFinite(celsius) ? camera.safeConvertFloatToLocaleString(celsius, 2) : ""
    }

    component Field: NumberRow {
        labelWidth: settings._labelWidth
        from: -Numbers.largestFloat
        to: Numbers.largestFloat
        decimals: -1
    }

    onIsShownChanged: {
        if (isShown)
            readAgain()
    }
    onConnectedChanged: readAgain()

    RowGroup {
        ToggleRow {
            labelWidth: settings._labelWidth
            text: "Record Start"
            checked: settings._reads > 0 && settings.camera ? settings.camera.recordStart : false
            onToggled: settings.camera.recordStart = checked
        }

        ToggleRow {
            labelWidth: settings._labelWidth
            text: "SSD Transfer"
            checked: settings._reads > 0 && settings.camera ? settings.camera.ssdTransfer : false
            onToggled: settings.camera.ssdTransfer = checked
        }

        ChoiceRow {
            labelWidth: settings._labelWidth
            heading: "Test Pattern"
            model: ["Unit Test", "One Blackbody", "Two Blackbodies", "Area Blackbody"]
            currentIndex: settings._reads > 0 && settings.camera ? settings.camera.testPattern : -1
            onActivated: index => settings.camera.testPattern = index
        }

        Field {
            heading: "BB1 Temp"
            modelText: settings._text(settings._reads > 0 && settings.camera ? settings.camera.bb1Temp : NaN)
            onEntered: celsius => settings.camera.bb1Temp = celsius
        }

        Field {
            heading: "BB2 Temp"
            modelText: settings._text(settings._reads > 0 && settings.camera ? settings.camera.bb2Temp : NaN)
            onEntered: celsius => settings.camera.bb2Temp = celsius
        }

        SettingRow {
            id: chamberRow

            labelWidth: settings._labelWidth
            heading: "Chamber Profile"

            EntryBox {
                implicitWidth: 280
                name: chamberRow.name
                modelText: settings._reads > 0 && settings.camera ? settings.camera.chamberProfile : ""
                onTextEntered: program => settings.camera.chamberProfile = program
            }
        }
    }
}
