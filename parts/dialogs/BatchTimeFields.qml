import QtQuick
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt.rows

// The fields of a batch entry with a range of times: day of the year, hours, minutes, seconds and milliseconds.
BatchFields {
    id: fields

    required property BatchDownloadEntry entry

    readonly property bool _isOrdered: entry ? entry.validTimeRange : true

    component TimeBox: IrigBox {
        width: fields.fieldWidth
        activeFocusOnTab: fields.inTabChain
        marked: !fields._isOrdered
        toolTip: fields._isOrdered ? "" : fields.orderText
        decimals: 3
    }

    startBox: startTimeBox
    endBox: endTimeBox

    TimeBox {
        id: startTimeBox

        x: fields.startX
        name: fields.startName
        modelText: fields.entry ? fields.entry.startTimeString : ""
        onTextEntered: text => fields.entry.startTimeString = text
    }

    TimeBox {
        id: endTimeBox

        x: fields.endX
        name: fields.endName
        modelText: fields.entry ? fields.entry.endTimeString : ""
        onTextEntered: text => fields.entry.endTimeString = text
    }
}
