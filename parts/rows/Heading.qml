import QtQuick.Layouts
import zvt

// Heads a group of rows of a section.
SubsectionHeaderLabel {
    Layout.fillWidth: true
    Layout.topMargin: 8
}
