import QtQuick
import QtQuick.Layouts
import zvt.look
import zvt.rows
import zvt.status

// The Status page: the state and the temperatures of the camera.
Page {
    id: page

    readonly property bool active: selected && (tabModel ? tabModel.visible : false) && connected

    onActiveChanged: {
        if (active)
            tabModel.refresh()
    }

    Binding {
        target: page.tabModel
        property: "visible"
        value: page.visible && (page.parent ? page.parent.visible : false)
    }

    Columns {
        id: cards

        readonly property bool dense: columns === 1

        twoColumnWidth: 820 - 2 * Look.margin
        columnSpacing: Look.margin
        rowSpacing: Look.margin
        enabled: page.connected
        width: Math.min(960, parent ? parent.width : 0)
        anchors.horizontalCenter: parent ? parent.horizontalCenter : undefined

        Facts {
            id: facts

            camera: page.camera
            connected: page.connected
            dense: cards.dense
        }

        Temperatures {
            camera: page.camera
            connected: page.connected
            dense: cards.dense
            captionEnd: dense ? facts.captionEnd : 0
            Layout.fillWidth: dense
        }
    }
}
