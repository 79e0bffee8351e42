import zvt

// A button at the bottom of a dialog.
WrappingButton {
    width: Math.max(88, implicitWidth)
    implicitWidth: Math.max(84, implicitContentWidth + leftPadding + rightPadding)
}
