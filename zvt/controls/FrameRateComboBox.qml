import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A combo box that shows one text and selects another: a value that can be typed beside a list of rows to choose from.
// Index and text are the caller's and stay as they are when the list is replaced. What was typed is committed by Enter
// and by the loss of focus; Esc takes it back. The caller gives it its Accessible.name.
FocusScope {
    id: control

    // The rows, texts all of them.
    property var model: []
    property int currentIndex: -1
    // What is on show: editText while something can be typed, currentText otherwise.
    property string editText
    property string currentText
    property bool editable
    // Row 0 is the highest frame rate and bears its sign.
    property bool showMaxOnFirstIndexText
    property string toolTip

    // A list that is replaced by an equal one is the same list: nothing moves below the pointer.
    readonly property string _joinedRows: (model ?? []).join("\n")
    readonly property var _rows: _joinedRows === "" ? [] : _joinedRows.split("\n")
    readonly property string _shownText: editable ? editText : currentText
    readonly property bool _differs: field.text !== currentText || field.text !== editText
    // The text that the present row had last.
    property string _rowText
    property bool _edited

    // What was typed stands in currentText.
    signal accepted
    signal activated(index: int)

    // Tells that the camera has answered, maybe with another value than the one typed.
    function showFadingIntWidthUpdatedIndicator() {
        fade.stop()
        updateMark.color = "white"
        updateMark.visible = true
        if (!updateHover.hovered)
            fade.start()
    }

    function _showRow() {
        if (currentIndex < 0 || currentIndex >= _rows.length)
            return
        _rowText = _rows[currentIndex]
        currentText = _rowText
    }

    function _commit() {
        currentText = field.text
        accepted()
        _edited = false
    }

    function _choose(index: int) {
        popup.close()
        _edited = false
        currentText = _rows[index]
        activated(index)
    }

    function _openPopup() {
        if (_rows.length === 0)
            return
        const top = mapToItem(null, 0, 0).y
        const below = Window.height - top - height
        popup.above = _rows.length * root.rowHeight + 2 > below && top > below
        popup.room = popup.above ? top : below
        rowList.currentIndex = currentIndex
        popup.open()
    }

    function _moveHighlight(move: var) {
        if (popup.visible)
            move()
        else
            _openPopup()
    }

    function _enter() {
        if (popup.visible && rowList.currentIndex >= 0)
            _choose(rowList.currentIndex)
        else if (editable)
            _commit()
        else
            _openPopup()
    }

    implicitWidth: 160
    implicitHeight: root.rowHeight

    Accessible.role: Accessible.ComboBox
    Accessible.description: field.text
    Accessible.editable: editable
    Accessible.focusable: true

    onCurrentIndexChanged: _showRow()
    on_RowsChanged: {
        if (currentText === _rowText)
            _showRow()
        if (_rows.length === 0)
            popup.close()
    }
    onEditableChanged: _edited = false
    onActiveFocusChanged: {
        if (activeFocus)
            return
        if (_edited && _differs)
            _commit()
        _edited = false
        // A box that is only disabled for the length of a read keeps its list open.
        if (enabled)
            popup.close()
    }
    onVisibleChanged: popup.close()
    Keys.onUpPressed: _moveHighlight(() => rowList.decrementCurrentIndex())
    Keys.onDownPressed: _moveHighlight(() => rowList.incrementCurrentIndex())
    Keys.onSpacePressed: _enter()
    Keys.onReturnPressed: _enter()
    Keys.onEnterPressed: _enter()
    Keys.onEscapePressed: event => {
        event.accepted = popup.visible || _edited
        if (popup.visible)
            popup.close()
        else
            _edited = false
    }

    Binding {
        target: field
        property: "text"
        value: control._shownText
        when: !control._edited
        restoreMode: Binding.RestoreNone
    }

    HoverHandler {
        id: boxHover
    }

    Rectangle {
        anchors.fill: parent
        radius: 2
        color: control.editable ? root.fieldColor : root.buttonColor
        opacity: control.enabled ? 1 : 0.6
        border.color: control.activeFocus ? root.kestrinAccentBlue : root.fieldFrameColor
    }

    TextField {
        id: field

        anchors.left: parent.left
        anchors.right: arrow.left
        height: parent.height
        focus: true
        leftPadding: 6
        rightPadding: updateMark.visible ? updateMark.width + 8 : 4
        topPadding: 0
        bottomPadding: 0
        readOnly: !control.editable
        autoScroll: control.editable
        selectByMouse: control.editable
        opacity: control.enabled ? 1 : 0.6
        // A field can not elide.
        color: control.editable ? palette.text : "transparent"
        Accessible.ignored: true
        onPressed: control._openPopup()
        onTextEdited: {
            control._edited = true
            popup.close()
        }
        onActiveFocusChanged: {
            if (activeFocus && focusReason !== Qt.MouseFocusReason && control.editable)
                selectAll()
        }

        background: null

        HoverHandler {
            cursorShape: control.editable ? Qt.IBeamCursor : Qt.ArrowCursor
        }

        Label {
            anchors.fill: parent
            leftPadding: parent.leftPadding
            rightPadding: parent.rightPadding
            visible: !control.editable
            Accessible.ignored: true
            text: control.currentText
            textFormat: Text.PlainText
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
        }
    }

    Label {
        id: updateMark

        objectName: "updateMark"
        anchors.right: arrow.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        visible: false
        Accessible.name: updateToolTip.text
        text: "\uf00c\u2009\uf05a"
        font.family: fontAwesome.name

        HoverHandler {
            id: updateHover
            onHoveredChanged: control.showFadingIntWidthUpdatedIndicator()
        }

        ToolTip {
            id: updateToolTip

            visible: updateHover.hovered
            delay: 600
            //: Tool tip of a mark beside an integration time
            text: qsTr("The integration time has been updated. It may have been adjusted to the nearest valid value.")
            palette: root.palette
            font.pixelSize: root.hintSize
        }
    }

    SequentialAnimation {
        id: fade

        objectName: "updateFade"

        PauseAnimation {
            duration: 1500
        }

        ColorAnimation {
            target: updateMark
            property: "color"
            to: "#666666"
            duration: 1100
        }

        PauseAnimation {
            duration: 4000
        }

        ColorAnimation {
            target: updateMark
            property: "color"
            to: "transparent"
            duration: 600
        }

        PropertyAction {
            target: updateMark
            property: "visible"
            value: false
        }
    }

    MouseArea {
        id: arrow

        anchors.right: parent.right
        width: 20
        height: parent.height
        hoverEnabled: true
        onPressed: control.forceActiveFocus(Qt.MouseFocusReason)
        onClicked: popup.visible ? popup.close() : control._openPopup()

        Rectangle {
            anchors.fill: parent
            anchors.margins: 1
            radius: 1
            color: arrow.containsMouse ? root.hoverColor : root.buttonColor
            opacity: control.enabled ? 1 : 0.6
        }

        Label {
            anchors.centerIn: parent
            Accessible.ignored: true
            text: "\uf0d7"
            font.family: fontAwesome.name
            opacity: control.enabled ? 1 : 0.6
        }
    }

    Popup {
        id: popup

        property bool above
        property real room

        objectName: "popup"
        y: above ? -height : control.height
        width: control.width
        height: Math.min(rowList.contentHeight + 2, room - 4)
        padding: 1
        closePolicy: Popup.CloseOnPressOutsideParent
        palette: root.palette
        font.pixelSize: root.textSize

        background: Rectangle {
            color: root.panelColor
            border.color: root.fieldFrameColor
        }

        ListView {
            id: rowList

            anchors.fill: parent
            clip: true
            enabled: control.enabled
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            model: control._rows
            ScrollBar.vertical: ScrollBar {
                policy: rowList.contentHeight > rowList.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
            }

            delegate: ItemDelegate {
                id: row

                required property int index
                required property string modelData

                readonly property bool current: index === control.currentIndex
                readonly property bool bearsMaximum: control.showMaxOnFirstIndexText && index === 0

                width: ListView.view.width
                implicitHeight: Math.max(root.rowHeight, implicitContentHeight + 8)
                padding: 0
                leftPadding: 5
                rightPadding: 14
                focusPolicy: Qt.NoFocus
                text: modelData
                Accessible.name: text
                onClicked: control._choose(index)
                onHoveredChanged: {
                    if (hovered)
                        rowList.currentIndex = index
                }

                contentItem: RowLayout {
                    spacing: 8

                    Label {
                        Layout.fillWidth: true
                        text: row.text
                        textFormat: Text.PlainText
                        color: row.current ? root.strongTextColor : root.textColor
                        font.weight: row.current ? Font.DemiBold : Font.Normal
                        wrapMode: Text.Wrap
                    }

                    MaxFrameRateIcon {
                        visible: row.bearsMaximum
                        color: row.current ? root.kestrinAccentBlue : root.textColor
                    }
                }
                background: Rectangle {
                    color: row.ListView.isCurrentItem ? root.hoverColor : "transparent"
                    border.width: row.ListView.isCurrentItem ? 1 : 0
                    border.color: root.kestrinAccentBlue
                }
            }
        }
    }

    ToolTip {
        // A text that is longer than the box stands here in full.
        readonly property bool cutOff: field.contentWidth > field.width - field.leftPadding - field.rightPadding

        visible: text !== "" && boxHover.hovered && !updateHover.hovered && !popup.visible
        delay: 600
        text: (cutOff ? field.text + "\n" : "") + control.toolTip
        palette: root.palette
        font.pixelSize: root.hintSize
    }
}
