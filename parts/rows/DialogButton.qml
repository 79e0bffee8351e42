import zvt

// A button in the foot of a dialog.
WrappingButton {
    width: Math.max(88, implicitWidth)
    implicitWidth: Math.max(84, implicitContentWidth + leftPadding + rightPadding)
}
