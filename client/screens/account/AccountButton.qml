import QtQuick
import Tarvel

// The main button of an account page: white title on the accent colour, fully rounded; or, when
// `bordered`, a white outline on the background picture.
BoundButton {
    id: button
    property bool bordered: false

    height: Theme.buttonHeight
    background: Rectangle {
        radius: height / 2
        color: button.bordered ? "transparent" : Theme.accent
        border.color: button.bordered ? Theme.textOnDark : "transparent"
        border.width: button.bordered ? Theme.hairlineWidth : 0
    }
}
