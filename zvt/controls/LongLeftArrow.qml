import QtQuick

// An arrow to the left, for the recorder's data path.
LongRightArrow {
    rotation: 180
}
