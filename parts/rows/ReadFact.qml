import QtQml

// Whether a value of a model has been read from the camera since this object exists, or before. A model signals each
// value that a read has found, changed or not, and none that it could not read.
QtObject {
    id: fact

    // The signal of the value; null without a model.
    required property var notifier
    // Whether the value differs from that of a model that has read nothing.
    required property bool differs
    // How often the value was signalled. A binding that depends on it is evaluated again by each signal.
    property int signals
    readonly property bool wasRead: differs || signals > 0

    function _count() {
        signals += 1
    }

    onNotifierChanged: {
        if (notifier)
            notifier.connect(fact._count)
    }
}
