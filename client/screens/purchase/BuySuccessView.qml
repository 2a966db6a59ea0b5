import QtQuick
import Tarvel

// The purchase result: a card with the tick, the order's amount, number and payment method, then
// the ways on: the order history and back to the shop.
Rectangle {
    id: view
    property BuySuccessViewController controller: null

    color: Theme.background

    Rectangle {
        id: card
        objectName: "buySuccessCard"
        anchors.top: parent.top
        anchors.topMargin: Theme.spacingLarge
        anchors.left: parent.left
        anchors.leftMargin: Theme.spacingRegular
        anchors.right: parent.right
        anchors.rightMargin: Theme.spacingRegular
        height: content.implicitHeight + content.anchors.topMargin + Theme.spacingMedium
        radius: Theme.radiusLarge
        color: Theme.cardBackground

        Column {
            id: content
            anchors.top: parent.top
            anchors.topMargin: Theme.spacingXLarge
            anchors.left: parent.left
            anchors.right: parent.right
            spacing: 0

            Image {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 64
                height: 64
                sourceSize: Qt.size(128, 128)
                source: Assets.imageUrl("buySuccess_icon")
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                topPadding: Theme.spacingRegular
                text: "支付成功，感谢您的购买"
                color: Theme.textPrimary
                font.pixelSize: Theme.fontTitle3
                font.weight: Font.DemiBold
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                topPadding: Theme.spacingSmall
                bottomPadding: Theme.spacingLarge
                text: "游戏已放入“我的游戏”，可随时查看"
                color: Theme.textSecondary
                font.pixelSize: Theme.fontSubhead
            }
            Repeater {
                model: view.controller ? view.controller.tableMain : null
                delegate: Item {
                    id: row
                    required property int index
                    required property string title
                    required property bool separatorHidden
                    objectName: "buySuccessCell" + index
                    width: content.width
                    height: Theme.rowHeight
                    Text {
                        anchors.left: parent.left
                        anchors.leftMargin: Theme.spacingLarge
                        anchors.right: parent.right
                        anchors.rightMargin: Theme.spacingLarge
                        anchors.verticalCenter: parent.verticalCenter
                        text: row.title
                        color: Theme.textPrimary
                        font.pixelSize: Theme.fontBody
                        elide: Text.ElideRight
                    }
                    Rectangle {
                        visible: !row.separatorHidden
                        anchors.left: parent.left
                        anchors.leftMargin: Theme.spacingLarge
                        anchors.right: parent.right
                        anchors.rightMargin: Theme.spacingLarge
                        anchors.bottom: parent.bottom
                        height: Theme.hairlineWidth
                        color: Theme.hairline
                    }
                }
            }
        }
    }

    Row {
        anchors.top: card.bottom
        anchors.topMargin: Theme.spacingXLarge
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: Theme.spacingLarge

        Repeater {
            model: view.controller ? [view.controller.buttonMyOrder, view.controller.buttonContinue]
                                   : []
            delegate: Rectangle {
                id: action
                required property int index
                required property var modelData
                objectName: index === 0 ? "buySuccessMyOrder" : "buySuccessContinue"
                width: (view.width - 2 * Theme.spacingRegular - Theme.spacingLarge) / 2
                height: Theme.buttonHeight
                radius: height / 2
                color: index === 1 ? (touch.pressed ? Theme.navigationBarDark : Theme.navigationBar)
                                   : (touch.pressed ? Theme.rowPressed : Theme.cardBackground)
                border.width: index === 1 ? 0 : Theme.hairlineWidth
                border.color: Theme.navigationBar
                Text {
                    anchors.centerIn: parent
                    text: action.modelData.currentTitle
                    color: action.index === 1 ? Theme.textOnDark : Theme.navigationBar
                    font.pixelSize: Theme.fontHeadline
                }
                MouseArea {
                    id: touch
                    anchors.fill: parent
                    onClicked: action.modelData.tap()
                }
            }
        }
    }
}
