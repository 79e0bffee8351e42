import QtQuick
import QtQuick.Layouts
import zvt.rows

// The body of the section of general settings.
SectionBody {
    id: settings

    function clearWarnings() {
        window.clearWarning()
    }

    holding: lens.holding

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
            onSeek: item => settings.seek(item)
        }
    }
}
