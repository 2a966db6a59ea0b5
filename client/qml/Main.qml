import QtQuick
import QtQuick.Controls
import Tarvel
import QtQuick.Window

ApplicationWindow {
    id: window
    width: 375
    height: 667
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    title: "Tarvel"
    color: Theme.background
    font.family: Theme.fontFamily

    header: NavigationBar {
        title: "Tarvel 游戏商城"
    }

    Column {
        anchors.centerIn: parent
        spacing: 12
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "正版 PC 游戏，尽在 Tarvel"
            color: Theme.textPrimary
            font.pixelSize: 17
        }
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "正在连接商城…"
            color: Theme.textSecondary
            font.pixelSize: 13
        }
    }
}
