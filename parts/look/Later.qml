import QtQuick

// A dialog or popup by its file, or by the component inside, made when it is first needed and kept from then on.
Loader {
    property url file
    // What the object of the file is made with.
    property var given: ({})
    default property Component component

    function made(): var {
        if (!item) {
            if (component)
                sourceComponent = component
            else
                setSource(file, given)
        }
        return item
    }

    function open() {
        made().open()
    }

    visible: false
}
