import QtQuick
import QtQuick.Templates as T

// A tool tip, shown after a short delay inside the window.
T.ToolTip {
    id: hint

    y: parent ? parent.height + 4 : 0
    width: Math.min(280, implicitWidth)
    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 6
    leftPadding: 8
    rightPadding: 8
    topPadding: 5
    bottomPadding: 5
    delay: 600
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    background: Rectangle {
        radius: 3
        color: FinderLook.hintColor
        border.color: FinderLook.hintFrameColor
    }
    contentItem: Text {
        text: hint.text
        textFormat: Text.PlainText
        color: FinderLook.textColor
        font.pixelSize: FinderLook.hintSize
        wrapMode: Text.Wrap
    }
}
