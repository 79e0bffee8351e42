import QtQuick

// Creates a dialog or popup when it is first needed, and then keeps it. The source is the component that is declared
// inside, otherwise `file`.
Loader {
    property url file
    // Initial values of the properties of an object from `file`. Not used with a component.
    property var initialProperties: ({})
    default property Component component

    // Returns the dialog or popup. Creates it if it does not exist yet.
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
