import QtQuick
import Tarvel

// "库": the user's coupons and games, one row each.
Rectangle {
    id: view
    property LibraryViewController controller: null

    color: Theme.listBackground

    Column {
        y: 12
        width: parent.width

        Repeater {
            model: view.controller ? view.controller.mainTable : null
            delegate: Rectangle {
                id: row
                required property int index
                required property string title
                required property string icon

                objectName: "libraryRow" + index
                width: view.width
                height: 54
                color: touch.pressed ? Theme.rowPressed : Theme.cardBackground

                Image {
                    id: picture
                    anchors.left: parent.left
                    anchors.leftMargin: 14
                    anchors.verticalCenter: parent.verticalCenter
                    width: 28
                    height: 28
                    sourceSize: Qt.size(56, 56)
                    source: Assets.imageUrl(row.icon)
                }
                Text {
                    anchors.left: picture.right
                    anchors.leftMargin: 12
                    anchors.verticalCenter: parent.verticalCenter
                    text: row.title
                    color: Theme.textPrimary
                    font.pixelSize: Theme.fontHeadline
                }
                Image {
                    anchors.right: parent.right
                    anchors.rightMargin: 10
                    anchors.verticalCenter: parent.verticalCenter
                    width: 18
                    height: 18
                    sourceSize: Qt.size(36, 36)
                    source: Assets.imageUrl("goodsDetail_arrow")
                }
                Rectangle {
                    visible: row.index === 0
                    anchors.left: parent.left
                    anchors.leftMargin: 54
                    anchors.right: parent.right
                    anchors.bottom: parent.bottom
                    height: 1
                    color: Theme.hairline
                }
                MouseArea {
                    id: touch
                    anchors.fill: parent
                    onClicked: view.controller.didSelectRowAtIndex(row.index)
                }
            }
        }
    }
}
