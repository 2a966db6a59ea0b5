import QtQuick
import Tarvel

// "获取验证码" beside the SMS code field: a small outlined button whose title counts down the
// seconds while a code was just sent (it is disabled then).
BoundButton {
    implicitWidth: 96
    implicitHeight: 32
    background: Rectangle {
        radius: height / 2
        color: "transparent"
        border.color: Theme.textOnDark
        border.width: Theme.hairlineWidth
    }
}
