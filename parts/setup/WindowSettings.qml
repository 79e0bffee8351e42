import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.look
import zvt.rows

// The image window on the detector, and how the image is mirrored.
RowGroup {
    id: settings

    required property ZvtCameraModel camera

    // Asks the page to scroll the item into view.
    signal scrollTo(item: Item)

    function clearWarning() {
        windowRow.clearWarning()
    }

    Heading {
        //: Heading of the rows for the image window on the detector
        text: qsTr("FPA Window Settings")
    }

    ChoiceRow {
        //: Width and height of the image
        heading: qsTr("Image Size:")
        model: settings.camera ? settings.camera.setupGeneralModel.windowSizeStrings : []
        currentIndex: settings.camera ? settings.camera.setupGeneralModel.windowSizeIndex : -1
        onActivated: index => {
            settings.camera.setupGeneralModel.windowSizeIndex = index
            windowRow.discard()
        }

        GlyphButton {
            glyph: Glyph.flipHorizontally
            //: Tool tip: mirrors the image left to right
            toolTip: qsTr("Flip Horizontally")
            highlighted: settings.camera ? settings.camera.setupTabModel.hflipImage : false
            Accessible.checkable: true
            Accessible.checked: highlighted
            onClicked: settings.camera.setupTabModel.hflipImage = !settings.camera.setupTabModel.hflipImage
        }

        GlyphButton {
            glyph: Glyph.flipVertically
            //: Tool tip: mirrors the image top to bottom
            toolTip: qsTr("Flip Vertically")
            highlighted: settings.camera ? settings.camera.setupTabModel.vflipImage : false
            Accessible.checkable: true
            Accessible.checked: highlighted
            onClicked: settings.camera.setupTabModel.vflipImage = !settings.camera.setupTabModel.vflipImage
        }
    }

    WindowRow {
        id: windowRow

        visible: settings.camera ? settings.camera.setupGeneralModel.canWindowCustom : false
        camera: settings.camera
        onScrollTo: item => settings.scrollTo(item)
    }
}
