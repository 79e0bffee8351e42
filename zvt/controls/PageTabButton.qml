import QtQuick
import QtQuick.Templates as T
import zvt.look

// A tab button of the main page. Its text wraps and shrinks to fit. A tab that is not available is hidden but keeps its
// index.
T.TabButton {
    id: tab

    property bool available: true

    // The focus ring is inside, because the button touches the edge of the window.
    readonly property int ringOutset: -3

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    visible: available
    padding: 4

    Accessible.name: text

    Keys.onReturnPressed: toggle()
    Keys.onEnterPressed: toggle()

    contentItem: PlainLabel {
        text: tab.text
        font.weight: tab.checked ? Font.DemiBold : Font.Normal
        color: tab.checked ? Look.strongTextColor : Look.cameraBarForegroundColor
        opacity: tab.enabled ? 1 : Look.disabledOpacity
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        elide: Text.ElideNone
        fontSizeMode: width > 0 && implicitWidth > width ? Text.Fit : Text.FixedSize
        minimumPixelSize: 8
    }
    background: Rectangle {
        color: tab.checked ? Look.backColor : tab.hovered ? Look.rowHoverColor : "transparent"

        Rectangle {
            visible: tab.checked
            width: parent.width
            height: 2
            color: Look.kestrinAccentBlue
        }
    }
}
