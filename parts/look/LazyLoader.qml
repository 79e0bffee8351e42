import QtQuick

// Creates a dialog or popup from a file, or from the component inside, when it is first needed, and then keeps it.
Loader {
    property url file
    // Initial values of properties for an object that is created from `file`.
    property var initialProperties: ({})
    default property Component component

    // The dialog or popup; creates it if it does not exist yet.
    function instance(): var {
        if (!item) {
            if (component)
                sourceComponent = component
            else
                setSource(file, initialProperties)
        }
        return item
    }

    function open() {
        instance().open()
    }

    visible: false
}
