import QtQuick
import QtQuick.Templates as T
import zvt.look

// A combo box for a value that can be typed or chosen from a list; the shown text need not be one of the rows.
// Replacing the list does not change `currentIndex`, and changes `currentText` only if it was the text of the row.
// Typed text is committed by Enter and when the focus leaves; Esc discards it. The caller sets Accessible.name.
FocusScope {
    id: control

    // The rows, as texts.
    property var model: []
    property int currentIndex: -1
    // The shown text: `editText` if `editable`, otherwise `currentText`.
    property string editText
    property string currentText
    property bool editable
    // Whether row 0 is the highest frame rate and is marked with its icon.
    property bool showMaxOnFirstIndexText
    property string toolTip
    // Whether the last typed text was refused. It stays in the field until Esc or further typing.
    property bool refused

    readonly property bool listOpen: _popup !== null && _popup.visible

    // Compared as one text, so that an equal list does not replace the rows under the pointer.
    readonly property string _joinedRows: (model ?? []).join("\n")
    readonly property var _rows: _joinedRows === "" ? [] : _joinedRows.split("\n")
    readonly property string _shownText: editable ? editText : currentText
    readonly property bool _differs: field.text !== currentText || field.text !== editText
    // The tool tip shows the full text if the box is too narrow for it.
    readonly property bool _cutOff: field.contentWidth > field.width - field.leftPadding - field.rightPadding
    readonly property string _hint: refused ? Numbers.faultText
                                            : (_cutOff ? field.text + (toolTip && "\n") : "") + toolTip
    // The last known text of the row at `currentIndex`.
    property string _rowText
    property bool _edited
    property string _typed
    property RowsPopup _popup: null
    readonly property AnswerMark _mark: mark.item as AnswerMark

    // The operator committed a typed text, which is in `currentText`.
    signal accepted
    signal activated(index: int)

    // Shows that the camera has answered, possibly with another value than the typed one.
    function showFadingIntWidthUpdatedIndicator() {
        _makeMark()
        _mark.showUpdated()
    }

    // Call this while handling `accepted` if the text cannot be used.
    function refuse() {
        refused = true
    }

    // Call this while handling `accepted` if the text was sent to the camera: a mark warns if the camera keeps another
    // value.
    function expectAnswer() {
        _makeMark()
        _mark.expect(currentText)
    }

    function _makeMark() {
        if (mark.active)
            return
        mark.active = true
        _mark.fieldText = Qt.binding(() => _shownText)
    }

    function _showRow() {
        if (currentIndex < 0 || currentIndex >= _rows.length)
            return
        _rowText = _rows[currentIndex]
        currentText = _rowText
    }

    function _commit() {
        currentText = field.text
        refused = false
        accepted()
        _edited = refused
    }

    function _revert() {
        refused = false
        _edited = false
    }

    function _forgetAnswer() {
        if (_mark)
            _mark.forget()
    }

    function _choose(index: int) {
        _closePopup()
        _revert()
        _forgetAnswer()
        currentText = _rows[index]
        activated(index)
    }

    function _openPopup() {
        if (_rows.length === 0)
            return
        if (!_popup) {
            _popup = popupComponent.createObject(control)
            _popup.rows = Qt.binding(() => _rows)
            _popup.currentIndex = Qt.binding(() => currentIndex)
            _popup.firstRowIcon = showMaxOnFirstIndexText ? Look.maximumIcon : ""
            _popup.chosen.connect(_choose)
        }
        _popup.view.currentIndex = currentIndex
        _popup.open()
    }

    function _closePopup() {
        if (_popup)
            _popup.close()
    }

    function _moveHighlight(rows: int) {
        if (!listOpen)
            _openPopup()
        else if (rows < 0)
            _popup.view.decrementCurrentIndex()
        else
            _popup.view.incrementCurrentIndex()
    }

    function _enter() {
        if (listOpen && _popup.view.currentIndex >= 0)
            _choose(_popup.view.currentIndex)
        else if (editable)
            _commit()
        else
            _openPopup()
    }

    implicitWidth: 160
    implicitHeight: Look.rowHeight
    opacity: enabled ? 1 : Look.disabledOpacity

    Accessible.role: Accessible.ComboBox
    Accessible.description: field.text
    Accessible.editable: editable
    Accessible.focusable: true

    onCurrentIndexChanged: _showRow()
    on_RowsChanged: {
        if (currentText === _rowText)
            _showRow()
        if (_rows.length === 0)
            _closePopup()
    }
    on_HintChanged: Hint.show(control, false, "")
    onEditableChanged: _revert()
    onActiveFocusChanged: {
        // A box that is only disabled during a read keeps its list open and the typed text.
        if (activeFocus || Fields.isDisabled(control))
            return
        if (_edited && _differs && !refused)
            _commit()
        _edited = refused
        _closePopup()
    }
    onVisibleChanged: _closePopup()
    Keys.onUpPressed: _moveHighlight(-1)
    Keys.onDownPressed: _moveHighlight(1)
    Keys.onSpacePressed: _enter()
    Keys.onReturnPressed: _enter()
    Keys.onEnterPressed: _enter()
    Keys.onEscapePressed: event => {
        event.accepted = listOpen || _edited
        if (listOpen)
            _closePopup()
        else
            _revert()
    }

    HoverHandler {
        onHoveredChanged: Hint.show(control, hovered && !control.listOpen && !(control._mark && control._mark.hovered), control._hint)
    }

    T.TextField {
        id: field

        anchors.fill: parent
        focus: true
        leftPadding: 8
        rightPadding: arrow.width + (control._mark && control._mark.visible ? mark.width + 8 : 4)
        readOnly: !control.editable
        autoScroll: control.editable
        selectByMouse: control.editable
        verticalAlignment: TextInput.AlignVCenter
        text: control._edited ? control._typed : control._shownText
        // A text field cannot elide its text, so a label shows it unless it can be edited.
        color: control.editable ? Look.fieldTextColor : "transparent"
        selectionColor: Look.kestrinAccentBlue
        selectedTextColor: Look.inverseTextColor
        Accessible.ignored: true
        onPressed: control._openPopup()
        onTextEdited: {
            Hint.show(control, false, "")
            control._typed = text
            control._edited = true
            control.refused = false
            control._forgetAnswer()
            control._closePopup()
        }
        onActiveFocusChanged: {
            if (activeFocus && control.editable && (focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason))
                selectAll()
        }

        background: Rectangle {
            radius: Look.controlRadius
            color: control.refused ? Look.errorBackColor : Look.fieldColor
            border.color: control.refused ? Look.errorFrameColor : Look.fieldFrameColor
        }
    }

    PlainLabel {
        anchors.fill: parent
        leftPadding: field.leftPadding
        rightPadding: field.rightPadding
        visible: !control.editable
        Accessible.ignored: true
        text: control.currentText
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }

    Loader {
        id: mark

        anchors.right: arrow.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        active: false
        sourceComponent: AnswerMark {}
    }

    MouseArea {
        id: arrow

        anchors.right: parent.right
        anchors.rightMargin: 1
        y: 1
        width: 22
        height: parent.height - 2
        hoverEnabled: true
        onPressed: control.forceActiveFocus(Qt.MouseFocusReason)
        onClicked: control.listOpen ? control._closePopup() : control._openPopup()

        Rectangle {
            anchors.fill: parent
            color: arrow.containsMouse ? Look.buttonHoverColor : Look.buttonColor
        }

        GlyphLabel {
            anchors.centerIn: parent
            text: Glyph.caretDown
        }
    }

    Component {
        id: popupComponent

        RowsPopup {}
    }
}
