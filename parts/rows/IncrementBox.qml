import QtQuick
import com.kestrin.hlxui 1.0

// A field for the whole numbers from `from` to `to` that are multiples of `increment`. The host's validator decides.
NumberBox {
    id: box

    property int increment: 1

    //: Tool tip of a field; %1 is a number
    refusal: qsTr("Not a multiple of %1").arg(increment)
    judge: TextInput {
        validator: IntValidatorEx {
            bottom: box.from
            top: box.to
            increment: box.increment
        }
    }
}
