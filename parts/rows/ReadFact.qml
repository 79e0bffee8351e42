import QtQml

// Whether a value of a model has been read from the camera since this object exists, or before. A read signals each
// value that it has found, changed or not, and none that it could not read.
QtObject {
    id: fact

    // The signal of the value; null without a model.
    required property var notifier
    // Whether the value differs from that of a model that has read nothing.
    required property bool differs
    // Whether a signal is now that of a read. For a value that the operator can set, bind it to the flag of the read,
    // since a setter signals too: also the values that are set together with its own, and a value that was refused.
    property bool reading: true
    // How often the value was signalled. A binding that depends on it is evaluated again by each signal.
    property int signals
    readonly property bool wasRead: differs || _found

    property bool _found

    function _count() {
        if (reading)
            _found = true
        signals += 1
    }

    onNotifierChanged: {
        if (notifier)
            notifier.connect(fact._count)
    }
}
