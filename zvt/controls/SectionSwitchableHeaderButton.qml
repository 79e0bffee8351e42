import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import zvt.look

// The header of a section that can be collapsed. The section handles the click: it reads its models, then expands.
T.AbstractButton {
    id: header

    property string sectionTitle
    property bool sectionExpanded
    property bool sectionLoading

    signal refreshSection

    implicitWidth: 240
    implicitHeight: 34
    opacity: enabled ? 1 : Look.disabledOpacity
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    // Not shown by a label of the template. It is the accessible name, without an object for it.
    text: sectionTitle

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    // The looks are created when the header is first visible, since a page that is never shown does not need them.
    contentItem: Loader {
        active: header.visible || status === Loader.Ready
        sourceComponent: Rectangle {
            radius: Look.controlRadius
            color: header.hovered ? Look.rowHoverColor : Look.panelColor

            RowLayout {
                anchors.fill: parent
                anchors.leftMargin: 12
                anchors.rightMargin: 4
                spacing: 10

                GlyphLabel {
                    Layout.preferredWidth: 10
                    text: header.sectionExpanded ? Glyph.caretDown : Glyph.caretRight
                    color: header.sectionExpanded ? Look.kestrinAccentBlue : Look.dimTextColor
                }

                PlainLabel {
                    Layout.fillWidth: true
                    Accessible.ignored: true
                    text: header.sectionTitle
                    font.weight: Font.DemiBold
                    fontSizeMode: width > 0 && implicitWidth > width ? Text.HorizontalFit : Text.FixedSize
                    minimumPixelSize: 8
                    color: header.sectionExpanded ? Look.strongTextColor : Look.textColor
                }

                Loader {
                    active: header.sectionLoading
                    visible: active
                    sourceComponent: Spinner {
                        objectName: "sectionBusy"
                    }
                }

                WrappingButton {
                    id: refreshButton

                    implicitWidth: Look.rowHeight
                    leftPadding: 0
                    rightPadding: 0
                    // The disabled header already dims its contents.
                    opacity: 1
                    //: Tool tip; %1 is the title of a section
                    toolTip: qsTr("Refresh %1").arg(header.sectionTitle)
                    onClicked: header.refreshSection()

                    contentItem: GlyphLabel {
                        text: Glyph.refresh
                        color: refreshButton.hovered ? Look.strongTextColor : Look.knobColor
                    }
                    background: Rectangle {
                        radius: Look.controlRadius
                        color: refreshButton.hovered ? Look.buttonHoverColor : "transparent"
                    }
                }
            }
        }
    }
}
