import QtQuick
import Tarvel

// The my-page tab until its menu comes: the signed-in user's name on a blue header under the
// see-through bar, and a short note.
Rectangle {
    id: view
    property TabFourViewController controller: null

    color: Theme.background

    Rectangle {
        id: header
        width: parent.width
        height: 210
        gradient: Gradient {
            GradientStop { position: 0; color: Qt.rgba(60 / 255, 102 / 255, 183 / 255, 1) }
            GradientStop { position: 1; color: Qt.rgba(42 / 255, 72 / 255, 140 / 255, 1) }
        }

        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 22
            spacing: 10

            Image {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 72
                height: 72
                source: Assets.imageUrl("myInfo_defaultHead")
                sourceSize: Qt.size(144, 144)
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: view.controller && view.controller.nickName.length > 0 ? view.controller.nickName : "Tarvel玩家"
                color: "white"
                font.pixelSize: 16
                font.family: Theme.fontFamily
                font.weight: Font.Medium
            }
        }
    }

    Text {
        anchors.top: header.bottom
        anchors.topMargin: 40
        anchors.horizontalCenter: parent.horizontalCenter
        text: "我的游戏、订单与设置即将上线"
        color: Theme.textSecondary
        font.pixelSize: 13
        font.family: Theme.fontFamily
    }
}
