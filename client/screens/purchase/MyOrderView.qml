import QtQuick
import Tarvel

// "我的订单": the three state tabs over the list of orders, with pull-down reload and pull-up
// paging.
Rectangle {
    id: view
    property MyOrderViewController controller: null

    color: Theme.listBackground

    Rectangle {
        id: tabs
        width: parent.width
        height: Theme.rowHeight
        color: Theme.cardBackground
        z: 1

        Row {
            anchors.fill: parent
            Repeater {
                model: view.controller ? [view.controller.buttonAll, view.controller.buttonNoPay,
                                          view.controller.buttonFinish] : []
                delegate: Item {
                    id: tab
                    required property var modelData
                    required property int index
                    objectName: "orderTab" + index
                    width: tabs.width / 3
                    height: tabs.height

                    Text {
                        anchors.centerIn: parent
                        text: tab.modelData.title
                        color: tab.modelData.selected ? Theme.navigationBar : Theme.textPrimary
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.fontBody
                        font.weight: tab.modelData.selected ? Font.DemiBold : Font.Normal
                    }
                    Rectangle {
                        anchors.horizontalCenter: parent.horizontalCenter
                        anchors.bottom: parent.bottom
                        width: 56
                        height: 2
                        radius: 1
                        color: Theme.navigationBar
                        visible: tab.modelData.selected
                    }
                    MouseArea {
                        anchors.fill: parent
                        onClicked: tab.modelData.tap()
                    }
                }
            }
        }
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: Theme.hairlineWidth
            color: Theme.hairline
        }
    }

    ListView {
        id: list
        objectName: "orderList"
        anchors.top: tabs.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        clip: true
        model: view.controller ? view.controller.tableMain : null
        delegate: MyOrderTableViewCell {
            required property var row
            width: list.width
            order: row
            onCancelClicked: (tag) => view.controller.clickButtonCancle(tag)
            onPayClicked: (tag) => view.controller.clickButtonPay(tag)
        }
        footer: LoadMoreFooter {
            target: list
            footer: view.controller ? view.controller.refreshFooter : null
        }
    }

    Text {
        objectName: "orderListEmpty"
        anchors.centerIn: list
        visible: list.count === 0 && view.controller !== null
                 && !view.controller.refreshHeader.refreshing
        text: "暂无订单"
        color: Theme.textSecondary
        font.family: Theme.fontFamily
        font.pixelSize: Theme.fontCallout
    }

    RefreshHeader {
        anchors.left: list.left
        anchors.right: list.right
        anchors.top: list.top
        target: list
        header: view.controller ? view.controller.refreshHeader : null
    }
}
