import QtQuick
import QtQuick.Layouts
import zvt.look

// The tool bar of the main page: connection, menu and tabs. A banner covers it while a recording is played.
Rectangle {
    id: bar

    // Null when a host application shows the page.
    required property var standaloneModel
    // Whether the camera has a recorder, which has a page of its own.
    required property bool hasSsd
    // Whether the page for the factory is available.
    required property bool manufacturing

    readonly property alias currentIndex: tabs.currentIndex
    readonly property alias menuButton: configurationButton
    readonly property alias banner: ssdPlaybackBanner
    readonly property bool _standalone: standaloneModel !== null
    readonly property bool _standaloneConnected: standaloneModel?.connected ?? false

    signal finderRequested
    signal menuRequested
    // The operator wants live images again.
    signal stopRequested

    // Selects the next available tab, in the direction of `by` (1 or -1); wraps around at the ends.
    function step(by: int) {
        tabs.step(by)
    }

    implicitHeight: 40
    color: Look.cameraBarBackgroundColor

    RowLayout {
        anchors.fill: parent
        spacing: 0
        enabled: !ssdPlaybackBanner.visible

        BarButton {
            visible: bar._standalone
            enabled: !bar._standaloneConnected
            glyph: Glyph.connect
            //: Tool tip
            toolTip: qsTr("Connect")
            onClicked: bar.finderRequested()
        }

        BarButton {
            visible: bar._standalone
            enabled: bar._standaloneConnected
            glyph: Glyph.disconnect
            //: Tool tip
            toolTip: qsTr("Disconnect")
            onClicked: bar.standaloneModel.disconnect()
        }

        BarButton {
            id: configurationButton

            glyph: Glyph.menu
            //: Tool tip
            toolTip: qsTr("Configuration")
            onClicked: bar.menuRequested()
        }

        TabStrip {
            id: tabs

            Layout.fillWidth: true
            Layout.fillHeight: true
            hasSsd: bar.hasSsd
            manufacturing: bar.manufacturing
        }
    }

    PlaybackBanner {
        id: ssdPlaybackBanner

        objectName: "ssdPlaybackBanner"
        anchors.fill: parent
        visible: false
        onStopRequested: bar.stopRequested()
    }
}
