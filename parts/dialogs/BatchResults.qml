import QtQuick
import QtQuick.Layouts
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.look

// How many movies of a batch were downloaded, have failed, or were not reached. A row with none is dimmed.
ColumnLayout {
    id: results

    required property BatchDownloadModel batch

    component ResultRow: RowLayout {
        id: row

        required property string heading
        required property int count
        required property int status

        enabled: count > 0
        opacity: enabled ? 1 : Look.disabledOpacity
        spacing: 12

        BatchDownloadProgressItemIcon {
            Accessible.ignored: true
            status: row.status
        }

        PlainLabel {
            Layout.fillWidth: true
            Accessible.ignored: true
            text: row.heading
        }

        PlainLabel {
            Accessible.name: row.heading
            Accessible.description: text
            text: row.count
            color: Look.strongTextColor
            font.weight: Font.DemiBold
        }
    }

    spacing: Look.rowSpacing

    ResultRow {
        //: Movies of a batch that were downloaded
        heading: qsTr("Succeeded")
        count: results.batch ? results.batch.itemsSucceeded : 0
        status: BatchDownloadEntry.STATUS_SUCCEEDED
    }

    ResultRow {
        //: Movies of a batch that could not be downloaded
        heading: qsTr("Failed")
        count: results.batch ? results.batch.itemsFailed : 0
        status: BatchDownloadEntry.STATUS_FAILED
    }

    ResultRow {
        //: Movies of a batch that were not reached
        heading: qsTr("Not Started")
        count: results.batch ? results.batch.itemsNotStarted : 0
        status: BatchDownloadEntry.STATUS_NOT_STARTED
    }
}
