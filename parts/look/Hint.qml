pragma Singleton
import QtQuick
import QtQuick.Templates as T

// The tool tip that all controls share. A control shows it while it is hovered or has keyboard focus. It is hidden when
// the control is pressed, is typed into, opens its list or changes its visibility.
QtObject {
    id: hint

    // The control whose tool tip is shown, or was shown last.
    readonly property Item owner: _toolTip ? _toolTip.parent : null

    property T.ToolTip _toolTip: null

    readonly property Component _component: T.ToolTip {
        id: toolTip

        function place() {
            const top = parent.mapToItem(null, 0, 0).y
            const fitsBelow = top + parent.height + 4 + implicitHeight <= parent.Window.height
            y = fitsBelow ? parent.height + 4 : -implicitHeight - 4
        }

        x: parent ? (parent.width - width) / 2 : 0
        width: Math.min(280, implicitWidth)
        implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        margins: 6
        leftPadding: 8
        rightPadding: 8
        topPadding: 5
        bottomPadding: 5
        delay: Look.hintDelay
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
        font.pixelSize: Look.hintSize
        onAboutToShow: place()

        contentItem: PlainLabel {
            objectName: "hintText"
            text: toolTip.text
            wrapMode: Text.Wrap
        }
        background: Rectangle {
            radius: Look.controlRadius
            color: Look.hintColor
            border.color: Look.hintFrameColor
        }
    }

    readonly property Connections _owner: Connections {
        target: hint.owner
        ignoreUnknownSignals: true
        function onPressed() {
            hint._toolTip.close()
        }
        function onTextEdited() {
            hint._toolTip.close()
        }
        function onListOpenChanged() {
            hint._toolTip.close()
        }
        function onVisibleChanged() {
            hint._toolTip.close()
        }
    }

    // Shows `text` as tool tip of `item` if `wanted` is true and the text is not empty; otherwise hides the tool tip of
    // `item`.
    function show(item: Item, wanted: bool, text: string) {
        if (wanted && text !== "") {
            if (!_toolTip)
                _toolTip = _component.createObject(hint)
            _toolTip.close()
            _toolTip.parent = item
            _toolTip.text = text
            _toolTip.open()
        } else if (owner === item) {
            _toolTip.close()
        }
    }
}
