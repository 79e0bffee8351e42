import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look

// The state of one movie of a batch: waiting, in progress, failed or done.
Item {
    id: icon

    // A value of ESTATUS.
    required property int status

    readonly property bool _waiting: status === BatchDownloadEntry.STATUS_NOT_STARTED
    readonly property bool _failed: status === BatchDownloadEntry.STATUS_FAILED
    readonly property bool _succeeded: status === BatchDownloadEntry.STATUS_SUCCEEDED

    function _name(): string {
        if (_waiting)
            //: State of a movie in a batch
            return qsTr("Not Started")
        if (_failed)
            //: State of a movie in a batch
            return qsTr("Failed")
        if (_succeeded)
            //: State of a movie in a batch
            return qsTr("Succeeded")
        //: State of a movie in a batch
        return qsTr("In Progress")
    }

    implicitWidth: 20
    implicitHeight: 20
    Accessible.role: Accessible.Graphic
    Accessible.name: _name()

    GlyphLabel {
        anchors.fill: parent
        text: icon._waiting ? Glyph.circle : icon._failed ? Glyph.cross : icon._succeeded ? Glyph.apply : Glyph.busy
        color: icon._waiting ? Look.dimTextColor : icon._failed ? Look.errorTextColor
                             : icon._succeeded ? Look.kestrinAccentGreen : Look.kestrinAccentBlue
    }

    HoverHandler {
        onHoveredChanged: Hint.show(icon, hovered, icon.Accessible.name)
    }
}
