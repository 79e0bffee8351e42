import QtQuick
import QtQuick.Layouts
import zvt.look

// A box with a property of the model in the current row.
Rectangle {
    id: fact

    required property string heading
    required property string value

    implicitHeight: 48
    Layout.fillWidth: true
    Layout.preferredWidth: 1
    radius: Look.controlRadius
    color: Look.cardColor
    border.color: Look.rectangleOutlineColor

    Accessible.role: Accessible.StaticText
    Accessible.name: heading
    Accessible.description: value

    PlainLabel {
        x: 12
        y: 5
        Accessible.ignored: true
        text: fact.heading
        color: Look.headerTextColor
        font.pixelSize: Look.hintSize
    }

    PlainLabel {
        id: valueLabel

        x: 12
        y: 23
        width: fact.width - 24
        Accessible.ignored: true
        text: fact.value
        color: Look.strongTextColor
        elide: Text.ElideRight
    }

    HoverHandler {
        onHoveredChanged: Hint.show(fact, hovered && valueLabel.truncated, fact.value)
    }
}
