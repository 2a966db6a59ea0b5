import QtQuick
import QtQuick.Controls
import Tarvel

// The cart: one card per line, the bar with select all, the total and the submit button, or the
// empty cart with its way back to the shop.
Rectangle {
    id: view
    property TabThreeViewController controller: null

    color: Theme.background

    ListView {
        id: list
        objectName: "cartTable"
        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: bar.visible ? bar.top : parent.bottom
        clip: true
        spacing: Theme.spacingMedium
        topMargin: Theme.spacingMedium
        bottomMargin: Theme.spacingMedium
        visible: view.controller !== null && view.controller.emptyViewHidden
        model: view.controller ? view.controller.cells : []
        delegate: ShoppingCartCellView {
            required property int index
            required property var modelData
            objectName: "cartCell" + index
            width: ListView.view.width
            cell: modelData
            onTapped: view.controller.didSelectRowAtIndex(index)
        }
    }

    Column {
        objectName: "cartEmptyView"
        anchors.centerIn: parent
        anchors.verticalCenterOffset: -Theme.spacingXLarge
        spacing: Theme.spacingRegular
        visible: view.controller !== null && !view.controller.emptyViewHidden

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 150
            height: 150
            source: Assets.imageUrl("shoppingcar_defaultImage")
            sourceSize: Qt.size(300, 300)
            fillMode: Image.PreserveAspectFit
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "购物车还是空的"
            color: Theme.textPrimary
            font.pixelSize: Theme.fontTitle3
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "挑几款心仪的游戏放进来吧"
            color: Theme.textSecondary
            font.pixelSize: Theme.fontSubhead
        }
        Button {
            objectName: "cartGoShopping"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 140
            height: Theme.buttonHeight - Theme.spacingSmall
            contentItem: Text {
                text: "去逛逛"
                color: Theme.textOnDark
                font.pixelSize: Theme.fontBody
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }
            background: Rectangle {
                radius: height / 2
                color: parent.pressed ? Theme.navigationBarDark : Theme.navigationBar
            }
            onClicked: view.controller.clickGoShopping()
        }
    }

    ShoppingCartBottomBar {
        id: bar
        objectName: "cartBottomBar"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        visible: view.controller !== null && view.controller.bottomViewShown
                 && view.controller.emptyViewHidden
        bottomView: view.controller ? view.controller.bottomView : null
    }
}
