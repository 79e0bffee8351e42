import QtQuick
import QtQuick.Templates as T

// A text label. Markup is shown literally, because names and messages come from the camera.
T.Label {
    textFormat: Text.PlainText
    color: Look.textColor
}
