import QtQuick
import Tarvel

// The head of a game's page: the cover across the width, then the names, the prices with the
// discount and pre-sale badges, and the supported systems. Takes no room until the game is known.
Column {
    id: head
    property GoodsDetailHeaderView header: null

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
        color: "white"

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
                font.pixelSize: 18
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
            }
            Text {
                width: parent.width
                visible: text.length > 0
                text: head.header ? head.header.labelNameEn : ""
                color: Theme.textSecondary
                font.pixelSize: 13
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
                        font.pixelSize: 22
                        font.weight: Font.DemiBold
                    }
                    Text {
                        anchors.baseline: newPrice.baseline
                        visible: text.length > 0
                        text: head.header ? head.header.labelOldPrice : ""
                        color: Theme.textSecondary
                        font.pixelSize: 14
                        font.strikeout: true
                    }
                    Badge {
                        visible: head.header !== null && !head.header.discountHidden
                        text: head.header ? head.header.labelDiscount : ""
                        color: Theme.accent
                    }
                    Badge {
                        visible: head.header !== null && !head.header.presellHidden
                        text: " 预售 "
                        color: "#2e9bd6"
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

    component Badge: Rectangle {
        property alias text: label.text
        anchors.verticalCenter: parent.verticalCenter
        width: label.implicitWidth + 4
        height: 20
        radius: 3
        Text {
            id: label
            anchors.centerIn: parent
            color: "white"
            font.pixelSize: 12
            font.weight: Font.DemiBold
        }
    }
}
