import QtQuick
import Tarvel

// The bar fixed under a game's page: the cart with its count, the price, "加入购物车" and "立即购买".
Rectangle {
    id: bar
    property GoodsDetailBottomView bottomView: null

    height: 50
    color: "white"

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.separator
    }

    Item {
        id: cart
        objectName: "cartButton"
        width: 58
        height: parent.height
        opacity: cartTouch.pressed ? 0.5 : 1
        Image {
            id: cartIcon
            anchors.centerIn: parent
            width: 28
            height: 28
            sourceSize: Qt.size(56, 56)
            source: bar.bottomView ? Assets.imageUrl(bar.bottomView.buttonCart.imageName) : ""
        }
        BoundLabel {
            state: bar.bottomView ? bar.bottomView.labelRedDot : null
            x: cartIcon.x + cartIcon.width - 9
            y: cartIcon.y - 5
            width: Math.max(16, implicitWidth)
            height: 16
            leftPadding: 4
            rightPadding: 4
            font.pixelSize: 10
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            badgeRoundness: 1
        }
        MouseArea {
            id: cartTouch
            anchors.fill: parent
            onClicked: bar.bottomView.buttonCart.tap()
        }
    }
    Rectangle {
        anchors.left: cart.right
        anchors.verticalCenter: parent.verticalCenter
        width: 1
        height: 26
        color: Theme.separator
    }
    BoundLabel {
        anchors.left: cart.right
        anchors.leftMargin: 10
        anchors.right: addToCart.left
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        state: bar.bottomView ? bar.bottomView.labelPrice : null
        font.pixelSize: 18
        font.weight: Font.DemiBold
        elide: Text.ElideRight
    }
    ActionButton {
        id: addToCart
        objectName: "addToCartButton"
        anchors.right: buyNow.left
        button: bar.bottomView ? bar.bottomView.buttonAddToCart : null
        color: Theme.accent
    }
    ActionButton {
        id: buyNow
        objectName: "buyNowButton"
        anchors.right: parent.right
        button: bar.bottomView ? bar.bottomView.buttonOneKeyBuy : null
        color: Theme.price
    }

    component ActionButton: Rectangle {
        id: action
        property ButtonState button: null
        width: 108
        height: bar.height
        opacity: touch.pressed ? 0.8 : 1
        Text {
            anchors.centerIn: parent
            text: action.button ? action.button.title : ""
            color: "white"
            font.pixelSize: 16
            font.weight: Font.DemiBold
        }
        MouseArea {
            id: touch
            anchors.fill: parent
            onClicked: action.button.tap()
        }
    }
}
