import QtQuick
import Tarvel

// A picture from the network, cropped to fill its box, with a quiet placeholder while it loads
// and when it cannot be had.
Item {
    id: root
    property alias source: image.source
    property alias fillMode: image.fillMode
    property alias status: image.status
    property color placeholderColor: Theme.imagePlaceholder

    clip: true

    Rectangle {
        anchors.fill: parent
        color: root.placeholderColor
        visible: image.status !== Image.Ready

        Image {
            anchors.centerIn: parent
            width: Math.min(48, parent.width * 0.5, parent.height * 0.5)
            height: width
            sourceSize: Qt.size(96, 96)
            source: "icons/imagePlaceholder.svg"
        }
    }
    Image {
        id: image
        anchors.fill: parent
        asynchronous: true
        cache: true
        fillMode: Image.PreserveAspectCrop
        opacity: status === Image.Ready ? 1 : 0
        Behavior on opacity {
            NumberAnimation { duration: 200 }
        }
    }
}
