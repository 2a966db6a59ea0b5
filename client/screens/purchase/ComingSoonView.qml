import QtQuick
import Tarvel

// A screen that is still being built: its title and a short note in the middle of the page.
Rectangle {
    id: view
    property ComingSoonViewController controller: null

    color: "#f2f2f5"

    Column {
        anchors.centerIn: parent
        anchors.verticalCenterOffset: -40
        width: parent.width - 64
        spacing: 12

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 84
            height: 84
            radius: 42
            color: "#e3e9f5"
            Image {
                anchors.centerIn: parent
                width: 44
                height: 44
                sourceSize: Qt.size(88, 88)
                source: Assets.imageUrl("library_games")
            }
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: view.controller ? view.controller.title : ""
            color: Theme.textPrimary
            font.pixelSize: 18
            font.weight: Font.DemiBold
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: view.controller ? view.controller.note : ""
            color: Theme.textSecondary
            font.pixelSize: 14
        }
    }
}
