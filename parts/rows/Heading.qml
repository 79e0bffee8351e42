import QtQuick.Layouts
import zvt

// The heading of a group of rows in a section.
SubsectionHeaderLabel {
    Layout.fillWidth: true
    Layout.topMargin: 8
}
