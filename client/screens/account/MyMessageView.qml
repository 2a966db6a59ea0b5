import QtQuick
import QtQuick.Controls
import Tarvel

// The message list under the see-through bar: one card per stored message, newest last as they
// arrived, or a quiet note while there are none.
Item {
    id: view
    property var controller: null
    readonly property int messageCount: list.count

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }
    // What shows through the see-through bar, so that its white title stays readable.
    Rectangle {
        id: band
        anchors.left: parent.left
        anchors.right: parent.right
        height: Theme.navigationBarHeight
        color: Theme.navigationBar
    }

    ListView {
        id: list
        objectName: "tableMain"
        anchors.top: band.bottom
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        clip: true
        spacing: 8
        topMargin: 10
        bottomMargin: 10
        model: view.controller ? view.controller.tableMain : null
        delegate: MyMessageCell {
            required property int index
            required property var row
            x: 10
            width: ListView.view.width - 20
            imageName: row.imageName
            title: row.title
            time: row.time
            onClicked: view.controller.didSelectRowAtIndex(index)
        }
    }

    Column {
        objectName: "emptyNote"
        anchors.centerIn: list
        spacing: 10
        visible: list.count === 0
        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 64
            height: 64
            source: Assets.imageUrl("mes_read")
            sourceSize: Qt.size(128, 128)
            opacity: 0.7
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "暂无消息"
            color: Theme.textSecondary
            font.pixelSize: Theme.fontBody
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "收到的推送消息会显示在这里"
            color: Theme.textPlaceholder
            font.pixelSize: Theme.fontFootnote
        }
    }
}
