import QtQuick
import Tarvel

// One game of an order: cover, name (two lines at most) and price.
Item {
    id: line
    property var game: ({})

    height: 70

    RemoteImage {
        id: cover
        objectName: "orderGameCover"
        anchors.left: parent.left
        anchors.leftMargin: Theme.spacingRegular
        anchors.verticalCenter: parent.verticalCenter
        width: 96
        height: 54
        source: line.game.cover || ""
    }
    Text {
        objectName: "orderGameName"
        anchors.left: cover.right
        anchors.leftMargin: Theme.spacingMedium
        anchors.right: price.left
        anchors.rightMargin: Theme.spacingMedium
        anchors.verticalCenter: parent.verticalCenter
        text: line.game.name || ""
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
        color: Theme.textPrimary
        font.family: Theme.fontFamily
        font.pixelSize: Theme.fontCallout
    }
    Text {
        id: price
        objectName: "orderGamePrice"
        anchors.right: parent.right
        anchors.rightMargin: Theme.spacingRegular
        anchors.verticalCenter: parent.verticalCenter
        text: line.game.price || ""
        color: Theme.textPrimary
        font.family: Theme.fontFamily
        font.pixelSize: Theme.fontCallout
    }
    Rectangle {
        anchors.left: cover.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: Theme.hairlineWidth
        color: Theme.hairline
    }
}
