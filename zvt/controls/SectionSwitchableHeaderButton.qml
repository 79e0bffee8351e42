import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// The header of a section that can be collapsed. A click is the page's to answer: it reads first and expands then.
AbstractButton {
    id: header

    property string sectionTitle
    property bool sectionExpanded
    property bool sectionLoading

    signal refreshSection

    component RefreshButton: ToolButton {
        id: refreshButton

        required property string toolTip

        implicitWidth: root.rowHeight
        implicitHeight: root.rowHeight
        Accessible.name: toolTip
        text: "\uf021"
        font.family: fontAwesome.name
        palette.buttonText: hovered ? root.strongTextColor : root.dimTextColor
        // Else the header around it would take the key for its own.
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()

        ToolTip {
            visible: refreshButton.hovered || refreshButton.visualFocus
            delay: 600
            text: refreshButton.toolTip
            palette: root.palette
            font.pixelSize: root.hintSize
        }
    }

    implicitWidth: 240
    implicitHeight: 34
    leftPadding: 12
    rightPadding: 4
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    Accessible.name: sectionTitle

    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: RowLayout {
        spacing: 10

        Label {
            Layout.preferredWidth: 10
            Accessible.ignored: true
            text: header.sectionExpanded ? "\uf0d7" : "\uf0da"
            font.family: fontAwesome.name
            font.pixelSize: 15
            color: header.sectionExpanded ? root.kestrinAccentBlue : root.dimTextColor
        }

        Label {
            Layout.fillWidth: true
            Accessible.ignored: true
            text: header.sectionTitle
            font.pixelSize: root.titleSize
            font.weight: Font.DemiBold
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 8
            color: header.sectionExpanded ? root.strongTextColor : root.textColor
        }

        BusyIndicator {
            visible: header.sectionLoading
            running: header.sectionLoading
            implicitWidth: 20
            implicitHeight: 20
            padding: 0
        }

        RefreshButton {
            //: Tool tip; %1 is the title of a section
            toolTip: qsTr("Refresh %1").arg(header.sectionTitle)
            onClicked: header.refreshSection()
        }
    }
    background: Rectangle {
        radius: 3
        color: header.hovered ? root.hoverColor : root.panelColor
        border.width: header.visualFocus ? 1 : 0
        border.color: root.kestrinAccentBlue
    }
}
