import QtQuick
import QtQuick.Controls
import Tarvel

// A page whose function is on its way: a picture and the screen's note.
Item {
    id: view
    property var controller: null

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }
    Column {
        anchors.centerIn: parent
        width: parent.width - 64
        spacing: 14
        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 72
            height: 72
            radius: 36
            color: Theme.navigationBar
            Text {
                anchors.centerIn: parent
                text: "敬请期待"
                color: Theme.textOnDark
                font.pixelSize: Theme.fontSubhead
            }
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: view.controller ? view.controller.note : ""
            color: Theme.textSecondary
            font.pixelSize: Theme.fontCallout
            wrapMode: Text.Wrap
        }
    }
}
