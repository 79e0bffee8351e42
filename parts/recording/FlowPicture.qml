import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look

// The icons of the flow diagram with their names, and the arrows between them. They leave free the first and the last
// column, and the last row.
GridLayout {
    id: picture

    required property FlowLights lights

    // Larger than other icons, so that the path of the images is recognised at a glance.
    component Icon: GlyphLabel {
        font.pixelSize: 32
        Layout.row: 1
        Layout.rowSpan: 2
        Layout.preferredWidth: 60
    }

    // A translated name may be wider than its icon: it then extends below the arrows.
    component Name: PlainLabel {
        horizontalAlignment: Text.AlignHCenter
        Layout.row: 3
        Layout.preferredWidth: 60
        Layout.alignment: Qt.AlignTop
    }

    columns: 9
    columnSpacing: 14
    rowSpacing: 4

    RamPlaybackArrow {
        objectName: "ramPlaybackArrow"
        color: picture.lights.color(FlowLights.RamPlayback)
        opacity: picture.lights.opacity(FlowLights.RamPlayback)
        Layout.row: 0
        Layout.column: 3
        Layout.columnSpan: 5
    }

    Icon {
        objectName: "ssdIcon"
        text: Glyph.drive
        color: picture.lights.color(FlowLights.Ssd)
        opacity: picture.lights.opacity(FlowLights.Ssd)
        Layout.column: 1
    }

    Name {
        //: The solid-state drive of the camera
        text: qsTr("SSD")
        opacity: picture.lights.opacity(FlowLights.Ssd)
        Layout.column: 1
    }

    LongRightArrow {
        objectName: "ssdToRamArrow"
        color: picture.lights.color(FlowLights.SsdToRam)
        opacity: picture.lights.opacity(FlowLights.SsdToRam)
        Layout.row: 1
        Layout.column: 2
    }

    LongLeftArrow {
        objectName: "ramToSsdArrow"
        color: picture.lights.color(FlowLights.RamToSsd)
        opacity: picture.lights.opacity(FlowLights.RamToSsd)
        Layout.row: 2
        Layout.column: 2
    }

    Icon {
        objectName: "ramIcon"
        text: Glyph.memory
        color: picture.lights.color(FlowLights.Ram)
        Layout.column: 3
    }

    Name {
        //: The memory of the camera
        text: qsTr("RAM")
        Layout.column: 3
    }

    LongLeftArrow {
        objectName: "camToRamArrow"
        color: picture.lights.color(FlowLights.CamToRam)
        opacity: picture.lights.opacity(FlowLights.CamToRam)
        Layout.row: 1
        Layout.column: 4
        Layout.rowSpan: 2
    }

    Icon {
        objectName: "detectorIcon"
        text: Glyph.detector
        color: picture.lights.color(FlowLights.Detector)
        Layout.column: 5
    }

    Name {
        //: The detector of the camera
        text: qsTr("Detector")
        Layout.column: 5
    }

    LongRightArrow {
        objectName: "camToAppArrow"
        color: picture.lights.color(FlowLights.CamToApp)
        Layout.row: 1
        Layout.column: 6
        Layout.rowSpan: 2
    }

    Icon {
        objectName: "desktopIcon"
        text: Glyph.computer
        color: picture.lights.color(FlowLights.Desktop)
        Layout.column: 7
    }

    Name {
        //: The computer with this program
        text: qsTr("Quarry\nDesk")
        Layout.column: 7
    }
}
