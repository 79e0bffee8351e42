import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// Edits the image window on a picture of the detector and in number fields. Changes stay until they are applied, until
// Esc discards them, or until the camera reports another window.
SettingRow {
    id: row

    required property ZvtCameraModel camera

    readonly property SetupGeneralModel _general: camera ? camera.setupGeneralModel : null
    readonly property bool _unsaved: camera ? camera.setupTabModel.fpaWindowSizeHasUnsavedValues : false
    // The camera's window when the editing began.
    property rect _original

    // Why the shown window cannot be applied, and the names of the fields concerned.
    property string _warning
    property var _markedFields: []

    // Asks the page to scroll the item into view.
    signal scrollTo(item: Item)

    function clearWarning() {
        _warning = ""
        _markedFields = []
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

    function _brokenRule(): var {
        return rules.firstBrokenRule(editor.window, fields.typedWidth, fields.typedHeight)
    }

    function _warn(brokenRule: var) {
        _warning = brokenRule ? brokenRule.text : ""
        _markedFields = brokenRule ? brokenRule.fieldNames : []
    }

    function _apply() {
        const brokenRule = _brokenRule()
        _warn(brokenRule)
        if (brokenRule)
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

    WindowPicture {
        id: editor

        Layout.preferredWidth: 208
        Layout.preferredHeight: 168
        Layout.alignment: Qt.AlignTop
        hFlip: row.camera ? row.camera.setupTabModel.hflipImage : false
        vFlip: row.camera ? row.camera.setupTabModel.vflipImage : false
        minSize: rules.minSize
        maxSize: rules.maxSize
        increment: rules.increment
        centeredOnly: !rules.hasOffsets
        onWindowChanged: {
            if (row.camera)
                row.camera.setupTabModel.fpaWindowSizeHasUnsavedValues = true
            if (row._warning !== "")
                row._warn(row._brokenRule())
        }
    }

    WindowFields {
        id: fields

        Layout.alignment: Qt.AlignTop
        rules: rules
        window: Qt.rect(editor.window.x, editor.window.y, editor.window.width, editor.window.height)
        unsaved: row._unsaved
        warning: row._warning
        markedFields: row._markedFields
        onEdited: window => row._edit(window)
        onApply: row._apply()
        onScrollTo: item => row.scrollTo(item)
    }
}
