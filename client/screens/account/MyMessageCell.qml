import QtQuick
import QtQuick.Controls
import Tarvel

// One message of the list: the read-state picture, the title and, at the right, the time.
ItemDelegate {
    id: cell
    property string imageName
    property string title
    property string time

    height: 64
    padding: 0
    background: Rectangle {
        radius: 6
        color: cell.pressed ? Theme.rowPressed : Theme.cardBackground
    }
    contentItem: Item {
        Image {
            id: picture
            anchors.left: parent.left
            anchors.leftMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            width: 40
            height: 40
            source: Assets.imageUrl(cell.imageName)
            sourceSize: Qt.size(80, 80)
        }
        Text {
            anchors.left: picture.right
            anchors.leftMargin: 12
            anchors.right: timeText.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: cell.title
            color: Theme.textPrimary
            font.pixelSize: Theme.fontBody
            elide: Text.ElideRight
            maximumLineCount: 2
            wrapMode: Text.Wrap
        }
        Text {
            id: timeText
            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: cell.time
            color: Theme.textSecondary
            font.pixelSize: Theme.fontFootnote
        }
    }
}
