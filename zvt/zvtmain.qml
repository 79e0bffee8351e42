import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.kestrin.hlxcamui 1.0
import "controls"
import "dialogs"

// The page of one camera: the tool bar with the tabs, the pages below it, and what belongs to no tab.
Item {
    id: root

    // The maker's colours.
    readonly property color kestrinBlue: "#002f86"
    readonly property color kestrinSecondaryCoolGray: "#555859"
    readonly property color kestrinSecondaryGold: "#ffa300"
    readonly property color kestrinAccentBlue: "#18aae2"
    readonly property color kestrinAccentOrange: "#ff6a00"
    readonly property color kestrinAccentGreen: "#8dc63f"
    readonly property color kestrinAccentCoolGray: "#d2cfcd"
    readonly property color tidepoolAccentGreen: "#00ff00"
    readonly property color tidepoolAccentRed: "#ff0000"
    readonly property color tidepoolAccentDestructiveButtonBackground: "#ff6666"
    readonly property color cameraBarBackgroundColor: "#272727"
    readonly property color cameraBarForegroundColor: "#cccccc"
    readonly property color rectangleOutlineColor: "#333333"

    // The colours of the dark theme.
    readonly property color backColor: "#111111"
    readonly property color panelColor: "#22222b"
    readonly property color hoverColor: "#30303b"
    readonly property color fieldColor: "#1a1a21"
    readonly property color fieldFrameColor: "#747482"
    readonly property color buttonColor: "#3a3a45"
    readonly property color textColor: "#d8d8d8"
    readonly property color dimTextColor: "#8d9196"
    readonly property color headerTextColor: "#a9aeb4"
    readonly property color strongTextColor: "#ffffff"
    readonly property color errorTextColor: "#ff8080"
    readonly property color errorBackColor: "#5a1a1a"
    readonly property color errorFrameColor: "#ff5555"
    readonly property color shadeColor: "#a0000000"

    // Sizes in device-independent pixels.
    readonly property int rowHeight: 28
    readonly property int rowSpacing: 8
    readonly property int textSize: 13
    readonly property int titleSize: 14
    readonly property int hintSize: 12

    // The family of the icons that the other icon font lacks.
    readonly property string materialIconFamily: materialIcons.name

    // Undefined when a host application holds the page.
    readonly property var _standaloneModel: typeof standaloneModel === "undefined" ? null : standaloneModel
    readonly property bool _standalone: _standaloneModel !== null
    readonly property bool _standaloneConnected: _standaloneModel?.connected ?? false
    readonly property bool _connecting: _standaloneModel?.connecting ?? false
    readonly property bool _disconnecting: _standaloneModel?.disconnecting ?? false
    readonly property bool _connected: safeGetConnected()
    readonly property bool _manufacturing: cameraModel?.manufacturingMode ?? false
    readonly property var _cameraState: cameraStateExists() ? cameraModel.cameraState : null
    readonly property bool _stateNameKnown: Boolean(_cameraState?.currentStateName) && !_cameraState.refreshing
    readonly property bool _loadingState: _cameraState?.loading ?? false
    readonly property bool _savingState: _cameraState?.saving ?? false
    readonly property bool _busy: _standalone ? _connecting || _disconnecting : _loadingState || _savingState
    property bool _fakeOverlayShown

    function cameraModelExists(): bool {
        console.assert(cameraModel !== null, "camera model must not be null")
        return cameraModel !== null
    }

    // These are for bindings too, which can run while the context is being torn down.
    function safeGetConnected(): bool {
        return cameraModel?.connected ?? false
    }

    function cameraStateExists(): bool {
        return Boolean(cameraModel?.cameraState)
    }

    function capabilitiesModelExists(): bool {
        return Boolean(cameraModel?.cameraCapabilitiesModel)
    }

    // Blocks the page while a dialog that is not modal goes through its steps.
    function setFakeOverlay(visible: bool) {
        _fakeOverlayShown = visible
    }

    function _isRefreshHotkey(event: var): bool {
        if (_standalone || typeof refreshCameraControllerHotkey === "undefined" || !cameraModel)
            return false
        return cameraModel.integrateModifiersIntoKey(event.modifiers, event.key) === refreshCameraControllerHotkey
    }

    width: 640
    height: 480
    enabled: !_loadingState && !_fakeOverlayShown
    focus: true
    // A popup that closes leaves the keys to nobody.
    Window.onActiveFocusItemChanged: {
        if (visible && Window.activeFocusItem === Window.contentItem)
            forceActiveFocus()
    }
    Keys.onPressed: event => {
        event.accepted = _isRefreshHotkey(event)
        if (event.accepted) {
            refreshAnimation.restart()
            cameraModel.refreshAllVisible()
        }
    }

    palette {
        window: backColor
        windowText: textColor
        base: fieldColor
        alternateBase: "#1f1f27"
        text: "#f0f0f0"
        button: buttonColor
        buttonText: textColor
        highlight: kestrinAccentBlue
        highlightedText: "#000000"
        mid: fieldFrameColor
        dark: "#5c5c68"
        light: "#55555f"
        placeholderText: dimTextColor
        toolTipBase: buttonColor
        toolTipText: textColor
    }

    component BarButton: ToolButton {
        id: barButton

        required property string glyph
        required property string toolTip

        implicitWidth: 42
        Layout.fillHeight: true
        Accessible.name: toolTip
        text: glyph
        font.family: fontAwesome.name
        font.pixelSize: 16
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()

        contentItem: Text {
            text: barButton.text
            font: barButton.font
            color: root.cameraBarForegroundColor
            opacity: barButton.enabled ? 1 : 0.5
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            color: barButton.hovered || barButton.down ? root.hoverColor : "transparent"
            border.width: barButton.visualFocus ? 1 : 0
            border.color: root.kestrinAccentBlue
        }

        ToolTip {
            visible: barButton.hovered || barButton.visualFocus
            delay: 600
            text: barButton.toolTip
            palette: root.palette
            font.pixelSize: root.hintSize
        }
    }

    // An action of the configuration menu, which it closes.
    component ActionButton: WrappingButton {
        signal chosen

        Layout.fillWidth: true
        // The longest name of a state takes three rows in the smallest letters.
        implicitHeight: root.rowHeight * Math.ceil(text.length / 80)
        clip: true
        enabled: root._connected
        onClicked: {
            configurationPopup.close()
            chosen()
        }
    }

    FontLoader {
        id: materialIcons
        source: "fonts/MaterialIcons-Regular.ttf"
    }

    Shortcut {
        sequence: "Ctrl+Shift+M"
        enabled: root.visible
        onActivated: {
            if (root.cameraModelExists())
                cameraModel.manufacturingMode = !cameraModel.manufacturingMode
        }
    }

    Connections {
        target: root._standaloneModel
        function onConnectingChanged() {
            if (!root._standaloneModel.connecting && !root._standaloneModel.connected)
                connectFailedDialog.open()
        }
    }

    // With little on show the reload is too quick to notice. This tells that the key has worked.
    SequentialAnimation {
        id: refreshAnimation

        objectName: "refreshAnimation"

        PropertyAction {
            target: pages
            property: "enabled"
            value: false
        }

        PropertyAction {
            target: refreshMark
            property: "visible"
            value: true
        }

        NumberAnimation {
            objectName: "refreshFade"
            target: refreshMark
            property: "opacity"
            from: 1
            to: 0
            duration: 700
            easing.type: Easing.InQuad
        }

        PropertyAction {
            target: refreshMark
            property: "visible"
            value: false
        }

        PropertyAction {
            target: pages
            property: "enabled"
            value: true
        }
    }

    Pane {
        anchors.fill: parent
        padding: 0
        font.pixelSize: root.textSize

        background: Rectangle {
            color: root.backColor
        }

        ColumnLayout {
            anchors.fill: parent
            spacing: 0

            Rectangle {
                implicitHeight: 40
                Layout.fillWidth: true
                color: root.cameraBarBackgroundColor

                RowLayout {
                    anchors.fill: parent
                    spacing: 0
                    enabled: !ssdPlaybackBanner.visible

                    BarButton {
                        visible: root._standalone
                        enabled: !root._standaloneConnected
                        glyph: "\uf1e6"
                        //: Tool tip
                        toolTip: qsTr("Connect")
                        onClicked: cameraFinderPopup.open()
                    }

                    BarButton {
                        visible: root._standalone
                        enabled: root._standaloneConnected
                        glyph: "\uf127"
                        //: Tool tip
                        toolTip: qsTr("Disconnect")
                        onClicked: root._standaloneModel.disconnect()
                    }

                    BarButton {
                        id: configurationButton

                        glyph: "\uf0c9"
                        //: Tool tip
                        toolTip: qsTr("Configuration")
                        onClicked: configurationPopup.open()
                    }

                    TabBar {
                        id: tabBar

                        readonly property int availableTabs: {
                            let available = 0
                            for (let index = 0; index < count; ++index)
                                available += itemAt(index).available ? 1 : 0
                            return available
                        }
                        readonly property real tabWidth: availableTabs === 0 ? 0 : width / availableTabs

                        // Its tabs are as wide as it lets them be.
                        implicitWidth: 0
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                        contentHeight: height
                        background: null

                        PageTabButton {
                            width: available ? tabBar.tabWidth : 0
                            //: Title of a page
                            text: qsTr("Status")
                        }

                        PageTabButton {
                            width: available ? tabBar.tabWidth : 0
                            //: Title of a page
                            text: qsTr("Setup")
                        }
                    }
                }

                Rectangle {
                    id: ssdPlaybackBanner

                    objectName: "ssdPlaybackBanner"
                    anchors.fill: parent
                    visible: false
                    color: "#D35400"

                    // Nothing passes to the tool bar below.
                    MouseArea {
                        anchors.fill: parent
                        hoverEnabled: true
                    }

                    RowLayout {
                        anchors.fill: parent
                        anchors.leftMargin: 12
                        anchors.rightMargin: 8
                        spacing: 12

                        Label {
                            Layout.fillWidth: true
                            //: The images come from a recording and not from the detector
                            text: qsTr("Playing back from SSD/Memory.")
                            font.weight: Font.DemiBold
                            color: "black"
                            wrapMode: Text.Wrap
                        }

                        WrappingButton {
                            //: Ends the playback
                            text: qsTr("Back to live")
                            onClicked: cameraModel.ssdTabModel.stop()
                        }
                    }
                }
            }

            StackLayout {
                id: pages

                objectName: "pages"
                currentIndex: tabBar.currentIndex

                StatusTab {
                    tabModel: cameraModel?.statusTabModel ?? null
                    selected: visible
                }

                SetupTab {
                    tabModel: cameraModel?.setupTabModel ?? null
                    selected: visible
                }
            }
        }

        Rectangle {
            objectName: "fakeOverlay"
            anchors.fill: parent
            visible: root._fakeOverlayShown
            color: "#dd333333"
        }

        BusyIndicator {
            objectName: "busyIndicator"
            anchors.centerIn: parent
            visible: root._busy
            running: root._busy
            padding: 12

            background: Rectangle {
                radius: 8
                color: root.panelColor
            }
        }

        Rectangle {
            id: refreshMark

            objectName: "refreshMark"
            anchors.centerIn: parent
            visible: false
            width: 100
            height: 100
            radius: 16
            color: root.kestrinAccentBlue
            border.width: 2
            border.color: "white"

            Label {
                anchors.centerIn: parent
                Accessible.ignored: true
                text: "\uf021"
                font.family: fontAwesome.name
                font.pixelSize: 56
                color: "white"
            }
        }
    }

    Popup {
        id: configurationPopup

        readonly property bool hasControllerChoice: root._standaloneModel?.canSelectController ?? false

        parent: configurationButton
        y: parent.height
        margins: 8
        width: 248
        modal: true
        dim: false
        focus: true
        padding: 12
        palette: root.palette
        font.pixelSize: root.textSize

        background: Rectangle {
            radius: 4
            color: root.panelColor
            border.color: root.fieldFrameColor
        }
        contentItem: ColumnLayout {
            spacing: root.rowSpacing

            ComboBox {
                visible: configurationPopup.hasControllerChoice
                enabled: !root._standaloneConnected
                implicitHeight: root.rowHeight
                Layout.fillWidth: true
                //: Which kind of controller the program drives
                Accessible.name: qsTr("Controller")
                model: root._standaloneModel?.controllerDisplayNames ?? []
                currentIndex: root._standaloneModel?.controllerIndex ?? -1
                onActivated: root._standaloneModel.controllerIndex = currentIndex
            }

            ActionButton {
                //: %1 is a name
                text: root._stateNameKnown ? qsTr("Save State (%1)").arg(root._cameraState.currentStateName)
                                           : qsTr("Save State")
                enabled: root._connected && (root._cameraState?.canSaveState ?? false)
                onChosen: root._cameraState.saveState()
            }

            ActionButton {
                text: qsTr("Save State As")
                onChosen: cameraStateDialog.show("save")
            }

            ActionButton {
                text: qsTr("Load State")
                onChosen: cameraStateDialog.show("load")
            }

            ActionButton {
                text: qsTr("Manage States")
                onChosen: cameraStateDialog.show("manage")
            }

            ActionButton {
                text: qsTr("Load Factory Defaults")
                onChosen: root._cameraState.loadFactoryDefaults()
            }

            // For the maker's people, and not translated.
            ActionButton {
                visible: root._manufacturing
                text: "Save Factory Defaults"
                onChosen: root._cameraState.saveFactoryDefaults()
            }

            ActionButton {
                visible: root._manufacturing
                text: "Load Hard Defaults"
                onChosen: root._cameraState.loadHardDefaults()
            }

            ActionButton {
                text: qsTr("Adjust Time")
                onChosen: adjustTimeDialog.open()
            }

            ActionButton {
                text: qsTr("About")
                onChosen: aboutDialog.open()
            }
        }
    }

    CameraStateDialog {
        id: cameraStateDialog

        function show(forMode: string) {
            stateModel.refresh()
            mode = forMode
            open()
        }

        stateModel: root._cameraState
    }

    AdjustTimeDialog {
        id: adjustTimeDialog

        timeModel: cameraModel?.adjustTime ?? null
    }

    AboutDialog {
        id: aboutDialog

        aboutModel: cameraModel?.aboutModel ?? null
    }

    CameraFinderPopup {
        id: cameraFinderPopup

        palette: root.palette
        font.pixelSize: root.textSize
        cameraFinder: root._standaloneModel?.cameraFinder ?? null
        configDir: root._standaloneModel?.configDir ?? ""
        onConnect: camera => root._standaloneModel.connect(camera)

        Overlay.modal: Rectangle {
            color: root.shadeColor
        }
    }

    GenericMessageDialog {
        id: connectFailedDialog

        //: Title of a message
        title: qsTr("Error")
        text: qsTr("Failed to connect to the camera.")
    }
}
