import QtQuick
import zvt.look

// A mark that confirms the refresh key, since a short refresh is too quick to notice. The pages are disabled until it
// has faded.
Rectangle {
    id: mark

    required property Item pages

    // Shows the mark for 0.7 seconds.
    function play() {
        animation.restart()
    }

    visible: false
    width: 100
    height: 100
    radius: 16
    color: Look.kestrinAccentBlue
    border.width: 2
    border.color: Look.strongTextColor

    Loader {
        anchors.centerIn: parent
        active: mark.visible
        sourceComponent: GlyphLabel {
            text: Glyph.refresh
            font.pixelSize: 56
            color: Look.strongTextColor
        }
    }

    SequentialAnimation {
        id: animation

        objectName: "refreshAnimation"

        PropertyAction {
            target: mark.pages
            property: "enabled"
            value: false
        }

        PropertyAction {
            target: mark
            property: "visible"
            value: true
        }

        NumberAnimation {
            objectName: "refreshFade"
            target: mark
            property: "opacity"
            from: 1
            to: 0
            duration: 700
            easing.type: Easing.InQuad
        }

        PropertyAction {
            target: mark
            property: "visible"
            value: false
        }

        PropertyAction {
            target: mark.pages
            property: "enabled"
            value: true
        }
    }
}
