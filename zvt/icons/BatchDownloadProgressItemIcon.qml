import QtQuick
import QtQuick.Controls

// How one movie of a batch stands: waiting, at work, failed or done.
Item {
    id: icon

    // A number of ESTATUS.
    required property int status

    readonly property bool _waiting: status === 0
    readonly property bool _failed: status === 6
    readonly property bool _succeeded: status === 7

    function _name(): string {
        if (_waiting)
            //: State of a movie in a batch
            return qsTr("Not Started")
        if (_failed)
            //: State of a movie in a batch
            return qsTr("Failed")
        //: State of a movie in a batch
        return _succeeded ? qsTr("Succeeded") : qsTr("In Progress")
    }

    implicitWidth: 20
    implicitHeight: 20
    Accessible.role: Accessible.Graphic
    Accessible.name: _name()

    Label {
        anchors.fill: parent
        Accessible.ignored: true
        text: icon._waiting ? "\uf10c" : icon._failed ? "\uf00d" : icon._succeeded ? "\uf00c" : "\uf013"
        font.family: fontAwesome.name
        font.pixelSize: 15
        color: icon._waiting ? root.dimTextColor : icon._failed ? root.errorTextColor
                             : icon._succeeded ? root.kestrinAccentGreen : root.kestrinAccentBlue
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    HoverHandler {
        id: hover
    }

    ToolTip {
        visible: hover.hovered
        delay: 600
        text: icon.Accessible.name
        palette: root.palette
        font.pixelSize: root.hintSize
    }
}
