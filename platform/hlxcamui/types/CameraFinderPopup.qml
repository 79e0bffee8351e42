import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// The cameras that can be connected. Its palette and font are the caller's to set: a popup inherits neither from the page.
Popup {
    id: popup

    // An object with `cameras`, an ObjectListModel of objects with `key`, `name` and `profile`.
    property var cameraFinder: null
    // Where the installation keeps its settings; shown as a help for who looks for a missing camera.
    property string configDir

    signal connect(var camera)

    readonly property var _selected: list.currentIndex >= 0 && list.currentIndex < list.count
                                     ? cameraFinder.cameras.at(list.currentIndex) : null

    function _connectSelected() {
        if (!_selected)
            return
        const key = _selected.key
        close()
        connect(key)
    }

    parent: Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(440, parent.width - 32) : 440
    height: parent ? Math.min(320, parent.height - 32) : 320
    padding: 12
    modal: true
    focus: true

    onAboutToShow: list.currentIndex = list.count > 0 ? 0 : -1
    onOpened: list.forceActiveFocus(Qt.PopupFocusReason)

    // What does not fit is told by a tool tip.
    component FittedLabel: Label {
        id: fittedLabel

        elide: Text.ElideRight

        HoverHandler {
            id: hover
        }

        ToolTip {
            visible: fittedLabel.truncated && hover.hovered
            delay: 600
            text: fittedLabel.text
            palette: popup.palette
            font.pixelSize: 12
        }
    }

    component CameraRow: ItemDelegate {
        id: row

        required property var item
        required property int index

        width: ListView.view.width
        height: 36
        leftPadding: 12
        rightPadding: 12
        highlighted: ListView.isCurrentItem
        focusPolicy: Qt.NoFocus

        Accessible.name: item ? item.name : ""

        onClicked: {
            list.currentIndex = index
            list.forceActiveFocus(Qt.MouseFocusReason)
        }
        onDoubleClicked: popup._connectSelected()

        background: Rectangle {
            color: row.highlighted ? popup.palette.highlight : row.hovered ? popup.palette.alternateBase : "transparent"
        }

        contentItem: RowLayout {
            spacing: 12

            FittedLabel {
                Layout.fillWidth: true
                text: row.item ? row.item.name : ""
                color: row.highlighted ? popup.palette.highlightedText : popup.palette.windowText
            }

            FittedLabel {
                Layout.maximumWidth: row.width / 2
                text: row.item ? row.item.profile : ""
                color: row.highlighted ? popup.palette.highlightedText : popup.palette.placeholderText
            }
        }
    }

    component DialogButton: Button {
        implicitHeight: 28
        opacity: enabled ? 1 : 0.5

        Accessible.name: text
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
    }

    background: Rectangle {
        color: popup.palette.window
        border.color: popup.palette.mid
        radius: 3
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 8

        Accessible.role: Accessible.Dialog
        Accessible.name: titleLabel.text

        FittedLabel {
            id: titleLabel

            Layout.fillWidth: true
            text: qsTr("Connect to Camera")
            font.pixelSize: popup.font.pixelSize + 1
            font.weight: Font.DemiBold
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.fillHeight: true
            color: popup.palette.base
            border.color: list.activeFocus ? popup.palette.highlight : popup.palette.mid
            radius: 2

            ListView {
                id: list

                anchors.fill: parent
                anchors.margins: 1
                model: popup.cameraFinder ? popup.cameraFinder.cameras : null
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                keyNavigationEnabled: true
                activeFocusOnTab: true
                highlightMoveDuration: 0
                delegate: CameraRow { }

                ScrollBar.vertical: ScrollBar { }

                Accessible.role: Accessible.List
                Accessible.name: qsTr("Cameras")

                Keys.onReturnPressed: popup._connectSelected()
                Keys.onEnterPressed: popup._connectSelected()
                // A camera that turns up while nothing is selected can be connected at once.
                onCountChanged: if (currentIndex < 0 && count > 0) currentIndex = 0
            }

            Label {
                anchors.centerIn: parent
                visible: list.count === 0
                text: qsTr("No cameras found")
                color: popup.palette.placeholderText
            }
        }

        FittedLabel {
            Layout.fillWidth: true
            visible: text.length > 0
            text: popup.configDir ? qsTr("Settings: %1").arg(popup.configDir) : ""
            color: popup.palette.placeholderText
            font.pixelSize: 12
            elide: Text.ElideMiddle
        }

        RowLayout {
            spacing: 8

            Item {
                Layout.fillWidth: true
            }

            DialogButton {
                text: qsTr("Connect")
                enabled: popup._selected !== null
                onClicked: popup._connectSelected()
            }

            DialogButton {
                text: qsTr("Cancel")
                onClicked: popup.close()
            }
        }
    }
}
