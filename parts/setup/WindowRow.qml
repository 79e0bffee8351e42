import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import com.kestrin.hlxcamui 1.0
import zvt.rows

// The window as it is being edited, on a picture of the detector and in numbers. What was edited stays until it is
// applied, discarded by Esc, or overtaken by another window of the camera.
SettingRow {
    id: row

    required property ZvtCameraModel camera

    readonly property SetupGeneralModel _general: camera ? camera.setupGeneralModel : null
    readonly property bool _unsaved: camera ? camera.setupTabModel.fpaWindowSizeHasUnsavedValues : false
    // The camera's window when the editing began.
    property rect _original

    // Why the window on show cannot be applied, and the names of the fields in question.
    property string _warning
    property var _marks: []

    // An item that is to be seen.
    signal seek(item: Item)

    function clearWarning() {
        _warning = ""
        _marks = []
    }

    // Shows the camera's window again.
    function discard() {
        clearWarning()
        if (!_general)
            return
        _original = _general.window
        editor.window = _general.window
        camera.setupTabModel.fpaWindowSizeHasUnsavedValues = false
    }

    function _edit(window: rect) {
        editor.window = window
        camera.setupTabModel.fpaWindowSizeHasUnsavedValues = true
    }

    function _failing(): var {
        return rules.firstFailing(editor.window, fields.typedWidth, fields.typedHeight)
    }

    function _warn(failing: var) {
        _warning = failing ? failing.text : ""
        _marks = failing ? failing.marks : []
    }

    function _apply() {
        const failing = _failing()
        _warn(failing)
        if (failing)
            return
        _general.window = editor.window
        camera.setupTabModel.fpaWindowSizeHasUnsavedValues = false
    }

    Component.onCompleted: discard()
    Keys.onEscapePressed: event => {
        event.accepted = _unsaved
        if (_unsaved)
            discard()
    }

    WindowRules {
        id: rules
        general: row._general
    }

    Connections {
        target: row._general
        function onWindowChanged() {
            const now = row._general.window
            const then = row._original
            const same = now.x === then.x && now.y === then.y && now.width === then.width && now.height === then.height
            if (!row._unsaved || !same)
                row.discard()
        }
    }

    WindowEditor {
        id: editor

        // The page does not scroll it away from below a pointer that takes hold of it.
        readonly property int focusReason: editorHover.hovered ? Qt.MouseFocusReason : Qt.TabFocusReason

        Layout.preferredWidth: 208
        Layout.preferredHeight: 168
        Layout.alignment: Qt.AlignTop
        hFlip: row.camera ? row.camera.setupTabModel.hflipImage : false
        vFlip: row.camera ? row.camera.setupTabModel.vflipImage : false
        minSize: rules.least
        maxSize: rules.most
        increment: rules.steps
        centeredOnly: !rules.offsets
        onWindowChanged: {
            if (row.camera)
                row.camera.setupTabModel.fpaWindowSizeHasUnsavedValues = true
            if (row._warning !== "")
                row._warn(row._failing())
        }

        HoverHandler {
            id: editorHover
        }
    }

    WindowFields {
        id: fields

        Layout.alignment: Qt.AlignTop
        rules: rules
        window: Qt.rect(editor.window.x, editor.window.y, editor.window.width, editor.window.height)
        unsaved: row._unsaved
        warning: row._warning
        marks: row._marks
        onEdited: window => row._edit(window)
        onApply: row._apply()
        onSeek: item => row.seek(item)
    }
}
