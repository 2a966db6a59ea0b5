import QtQuick
import QtQuick.Controls
import Tarvel

// A button showing a ButtonState: the title, image, background image and title colour of its
// current state. Taps go through the state, which ignores them while disabled or hidden.
AbstractButton {
    id: button
    property ButtonState state: null

    visible: state !== null && !state.hidden
    enabled: state !== null && state.enabled
    implicitWidth: Math.max(44, contentRow.implicitWidth + 24)
    implicitHeight: 44
    opacity: enabled ? (pressed ? 0.6 : 1) : 0.45

    background: Image {
        source: button.state ? Assets.imageUrl(button.state.currentBackgroundImageName) : ""
        fillMode: Image.Stretch
    }
    contentItem: Item {
        Row {
            id: contentRow
            anchors.centerIn: parent
            spacing: 6
            Image {
                anchors.verticalCenter: parent.verticalCenter
                source: button.state ? Assets.imageUrl(button.state.currentImageName) : ""
                visible: source.toString().length > 0
                sourceSize.height: Math.min(button.height, 32)
                fillMode: Image.PreserveAspectFit
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: button.state ? button.state.currentTitle : ""
                visible: text.length > 0
                color: button.state ? button.state.currentTitleColor : Theme.link
                font.pixelSize: Theme.fontBody
            }
        }
    }
    onClicked: state.tap()
}
