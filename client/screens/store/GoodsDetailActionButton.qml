import QtQuick
import Tarvel

// One of the two filled buttons at the right of the detail page's bottom bar.
Rectangle {
    id: action
    property ButtonState button: null

    width: 108
    opacity: touch.pressed ? 0.8 : 1

    Text {
        anchors.centerIn: parent
        text: action.button ? action.button.title : ""
        color: Theme.textOnDark
        font.pixelSize: Theme.fontHeadline
        font.weight: Font.DemiBold
    }
    MouseArea {
        id: touch
        anchors.fill: parent
        onClicked: action.button.tap()
    }
}
