import QtQuick
import Tarvel

// The head of a game's page: the cover across the width, then the names, the prices with the
// discount, pre-sale and "已拥有" badges, and the supported systems. Takes no room until the game
// is known.
Column {
    id: head
    property GoodsDetailHeaderView header: null
    property bool owned: false

    visible: header !== null
    height: visible ? implicitHeight : 0

    RemoteImage {
        objectName: "goodsDetailCover"
        width: head.width
        height: Math.round(head.width * 9 / 16)
        source: head.header ? head.header.imageUrl : ""
    }

    Rectangle {
        width: head.width
        height: info.implicitHeight + 28
        color: Theme.cardBackground

        Column {
            id: info
            x: 14
            y: 14
            width: parent.width - 28
            spacing: 6

            Text {
                width: parent.width
                text: head.header ? head.header.labelNameCn : ""
                color: Theme.textPrimary
                font.pixelSize: Theme.fontTitle2
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
            }
            Text {
                width: parent.width
                visible: text.length > 0
                text: head.header ? head.header.labelNameEn : ""
                color: Theme.textSecondary
                font.pixelSize: Theme.fontSubhead
                elide: Text.ElideRight
            }
            Item {
                width: parent.width
                height: 34

                Row {
                    anchors.left: parent.left
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 8

                    Text {
                        id: newPrice
                        anchors.verticalCenter: parent.verticalCenter
                        text: head.header ? head.header.labelNewPrice : ""
                        color: Theme.price
                        font.pixelSize: Theme.fontLargeTitle
                        font.weight: Font.DemiBold
                    }
                    Text {
                        anchors.baseline: newPrice.baseline
                        visible: text.length > 0
                        text: head.header ? head.header.labelOldPrice : ""
                        color: Theme.textSecondary
                        font.pixelSize: Theme.fontCallout
                        font.strikeout: true
                    }
                    GoodsDetailBadge {
                        visible: head.header !== null && !head.header.discountHidden
                        text: head.header ? head.header.labelDiscount : ""
                        color: Theme.accent
                    }
                    GoodsDetailBadge {
                        visible: head.header !== null && !head.header.presellHidden
                        text: " 预售 "
                        color: Theme.info
                    }
                    OwnedBadge {
                        objectName: "goodsDetailOwned"
                        anchors.verticalCenter: parent.verticalCenter
                        visible: head.owned
                        pixelSize: Theme.fontFootnote
                    }
                }
                Row {
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 6
                    Repeater {
                        model: head.header ? head.header.osIcons : []
                        delegate: Image {
                            required property string modelData
                            width: 20
                            height: 20
                            sourceSize: Qt.size(40, 40)
                            source: Assets.imageUrl(modelData)
                        }
                    }
                }
            }
        }
    }
}
