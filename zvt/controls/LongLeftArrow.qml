import QtQuick

// An arrow of the recorder's data path, pointing left.
LongRightArrow {
    rotation: 180
}
