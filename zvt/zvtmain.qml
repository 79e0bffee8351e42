import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import zvt
import zvt.frame
import zvt.look

// The main page of one camera: the tool bar with the tabs, the pages below it, and the dialogs and overlays that belong
// to no tab. The host sets the context property cameraModel, the camera's ZvtCameraModel.
Item {
    id: root

    // The colours of the pages, for hosts that extend them.
    readonly property color kestrinBlue: Look.kestrinBlue
    readonly property color kestrinSecondaryCoolGray: Look.kestrinSecondaryCoolGray
    readonly property color kestrinSecondaryGold: Look.kestrinSecondaryGold
    readonly property color kestrinAccentBlue: Look.kestrinAccentBlue
    readonly property color kestrinAccentOrange: Look.kestrinAccentOrange
    readonly property color kestrinAccentGreen: Look.kestrinAccentGreen
    readonly property color kestrinAccentCoolGray: Look.kestrinAccentCoolGray
    readonly property color tidepoolAccentGreen: Look.tidepoolAccentGreen
    readonly property color tidepoolAccentRed: Look.tidepoolAccentRed
    readonly property color tidepoolAccentDestructiveButtonBackground: Look.tidepoolAccentDestructiveButtonBackground
    readonly property color cameraBarBackgroundColor: Look.cameraBarBackgroundColor
    readonly property color cameraBarForegroundColor: Look.cameraBarForegroundColor
    readonly property color rectangleOutlineColor: Look.rectangleOutlineColor

    // Null when a host application shows the page: only the standalone program sets standaloneModel.
    readonly property var _standaloneModel: typeof standaloneModel === "undefined" ? null : standaloneModel
    readonly property bool _standalone: _standaloneModel !== null
    readonly property bool _connecting: _standaloneModel?.connecting ?? false
    readonly property bool _disconnecting: _standaloneModel?.disconnecting ?? false
    // Each read of cameraModel.connected calls the controller, so the page reads it only here.
    readonly property bool _connected: safeGetConnected()
    readonly property var _cameraState: cameraStateExists() ? cameraModel.cameraState : null
    readonly property bool _loadingState: _cameraState?.loading ?? false
    readonly property bool _savingState: _cameraState?.saving ?? false
    readonly property bool _hasSsd: capabilitiesModelExists() && cameraModel.cameraCapabilitiesModel.hasSsd
    readonly property bool _manufacturing: cameraModel?.manufacturingMode ?? false
    readonly property bool _busy: _standalone ? _connecting || _disconnecting : _loadingState || _savingState
    property bool _fakeOverlayShown
    // Whether the contents of hidden pages may be created. Becomes true 250 ms after the start.
    property bool _preload

    function cameraModelExists(): bool {
        console.assert(cameraModel !== null, "camera model must not be null")
        return cameraModel !== null
    }

    // Bindings use the next three functions, and can run while the context is being destroyed and has no cameraModel.
    function safeGetConnected(): bool {
        return cameraModel?.connected ?? false
    }

    function cameraStateExists(): bool {
        return Boolean(cameraModel?.cameraState)
    }

    function capabilitiesModelExists(): bool {
        return Boolean(cameraModel?.cameraCapabilitiesModel)
    }

    // Shows or hides an overlay that blocks the page, for a dialog that is not modal.
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
    // After a popup has closed, the content item of the window has the focus. The page takes it to receive keys again.
    Window.onActiveFocusItemChanged: {
        if (visible && Window.activeFocusItem === Window.contentItem)
            forceActiveFocus()
    }
    Keys.onPressed: event => {
        event.accepted = _isRefreshHotkey(event)
        if (event.accepted) {
            refreshMark.play()
            cameraModel.refreshAllVisible()
        }
    }

    // Colours that the host's controls on the page, such as its editors, inherit.
    palette {
        window: Look.backColor
        windowText: Look.textColor
        base: Look.fieldColor
        alternateBase: Look.panelColor
        text: Look.fieldTextColor
        button: Look.buttonColor
        buttonText: Look.textColor
        highlight: Look.kestrinAccentBlue
        highlightedText: Look.inverseTextColor
        mid: Look.fieldFrameColor
        placeholderText: Look.dimTextColor
    }

    Shortcut {
        sequence: "Ctrl+Shift+M"
        enabled: root.visible
        onActivated: {
            if (root.cameraModelExists())
                cameraModel.manufacturingMode = !cameraModel.manufacturingMode
        }
    }

    Shortcut {
        sequence: "Ctrl+Tab"
        enabled: root.visible && root.enabled
        onActivated: bar.step(1)
    }

    Shortcut {
        sequence: "Ctrl+Shift+Tab"
        enabled: root.visible && root.enabled
        onActivated: bar.step(-1)
    }

    Timer {
        interval: 250
        running: true
        onTriggered: root._preload = true
    }

    T.Pane {
        anchors.fill: parent
        font.pixelSize: Look.textSize

        background: Rectangle {
            color: Look.backColor
        }

        ColumnLayout {
            anchors.fill: parent
            spacing: 0

            CameraBar {
                id: bar

                Layout.fillWidth: true
                standaloneModel: root._standaloneModel
                hasSsd: root._hasSsd
                manufacturing: root._manufacturing
                onFinderRequested: dialogs.openFinder()
                onMenuRequested: dialogs.openMenu()
                onStopRequested: cameraModel.ssdTabModel.stop()
            }

            StackLayout {
                id: pages

                objectName: "pages"
                currentIndex: bar.currentIndex

                StatusTab {
                    camera: cameraModel
                    connected: root._connected
                    preload: root._preload
                    tabModel: cameraModel?.statusTabModel ?? null
                    selected: visible
                }

                SetupTab {
                    camera: cameraModel
                    connected: root._connected
                    preload: root._preload
                    tabModel: cameraModel?.setupTabModel ?? null
                    selected: visible
                }

                CorrectionTab {
                    camera: cameraModel
                    connected: root._connected
                    preload: root._preload
                    tabModel: cameraModel?.correctionTabModel ?? null
                    selected: visible
                    onPageBlocked: blocked => root.setFakeOverlay(blocked)
                }

                VideoTab {
                    camera: cameraModel
                    connected: root._connected
                    preload: root._preload
                    tabModel: cameraModel?.videoTabModel ?? null
                    selected: visible
                }

                AdvancedTab {
                    camera: cameraModel
                    connected: root._connected
                    preload: root._preload
                    tabModel: cameraModel?.advancedTabModel ?? null
                    selected: visible
                }

                SsdTab {
                    camera: cameraModel
                    connected: root._connected
                    preload: root._preload
                    tabModel: cameraModel?.ssdTabModel ?? null
                    selected: visible
                    banner: bar.banner
                }

                MfgTab {
                    camera: cameraModel
                    connected: root._connected
                    // Operators do not use this page.
                    preload: false
                    tabModel: cameraModel?.mfgTabModel ?? null
                    selected: visible
                }
            }
        }

        Rectangle {
            objectName: "fakeOverlay"
            anchors.fill: parent
            visible: root._fakeOverlayShown
            color: Look.blockedColor
        }

        Loader {
            objectName: "busyIndicator"
            anchors.centerIn: parent
            active: root._busy
            sourceComponent: Rectangle {
                implicitWidth: 56
                implicitHeight: 56
                radius: 8
                color: Look.panelColor

                Spinner {
                    anchors.centerIn: parent
                    size: 32
                }
            }
        }

        RefreshMark {
            id: refreshMark

            objectName: "refreshMark"
            anchors.centerIn: parent
            pages: pages
        }
    }

    FocusRing {
        focusItem: root.Window.activeFocusItem
    }

    FrameDialogs {
        id: dialogs

        camera: cameraModel
        connected: root._connected
        standaloneModel: root._standaloneModel
        menuButton: bar.menuButton
    }
}
