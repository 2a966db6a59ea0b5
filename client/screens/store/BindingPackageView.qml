import QtQuick
import Tarvel

// The DLCs or bundles of a game: one 55-point row each with the name, the current price and, when
// discounted, the struck list price and the discount badge; "已拥有" beside the price of an owned
// item. A row opens the item's page.
Rectangle {
    id: view
    property BindingPackageViewContoller controller: null

    color: Theme.listBackground

    ListView {
        id: list
        objectName: "bindingPackageList"
        anchors.fill: parent
        anchors.topMargin: 10
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: view.controller ? view.controller.tableMain : null

        delegate: Rectangle {
            id: row
            required property int index
            required property string name
            required property string typeName
            required property string nowPrice
            required property string oldPrice
            required property string off
            required property bool discounted
            required property bool owned

            objectName: "bindingPackageRow" + index
            width: list.width
            height: view.controller ? view.controller.rowHeight : 55
            color: touch.pressed ? Theme.rowPressed : Theme.cardBackground

            Column {
                anchors.left: parent.left
                anchors.leftMargin: 14
                anchors.right: prices.left
                anchors.rightMargin: 10
                anchors.verticalCenter: parent.verticalCenter
                spacing: 3
                Text {
                    width: parent.width
                    text: row.name
                    color: Theme.textPrimary
                    font.pixelSize: Theme.fontBody
                    elide: Text.ElideRight
                }
                Text {
                    width: parent.width
                    visible: text.length > 0
                    text: row.typeName
                    color: Theme.textSecondary
                    font.pixelSize: Theme.fontCaption
                }
            }
            Column {
                id: prices
                anchors.right: arrow.left
                anchors.rightMargin: 4
                anchors.verticalCenter: parent.verticalCenter
                spacing: 3

                Row {
                    anchors.right: parent.right
                    spacing: 6
                    OwnedBadge {
                        anchors.verticalCenter: parent.verticalCenter
                        visible: row.owned
                    }
                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        visible: row.discounted && row.off.length > 0
                        width: offLabel.implicitWidth + 2
                        height: 17
                        radius: 3
                        color: Theme.accent
                        Text {
                            id: offLabel
                            anchors.centerIn: parent
                            text: row.off
                            color: Theme.textOnDark
                            font.pixelSize: Theme.fontCaption
                            font.weight: Font.DemiBold
                        }
                    }
                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        text: row.nowPrice
                        color: Theme.price
                        font.pixelSize: Theme.fontHeadline
                        font.weight: Font.DemiBold
                    }
                }
                Text {
                    anchors.right: parent.right
                    visible: row.discounted
                    text: row.oldPrice
                    color: Theme.textSecondary
                    font.pixelSize: Theme.fontFootnote
                    font.strikeout: true
                }
            }
            Image {
                id: arrow
                anchors.right: parent.right
                anchors.rightMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                width: 18
                height: 18
                sourceSize: Qt.size(36, 36)
                source: Assets.imageUrl("goodsDetail_arrow")
            }
            Rectangle {
                anchors.left: parent.left
                anchors.leftMargin: 14
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
