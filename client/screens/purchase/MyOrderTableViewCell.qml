import QtQuick
import Tarvel

// One order: its number and state, a line per game, the amounts, and for an unpaid order the
// cancel and pay buttons.
Item {
    id: cell
    property var order: ({})
    signal cancelClicked(int tag)
    signal payClicked(int tag)

    objectName: "orderRow" + (cell.order.tag !== undefined ? cell.order.tag : "")
    height: cell.order.height !== undefined ? cell.order.height : 0

    Rectangle {
        id: card
        anchors.fill: parent
        anchors.topMargin: 10
        color: Theme.cardBackground

        Item {
            id: header
            width: parent.width
            height: 44

            Text {
                objectName: "orderNumber"
                anchors.left: parent.left
                anchors.leftMargin: Theme.spacingRegular
                anchors.right: state.left
                anchors.rightMargin: Theme.spacingMedium
                anchors.verticalCenter: parent.verticalCenter
                text: cell.order.orderId || ""
                elide: Text.ElideRight
                color: Theme.textPrimary
                font.family: Theme.fontFamily
                font.pixelSize: Theme.fontCallout
            }
            Text {
                id: state
                objectName: "orderState"
                anchors.right: parent.right
                anchors.rightMargin: Theme.spacingRegular
                anchors.verticalCenter: parent.verticalCenter
                text: cell.order.status || ""
                color: cell.order.buttonsHidden ? Theme.textSecondary : Theme.price
                font.family: Theme.fontFamily
                font.pixelSize: Theme.fontCallout
            }
            Rectangle {
                anchors.bottom: parent.bottom
                width: parent.width
                height: Theme.hairlineWidth
                color: Theme.hairline
            }
        }

        Column {
            id: games
            anchors.top: header.bottom
            width: parent.width
            Repeater {
                model: cell.order.games || []
                delegate: MyOrderCellSubView {
                    required property var modelData
                    width: games.width
                    game: modelData
                }
            }
        }

        Item {
            id: amounts
            anchors.top: games.bottom
            width: parent.width
            height: 64

            Column {
                anchors.left: parent.left
                anchors.leftMargin: Theme.spacingRegular
                anchors.verticalCenter: parent.verticalCenter
                spacing: Theme.spacingSmall
                Text {
                    objectName: "orderGoodsAmount"
                    text: cell.order.allPrice || ""
                    color: Theme.textSecondary
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.fontFootnote
                }
                Text {
                    objectName: "orderCouponAmount"
                    text: cell.order.couponPrice || ""
                    color: Theme.textSecondary
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.fontFootnote
                }
            }
            Row {
                anchors.right: parent.right
                anchors.rightMargin: Theme.spacingRegular
                anchors.verticalCenter: parent.verticalCenter
                spacing: Theme.spacingSmall
                Text {
                    anchors.baseline: due.baseline
                    text: "实付"
                    color: Theme.textPrimary
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.fontSubhead
                }
                Text {
                    id: due
                    objectName: "orderAmountDue"
                    text: cell.order.shouldPrice || ""
                    color: Theme.price
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.fontTitle3
                    font.weight: Font.DemiBold
                }
            }
        }

        Item {
            anchors.top: amounts.bottom
            width: parent.width
            height: 48
            visible: cell.order.buttonsHidden === false

            Rectangle {
                width: parent.width
                height: Theme.hairlineWidth
                color: Theme.hairline
            }
            Row {
                anchors.right: parent.right
                anchors.rightMargin: Theme.spacingRegular
                anchors.verticalCenter: parent.verticalCenter
                spacing: Theme.spacingRegular

                Rectangle {
                    objectName: "buttonCancle"
                    width: 84
                    height: 32
                    radius: height / 2
                    color: cancelTouch.pressed ? Theme.rowPressed : Theme.cardBackground
                    border.color: Theme.controlBorder
                    border.width: Theme.hairlineWidth
                    Text {
                        anchors.centerIn: parent
                        text: "取消订单"
                        color: Theme.textPrimary
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.fontSubhead
                    }
                    MouseArea {
                        id: cancelTouch
                        anchors.fill: parent
                        onClicked: cell.cancelClicked(cell.order.tag)
                    }
                }
                Rectangle {
                    objectName: "buttonPay"
                    width: 84
                    height: 32
                    radius: height / 2
                    color: payTouch.pressed ? Theme.navigationBarDark : Theme.navigationBar
                    Text {
                        anchors.centerIn: parent
                        text: "去付款"
                        color: Theme.textOnDark
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.fontSubhead
                    }
                    MouseArea {
                        id: payTouch
                        anchors.fill: parent
                        onClicked: cell.payClicked(cell.order.tag)
                    }
                }
            }
        }
    }
}
