import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// Opens and closes the cover of the lens.
ChoiceRow {
    id: row

    required property ZvtCameraModel camera

    // 0 open, 1 closed, 2 unknown.
    readonly property int _state: camera ? camera.setupTabModel.selectedLensCoverStateIndex : 2

    //: Heading of a choice
    heading: qsTr("Lens Cover:")
    //: Lens cover
    model: [qsTr("Open"),
            //: Lens cover
            qsTr("Closed")]
    currentIndex: _state
    //: Lens cover
    displayText: _state < 2 ? model[_state] : qsTr("Unknown")
    onActivated: index => camera.setupTabModel.selectedLensCoverStateIndex = index

    GlyphLabel {
        id: unknownMark

        visible: row._state === 2
        opacity: enabled ? 1 : Look.disabledOpacity
        text: Glyph.exclamation
        font.pixelSize: 16
        color: Look.kestrinAccentOrange
        Accessible.ignored: false
        //: Tool tip of an exclamation mark
        Accessible.name: qsTr("The camera can not tell where the lens cover is")

        HoverHandler {
            onHoveredChanged: Hint.show(unknownMark, hovered, unknownMark.Accessible.name)
        }
    }
}
