import QtQuick
import QtQuick.Controls
import Tarvel

// The 64-point bar every screen carries: status-bar strip plus a 44-point title row.
Rectangle {
    id: bar
    property string title
    property alias leftItem: leftSlot.data
    property alias rightItem: rightSlot.data

    implicitHeight: 64
    color: Theme.navigationBar

    Item {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 44

        Row {
            id: leftSlot
            anchors.left: parent.left
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
        }
        Label {
            anchors.centerIn: parent
            width: parent.width - 140
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
            text: bar.title
            color: "white"
            font.pixelSize: 18
            font.bold: true
        }
        Row {
            id: rightSlot
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
