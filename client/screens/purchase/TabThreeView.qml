import QtQuick
import Tarvel

// The cart tab until the cart itself comes: its picture and a short note.
Rectangle {
    id: view
    property TabThreeViewController controller: null

    color: Theme.background

    Column {
        anchors.centerIn: parent
        anchors.verticalCenterOffset: -30
        spacing: 14

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 150
            height: 150
            source: Assets.imageUrl("shoppingcar_defaultImage")
            sourceSize: Qt.size(300, 300)
            fillMode: Image.PreserveAspectFit
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "购物车功能即将上线"
            color: Theme.textPrimary
            font.pixelSize: 17
            font.family: Theme.fontFamily
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "先去首页逛逛，挑选心仪的游戏吧"
            color: Theme.textSecondary
            font.pixelSize: 13
            font.family: Theme.fontFamily
        }
    }
}
