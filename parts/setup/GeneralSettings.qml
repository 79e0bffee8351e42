import QtQuick
import QtQuick.Layouts
import zvt.rows

// The body of the General Setup section.
SectionBody {
    id: settings

    function clearWarnings() {
        window.clearWarning()
    }

    controlHeld: lens.controlHeld

    RowGroup {
        Layout.alignment: Qt.AlignTop

        PresetSettings {
            camera: settings.camera
            connected: settings.connected
        }

        LensSettings {
            id: lens

            camera: settings.camera
            connected: settings.connected
            isShown: settings.isShown
        }
    }

    RowGroup {
        Layout.alignment: Qt.AlignTop

        CameraSettings {
            camera: settings.camera
        }

        WindowSettings {
            id: window

            camera: settings.camera
            onScrollTo: item => settings.scrollTo(item)
        }
    }
}
