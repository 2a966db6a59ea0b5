import QtQuick
import Tarvel

// The bar fixed under a game's page: the cart with its count, the price, "加入购物车" and "立即购买".
Rectangle {
    id: bar
    property GoodsDetailBottomView bottomView: null

    height: 50
    color: Theme.cardBackground

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
        // The cart count badge.
        Rectangle {
            readonly property LabelState badge: bar.bottomView ? bar.bottomView.labelRedDot : null
            objectName: "cartBadge"
            visible: badge !== null && !badge.hidden
            x: cartIcon.x + cartIcon.width - 9
            y: cartIcon.y - 5
            width: Math.max(16, badgeText.implicitWidth + 8)
            height: 16
            radius: 8
            color: Theme.badge
            Text {
                id: badgeText
                anchors.centerIn: parent
                text: parent.badge ? parent.badge.text : ""
                color: Theme.textOnDark
                font.pixelSize: Theme.fontCaption2
            }
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
    Text {
        readonly property LabelState price: bar.bottomView ? bar.bottomView.labelPrice : null
        anchors.left: cart.right
        anchors.leftMargin: 10
        anchors.right: addToCart.left
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        visible: price !== null && !price.hidden
        text: price ? price.text : ""
        color: Theme.price
        font.pixelSize: Theme.fontTitle2
        font.weight: Font.DemiBold
        elide: Text.ElideRight
    }
    GoodsDetailActionButton {
        id: addToCart
        objectName: "addToCartButton"
        anchors.right: buyNow.left
        height: bar.height
        button: bar.bottomView ? bar.bottomView.buttonAddToCart : null
        color: Theme.accent
    }
    GoodsDetailActionButton {
        id: buyNow
        objectName: "buyNowButton"
        anchors.right: parent.right
        height: bar.height
        button: bar.bottomView ? bar.bottomView.buttonOneKeyBuy : null
        color: Theme.price
    }
}
