import QtQuick
import Tarvel

// A navigation bar button bound to a controller's bar item: 44 x 44, image and/or title.
Item {
    id: button
    property BarButtonItem item: null

    implicitWidth: 44
    implicitHeight: 44
    visible: item !== null && !item.hidden && !item.empty
    opacity: touch.pressed ? 0.5 : 1

    Image {
        anchors.centerIn: parent
        width: 44
        height: 44
        source: button.item ? Assets.imageUrl(button.item.imageName) : ""
        sourceSize: Qt.size(44, 44)
        fillMode: Image.PreserveAspectFit
        visible: source.toString().length > 0
    }
    Text {
        anchors.fill: parent
        text: button.item ? button.item.title : ""
        color: button.item ? button.item.titleColor : Theme.textOnDark
        font.pixelSize: Theme.fontCallout
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        visible: text.length > 0
    }
    MouseArea {
        id: touch
        anchors.fill: parent
        onClicked: button.item.tap()
    }
}
