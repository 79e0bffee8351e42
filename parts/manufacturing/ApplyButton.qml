import QtQuick
import QtQuick.Layouts
import zvt

// The button that applies the settings of a section. It is emphasised while there is something to apply.
WrappingButton {
    id: button

    required property ApplyBody section

    signal applied

    Layout.preferredWidth: 72
    enabled: !section.refreshing
    primary: section.unapplied
    text: "Apply"
    onClicked: {
        applied()
        section.unapplied = false
    }
}
