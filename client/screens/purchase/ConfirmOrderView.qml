import QtQuick
import Tarvel

// Checkout: the order's games, the panel with amounts, coupon code and payment choice as the
// list's footer, and the pay bar at the bottom.
Rectangle {
    id: view
    property ConfirmOrderViewController controller: null

    color: Theme.background

    ListView {
        id: list
        objectName: "confirmOrderTable"
        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: payBar.top
        clip: true
        model: view.controller ? view.controller.tableMain : null
        visible: view.controller !== null && view.controller.orderLoaded

        header: Rectangle {
            width: ListView.view.width
            height: 40
            color: Theme.background
            Text {
                anchors.left: parent.left
                anchors.leftMargin: Theme.spacingLarge
                anchors.bottom: parent.bottom
                anchors.bottomMargin: Theme.spacingSmall + Theme.spacingTiny
                text: "商品清单"
                color: Theme.textSecondary
                font.pixelSize: Theme.fontSubhead
            }
        }
        delegate: Rectangle {
            id: row
            required property int index
            required property string name
            required property string price
            objectName: "confirmOrderCell" + index
            width: ListView.view.width
            height: 52
            color: touch.pressed ? Theme.rowPressed : Theme.cardBackground

            Text {
                anchors.left: parent.left
                anchors.leftMargin: Theme.spacingLarge
                anchors.right: rowPrice.left
                anchors.rightMargin: Theme.spacingRegular
                anchors.verticalCenter: parent.verticalCenter
                text: row.name
                color: Theme.textPrimary
                font.pixelSize: Theme.fontBody
                elide: Text.ElideRight
            }
            Text {
                id: rowPrice
                anchors.right: parent.right
                anchors.rightMargin: Theme.spacingLarge
                anchors.verticalCenter: parent.verticalCenter
                text: row.price
                color: Theme.price
                font.pixelSize: Theme.fontBody
            }
            Rectangle {
                anchors.left: parent.left
                anchors.leftMargin: Theme.spacingLarge
                anchors.right: parent.right
                anchors.bottom: parent.bottom
                height: Theme.hairlineWidth
                color: Theme.hairline
            }
            MouseArea {
                id: touch
                anchors.fill: parent
                onClicked: view.controller.didSelectRowAtIndex(row.index)
            }
        }
        footer: ConfirmOrderBottomPanel {
            width: ListView.view.width
            footerView: view.controller ? view.controller.footerView : null
        }
    }

    ConfirmPayBar {
        id: payBar
        objectName: "confirmPayBar"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        visible: view.controller !== null && view.controller.orderLoaded
        viewPay: view.controller ? view.controller.viewPay : null
    }
}
