import QtQuick
import QtQuick.Templates as T

// A text of the page. Markup in it is shown as it is, since names and messages come from the camera.
T.Label {
    textFormat: Text.PlainText
    color: Look.textColor
}
