pragma Singleton
import QtQuick

// The keys of sliders, beside the arrow keys without modifiers, which the sliders of Qt handle themselves.
QtObject {
    // The steps by which a key moves a slider; 0 for other keys. Page keys move by 5 % of the range, arrow keys with
    // Shift by 10 steps.
    function steps(key: int, modifiers: int, range: real): real {
        const arrowSteps = modifiers & Qt.ShiftModifier ? 10 : 0
        const pageSteps = Math.max(1, range / 20)
        switch (key) {
        case Qt.Key_Left:
            return -arrowSteps
        case Qt.Key_Right:
            return arrowSteps
        case Qt.Key_PageDown:
            return -pageSteps
        case Qt.Key_PageUp:
            return pageSteps
        }
        return 0
    }
}
